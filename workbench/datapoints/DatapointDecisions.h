#pragma once

#include "Datapoints.h"

#include <QMap>
#include <QSet>

// What the user decided about the datapoints of one kind. Kept in a JSON file beside their files.
struct TDatapointDecisions
{
    QMap<QString, QString> Encodings; // by file name
    QMap<QString, int> Types;         // by DatapointKey
    QSet<QString> OldTypes;           // the keys of those that an older file named without a register's device
    bool Damaged = false;             // the file is there and says nothing; it is never written over

    friend bool operator==(const TDatapointDecisions&, const TDatapointDecisions&) = default;
};

// Nothing is decided where there is no file.
TDatapointDecisions ReadDecisions(TDatapointKind kind, const QString& path);

// Throws TFileError; the file is then as it was.
void WriteDecisions(const QString& path, const TDatapointDecisions& decisions);
