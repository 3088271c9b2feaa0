#pragma once

class TProject;

// Gives a new project the documents that editors load and remember only when they exist: an empty schedule and empty
// scene lists. What is there already stays. Throws TFileError.
void AddEmptyDocuments(const TProject& project);
