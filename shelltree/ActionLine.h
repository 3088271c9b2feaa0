#pragma once

#include "Vlshellchange.h"

#include <QByteArray>

#include <optional>

// The line forms of the action log, read and written. Lines here are without their line end.

struct TActionLine
{
    QByteArray Text; // in the code page
    bool IsExact;    // false when a name holds what the line cannot carry, and "?" stands for it
};

// The line of a change; nothing for a kind that has none. Names are neither quoted nor escaped.
std::optional<TActionLine> MakeActionLine(TShellChangeKind kind, const QByteArray& firstPath,
                                          const QByteArray& secondPath);

enum class TLineRemains : quint8
{
    Foreign,    // none of our lines, or not recognisable as one
    Unfinished, // the beginning of one of our lines
    Complete,   // one of our lines, only the line feed is missing
};

// What the last line of a file is that does not end in a line feed.
TLineRemains ClassifyLastLine(QByteArrayView line);
