#include "TestSchedule.h"

#include "Vlclassregistry.h"

namespace
{

const auto TestScheduleClass = QStringLiteral("TTestSchedule");

} // namespace

TTestSchedule::TTestSchedule(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

void TTestSchedule::Register()
{
    RegisterComponent(TestScheduleClass, [](QWidget* parent) { return new TTestSchedule(parent); });
}

void TTestSchedule::Unregister()
{
    UnregisterComponent(TestScheduleClass);
}

void TTestSchedule::Show(const QString& title, const QList<TWeekEntry>& entries, int selected)
{
    m_title = title;
    m_entries = entries;
    m_selected = selected;
    Q_EMIT Changed();
}

bool TTestSchedule::QueryInterface(const TGuid& iid, void** result)
{
    *result = nullptr;
    if (iid == IID_IWeekSchedule)
        *result = static_cast<IWeekSchedule*>(this);
    else if (iid == IID_IInterface || iid == IID_ICmdTarget)
        *result = static_cast<ICmdTarget*>(this);
    return *result != nullptr;
}

void TTestSchedule::RequestData(const QVariant&, QVariant& out)
{
    out = {};
}

void TTestSchedule::ExecuteCmd(const char*, bool& handled)
{
    handled = true;
}

void TTestSchedule::QueryCmd(const char*, bool& accepted)
{
    accepted = true;
}

void TTestSchedule::SelectWeekEntry(int index)
{
    Selections.append(index);
    m_selected = index;
    Q_EMIT Changed();
}

void TTestSchedule::AddWeekListener(QObject* receiver, std::function<void()> changed)
{
    connect(this, &TTestSchedule::Changed, receiver, std::move(changed));
}

TWeekEntry WeekEntry(const char* time, const char* days, const char* value, const char* datapoint)
{
    TWeekEntry entry{.Datapoint = QString::fromUtf8(datapoint),
                     .Value = QString::fromUtf8(value),
                     .Time = QTime::fromString(QString::fromLatin1(time), QStringLiteral("HH:mm")),
                     .Active = true};
    for (size_t day = 0; day < entry.Days.size(); ++day)
        entry.Days[day] = days[day] == '1';
    return entry;
}
