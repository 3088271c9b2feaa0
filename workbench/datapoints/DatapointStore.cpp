#include "DatapointStore.h"

#include "DatapointDirectory.h"
#include "DatapointKey.h"
#include "Rollback.h"
#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>

namespace
{

bool IsRenamed(const TDatapoint& before, const TDatapoint& after)
{
    return before.Name != after.Name || DatapointIdentifier(before) != DatapointIdentifier(after);
}

TImportChanges ChangesBetween(const TMergedDatapoints& before, const TMergedDatapoints& after)
{
    QHash<QString, qsizetype> left;
    left.reserve(before.Keys.size());
    for (qsizetype i = 0; i < before.Keys.size(); ++i)
        left.insert(before.Keys[i], i);
    TImportChanges changes;
    for (qsizetype i = 0; i < after.Keys.size(); ++i) {
        const auto known = left.constFind(after.Keys[i]);
        if (known == left.constEnd())
            changes.Added.append(after.Datapoints[i]);
        else if (IsRenamed(before.Datapoints[*known], after.Datapoints[i]))
            changes.Renamed.append(after.Datapoints[i]);
        left.remove(after.Keys[i]);
    }
    for (qsizetype i = 0; i < before.Keys.size(); ++i) {
        if (left.contains(before.Keys[i]))
            changes.Gone.append(before.Datapoints[i]);
    }
    return changes;
}

} // namespace

QString TDatapointStore::KindName() const
{
    switch (m_kind) {
    case dkEib:
        return QStringLiteral("eib");
    case dkModbus:
        return QStringLiteral("modbus");
    case dkVirtual:
        break;
    }
    return QStringLiteral("virtual");
}

void TDatapointStore::SetWatcher(std::function<void()> before, std::function<void()> after)
{
    m_before = std::move(before);
    m_after = std::move(after);
}

QString TDatapointStore::FileDirectory(const QString& directory) const
{
    return JoinFilePath(directory, {KindName()});
}

QString TDatapointStore::DecisionsFile(const QString& directory) const
{
    return JoinFilePath(directory, {KindName() + QStringLiteral(".json")});
}

void TDatapointStore::Load(const QString& directory)
{
    TState state;
    state.Directory = directory;
    if (directory.isEmpty()) {
        Adopt(std::move(state));
        return;
    }
    state.Decisions = ReadDecisions(m_kind, DecisionsFile(directory));
    if (state.Decisions.Damaged) {
        const auto reason = QStringLiteral("Die Datei ist beschädigt; von Hand gewählte Typen gelten nicht.");
        state.OwnProblems.append(
            {.File = ExtractFileName(DecisionsFile(directory)), .Problem = {.Line = 0, .Reason = reason}});
    }
    const TDatapointDirectory listing = ListDatapointFiles(FileDirectory(directory));
    state.OwnProblems += listing.Problems;
    for (const QString& name : listing.Names)
        state.Files.append(ReadOne(name, state));
    Complete(state);
    Adopt(std::move(state));
}

TDatapointFile TDatapointStore::ReadOne(const QString& name, const TState& state) const
{
    TDatapointFile file{.Name = name, .Result = {}};
    try {
        TImportOptions options;
        options.Encoding = state.Decisions.Encodings.value(name);
        const QString path = JoinFilePath(FileDirectory(state.Directory), {name});
        file.Result = ReadDatapoints(m_kind, ReadDatapointFile(path), options);
    } catch (const TFileError& error) {
        file.Result.Problems.append({.Line = 0, .Reason = error.Message()});
    }
    return file;
}

// Fills in what follows from the files and the decisions.
void TDatapointStore::Complete(TState& state) const
{
    state.Merged = MergeFiles(m_kind, state.Files);
    state.Problems = state.OwnProblems + state.Merged.Problems;
    AdoptOldTypes(state);
}

// Older decisions name no device. Of the registers of that number they mean the first, which was the only one shown.
void TDatapointStore::AdoptOldTypes(TState& state) const
{
    if (state.Decisions.OldTypes.isEmpty())
        return;
    for (const TDatapoint& datapoint : std::as_const(state.Merged.Datapoints)) {
        const QString oldKey = KeyWithoutDevice(m_kind, datapoint);
        if (state.Decisions.OldTypes.remove(oldKey))
            state.Decisions.Types.insert(KeyOf(datapoint), state.Decisions.Types.take(oldKey));
    }
}

// What the project holds has changed already. A watcher that fails has its error shown; it cannot keep the store from
// following.
void TDatapointStore::Adopt(TState state)
{
    if (m_before)
        Guarded(m_before);
    m_state = std::move(state);
    if (m_after)
        Guarded(m_after);
}

QString TDatapointStore::KeyOf(const TDatapoint& datapoint) const
{
    return DatapointKey(m_kind, datapoint);
}

int TDatapointStore::EisNumber(const TDatapoint& datapoint) const
{
    return datapoint.EisNumber != 0 ? datapoint.EisNumber : m_state.Decisions.Types.value(KeyOf(datapoint));
}

