#pragma once

#include <QString>

#include <array>
#include <iosfwd>

// What people and their tools do to a whole project at once, as a shell's scripts below the project's root. They leave
// files beside the root.
struct TToolRun
{
    const char* Name;
    const char* Program; // that must be installed
    const char* Prepare; // before anybody watches
    const char* Run;
};

extern const std::array<TToolRun, 5> ToolRuns;

std::ostream& operator<<(std::ostream& stream, const TToolRun& run);

// Runs one of the scripts below `root`, with the event loop. False when it failed.
bool RunScript(const QString& root, const char* script);
