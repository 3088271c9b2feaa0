#pragma once

#include "Vlfiledropedit.h"

#include <QDialog>

#include <functional>

// Asks for the path of the menu's logo. Made anew for every use; deletes itself when it is closed. Belongs to the frame
// that made it.
class TLogoDialog final : public QDialog
{
    Q_OBJECT

public:
    using TCloseEvent = std::function<void(TLogoDialog* sender)>;

    explicit TLogoDialog(QWidget* parent);
    ~TLogoDialog() override;

    // Empty after the user has cancelled.
    void SetLogoLink(const QString& link);
    QString GetLogoLink() const;

    // The dialog is being closed, whatever the way.
    void SetCloseEvent(TCloseEvent event) { m_closeEvent = std::move(event); }
    // Asked about every file that is dropped on the path.
    void SetValidateFileEvent(const TValidateFileEvent& event) { m_path->SetValidateFileEvent(event); }

    // Shows the dialog modelessly; Execute shows it modally and is true unless it was closed with Cancel.
    void Display();
    bool Execute();

    void done(int result) override;

private:
    TVlFileDropEdit* m_path = nullptr;
    TCloseEvent m_closeEvent;
};