void TDatapointStore::SetEisNumber(const TDatapoint& datapoint, int eisNumber)
{
    TDatapointDecisions decisions = m_state.Decisions;
    if (eisNumber == 0)
        decisions.Types.remove(KeyOf(datapoint));
    else
        decisions.Types.insert(KeyOf(datapoint), eisNumber);
    ForceDirectories(m_state.Directory);
    WriteDecisions(DecisionsFile(m_state.Directory), decisions);
    m_state.Decisions = std::move(decisions);
}

TImportChanges TDatapointStore::Compare(const TDatapointImport& import) const
{
    const TState after = StateAfter(import);
    TImportChanges changes = ChangesBetween(m_state.Merged, after.Merged);
    QSet<QString> taken; // from the new file
    for (qsizetype i = 0; i < after.Merged.Keys.size(); ++i) {
        if (after.Files[after.Merged.Origins[i]].Name == import.FileName)
            taken.insert(after.Merged.Keys[i]);
    }
    std::copy_if(import.Result.Datapoints.begin(), import.Result.Datapoints.end(), std::back_inserter(changes.Ignored),
                 [&](const TDatapoint& datapoint) { return !taken.contains(KeyOf(datapoint)); });
    for (const TFileProblem& problem : after.Merged.Problems) {
        if (problem.File == import.FileName)
            changes.Problems.append(problem.Problem);
    }
    return changes;
}

// What the store will hold after the import.
TDatapointStore::TState TDatapointStore::StateAfter(const TDatapointImport& import) const
{
    TState after = m_state;
    after.Files.removeIf([&](const TDatapointFile& file) {
        return file.Name == import.FileName || (!import.Replaced.isEmpty() && file.Name == import.Replaced);
    });
    const auto place =
        std::lower_bound(after.Files.begin(), after.Files.end(), import.FileName,
                         [](const TDatapointFile& file, const QString& name) { return file.Name < name; });
    after.Files.insert(place, {.Name = import.FileName, .Result = import.Result});
    after.Decisions.Encodings.remove(import.Replaced);
    after.Decisions.Encodings.remove(import.FileName);
    if (!import.Encoding.isEmpty())
        after.Decisions.Encodings.insert(import.FileName, import.Encoding);
    Complete(after);
    return after;
}

void TDatapointStore::Import(const QString& fileName, const QByteArray& content, const QString& encoding,
                             const QString& replaced)
{
    TImportOptions options;
    options.Encoding = encoding;
    Import({.FileName = fileName,
            .Content = content,
            .Encoding = encoding,
            .Replaced = replaced,
            .Result = ReadDatapoints(m_kind, content, options)});
}

void TDatapointStore::Import(const TDatapointImport& import)
{
    Check(import);
    TState after = StateAfter(import);
    WriteImport(import, after.Decisions);
    Adopt(std::move(after));
}

void TDatapointStore::Check(const TDatapointImport& import) const
{
    if (m_state.Directory.isEmpty())
        throw TUserError(QStringLiteral("Es ist kein Projekt geöffnet."));
    if (import.FileName.startsWith(u'.')) {
        throw TUserError(
            QStringLiteral("\"%1\" beginnt mit einem Punkt und bliebe im Projekt unsichtbar.").arg(import.FileName));
    }
    if (import.FileName.contains(PathSeparator) || import.FileName.contains(u'/')) {
        throw TUserError(QStringLiteral("\"%1\" enthält ein Zeichen, das als Pfadtrenner gilt.").arg(import.FileName));
    }
    const QFileInfo target(ToPlatformPath(JoinFilePath(FileDirectory(m_state.Directory), {import.FileName})));
    if (import.FileName != import.Replaced && (target.exists() || target.isSymLink())) {
        throw TUserError(QStringLiteral("Im Projekt gibt es bereits eine Datei \"%1\", die nicht ersetzt werden soll.")
                             .arg(import.FileName));
    }
}

// The last step takes effect as a whole or not at all; the steps before it are taken back when one fails.
void TDatapointStore::WriteImport(const TDatapointImport& import, const TDatapointDecisions& decisions) const
{
    const QString directory = FileDirectory(m_state.Directory);
    const QString target = JoinFilePath(directory, {import.FileName});
    const bool isNew = import.FileName != import.Replaced;
    TRollback rollback;
    MakeDirectory(directory, rollback);
    if (isNew) {
        WriteFile(target, import.Content);
        rollback.Add([target] { DeleteFileAt(target); });
    }
    if (decisions != m_state.Decisions) {
        KeepContent(DecisionsFile(m_state.Directory), rollback);
        WriteDecisions(DecisionsFile(m_state.Directory), decisions);
    }
    if (!isNew)
        WriteFile(target, import.Content);
    else if (!import.Replaced.isEmpty())
        DeleteFileAt(JoinFilePath(directory, {import.Replaced}));
    rollback.Dismiss();
}
