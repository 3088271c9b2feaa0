#pragma once

#include <QByteArray>

// What happened to a name below a watched folder. The numbers are those of the desktop's change notification.
enum TShellChangeKind : quint8
{
    scItemRenamed = 0,
    scItemCreated = 1,
    scItemDeleted = 2,
    scFolderCreated = 3,
    scFolderRemoved = 4,
    scItemUpdated = 13,
    scFolderRenamed = 17,
};

// One change. Paths are full paths as the file system's own bytes, which need not be valid UTF-8.
struct TShellChange
{
    TShellChangeKind Kind = scItemUpdated;
    QByteArray Path;
    QByteArray NewPath; // of a rename, else empty
};
