#pragma once

#include "Vlexport.h"

#include <QString>

// False for what the desktop opens as a document: files without the right to be executed whose names, those behind
// links included, are those of known documents and whose content begins like no program; and folders. Everything else
// may run a program.
VLHOST_API bool MayRunProgram(const QString& path);

// The same for an address: only the pages of the web are documents.
VLHOST_API bool MayAddressRunProgram(const QString& address);
