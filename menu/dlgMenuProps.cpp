#include "dlgMenuProps.h"

#include "AccessField.h"
#include "DatapointFields.h"

#include <QLineEdit>
#include <QSpinBox>

TMenuPropsDialog::TMenuPropsDialog(QWidget* parent) : TPropsDialog(QStringLiteral("Menu Eigenschaften"), parent)
{
    setObjectName(QStringLiteral("TMenuPropsDialog"));
    auto* fields = new QFormLayout;
    m_name = AddField<QLineEdit>(fields, this, "EditName", " Name");
    m_title = AddField<QLineEdit>(fields, this, "EditTitle", " Titel");
    m_link = AddField<TVlFileDropEdit>(fields, this, "EditLink", " Verweis");
    m_help = AddField<TVlFileDropEdit>(fields, this, "EditHelp", " Hilfe");
    m_access = AddAccessField(fields, this);
    DrawLabelsOnGrey(fields);
    ArrangeFields(fields);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    EndTabOrder(m_access);

    for (QLineEdit* edit : {m_name, m_title, static_cast<QLineEdit*>(m_link), static_cast<QLineEdit*>(m_help)})
        connect(edit, &QLineEdit::textChanged, this, &TMenuPropsDialog::MarkChanged);
    connect(m_access, &QSpinBox::textChanged, this, &TMenuPropsDialog::MarkChanged);
}

TMenuPropsDialog::~TMenuPropsDialog() = default;

void TMenuPropsDialog::SetMenuName(const QString& name)
{
    m_name->setText(name);
}

QString TMenuPropsDialog::GetMenuName() const
{
    return m_name->text();
}

void TMenuPropsDialog::SetMenuTitle(const QString& title)
{
    m_title->setText(title);
}

QString TMenuPropsDialog::GetMenuTitle() const
{
    return m_title->text();
}

void TMenuPropsDialog::SetMenuLink(const QString& link)
{
    m_link->setText(link);
}

QString TMenuPropsDialog::GetMenuLink() const
{
    return m_link->text();
}

void TMenuPropsDialog::SetMenuHelp(const QString& help)
{
    m_help->setText(help);
}

QString TMenuPropsDialog::GetMenuHelp() const
{
    return m_help->text();
}

void TMenuPropsDialog::SetMenuAccess(std::int32_t access)
{
    const QString before = m_access->text();
    SetAccessAsGiven(m_access, access);
    // A number beyond the range may change what is shown and not what is held.
    if (m_access->text() != before)
        MarkChanged();
}

std::int32_t TMenuPropsDialog::GetMenuAccess() const
{
    return m_access->value();
}

void TMenuPropsDialog::SetLinkFixed(bool fixed)
{
    m_link->setEnabled(!fixed);
}

bool TMenuPropsDialog::GetLinkFixed() const
{
    return !m_link->isEnabled();
}

void TMenuPropsDialog::SetValidateFileEvent(const TValidateFileEvent& event)
{
    m_link->SetValidateFileEvent(event);
    m_help->SetValidateFileEvent(event);
}
