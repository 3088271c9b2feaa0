#pragma once

#include "Folders.h"

#include <QList>
#include <QString>

// What is said about entries of a week.

// "Montag", or short "Mo"; 0 is Monday.
QString WeekDayName(int day);
QString ShortWeekDayName(int day);

// "Mo, Di, Fr", "täglich", "ohne Tag".
QString DaysText(const TWeekEntry& entry);
// "06:30", with seconds where there are any.
QString TimeText(const TWeekEntry& entry);
// One line: "06:30 Ein", and the datapoint where `withName`.
QString EntryText(const TWeekEntry& entry, bool withName);
// All about it, one line each; for tool tips and assistive technology.
QString EntryDetails(const TWeekEntry& entry);
// The details of one, a line for each of several, rich text.
QString ToolTipText(const QList<TWeekEntry>& entries, const QList<int>& indices);
