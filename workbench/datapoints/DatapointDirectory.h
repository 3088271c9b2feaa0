#pragma once

#include "DatapointMerge.h"

// The files of a directory that can be read, by their names, and what there is to say about the others.
struct TDatapointDirectory
{
    QStringList Names;
    QList<TFileProblem> Problems;
};

// Files of datapoints have at most this many bytes: far beyond any building, and a bearable amount of memory.
constexpr qint64 LargestFile = qint64{512} << 20;

// The content of a file. Throws TFileError, also for a file that is too large, before anything of it is read.
QByteArray ReadDatapointFile(const QString& path);

// A missing directory is empty, one that cannot be listed is a problem. Hidden files and directories do not count;
// what is no file (a pipe, a device, a link to nowhere) is a problem and is never opened.
TDatapointDirectory ListDatapointFiles(const QString& directory);
