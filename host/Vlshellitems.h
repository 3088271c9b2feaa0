#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

// What the shell tree knows of the file system: names as the bytes that the file system has for them, and kinds.
// Nothing here opens an item or follows a link, so that neither a FIFO nor a share that does not answer can block the
// tree.

enum TShellItemKind : quint8
{
    skFolder,
    skFile,
    skLink,    // a symbolic link, to whatever it leads
    skSpecial, // a FIFO, a socket, a device
};

// The kinds of objects that a shell tree shows. What is hidden begins with a dot.
enum TShellObjects : quint8
{
    soFolders,
    soFoldersAndFiles,
    soAll, // hidden ones as well
};

struct TShellEntry
{
    QByteArray Name;
    TShellItemKind Kind = skFile;
    quint64 Inode = 0; // what tells a renamed item from a new one
};

struct TShellListing
{
    bool Readable = false;
    std::vector<TShellEntry> Entries; // in no order
};

// What the folder `path` holds of the objects that are shown. Not readable where there is no folder and where a link
// stands, unless links are followed.
TShellListing ListShellFolder(const QByteArray& path, TShellObjects objects, bool followLink);

// A name for the eye: bytes that are no UTF-8 and control characters have a mark in their place.
QString ShellDisplayName(const QByteArray& name);

// True when a text can stand for the name and lead back to it.
bool IsDecodableName(const QByteArray& name);

// What names are ordered by: without regard to case, accents after their plain letters.
QString ShellSortKey(const QByteArray& name);
// The order of two keys; numbers in them compare as numbers. Negative, zero or positive.
int CompareSortKeys(const QString& a, const QString& b);
