#pragma once

#include <QString>
#include <QTime>

#include <array>
#include <optional>

// A switching entry, taken apart.
struct TScheduleEntry
{
    static constexpr int DayCount = 7;

    QTime Time{0, 0};                  // of the day
    std::array<bool, DayCount> Days{}; // from Monday on
    QString Value;                     // raw: nothing in it is escaped or resolved
    bool Enabled = false;
    bool PostProcess = false;
};

// Takes the text of an entry apart, whether it was written here or by an XML library. Nothing for a text that does not
// begin as an entry; whatever is missing or damaged further on has a default.
std::optional<TScheduleEntry> ReadScheduleEntry(const QString& text);

// The text of an entry. Seconds and whatever else a text held before are gone.
QString ScheduleEntryText(const TScheduleEntry& entry);
