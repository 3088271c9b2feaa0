#include "IScheduleTree.h"

#include "ScheduleEntry.h"

static_assert(TWeekEntry::DayCount == TScheduleEntry::DayCount);

void TScheduleTreeFrame::HandleChange()
{
    m_weekTimer.start(0);
}

void TScheduleTreeFrame::AddWeekListener(QObject* receiver, std::function<void()> changed)
{
    connect(this, &TScheduleTreeFrame::WeekChanged, receiver, std::move(changed));
}

// An entry stands for its datapoint.
TScheduleNode* TScheduleTreeFrame::WeekNode() const
{
    TScheduleNode* selected = SelectedScheduleNode();
    if (selected && selected->IsEntry())
        return selected->Parent();
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
    if (TScheduleNode* node = WeekNodes().value(index))
        SelectNode(node);
}
