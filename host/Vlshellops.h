#pragma once

#include "Vlexport.h"

#include <QByteArray>
#include <QString>

// What the shell tree does to files and folders. Paths are full paths as the file system's own bytes; a symbolic link
// is an item of its own and never followed. Everything here throws TFileError when it cannot be done, and has then
// changed nothing.

// The reason that an error number of the system stands for, in German where it is a common one.
VLHOST_API QString SystemErrorText(int error);

// Gives an item another name in its folder and returns its new path. Refused: what is no name, and a name that another
// item has.
VLHOST_API QByteArray RenameShellItem(const QByteArray& path, const QString& name);

// Moves an item to the system's trash.
VLHOST_API void MoveShellItemToTrash(const QByteArray& path);

// Makes a folder with a name of its own ("Neuer Ordner", "Neuer Ordner (2)" and so on) and returns the name.
VLHOST_API QByteArray MakeShellFolder(const QByteArray& folder);
