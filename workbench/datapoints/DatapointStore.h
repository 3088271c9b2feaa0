#pragma once

#include "DatapointDecisions.h"
#include "DatapointMerge.h"

#include <functional>

// A file that is to come into the project.
struct TDatapointImport
{
    QString FileName; // its name there, without a directory
    QByteArray Content;
    QString Encoding;     // empty: found out from the content
    QString Replaced;     // the file that goes; empty: none
    TImportResult Result; // what `Content` gives in `Encoding`
};

// What an import would change of the datapoints that the project holds.
struct TImportChanges
{
    QList<TDatapoint> Added;
    QList<TDatapoint> Renamed; // as they will be: another name, or the address in another notation
    QList<TDatapoint> Gone;
    QList<TDatapoint> Ignored;      // of the new file: another one has them already
    QList<TImportProblem> Problems; // what will be said about the new file
};

// The datapoints of one kind in the active project: the files as they came from the engineering tools, in a directory
// of their own, and beside them what the user decided about them (encodings, types of undetermined datapoints). Belongs
// to a browser.
class TDatapointStore
{
public:
    explicit TDatapointStore(TDatapointKind kind) : m_kind(kind) {}

    TDatapointKind Kind() const { return m_kind; }
    // "eib", "modbus", "virtual".
    QString KindName() const;

    // Called right before and right after the datapoints change. When one throws, its error is shown, and the change
    // and the other call take place all the same.
    void SetWatcher(std::function<void()> before, std::function<void()> after);

    // Reads everything below `directory`, the project's directory of datapoints; a missing one is empty. Never throws
    // for bad content; a damaged file of decisions is reported as a problem and kept.
    void Load(const QString& directory);

    // As it was loaded; empty without a project.
    QString Directory() const { return m_state.Directory; }
    const QList<TDatapointFile>& Files() const { return m_state.Files; }
    // All files together, in the order of their names. Of an address in several files the first counts.
    const QList<TDatapoint>& Datapoints() const { return m_state.Merged.Datapoints; }
    const QList<TFileProblem>& Problems() const { return m_state.Problems; }
    // The encoding that was chosen for a file; empty when none was.
    QString ChosenEncoding(const QString& fileName) const { return m_state.Decisions.Encodings.value(fileName); }

    // The EIS number to show and to drag: the file's, else the one chosen by hand, else 0.
    int EisNumber(const TDatapoint& datapoint) const;
    // Decides the type of an undetermined datapoint; 0 takes the decision back. Kept over imports. Throws TFileError.
    void SetEisNumber(const TDatapoint& datapoint, int eisNumber);

    // What that import would change.
    TImportChanges Compare(const TDatapointImport& import) const;

    // Puts a file, as it came, into the project; the replaced one goes. Another file of that name is never overwritten
    // unless it is the replaced one. Throws TUserError, and neither the project nor the store has changed.
    void Import(const TDatapointImport& import);
    // The same, with the content read here.
    void Import(const QString& fileName, const QByteArray& content, const QString& encoding, const QString& replaced);

private:
    struct TState
    {
        QString Directory;
        QList<TDatapointFile> Files;
        TDatapointDecisions Decisions;
        QList<TFileProblem> OwnProblems; // of the directory and the decisions
        TMergedDatapoints Merged;
        QList<TFileProblem> Problems; // all of them
    };

    QString FileDirectory(const QString& directory) const;
    QString DecisionsFile(const QString& directory) const;
    TDatapointFile ReadOne(const QString& name, const TState& state) const;
    void Complete(TState& state) const;
    void AdoptOldTypes(TState& state) const;
    void Adopt(TState state);
    void Check(const TDatapointImport& import) const;
    TState StateAfter(const TDatapointImport& import) const;
    void WriteImport(const TDatapointImport& import, const TDatapointDecisions& decisions) const;
    QString KeyOf(const TDatapoint& datapoint) const;

    TDatapointKind m_kind;
    TState m_state;
    std::function<void()> m_before;
    std::function<void()> m_after;
};
