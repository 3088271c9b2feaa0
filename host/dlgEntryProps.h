#pragma once

#include "Vlentryfile.h"
#include "Vlexport.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class TVlFileDropEdit;

// The properties of a navigation entry: caption, what it does, category, icon with a preview, removable. What is
// missing or wrong is said in the dialog, which stays open with everything that was typed. Its paths are those of the
// project that is open when it is made. Made by the entry for one use.
class VLHOST_API TEntryPropsDialog final : public QDialog
{
    Q_OBJECT

public:
    // Takes the record over, before the dialog closes. What it throws is shown, and the dialog stays open.
    using TAcceptEvent = std::function<void(const TEntryRecord& record)>;

    explicit TEntryPropsDialog(QWidget* parent);
    ~TEntryPropsDialog() override;

    void SetFile(const QString& file, bool isNew);
    // `category` is what holds while the record has none.
    void SetRecord(const TEntryRecord& record, const QString& category);
    TEntryRecord GetRecord() const;
    void SetAcceptEvent(TAcceptEvent event) { m_acceptEvent = std::move(event); }

    void accept() override;

private:
    void BuildFields();
    void BuildButtons();
    void AddRow(const QString& caption, QWidget* field, QWidget* more = nullptr);
    QPushButton* MakeBrowseButton(const char* name, const QString& hint, void (TEntryPropsDialog::*browse)());

    TEntryKind GetKind() const;
    void ShowKind();
    void ShowIcon();
    void BrowseTarget();
    void BrowseIcon();

    // Says what is wrong with the fields and leads to the first that is; true when all is well.
    bool Validate();
    bool Refuse(QWidget* field, const QString& reason);
    // What is wrong with the target; empty when nothing is.
    QString TargetFault() const;
    // What is wrong with the icon; empty when nothing is, or when it is the one that was there before.
    QString IconFault() const;
    QString Resolve(const QString& path) const;

    QString m_projectRoot;
    QString m_givenIcon;
    QFormLayout* m_fields;
    QLineEdit* m_caption;
    QComboBox* m_kind;
    QLabel* m_targetLabel;
    TVlFileDropEdit* m_target;
    QPushButton* m_browseTarget;
    QLineEdit* m_category;
    TVlFileDropEdit* m_icon;
    QLabel* m_preview;
    QCheckBox* m_removable;
    QLabel* m_file;
    QLabel* m_error;
    TAcceptEvent m_acceptEvent;
};
