#include "DatapointDecisions.h"

#include "DatapointKey.h"
#include "EisTypes.h"
#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{

constexpr int DecisionsFormat = 1;
const auto FormatKey = QStringLiteral("format");
const auto EncodingsKey = QStringLiteral("encodings");
const auto TypesKey = QStringLiteral("types");

QJsonObject ReadObject(const QString& path)
{
    try {
        return QJsonDocument::fromJson(ReadFile(path)).object();
    } catch (const TFileError&) {
        return {};
    }
}

void TakeType(TDatapointDecisions& decisions, const TStoredKey& stored, int eisNumber)
{
    if (eisNumber <= UndeterminedEis || eisNumber > LastEis || decisions.Types.contains(stored.Key))
        return;
    decisions.Types.insert(stored.Key, eisNumber);
    if (stored.IsOld)
        decisions.OldTypes.insert(stored.Key);
}

} // namespace

TDatapointDecisions ReadDecisions(TDatapointKind kind, const QString& path)
{
    TDatapointDecisions decisions;
    if (!QFileInfo::exists(ToPlatformPath(path)))
        return decisions;
    const QJsonObject content = ReadObject(path);
    decisions.Damaged = content.value(FormatKey).toInt() != DecisionsFormat;
    if (decisions.Damaged)
        return decisions;
    const QJsonObject encodings = content.value(EncodingsKey).toObject();
    for (auto entry = encodings.begin(); entry != encodings.end(); ++entry)
        decisions.Encodings.insert(entry.key(), entry.value().toString());
    const QJsonObject types = content.value(TypesKey).toObject();
    for (auto entry = types.begin(); entry != types.end(); ++entry)
        TakeType(decisions, ReadStoredKey(kind, entry.key()), entry.value().toInt());
    return decisions;
}

void WriteDecisions(const QString& path, const TDatapointDecisions& decisions)
{
    if (decisions.Damaged) {
        throw TFileError(
            FileErrorText(path, QStringLiteral("geschrieben"), QStringLiteral("Die vorhandene Datei ist beschädigt")));
    }
    QJsonObject encodings;
    for (auto entry = decisions.Encodings.begin(); entry != decisions.Encodings.end(); ++entry)
        encodings.insert(entry.key(), entry.value());
    QJsonObject types;
    for (auto entry = decisions.Types.begin(); entry != decisions.Types.end(); ++entry)
        types.insert(entry.key(), entry.value());
    const QJsonObject content{{FormatKey, DecisionsFormat}, {EncodingsKey, encodings}, {TypesKey, types}};
    WriteFile(path, QJsonDocument(content).toJson());
}
