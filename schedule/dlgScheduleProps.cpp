#include "dlgScheduleProps.h"

#include "DatapointFields.h"
#include "ScheduleEntry.h"
#include "Vlerrors.h"
#include "Vltext.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTimeEdit>
#include <QToolButton>

namespace
{

constexpr std::array DayNames{"Mo", "Di", "Mi", "Do", "Fr", "Sa", "So"};
constexpr int TitleMargin = 4;

} // namespace

TSchedulePropsDialog::TSchedulePropsDialog(QWidget* parent)
    : TPropsDialog(QStringLiteral("Wochenschaltplan Eigenschaften"), parent)
{
    setObjectName(QStringLiteral("TSchedulePropsDialog"));
    m_pages = new QStackedWidget(this);
    m_pages->addWidget(MakeNodePage());
    m_pages->addWidget(MakeSchedulePage());
    auto* all = new QVBoxLayout(this);
    all->addWidget(MakeTop());
    all->addWidget(m_pages, 1);
    all->addWidget(AutoAcceptBox());
    all->addWidget(ButtonRow());
    all->setSizeConstraint(QLayout::SetFixedSize);
    EndTabOrder(m_value);
    ConnectFields();
}

TSchedulePropsDialog::~TSchedulePropsDialog() = default;

QWidget* TSchedulePropsDialog::MakeTop()
{
    auto* top = new QWidget(this);
    m_title = new QLabel(top);
    m_title->setObjectName(QStringLiteral("LabelTitle"));
    m_title->setTextFormat(Qt::PlainText);
    m_title->setMargin(TitleMargin);
    m_title->setAutoFillBackground(true);
    QPalette palette = m_title->palette();
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::black);
    m_title->setPalette(palette);
    // A long caption must not stretch the window.
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    SetTitle({});

    auto* layout = new QHBoxLayout(top);
    layout->setContentsMargins({});
    layout->addWidget(m_title, 1);
    layout->addWidget(UpButton());
    layout->addWidget(DownButton());
    return top;
}

QWidget* TSchedulePropsDialog::MakeNodePage()
{
    auto* page = new QWidget(m_pages);
    auto* layout = new QFormLayout(page);
    m_section = AddField<QComboBox>(layout, page, "CBoxPartSelector", "Abschnitt");
    m_alias = AddField<QLineEdit>(layout, page, "EditAlias", "Name");
    m_name = AddField<QLineEdit>(layout, page, "EditName", "Objekt");
    m_minVal = AddField<QLineEdit>(layout, page, "EditMinVal", "Min. Wert");
    m_maxVal = AddField<QLineEdit>(layout, page, "EditMaxVal", "Max. Wert");
    m_dataType = AddField<QComboBox>(layout, page, "CBoxDataType", "Typ");
    m_nodeEnabled = AddField<QCheckBox>(layout, page, "CheckNodeEnabled", "Aktiv");
    m_access = AddField<QLineEdit>(layout, page, "EditAccess", "Zugriff");
    m_source = AddField<QComboBox>(layout, page, "CBoxDataSource", "Quelle");
    FillDataTypes(m_dataType);
    FillSources(m_source);
    return page;
}

QWidget* TSchedulePropsDialog::MakeSchedulePage()
{
    auto* page = new QWidget(m_pages);
    auto* layout = new QFormLayout(page);
    layout->addRow(MakeDays());
    m_entryEnabled = AddField<QCheckBox>(layout, page, "CheckEnabled", "Aktiv");
    m_postProcess = AddField<QCheckBox>(layout, page, "CheckPostProcess", "Nachfahren");
    m_time = AddField<QTimeEdit>(layout, page, "TimeEdit", "Zeit");
    m_time->setDisplayFormat(QStringLiteral("HH:mm"));
    m_value = AddField<QLineEdit>(layout, page, "EditValue", "Wert");
    return page;
}

QWidget* TSchedulePropsDialog::MakeDays()
{
    auto* frame = new QGroupBox(QStringLiteral("Wochentage"), m_pages);
    auto* layout = new QHBoxLayout(frame);
    for (std::size_t day = 0; day < m_days.size(); ++day) {
        m_days[day] = new QCheckBox(QString::fromLatin1(DayNames[day]), frame);
        m_days[day]->setObjectName(QStringLiteral("CheckDay%1").arg(day + 1));
        layout->addWidget(m_days[day]);
    }
    return frame;
}

void TSchedulePropsDialog::ConnectFields()
{
    for (QLineEdit* edit : {m_alias, m_name, m_minVal, m_maxVal, m_access, m_value})
        connect(edit, &QLineEdit::textEdited, this, &TSchedulePropsDialog::MarkChanged);
    for (QComboBox* box : {m_dataType, m_source})
        connect(box, &QComboBox::currentIndexChanged, this, &TSchedulePropsDialog::MarkChanged);
    for (QCheckBox* box : {m_nodeEnabled, m_entryEnabled, m_postProcess})
        connect(box, &QCheckBox::clicked, this, &TSchedulePropsDialog::MarkChanged);
    for (QCheckBox* box : m_days)
        connect(box, &QCheckBox::clicked, this, &TSchedulePropsDialog::MarkChanged);
    connect(m_time, &QTimeEdit::timeChanged, this, &TSchedulePropsDialog::MarkChanged);
    connect(m_section, &QComboBox::activated, this, [this] { Guarded([this] { ChangePart(); }); });

    auto* drop = new TDatapointDrop(
        this, [this] { return !GetIsSchedule(); },
        [this](const TDroppedDatapoint& datapoint) { TakeDropped(datapoint); });
    drop->Watch(m_alias);
    drop->Watch(m_name);
}

