#pragma once

#include "PropsDialog.h"
#include "Vlfiledropedit.h"

#include <cstdint>

class QLineEdit;
class QSpinBox;

// Edits one item of the navigation menu. One instance serves all frames of the process; the frame that shows an item
// fills it and takes the values back through the apply event. Every change of a field is a change, also one made here:
// whoever fills the dialog clears the flag.
class TMenuPropsDialog final : public TPropsDialog
{
    Q_OBJECT

public:
    explicit TMenuPropsDialog(QWidget* parent);
    ~TMenuPropsDialog() override;

    void SetMenuName(const QString& name);
    QString GetMenuName() const;
    void SetMenuTitle(const QString& title);
    QString GetMenuTitle() const;
    void SetMenuLink(const QString& link);
    QString GetMenuLink() const;
    void SetMenuHelp(const QString& help);
    QString GetMenuHelp() const;
    // 0 to 20. A number beyond that is shown as it was set, and held as the nearest one within.
    void SetMenuAccess(std::int32_t access);
    std::int32_t GetMenuAccess() const;

    // The link cannot be edited.
    void SetLinkFixed(bool fixed);
    bool GetLinkFixed() const;

    // Asked about every file that is dropped on the link or the help.
    void SetValidateFileEvent(const TValidateFileEvent& event);

private:
    QLineEdit* m_name = nullptr;
    QLineEdit* m_title = nullptr;
    TVlFileDropEdit* m_link = nullptr;
    TVlFileDropEdit* m_help = nullptr;
    QSpinBox* m_access = nullptr;
};
