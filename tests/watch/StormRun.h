#pragma once

#include <QString>

#include <memory>
#include <vector>

class QProcess;

// The storms in full, which take minutes; by default they are a tenth of that.
bool AreStormsLong();

// Four programs that begin at once to do `operations` random operations below `root` together. Each run with the same
// number does the same, as far as they leave each other the same.
std::vector<std::unique_ptr<QProcess>> StartStorm(const QString& root, int operations);

// Runs the event loop until all have ended. False when one failed.
bool WaitForAll(const std::vector<std::unique_ptr<QProcess>>& programs);
