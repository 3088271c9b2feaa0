#include "WeekLayout.h"

#include <algorithm>
#include <numeric>

namespace
{

int MinuteOf(const TWeekEntry& entry)
{
    return entry.Time.isValid() ? entry.Time.msecsSinceStartOfDay() / 60000 : 0;
}

QList<int> InOrderOfTime(const QList<TWeekEntry>& entries)
{
    QList<int> order(entries.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        const QTime& first = entries[a].Time;
        const QTime& second = entries[b].Time;
        return first < second;
    });
    return order;
}

bool HasNoDay(const TWeekEntry& entry)
{
    return std::none_of(entry.Days.begin(), entry.Days.end(), [](bool day) { return day; });
}

// The column of one day while it is filled from the top.
class TColumn
{
public:
    explicit TColumn(const TWeekRoom& room)
        : m_boxMinutes(std::clamp(room.BoxMinutes, 1, MinutesPerDay)),
          m_lastTop(MinutesPerDay - m_boxMinutes),
          m_mostShift((std::max(room.MostRows, 1) - 1) * m_boxMinutes),
          m_ends(std::max(room.Lanes, 1), 0)
    {
    }

    // Minutes come in order; `next` is the following one that differs. A box at the end of the day stands a little
    // early, so that it stands within the day.
    void Add(int entry, int minute, int next)
    {
        const int wanted = std::min(minute, m_lastTop);
        auto lane = std::find_if(m_ends.begin(), m_ends.end(), [&](int end) { return end <= wanted; });
        if (lane == m_ends.end())
            lane = std::min_element(m_ends.begin(), m_ends.end());
        const int top = std::max(wanted, *lane);
        if (top > wanted && !MayStandLater(minute, top, next)) {
            m_boxes.last().Entries.append(entry);
            return;
        }
        *lane = top + m_boxMinutes;
        m_boxes.append(
            {.Minute = minute, .Top = top, .Lane = static_cast<int>(lane - m_ends.begin()), .Entries = {entry}});
    }

    QList<TWeekBox> TakeBoxes()
    {
        ShareWidth();
        return std::move(m_boxes);
    }

private:
    // The first of its time may take the room of a later time, the others leave it alone.
    bool MayStandLater(int minute, int top, int next) const
    {
        const bool isFirst = m_boxes.isEmpty() || m_boxes.constLast().Minute != minute;
        return top <= std::min(minute + m_mostShift, m_lastTop) && (isFirst || top + m_boxMinutes <= next);
    }

    // Boxes that overlap each other, one following from the other, share the width evenly.
    void ShareWidth()
    {
        for (auto begin = m_boxes.begin(); begin != m_boxes.end();) {
            int lanes = 0;
            int end = begin->Top;
            auto next = begin;
            for (; next != m_boxes.end() && (next == begin || next->Top < end); ++next) {
                lanes = std::max(lanes, next->Lane + 1);
                end = std::max(end, next->Top + m_boxMinutes);
            }
            std::for_each(begin, next, [lanes](TWeekBox& box) { box.LaneCount = lanes; });
            begin = next;
        }
    }

    int m_boxMinutes;
    int m_lastTop;
    int m_mostShift;
    QList<int> m_ends; // of each lane, in minutes
    QList<TWeekBox> m_boxes;
};

// `order` is the entries of the day in the order of time.
QList<TWeekBox> LayOutDay(const QList<TWeekEntry>& entries, const QList<int>& order, const TWeekRoom& room)
{
    TColumn column(room);
    qsizetype next = 0;
    for (qsizetype i = 0; i < order.size(); ++i) {
        const int minute = MinuteOf(entries[order[i]]);
        while (next < order.size() && MinuteOf(entries[order[next]]) <= minute)
            ++next;
        column.Add(order[i], minute, next < order.size() ? MinuteOf(entries[order[next]]) : MinutesPerDay);
    }
    return column.TakeBoxes();
}

} // namespace

TWeekLayout LayOutWeek(const QList<TWeekEntry>& entries, const TWeekRoom& room)
{
    TWeekLayout layout;
    const QList<int> order = InOrderOfTime(entries);
    for (size_t day = 0; day < layout.Days.size(); ++day) {
        QList<int> onDay;
        std::copy_if(order.begin(), order.end(), std::back_inserter(onDay),
                     [&](int entry) { return entries[entry].Days[day]; });
        layout.Days[day] = LayOutDay(entries, onDay, room);
    }
    std::copy_if(order.begin(), order.end(), std::back_inserter(layout.Dayless),
                 [&](int entry) { return HasNoDay(entries[entry]); });
    return layout;
}

QList<TWeekStop> WeekStops(const QList<TWeekEntry>& entries)
{
    QList<TWeekStop> stops;
    const QList<int> order = InOrderOfTime(entries);
    for (int day = 0; day < TWeekEntry::DayCount; ++day) {
        for (const int entry : order) {
            if (entries[entry].Days[static_cast<size_t>(day)])
                stops.append({.Day = day, .Entry = entry});
        }
    }
    for (const int entry : order) {
        if (HasNoDay(entries[entry]))
            stops.append(TWeekStop{.Entry = entry});
    }
    return stops;
}
