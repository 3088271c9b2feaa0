#include "dlgLinkProps.h"

#include "AccessField.h"
#include "DatapointFields.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

TLinkPropsDialog::TLinkPropsDialog(QWidget* parent)
    : TPropsDialog(QStringLiteral("Sensitiver Link Eigenschaften"), parent)
{
    setObjectName(QStringLiteral("TLinkPropsDialog"));
    auto* fields = new QFormLayout;
    m_url = AddField<TVlFileDropEdit>(fields, this, "EditUrl", " Verweis");
    m_alias = AddField<QLineEdit>(fields, this, "EditAlias", " Name");
    m_name = AddField<QLineEdit>(fields, this, "EditName", " Objekt");
    m_value = AddField<TVlFileDropEdit>(fields, this, "EditValue", " Obj. Wert");
    m_dataType = AddFieldBeside<QComboBox>(fields, this, "CBoxDataType", " Typ");
    m_access = AddAccessField(fields, this);
    m_source = AddFieldBeside<QComboBox>(fields, this, "CBoxDataSource", " Quelle");
    FillDataTypes(m_dataType);
    FillSources(m_source);
    DrawLabelsOnGrey(fields);
    ArrangeFields(fields);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    EndTabOrder(m_source);
    ConnectFields();
}

TLinkPropsDialog::~TLinkPropsDialog() = default;

void TLinkPropsDialog::ConnectFields()
{
    for (QLineEdit* edit : {static_cast<QLineEdit*>(m_url), m_alias, m_name, static_cast<QLineEdit*>(m_value)})
        connect(edit, &QLineEdit::textChanged, this, &TLinkPropsDialog::MarkChanged);
    for (QComboBox* box : {m_dataType, m_source})
        connect(box, &QComboBox::currentIndexChanged, this, &TLinkPropsDialog::MarkChanged);
    connect(m_access, &QSpinBox::textChanged, this, &TLinkPropsDialog::MarkChanged);

    auto* drop = new TDatapointDrop(
        this, [] { return true; }, [this](const TDroppedDatapoint& datapoint) { TakeDropped(datapoint); });
    drop->Watch(m_alias);
    drop->Watch(m_name);
}

void TLinkPropsDialog::SetLinkUrl(const QString& url)
{
    m_url->setText(url);
}

QString TLinkPropsDialog::GetLinkUrl() const
{
    return m_url->text();
}

void TLinkPropsDialog::SetNodeAlias(const QString& alias)
{
    m_alias->setText(alias);
}

QString TLinkPropsDialog::GetNodeAlias() const
{
    return m_alias->text();
}

void TLinkPropsDialog::SetItemName(const QString& name)
{
    m_name->setText(name);
    if (name.isEmpty())
        m_alias->setEnabled(true);
}

QString TLinkPropsDialog::GetItemName() const
{
    return m_name->text();
}

void TLinkPropsDialog::SetNodeValue(const QString& value)
{
    m_value->setText(value);
}

QString TLinkPropsDialog::GetNodeValue() const
{
    return m_value->text();
}

void TLinkPropsDialog::SetDataType(TDataTypeMap type)
{
    m_dataType->setCurrentIndex(type);
}

TDataTypeMap TLinkPropsDialog::GetDataType() const
{
    return static_cast<TDataTypeMap>(m_dataType->currentIndex());
}

void TLinkPropsDialog::SetNodeSource(TNodeSource source)
{
    m_source->setCurrentIndex(source);
}

TNodeSource TLinkPropsDialog::GetNodeSource() const
{
    return static_cast<TNodeSource>(m_source->currentIndex());
}

void TLinkPropsDialog::SetAccessCode(std::int32_t access)
{
    m_access->setValue(access);
}

std::int32_t TLinkPropsDialog::GetAccessCode() const
{
    return m_access->value();
}

void TLinkPropsDialog::SetAcceptEsfItems(bool accept)
{
    m_name->setEnabled(accept);
    m_dataType->setEnabled(accept);
    m_source->setEnabled(accept);
    m_alias->setEnabled(!accept || m_name->text().isEmpty());
}

void TLinkPropsDialog::TakeDropped(const TDroppedDatapoint& datapoint)
{
    SetNodeAlias(datapoint.Label);
    SetItemName(datapoint.Name);
    SetDataType(datapoint.DataType);
    SetNodeSource(nsEIB);
    MarkChanged();
}
