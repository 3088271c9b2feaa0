#include "Layout.h"

#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlmessages.h"
#include "Vlprojects.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>

namespace
{

constexpr int FileFormat = 1;

const auto InstallationFile = QStringLiteral(":/workbench/layout.json");

struct TKey
{
    QString Name;
    QString TPaneSetup::*Field;
    bool Required;
};

const std::array<TKey, 7>& Keys()
{
    static const std::array<TKey, 7> keys{
        TKey{.Name = QStringLiteral("id"), .Field = &TPaneSetup::Id, .Required = true},
        TKey{.Name = QStringLiteral("title"), .Field = &TPaneSetup::Title, .Required = true},
        TKey{.Name = QStringLiteral("class"), .Field = &TPaneSetup::Class, .Required = true},
        TKey{.Name = QStringLiteral("command"), .Field = &TPaneSetup::Command, .Required = false},
        TKey{.Name = QStringLiteral("side"), .Field = &TPaneSetup::Side, .Required = false},
        TKey{.Name = QStringLiteral("onProject"), .Field = &TPaneSetup::OnProject, .Required = false},
        TKey{.Name = QStringLiteral("load"), .Field = &TPaneSetup::Load, .Required = false},
    };
    return keys;
}

// Inside this unit a failure is its reason alone; ParseLayout adds the file.
[[noreturn]] void Refuse(const QString& reason)
{
    throw TUserError(reason);
}

QString ReadText(const QJsonObject& object, const TKey& key)
{
    const QJsonValue value = object.value(key.Name);
    if (value.isUndefined() && !key.Required)
        return {};
    if (!value.isString() || (key.Required && value.toString().trimmed().isEmpty()))
        Refuse(QStringLiteral("\"%1\" fehlt oder ist kein Text").arg(key.Name));
    return value.toString();
}

// A key that nobody reads is a slip of the pen that would otherwise go unnoticed.
void RefuseUnknownKeys(const QJsonObject& object)
{
    for (auto it = object.begin(); it != object.end(); ++it) {
        const bool known =
            std::any_of(Keys().begin(), Keys().end(), [&](const TKey& key) { return key.Name == it.key(); });
        if (!known)
            Refuse(QStringLiteral("die Angabe \"%1\" ist unbekannt").arg(it.key()));
    }
}

void RefuseOtherThan(const QString& name, const QString& value, const QString& allowed)
{
    if (!value.isEmpty() && value != allowed)
        Refuse(QStringLiteral("\"%1\" kennt nur \"%2\"").arg(name, allowed));
}

TPaneSetup ReadPane(const QJsonValue& value)
{
    if (!value.isObject())
        Refuse(QStringLiteral("er ist kein Objekt"));
    const QJsonObject object = value.toObject();
    TPaneSetup setup;
    for (const TKey& key : Keys())
        setup.*key.Field = ReadText(object, key);
    RefuseUnknownKeys(object);
    // Batch mode writes PANE=TEXT.
    if (setup.Id.contains(u'=') || setup.Id == MessagePaneId())
        Refuse(QStringLiteral("der Name \"%1\" ist nicht erlaubt").arg(setup.Id));
    RefuseOtherThan(QStringLiteral("side"), setup.Side, QStringLiteral("right"));
    RefuseOtherThan(QStringLiteral("onProject"), setup.OnProject, QStringLiteral("command"));
    RefuseOtherThan(QStringLiteral("load"), setup.Load, QStringLiteral("start"));
    return setup;
}

TPaneSetup ReadPaneAt(const QJsonArray& panes, qsizetype index)
{
    try {
        return ReadPane(panes.at(index));
    } catch (const TUserError& error) {
        Refuse(QStringLiteral("Bereich %1: %2").arg(index + 1).arg(error.Message()));
    }
}

TLayout ReadPanes(const QJsonArray& panes)
{
    TLayout layout;
    for (qsizetype i = 0; i < panes.size(); ++i) {
        const TPaneSetup setup = ReadPaneAt(panes, i);
        const bool taken =
            std::any_of(layout.cbegin(), layout.cend(), [&](const TPaneSetup& other) { return other.Id == setup.Id; });
        if (taken)
            Refuse(QStringLiteral("den Bereich \"%1\" gibt es zweimal").arg(setup.Id));
        layout.append(setup);
    }
    return layout;
}

TLayout ReadLayout(const QByteArray& json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        Refuse(QStringLiteral("%1 (Zeichen %2)").arg(error.errorString()).arg(error.offset));
    const QJsonObject content = document.object();
    if (content.value(QStringLiteral("format")).toInt() != FileFormat)
        Refuse(QStringLiteral("\"format\" ist nicht %1").arg(FileFormat));
    const QJsonValue panes = content.value(QStringLiteral("panes"));
    if (!panes.isArray())
        Refuse(QStringLiteral("\"panes\" fehlt oder ist keine Liste"));
    return ReadPanes(panes.toArray());
}

// Resource names begin with ":/", which is no path of the file system; the file utilities read both.
TLayout LoadLayout(const QString& file)
{
    return ParseLayout(ReadFile(file), file);
}

} // namespace

QString MessagePaneId()
{
    return QStringLiteral("messages");
}

TLayout ParseLayout(const QByteArray& json, const QString& fileName)
{
    try {
        return ReadLayout(json);
    } catch (const TUserError& error) {
        throw TUserError(QStringLiteral("Die Layoutdatei \"%1\" ist beschädigt: %2.")
                             .arg(ToPlatformPath(fileName), error.Message()));
    }
}

TLayout InstallationLayout()
{
    return LoadLayout(InstallationFile);
}

QString ProjectLayoutFile(const TProject& project)
{
    return ToPlatformPath(JoinFilePath(project.GetRootDirectory(), {QStringLiteral("velmora.layout")}));
}

TLayout LayoutFor(const TProject* project)
{
    if (!project || !QFileInfo::exists(ProjectLayoutFile(*project)))
        return InstallationLayout();
    try {
        return LoadLayout(ProjectLayoutFile(*project));
    } catch (const TUserError& error) {
        ShowError(QStringLiteral("%1\nEs gilt das Layout der Installation.").arg(error.Message()));
        return InstallationLayout();
    }
}
