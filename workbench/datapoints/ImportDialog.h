#pragma once

#include "DatapointStore.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTreeWidget;

// Shows what a file of datapoints holds and what importing it would change, lets the user choose its encoding and the
// file that it replaces, and imports it when confirmed. Until then nothing changes.
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

    // Reads the file in the chosen encoding and shows the result; false when cancelled. Called by Execute.
    bool Preview();

    void done(int result) override;

private:
    void MakeControls();
    QString ChosenEncoding() const;
    QString ReplacedFile() const;
    QString TargetName() const;
    TDatapointImport Requested() const;
    void ShowResult();
    void ShowDatapoints(const TImportChanges& changes);
    bool Import();

    TDatapointStore& m_store;
    QString m_path;
    QByteArray m_content;
    TImportResult m_result;
    QLabel* m_summary;
    QComboBox* m_encoding;
    QComboBox* m_replaced;
    QTreeWidget* m_datapoints;
    QPlainTextEdit* m_problems;
    QPushButton* m_import = nullptr;
};
