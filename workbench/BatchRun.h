#pragma once

#include "Options.h"

#include <ostream>

// Does what the options of batch mode ask for, in their order, up to the first failure, without showing a window to
// anybody. Every thing done is a line on `output`, a failure one on `errors`. The exit code: 0, or 1 for a failure.
int RunBatch(const TOptions& options, std::ostream& output, std::ostream& errors);
