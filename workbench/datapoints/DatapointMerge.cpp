#include "DatapointMerge.h"

#include "DatapointKey.h"
#include "ImportCollector.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace
{

// Where a datapoint stands that counts.
struct TFirst
{
    qsizetype File = 0;
    qsizetype Line = 0;
    bool Reported = false;
};

QString Place(const TDatapointFile& file, qsizetype line)
{
    return QStringLiteral("%1, Zeile %2").arg(file.Name, QString::number(line));
}

class TMerger
{
public:
    TMerger(TDatapointKind kind, const QList<TDatapointFile>& files)
        : m_kind(kind), m_files(files), m_problems(files.size())
    {
    }

    TMergedDatapoints Merge()
    {
        for (qsizetype file = 0; file < m_files.size(); ++file) {
            m_problems[file] += m_files[file].Result.Problems;
            for (const TDatapoint& datapoint : m_files[file].Result.Datapoints)
                Take(file, datapoint);
        }
        for (qsizetype file = 0; file < m_files.size(); ++file)
            TakeProblems(file);
        return std::move(m_merged);
    }

private:
    void Take(qsizetype file, const TDatapoint& datapoint)
    {
        const QString key = DatapointKey(m_kind, datapoint);
        const auto first = m_firsts.find(key);
        if (first != m_firsts.end()) {
            ReportDoubled(datapoint, *first, file);
            return;
        }
        m_firsts.insert(key, {.File = file, .Line = datapoint.Line});
        m_merged.Datapoints.append(datapoint);
        m_merged.Keys.append(key);
        m_merged.Origins.append(file);
    }

    void ReportDoubled(const TDatapoint& datapoint, TFirst& first, qsizetype file)
    {
        const QString address = QuotedPiece(DatapointIdentifier(datapoint));
        if (!std::exchange(first.Reported, true)) {
            const QString reason = QStringLiteral("Die Adresse %1 steht noch einmal in %2; diese hier gilt.")
                                       .arg(address, Place(m_files[file], datapoint.Line));
            m_problems[first.File].append({.Line = first.Line, .Reason = reason});
        }
        const QString reason = QStringLiteral("Die Adresse %1 steht schon in %2; diese hier wird nicht übernommen.")
                                   .arg(address, Place(m_files[first.File], first.Line));
        m_problems[file].append({.Line = datapoint.Line, .Reason = reason});
    }

    void TakeProblems(qsizetype file)
    {
        QList<TImportProblem>& problems = m_problems[file];
        std::stable_sort(problems.begin(), problems.end(),
                         [](const TImportProblem& a, const TImportProblem& b) { return a.Line < b.Line; });
        for (const TImportProblem& problem : std::as_const(problems))
            m_merged.Problems.append({.File = m_files[file].Name, .Problem = problem});
    }

    TDatapointKind m_kind;
    const QList<TDatapointFile>& m_files;
    QList<QList<TImportProblem>> m_problems; // by file
    QHash<QString, TFirst> m_firsts;
    TMergedDatapoints m_merged;
};

} // namespace

QString TFileProblem::Text() const
{
    if (Problem.Line == 0)
        return QStringLiteral("%1: %2").arg(File, Problem.Reason);
    return QStringLiteral("%1, Zeile %2: %3").arg(File, QString::number(Problem.Line), Problem.Reason);
}

TMergedDatapoints MergeFiles(TDatapointKind kind, const QList<TDatapointFile>& files)
{
    return TMerger(kind, files).Merge();
}
