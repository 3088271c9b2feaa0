#pragma once

#include "Folders.h"

#include <QList>

#include <array>

inline constexpr int MinutesPerDay = 24 * 60;

// How much room the entries have, in the terms of a week.
struct TWeekRoom
{
    int BoxMinutes = 60; // the part of the day that one box covers, 1 or more
    int Lanes = 1;       // how many boxes find room side by side, 1 or more
    int MostRows = 1;    // how many boxes of one time may stand below one another, where the room is free
};

// One box in the column of a day: an entry, or several where no more of them find room one by one.
struct TWeekBox
{
    int Minute = 0;     // the time of its first entry
    int Top = 0;        // where it stands, in minutes of the day; later than Minute where others were there before
    int Lane = 0;       // from the left
    int LaneCount = 1;  // how many lanes share the width here
    QList<int> Entries; // indices, in the order of time
};

struct TWeekLayout
{
    std::array<QList<TWeekBox>, TWeekEntry::DayCount> Days; // each in the order of Top
    QList<int> Dayless;                                     // entries without any day, in the order of time
};

// Finds each entry its place on each of its days, so that no two boxes overlap: side by side, below one another, or in
// one box together.
TWeekLayout LayOutWeek(const QList<TWeekEntry>& entries, const TWeekRoom& room);

// A place in the picture that the keyboard can stand on: an entry on one of its days.
struct TWeekStop
{
    static constexpr int Dayless = TWeekEntry::DayCount;

    int Day = Dayless;
    int Entry = -1;

    bool operator==(const TWeekStop&) const = default;
};

// All of them in the order of the week, those without a day at the end.
QList<TWeekStop> WeekStops(const QList<TWeekEntry>& entries);
