#pragma once

#include <QDialog>

class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;

// Asks for the name of a new project and the folder that its directory is made in.
class TNewProjectDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit TNewProjectDialog(QWidget* parent = nullptr);

    QString GetName() const;
    // The project's own directory: the folder and the name.
    QString GetDirectory() const;

private:
    void AddFolderRow(QFormLayout& form);
    void Browse();
    void Update();

    QLineEdit* m_name;
    QLineEdit* m_folder;
    QLabel* m_directory;
    QDialogButtonBox* m_buttons;
};
