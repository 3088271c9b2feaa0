#pragma once

#include "Vlexport.h"

#include <QByteArray>
#include <QString>

// What a navigation entry does when it is run.
enum class TEntryKind : quint8
{
    Command, // sends a command text to a pane
    File,    // opens a file
    Address, // opens a web address
};

// What a navigation entry's file says.
struct TEntryRecord
{
    QString Caption = {}; // empty: the name of the file
    TEntryKind Kind = TEntryKind::Command;
    QString Target = {}; // the command text, the file or the address
    QString Category = {};
    QString Icon = {}; // the path of a picture
    bool Removable = true;

    bool operator==(const TEntryRecord&) const = default;
};

// The text of an entry file: UTF-8, one Key=Value a line. Blanks around keys and values do not count, keys compare
// without regard to case, the first line of a key counts. Empty lines and lines that begin with "#" are comments.

// Throws TUserError with the reason, which is a sentence without its full stop, for a text that is no entry.
VLHOST_API TEntryRecord ParseEntry(const QByteArray& text);

// The text that says `record`. Comments, unknown keys, the order and the line ends of `former` are kept.
VLHOST_API QByteArray FormatEntry(const TEntryRecord& record, const QByteArray& former = {});
