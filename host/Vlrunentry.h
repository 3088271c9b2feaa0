#pragma once

#include "Vlentryfile.h"
#include "Vlexport.h"

// Does what an entry says: hands the command text to the application, or the file or address to the desktop's program
// for it. What may run a program runs only after the user has agreed to it; a refusal is no error. `file` is where the
// entry is stored. Throws TUserError.
VLHOST_API void RunEntry(const QString& caption, const TEntryRecord& record, const QString& file);
