#pragma once

#include "Folders.h"

#include <QDate>
#include <QList>
#include <QString>

class QPrinter;

// The picture of a week for paper: a page in A4 landscape with its title, the project and the date, black on white.
// Where several entries share one box, further pages of a printed or saved document list all of them.
struct TWeekPage
{
    QString Title;
    QString Project; // empty for none
    QDate Date;
    QList<TWeekEntry> Entries;
};

// Each replaces the file as a whole. They throw TFileError.
void SaveWeekPdf(const TWeekPage& page, const QString& path);
void SaveWeekPng(const TWeekPage& page, const QString& path);

// The printer's paper is set to A4 landscape; whoever asks the user does it afterwards.
void PrepareWeekPrinter(const TWeekPage& page, QPrinter& printer);
void PrintWeek(const TWeekPage& page, QPrinter& printer);
