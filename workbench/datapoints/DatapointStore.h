#pragma once

#include "Datapoints.h"

#include <QMap>

// What one file of datapoints holds, as the project keeps it.
struct TDatapointFile
{
    QString Name; // without its directory
    TImportResult Result;
};

// What an import would change of the datapoints that the project holds.
struct TImportChanges
{
    QList<TDatapoint> Added;
    QList<TDatapoint> Renamed; // as they will be
    QList<TDatapoint> Gone;
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

    // Reads everything below `directory`, the project's directory of datapoints; a missing one is empty. Never throws
    // for bad content; a damaged file of decisions is reported as a problem and kept.
    void Load(const QString& directory);

    const QList<TDatapointFile>& Files() const { return m_files; }
    // All files together, in the order of their names. Of an address in several files the first counts.
    const QList<TDatapoint>& Datapoints() const { return m_datapoints; }
    // File, line and reason, ready to show.
    const QStringList& Problems() const { return m_problems; }

    // The EIS number to show and to drag: the file's, else the one chosen by hand, else 0.
    int EisNumber(const TDatapoint& datapoint) const;
    // Decides the type of an undetermined datapoint; 0 takes the decision back. Kept over imports. Throws TFileError.
    void SetEisNumber(const TDatapoint& datapoint, int eisNumber);

    // What replacing the file `replaced` (empty: none) by `result` would change.
    TImportChanges Compare(const QString& replaced, const TImportResult& result) const;

    // Puts a file, as it came, into the project; `replaced` (empty: none) goes. Another file of that name is never
    // overwritten unless it is the replaced one. Throws TUserError, and nothing has changed.
    void Import(const QString& fileName, const QByteArray& content, const QString& encoding, const QString& replaced);

private:
    QString FileDirectory() const;
    QString DecisionsFile() const;
    void LoadDecisions();
    void SaveDecisions() const;
    void Merge();
    QString KeyOf(const TDatapoint& datapoint) const;

    TDatapointKind m_kind;
    QString m_directory;
    QList<TDatapointFile> m_files;
    QList<TDatapoint> m_datapoints;
    QStringList m_problems;
    QMap<QString, QString> m_encodings; // by file name
    QMap<QString, int> m_types;         // by key
    bool m_decisionsDamaged = false;
};
