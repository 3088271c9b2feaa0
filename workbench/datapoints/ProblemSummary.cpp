#include "ProblemSummary.h"

#include <QLocale>

#include <algorithm>

QStringList SummarizeProblems(const QList<TFileProblem>& problems, qsizetype most)
{
    QStringList lines;
    for (auto first = problems.begin(); first != problems.end();) {
        const auto end = std::find_if(first, problems.end(),
                                      [first](const TFileProblem& problem) { return problem.File != first->File; });
        const qsizetype total = end - first;
        std::transform(first, first + std::min(total, most), std::back_inserter(lines),
                       [](const TFileProblem& problem) { return problem.Text(); });
        if (total > most) {
            lines.append(QStringLiteral("%1: ... und %2 weitere, zusammen %3. \"Meldungen anzeigen...\" zeigt alle.")
                             .arg(first->File, CountText(total - most), CountText(total)));
        }
        first = end;
    }
    return lines;
}

QString CountText(qsizetype count)
{
    return QLocale(QLocale::German, QLocale::Germany).toString(count);
}