void TSchedulePropsDialog::SetTitle(const QString& title)
{
    m_title->setText(QStringLiteral("  ") + title);
    m_title->setToolTip(title);
}

QString TSchedulePropsDialog::GetTitle() const
{
    return m_title->text().trimmed();
}

void TSchedulePropsDialog::SetIsSchedule(bool isSchedule)
{
    if (isSchedule == GetIsSchedule())
        return;
    m_pages->setCurrentIndex(isSchedule ? 1 : 0);
    if (!isSchedule)
        SetTitle({});
}

bool TSchedulePropsDialog::GetIsSchedule() const
{
    return m_pages->currentIndex() == 1;
}

void TSchedulePropsDialog::SetSection(int index)
{
    m_section->setCurrentIndex(index);
}

int TSchedulePropsDialog::GetSection() const
{
    return m_section->currentIndex();
}

void TSchedulePropsDialog::SetScheduleGroups(const QStringList& groups)
{
    ReplaceSections(m_section, groups);
}

void TSchedulePropsDialog::SetNodeAlias(const QString& alias)
{
    m_alias->setText(alias);
}

QString TSchedulePropsDialog::GetNodeAlias() const
{
    return m_alias->text();
}

void TSchedulePropsDialog::SetItemName(const QString& name)
{
    m_name->setText(name);
    if (name.isEmpty())
        m_alias->setEnabled(true);
}

QString TSchedulePropsDialog::GetItemName() const
{
    return m_name->text();
}

void TSchedulePropsDialog::SetNodeMinVal(const QString& value)
{
    m_minVal->setText(value);
}

QString TSchedulePropsDialog::GetNodeMinVal() const
{
    return m_minVal->text();
}

void TSchedulePropsDialog::SetNodeMaxVal(const QString& value)
{
    m_maxVal->setText(value);
}

QString TSchedulePropsDialog::GetNodeMaxVal() const
{
    return m_maxVal->text();
}

void TSchedulePropsDialog::SetDataType(TDataTypeMap type)
{
    SelectEntry(m_dataType, type);
}

TDataTypeMap TSchedulePropsDialog::GetDataType() const
{
    return static_cast<TDataTypeMap>(m_dataType->currentIndex());
}

void TSchedulePropsDialog::SetEnableFlag(bool enabled)
{
    m_nodeEnabled->setChecked(enabled);
}

bool TSchedulePropsDialog::GetEnableFlag() const
{
    return m_nodeEnabled->isChecked();
}

void TSchedulePropsDialog::SetNodeAccess(std::int32_t access)
{
    m_access->setText(QString::number(access));
}

std::int32_t TSchedulePropsDialog::GetNodeAccess() const
{
    return StrToIntDef(m_access->text(), 0);
}

void TSchedulePropsDialog::SetNodeSource(TNodeSource source)
{
    SelectEntry(m_source, source);
}

TNodeSource TSchedulePropsDialog::GetNodeSource() const
{
    return static_cast<TNodeSource>(m_source->currentIndex());
}

void TSchedulePropsDialog::SetScheduleText(const QString& text)
{
    const std::optional<TScheduleEntry> entry = ReadScheduleEntry(text);
    if (!entry)
        return;
    SetIsSchedule(true);
    for (std::size_t day = 0; day < m_days.size(); ++day)
        m_days[day]->setChecked(entry->Days[day]);
    const QSignalBlocker blocker(m_time);
    m_time->setTime(entry->Time);
    m_value->setText(entry->Value);
    m_entryEnabled->setChecked(entry->Enabled);
    m_postProcess->setChecked(entry->PostProcess);
}

QString TSchedulePropsDialog::GetScheduleText() const
{
    TScheduleEntry entry;
    for (std::size_t day = 0; day < m_days.size(); ++day)
        entry.Days[day] = m_days[day]->isChecked();
    entry.Time = m_time->time();
    entry.Value = m_value->text();
    entry.Enabled = m_entryEnabled->isChecked();
    entry.PostProcess = m_postProcess->isChecked();
    return ScheduleEntryText(entry);
}

void TSchedulePropsDialog::ChangePart()
{
    const int part = m_section->currentIndex();
    if (!m_changePartEvent || part < 0)
        return;
    MarkChanged();
    m_changePartEvent(this, part);
}

void TSchedulePropsDialog::TakeDropped(const TDroppedDatapoint& datapoint)
{
    SetNodeAlias(datapoint.Label);
    SetItemName(datapoint.Name);
    SetDataType(datapoint.DataType);
    SetNodeSource(nsEIB);
    MarkChanged();
}
