#pragma once

#include "Datapoints.h"

// What one file of datapoints holds, as the project keeps it.
struct TDatapointFile
{
    QString Name; // without its directory
    TImportResult Result;
};

// A problem with the file that it is about.
struct TFileProblem
{
    QString File;
    TImportProblem Problem;

    // File, line and reason, ready to show.
    QString Text() const;
};

// Several files taken together, and what there is to say about them, file by file and line by line.
struct TMergedDatapoints
{
    QList<TDatapoint> Datapoints;
    QStringList Keys;         // each one's DatapointKey
    QList<qsizetype> Origins; // the index of each one's file
    QList<TFileProblem> Problems;
};

// All datapoints of the files, in their order. Of one that several files hold the first counts, and both are reported.
TMergedDatapoints MergeFiles(TDatapointKind kind, const QList<TDatapointFile>& files);
