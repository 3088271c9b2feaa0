#pragma once

#include "DatapointStore.h"

#include <QDialog>

class QComboBox;
class QFormLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTreeView;
class TImportPreviewModel;

// Shows what a file of datapoints holds and what importing it would change, lets the user choose its encoding and the
// file that it replaces, and imports it when confirmed. Until then nothing changes. It belongs to the project that is
// loaded when it is made, and imports into no other.
class TImportDialog final : public QDialog
{
    Q_OBJECT

public:
    // `store` must outlive the dialog.
    TImportDialog(TDatapointStore& store, const QString& path, QWidget* parent);
    ~TImportDialog() override;

    // Reads the file and shows it, modally; true when it was imported. A file that cannot be read is an error message
    // and false; so is, without a message, one whose reading was cancelled.
    bool Execute();

    // How long reading takes before its progress is shown.
    void SetPatience(int milliseconds) { m_patience = milliseconds; }

    void done(int result) override;

private:
    void MakeControls();
    void MakeFields();
    QFormLayout* MakeForm();
    QString ReplacedFile() const;
    QString TargetName() const;
    bool Preview();
    TImportResult ReadWithProgress(const QString& encoding);
    TDatapointImport Requested() const;
    void ShowResult();
    bool Import();

    TDatapointStore& m_store;
    QString m_directory; // the project's
    QString m_path;
    QByteArray m_content;
    TImportResult m_result;
    QString m_encoding; // the one that was chosen for m_result
    int m_patience;
    QLabel* m_summary;
    QComboBox* m_encodings;
    QComboBox* m_replaced;
    TImportPreviewModel* m_model;
    QTreeView* m_preview;
    QPlainTextEdit* m_problems;
    QPushButton* m_import = nullptr;
};
