#include "dlgSceneProps.h"

#include "Vldragobjects.h"
#include "Vlerrors.h"
#include "Vlfiledropedit.h"
#include "Vltext.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QFormLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace
{

// The sections before this one are lists of datapoints.
constexpr int FirstSceneSection = 2;
constexpr int MinimumFieldWidth = 260;

// Where a dropped datapoint's EIS number lands. Deliberately no inverse of dt2Eis: an EIS 10 or 14 lands on BINÄR and
// is corrected by hand.
TDataTypeMap DroppedType(int eisNumber)
{
    switch (eisNumber) {
    case 5:
        return dtmEIS10;
    case 6:
        return dtmEIS6;
    case 9:
    case 11:
        return dtmEIS11;
    default:
        return dtmEIS1;
    }
}

void SelectEntry(QComboBox* box, int index)
{
    // Only what the user chooses is a change.
    const QSignalBlocker blocker(box);
    if (box->currentIndex() != index)
        box->setCurrentIndex(index);
}

} // namespace

TScenePropsDialog::TScenePropsDialog(QWidget* parent) : TPropsDialog(QStringLiteral("Szene Eigenschaften"), parent)
{
    setObjectName(QStringLiteral("TScenePropsDialog"));
    auto* fields = new QFormLayout;
    MakeFields(fields);
    auto* moveButtons = new QVBoxLayout;
    moveButtons->addWidget(UpButton());
    moveButtons->addWidget(DownButton());
    moveButtons->addStretch();
    auto* top = new QHBoxLayout;
    top->addLayout(fields, 1);
    top->addLayout(moveButtons);
    auto* all = new QVBoxLayout(this);
    all->addLayout(top);
    all->addWidget(AutoAcceptBox());
    all->addWidget(ButtonRow());
    ConnectFields();
}

TScenePropsDialog::~TScenePropsDialog() = default;

template <class TField> TField* TScenePropsDialog::AddField(const char* name, const char* label, QFormLayout* layout)
{
    auto* field = new TField(this);
    field->setObjectName(QString::fromLatin1(name));
    field->setMinimumWidth(MinimumFieldWidth);
    const QString text = QString::fromUtf8(label);
    auto* caption = new QLabel(text, this);
    caption->setBuddy(field);
    field->setAccessibleName(text.trimmed());
    layout->addRow(caption, field);
    return field;
}

void TScenePropsDialog::MakeFields(QFormLayout* layout)
{
    m_section = AddField<QComboBox>("CBoxPartSelector", " Abschnitt", layout);
    m_alias = AddField<QLineEdit>("EditAlias", " Name", layout);
    m_name = AddField<QLineEdit>("EditName", " Objekt", layout);
    m_value = AddField<TVlFileDropEdit>("EditValue", " Obj. Wert", layout);
    m_enabled = AddField<QCheckBox>("CheckEnabled", " Aktiv", layout);
    m_delay = AddField<QLineEdit>("EditDelay", " Delay", layout);
    m_dataType = AddField<QComboBox>("CBoxDataType", " Typ", layout);
    m_source = AddField<QComboBox>("CBoxDataSource", " Quelle", layout);
    m_dataType->addItems({QStringLiteral("BINÄR"), QStringLiteral("1BYTE[%]"), QStringLiteral("1BYTE"),
                          QStringLiteral("2BYTE"), QStringLiteral("4BYTE")});
    m_source->addItems({QStringLiteral("EIB"), QStringLiteral("MODBUS"), QStringLiteral("VIRTUAL")});

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
    for (QLineEdit* edit : {m_alias, m_name}) {
        edit->setAcceptDrops(true);
        edit->installEventFilter(this);
    }
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
    const int remembered = m_section->currentIndex();
    m_section->clear();
    m_section->addItems(sections);
    const int last = static_cast<int>(sections.size()) - 1;
    const int index = std::min(std::max(remembered, 0), last);
    m_section->setCurrentIndex(index);
    SetAcceptEsfItems(index < FirstSceneSection);
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

bool TScenePropsDialog::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        drop->setDropAction(Qt::CopyAction);
        drop->setAccepted(EditDragOver(drop->mimeData()));
        if (event->type() == QEvent::Drop && drop->isAccepted())
            Guarded([&] { EditDragDrop(drop->mimeData()); });
        return true;
    }
    case QEvent::DragLeave:
        return true;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        return PasteDatapoint(event) || TPropsDialog::eventFilter(watched, event);
    default:
        return TPropsDialog::eventFilter(watched, event);
    }
}

bool TScenePropsDialog::EditDragOver(const QMimeData* content) const
{
    const int section = GetSection();
    return section >= 0 && section < FirstSceneSection && TPropertyDragObject::FromMimeData(content);
}

// A datapoint that was copied in a browser is pasted as it would be dropped.
bool TScenePropsDialog::PasteDatapoint(const QEvent* event)
{
    const QMimeData* content = QGuiApplication::clipboard()->mimeData();
    const bool pastes = static_cast<const QKeyEvent*>(event)->matches(QKeySequence::Paste) && EditDragOver(content);
    if (pastes && event->type() == QEvent::KeyPress)
        Guarded([&] { EditDragDrop(content); });
    return pastes;
}

void TScenePropsDialog::EditDragDrop(const QMimeData* content)
{
    const auto object = TPropertyDragObject::FromMimeData(content);
    SetNodeAlias(object->GetValue(QStringLiteral("label")));
    SetItemName(object->GetValue(QStringLiteral("name")));
    SetDataType(DroppedType(StrToIntDef(object->GetValue(QStringLiteral("type")), 1)));
    SetNodeSource(nsEIB);
    MarkChanged();
}
