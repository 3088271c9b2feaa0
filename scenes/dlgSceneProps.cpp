#include "dlgSceneProps.h"

#include "DatapointFields.h"
#include "Vlerrors.h"
#include "Vlfiledropedit.h"
#include "Vltext.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QToolButton>

namespace
{

// The sections before this one are lists of datapoints.
constexpr int FirstSceneSection = 2;

bool IsDatapointSection(int section)
{
    return section >= 0 && section < FirstSceneSection;
}

} // namespace

TScenePropsDialog::TScenePropsDialog(QWidget* parent) : TPropsDialog(QStringLiteral("Szene Eigenschaften"), parent)
{
    setObjectName(QStringLiteral("TScenePropsDialog"));
    auto* fields = new QFormLayout;
    MakeFields(fields);
    ArrangeFields(fields);
    ConnectFields();
}

TScenePropsDialog::~TScenePropsDialog() = default;

void TScenePropsDialog::MakeFields(QFormLayout* layout)
{
    m_section = AddField<QComboBox>(layout, this, "CBoxPartSelector", " Abschnitt");
    m_alias = AddField<QLineEdit>(layout, this, "EditAlias", " Name");
    m_name = AddField<QLineEdit>(layout, this, "EditName", " Objekt");
    m_value = AddField<TVlFileDropEdit>(layout, this, "EditValue", " Obj. Wert");
    m_enabled = AddField<QCheckBox>(layout, this, "CheckEnabled", " Aktiv");
    m_delay = AddField<QLineEdit>(layout, this, "EditDelay", " Delay");
    m_dataType = AddField<QComboBox>(layout, this, "CBoxDataType", " Typ");
    m_source = AddField<QComboBox>(layout, this, "CBoxDataSource", " Quelle");
    FillDataTypes(m_dataType);
    FillSources(m_source);

    const QList<QWidget*> order{m_section, m_alias, m_name, m_value, m_enabled, m_delay, m_dataType, m_source};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
    EndTabOrder(m_source);
}

void TScenePropsDialog::ConnectFields()
{
    for (QLineEdit* edit : {m_alias, m_name, static_cast<QLineEdit*>(m_value), m_delay})
        connect(edit, &QLineEdit::textEdited, this, &TScenePropsDialog::MarkChanged);
    connect(m_value, &TVlFileDropEdit::FileDropped, this, &TScenePropsDialog::MarkChanged);
    connect(m_enabled, &QCheckBox::clicked, this, &TScenePropsDialog::MarkChanged);
    for (QComboBox* box : {m_dataType, m_source})
        connect(box, &QComboBox::currentIndexChanged, this, &TScenePropsDialog::MarkChanged);
    connect(m_section, &QComboBox::activated, this, [this] { Guarded([this] { ChangePart(); }); });
    auto* drop = new TDatapointDrop(
        this, [this] { return IsDatapointSection(GetSection()); },
        [this](const TDroppedDatapoint& datapoint) { TakeDropped(datapoint); });
    drop->Watch(m_alias);
    drop->Watch(m_name);
}

void TScenePropsDialog::SetItemName(const QString& name)
{
    m_name->setText(name);
    if (name.isEmpty())
        m_alias->setEnabled(true);
}

QString TScenePropsDialog::GetItemName() const
{
    return m_name->text();
}

void TScenePropsDialog::SetNodeAlias(const QString& alias)
{
    m_alias->setText(alias);
}

QString TScenePropsDialog::GetNodeAlias() const
{
    return m_alias->text();
}

void TScenePropsDialog::SetNodeValue(const QString& value)
{
    m_value->setText(value);
}

QString TScenePropsDialog::GetNodeValue() const
{
    return m_value->text();
}

void TScenePropsDialog::SetNodeDelay(std::int32_t delay)
{
    m_delay->setText(QString::number(delay));
}

std::int32_t TScenePropsDialog::GetNodeDelay() const
{
    return StrToIntDef(m_delay->text(), 0);
}

void TScenePropsDialog::SetEnableFlag(bool enabled)
{
    m_enabled->setChecked(enabled);
}

bool TScenePropsDialog::GetEnableFlag() const
{
    return m_enabled->isChecked();
}

void TScenePropsDialog::SetDataType(TDataTypeMap type)
{
    SelectEntry(m_dataType, type);
}

TDataTypeMap TScenePropsDialog::GetDataType() const
{
    return static_cast<TDataTypeMap>(m_dataType->currentIndex());
}

void TScenePropsDialog::SetNodeSource(TNodeSource source)
{
    SelectEntry(m_source, source);
}

TNodeSource TScenePropsDialog::GetNodeSource() const
{
    return static_cast<TNodeSource>(m_source->currentIndex());
}

void TScenePropsDialog::SetSection(int index)
{
    m_section->setCurrentIndex(index);
    SetAcceptEsfItems(index < FirstSceneSection);
}

int TScenePropsDialog::GetSection() const
{
    return m_section->currentIndex();
}

void TScenePropsDialog::SetSceneSections(const QStringList& sections)
{
    ReplaceSections(m_section, sections);
    SetAcceptEsfItems(GetSection() < FirstSceneSection);
}

void TScenePropsDialog::SetAcceptEsfItems(bool accept)
{
    m_name->setEnabled(accept);
    m_dataType->setEnabled(accept);
    m_source->setEnabled(accept);
    m_alias->setEnabled(!accept || m_name->text().isEmpty());
}

void TScenePropsDialog::ChangePart()
{
    const int part = m_section->currentIndex();
    if (!m_changePartEvent || part < 0)
        return;
    MarkChanged();
    m_changePartEvent(this, part);
    SetAcceptEsfItems(part < FirstSceneSection);
}

void TScenePropsDialog::TakeDropped(const TDroppedDatapoint& datapoint)
{
    SetNodeAlias(datapoint.Label);
    SetItemName(datapoint.Name);
    SetDataType(datapoint.DataType);
    SetNodeSource(nsEIB);
    MarkChanged();
}
