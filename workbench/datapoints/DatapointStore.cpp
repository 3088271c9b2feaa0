#include "DatapointStore.h"

#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>

namespace
{

constexpr int DecisionsFormat = 1;
const auto FormatKey = QStringLiteral("format");
const auto EncodingsKey = QStringLiteral("encodings");
const auto TypesKey = QStringLiteral("types");

QString ProblemText(const QString& file, const TImportProblem& problem)
{
    if (problem.Line == 0)
        return QStringLiteral("%1: %2").arg(file, problem.Reason);
    return QStringLiteral("%1, Zeile %2: %3").arg(file, QString::number(problem.Line), problem.Reason);
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

QString TDatapointStore::FileDirectory() const
{
    return JoinFilePath(m_directory, {KindName()});
}

QString TDatapointStore::DecisionsFile() const
{
    return JoinFilePath(m_directory, {KindName() + QStringLiteral(".json")});
}

void TDatapointStore::Load(const QString& directory)
{
    m_directory = directory;
    m_files.clear();
    m_problems.clear();
    m_datapoints.clear();
    if (directory.isEmpty())
        return;
    LoadDecisions();
    const QDir files(ToPlatformPath(FileDirectory()));
    const QStringList names = files.entryList(QDir::Files, QDir::Name);
    for (const QString& name : names) {
        if (name.startsWith(u'.'))
            continue;
        TDatapointFile file{.Name = name, .Result = {}};
        try {
            TImportOptions options;
            options.Encoding = m_encodings.value(name);
            file.Result = ReadDatapoints(m_kind, ReadFile(files.filePath(name)), options);
        } catch (const TFileError& error) {
            file.Result.Problems.append({.Line = 0, .Reason = error.Message()});
        }
        m_files.append(std::move(file));
    }
    Merge();
}

void TDatapointStore::LoadDecisions()
{
    m_encodings.clear();
    m_types.clear();
    m_decisionsDamaged = false;
    if (!FileExists(DecisionsFile()))
        return;
    QJsonParseError error;
    QJsonDocument document;
    try {
        document = QJsonDocument::fromJson(ReadFile(DecisionsFile()), &error);
    } catch (const TFileError&) {
        document = {};
    }
    const QJsonObject content = document.object();
    if (content.value(FormatKey).toInt() != DecisionsFormat) {
        m_decisionsDamaged = true;
        m_problems.append(QStringLiteral("%1 ist beschädigt; von Hand gewählte Typen gelten nicht.")
                              .arg(ExtractFileName(DecisionsFile())));
        return;
    }
    const QJsonObject encodings = content.value(EncodingsKey).toObject();
    for (auto entry = encodings.begin(); entry != encodings.end(); ++entry)
        m_encodings.insert(entry.key(), entry.value().toString());
    const QJsonObject types = content.value(TypesKey).toObject();
    for (auto entry = types.begin(); entry != types.end(); ++entry)
        m_types.insert(entry.key(), entry.value().toInt());
}

void TDatapointStore::SaveDecisions() const
{
    if (m_decisionsDamaged) {
        throw TFileError(FileErrorText(DecisionsFile(), QStringLiteral("geschrieben"),
                                       QStringLiteral("Die vorhandene Datei ist beschädigt")));
    }
    QJsonObject encodings;
    for (auto entry = m_encodings.begin(); entry != m_encodings.end(); ++entry)
        encodings.insert(entry.key(), entry.value());
    QJsonObject types;
    for (auto entry = m_types.begin(); entry != m_types.end(); ++entry)
        types.insert(entry.key(), entry.value());
    const QJsonObject content{{FormatKey, DecisionsFormat}, {EncodingsKey, encodings}, {TypesKey, types}};
    ForceDirectories(m_directory);
    WriteFile(DecisionsFile(), QJsonDocument(content).toJson());
}

void TDatapointStore::Merge()
{
    m_datapoints.clear();
    QSet<QString> seen;
    for (const TDatapointFile& file : std::as_const(m_files)) {
        for (const TImportProblem& problem : file.Result.Problems)
            m_problems.append(ProblemText(file.Name, problem));
        for (const TDatapoint& datapoint : file.Result.Datapoints) {
            const QString key = KeyOf(datapoint);
            if (seen.contains(key)) {
                m_problems.append(QStringLiteral("%1: %2 (%3) gibt es schon in einer anderen Datei; die erste gilt")
                                      .arg(file.Name, datapoint.Address, datapoint.Name));
                continue;
            }
            seen.insert(key);
            m_datapoints.append(datapoint);
        }
    }
}

// The same register number may be an input and a holding register.
QString TDatapointStore::KeyOf(const TDatapoint& datapoint) const
{
    const bool byGroup = m_kind == dkModbus && !datapoint.Group.isEmpty();
    return byGroup ? datapoint.Group.first() + u'/' + datapoint.Address : datapoint.Address;
}

int TDatapointStore::EisNumber(const TDatapoint& datapoint) const
{
    return datapoint.EisNumber != 0 ? datapoint.EisNumber : m_types.value(KeyOf(datapoint));
}

void TDatapointStore::SetEisNumber(const TDatapoint& datapoint, int eisNumber)
{
    const QMap<QString, int> before = m_types;
    if (eisNumber == 0)
        m_types.remove(KeyOf(datapoint));
    else
        m_types.insert(KeyOf(datapoint), eisNumber);
    try {
        SaveDecisions();
    } catch (...) {
        m_types = before;
        throw;
    }
}

TImportChanges TDatapointStore::Compare(const QString& replaced, const TImportResult& result) const
{
    // What the project would hold: the first of an address counts, the other files as they are.
    QHash<QString, TDatapoint> after;
    const auto take = [&](const TDatapoint& datapoint) {
        if (!after.contains(KeyOf(datapoint)))
            after.insert(KeyOf(datapoint), datapoint);
    };
    for (const TDatapointFile& file : m_files) {
        if (replaced.isEmpty() || file.Name != replaced)
            std::for_each(file.Result.Datapoints.begin(), file.Result.Datapoints.end(), take);
    }
    std::for_each(result.Datapoints.begin(), result.Datapoints.end(), take);

    TImportChanges changes;
    QSet<QString> before;
    for (const TDatapoint& datapoint : m_datapoints) {
        before.insert(KeyOf(datapoint));
        const auto found = after.constFind(KeyOf(datapoint));
        if (found == after.constEnd())
            changes.Gone.append(datapoint);
        else if (found->Name != datapoint.Name)
            changes.Renamed.append(*found);
    }
    std::copy_if(result.Datapoints.begin(), result.Datapoints.end(), std::back_inserter(changes.Added),
                 [&](const TDatapoint& datapoint) { return !before.contains(KeyOf(datapoint)); });
    return changes;
}

void TDatapointStore::Import(const QString& fileName, const QByteArray& content, const QString& encoding,
                             const QString& replaced)
{
    if (m_directory.isEmpty())
        throw TUserError(QStringLiteral("Es ist kein Projekt geöffnet."));
    if (fileName.startsWith(u'.'))
        throw TUserError(
            QStringLiteral("\"%1\" beginnt mit einem Punkt und bliebe im Projekt unsichtbar.").arg(fileName));
    const QString target = JoinFilePath(FileDirectory(), {fileName});
    if (fileName != replaced && FileExists(target)) {
        throw TUserError(QStringLiteral("Im Projekt gibt es bereits eine Datei \"%1\", die nicht ersetzt werden soll.")
                             .arg(fileName));
    }
    ForceDirectories(FileDirectory());
    const QMap<QString, QString> before = m_encodings;
    m_encodings.remove(replaced);
    m_encodings.remove(fileName);
    if (!encoding.isEmpty())
        m_encodings.insert(fileName, encoding);
    try {
        // The decisions come first: without them the new file would be read differently than the user saw it.
        if (m_encodings != before)
            SaveDecisions();
        WriteFile(target, content);
    } catch (...) {
        m_encodings = before;
        throw;
    }
    if (!replaced.isEmpty() && replaced != fileName)
        DeleteFileAt(JoinFilePath(FileDirectory(), {replaced}));
    Load(QString(m_directory));
}
