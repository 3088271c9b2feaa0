#include "IScheduleTree.h"

#include "ScheduleEntry.h"

#include <QScopedValueRollback>

static_assert(TWeekEntry::DayCount == TScheduleEntry::DayCount);

void TScheduleTreeFrame::HandleChange()
{
    m_weekTimer.start(0);
}

void TScheduleTreeFrame::AddWeekListener(QObject* receiver, std::function<void()> changed)
{
    connect(this, &TScheduleTreeFrame::WeekChanged, receiver, std::move(changed));
}

// An entry stands for its datapoint, or for the group in whose week it was chosen.
TScheduleNode* TScheduleTreeFrame::WeekNode() const
{
    TScheduleNode* selected = SelectedScheduleNode();
    if (selected && selected->IsEntry())
        return m_weekGroup && selected->IsWithin(m_weekGroup.Get()) ? m_weekGroup.Get() : selected->Parent();
    return selected && (selected->IsGroup() || selected->IsDatapoint()) ? selected : nullptr;
}

QList<TScheduleNode*> TScheduleTreeFrame::WeekNodes() const
{
    QList<TScheduleNode*> entries;
    TScheduleNode* shown = WeekNode();
    const auto appendEntries = [&entries](const TScheduleNode* datapoint) {
        for (int i = 0; i < datapoint->Count(); ++i) {
            if (ReadScheduleEntry(datapoint->Child(i)->Caption()))
                entries.append(datapoint->Child(i));
        }
    };
    if (shown && shown->IsDatapoint())
        appendEntries(shown);
    for (int i = 0; shown && shown->IsGroup() && i < shown->Count(); ++i)
        appendEntries(shown->Child(i));
    return entries;
}

QString TScheduleTreeFrame::WeekTitle() const
{
    const TScheduleNode* shown = WeekNode();
    return shown ? shown->Caption() : QString();
}

QList<TWeekEntry> TScheduleTreeFrame::WeekEntries() const
{
    QList<TWeekEntry> entries;
    const QList<TScheduleNode*> nodes = WeekNodes();
    for (const TScheduleNode* node : nodes) {
        const TScheduleEntry entry = *ReadScheduleEntry(node->Caption());
        const TVlNodeData* record = node->Parent()->Data();
        entries.append({.Datapoint = node->Parent()->Caption(),
                        .Value = entry.Value,
                        .Time = entry.Time,
                        .Days = entry.Days,
                        .Active = entry.Enabled && record && record->Enabled,
                        .PostProcess = entry.PostProcess});
    }
    return entries;
}

int TScheduleTreeFrame::SelectedWeekEntry() const
{
    return static_cast<int>(WeekNodes().indexOf(SelectedScheduleNode()));
}

void TScheduleTreeFrame::SelectWeekEntry(int index)
{
    TScheduleNode* node = WeekNodes().value(index);
    if (!node)
        return;
    TScheduleNode* shown = WeekNode();
    const QScopedValueRollback choosing(m_choosesInWeek, true);
    m_weekGroup.Set(shown->IsGroup() ? shown : nullptr);
    SelectNode(node);
}
