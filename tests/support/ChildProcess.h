#pragma once

#include <QString>

#include <functional>

// Runs `body` in a forked child process and returns the text that it gave back, or "signal N" when it was killed on the
// way. What happens to rights and limits in the child leaves the test process alone.
QString RunInChild(const std::function<QString()>& body);

// For bodies: gives up the rights of root, as most users have none. Nothing happens in a process without such rights.
void GiveUpRights();

// For bodies: no file may grow beyond `bytes`, as on a disk that is full.
void LimitFileSize(unsigned long bytes);

// For bodies: the text of the exception that `action` ended with, or "ok".
QString OutcomeOf(const std::function<void()>& action);
