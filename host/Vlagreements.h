#pragma once

#include "Vlexport.h"

#include <QString>

// What the user has agreed to run. An agreement is to the content: the full command, and the bytes of the file that it
// names, so that a changed program is asked about again. Kept in the user's settings, never in a project.

// True when the user has agreed to this command, now or before. `program` is the file that the command runs, empty for
// none. Where nobody sees a question, only what was agreed to before runs; the rest is refused with a TUserError.
VLHOST_API bool IsAgreedTo(const QString& caption, const QString& command, const QString& program);

// `text` with every character that would not show, or would change how the others show, as its code (U+202E).
VLHOST_API QString VisibleText(const QString& text);
