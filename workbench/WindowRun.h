#pragma once

struct TOptions;

// Shows the workbench's window until the user closes it. The exit code.
int RunWindow(const TOptions& options);
