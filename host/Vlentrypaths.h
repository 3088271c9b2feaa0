#pragma once

#include "Vlexport.h"

#include <QString>

// Paths as navigation entries and lists of them write them.

// The absolute path, with backslashes, that `text` means: variables decoded, what is relative lies below the active
// project. Empty when there is no project that it could lie in: nothing ever resolves to the working directory.
VLHOST_API QString ResolveEntryPath(const QString& text);

// What to write for an absolute path: with "%PRJPATH%" for what lies below the active project, else the path itself.
VLHOST_API QString PortableEntryPath(const QString& path);

// True for the name of an entry file, NAME.uri in any case.
VLHOST_API bool IsEntryFileName(const QString& path);
