#pragma once

#include "Vlexport.h"

#include <QString>

// Paths as navigation entries and lists of them write them.

// The absolute path, with backslashes, that `text` means: variables decoded, what is relative lies below the active
// project. Empty when there is no project that it could lie in: nothing ever resolves to the working directory.
VLHOST_API QString ResolveEntryPath(const QString& text);
// The same for the project in the directory `root`; empty for none.
VLHOST_API QString ResolveEntryPathIn(const QString& root, const QString& text);

// What to write for an absolute path: with "%PRJPATH%" for what lies below `root`, a project, else the path itself.
VLHOST_API QString PortableEntryPath(const QString& root, const QString& path);

// The directory of the active project; empty without one.
VLHOST_API QString ActiveProjectRoot();

// True for the name of an entry file, NAME.uri in any case.
VLHOST_API bool IsEntryFileName(const QString& path);
