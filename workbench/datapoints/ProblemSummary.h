#pragma once

#include "DatapointMerge.h"

// The problems of each file as lines to show: the first `most` of them, and then how many more there are. All of them
// must be at hand elsewhere.
QStringList SummarizeProblems(const QList<TFileProblem>& problems, qsizetype most);

// A count as people read it: "4.321".
QString CountText(qsizetype count);
