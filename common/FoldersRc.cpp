#include "FoldersRc.h"

#include "Vltext.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace
{

struct TResourceText
{
    TResourceId Id;
    const char* Text;
};

constexpr std::array Texts{
    TResourceText{_STR_NEW_ENTRY, "Neuer Eintrag"},
    TResourceText{_RSTR_PROPERTIES, "Eigenschaften"},
    TResourceText{_RSTR_ACCESSLEV, "Zugriffsebene"},
    TResourceText{_RSTR_AUTO_CREATE, "Elemente hinzufügen..."},
    TResourceText{_RSTR_NEW_SCENE, "Neue Szene"},
    TResourceText{_RSTR_NEW_ACTION, "Neue Aktion"},
    TResourceText{_RSTR_NEW_GROUP, "Neue Gruppe"},
    TResourceText{_RSTR_NEW_NODE, "Neuer Datenpunkt"},
    TResourceText{_RSTR_INSERT, "Einfügen"},
    TResourceText{_RSTR_RENAME, "Umbenennen"},
    TResourceText{_RSTR_COPY, "Kopieren"},
    TResourceText{_RSTR_COPY_OF, "Kopie von "},
    TResourceText{_RSTR_CUT, "Ausschneiden"},
    TResourceText{_RSTR_DELETE, "Löschen"},
    TResourceText{_RSTR_REMOVE, "Entfernen"},
    TResourceText{_RSTR_RELOAD, "Neu laden"},
    TResourceText{_RSTR_EXPORT, "Exportieren"},
    TResourceText{_RSTR_SCENES, "Szenen"},
    TResourceText{_RSTR_SCHEDULES, "Wochenschaltplan"},
    TResourceText{_RSTR_TRIGGER_NODES, "Trigger-Elemente"},
    TResourceText{_RSTR_ACTION_NODES, "Aktions-Elemente"},
    TResourceText{_RSTR_SCENE_LBL, "Szene"},
    TResourceText{_RSTR_ACTION_LBL, "Aktion"},
    TResourceText{_RSTR_TRIGGER_LBL, "Trigger"},
    TResourceText{_CONFIRM_TRIGGER_DEL, "Wenn Sie einen Trigger-Datenpunkt löschen,\r\n"
                                        "werden alle Szenen, die mit diesem Datenpunkt\r\n"
                                        "verbunden sind, deaktiviert.\r\n"
                                        "Möchten Sie wirklich diesen Datenpunkt löschen?"},
    TResourceText{_CONFIRM_ACTION_DEL, "Wenn Sie einen Aktionsdatenpunkt löschen,\r\n"
                                       "werden alle Aktionen, die mit diesem Datenpunkt\r\n"
                                       "verbunden sind, ebenfalls gelöscht.\r\n"
                                       "Möchten Sie wirklich diesen Datenpunkt löschen?"},
    TResourceText{_CONFIRM_SCENE_DEL, "Szene löschen?"},
    TResourceText{_CONFIRM_SCHEDITEM_DEL, "Element löschen?"},
    TResourceText{_CONFIRM_MENU_DEL, "Eintrag löschen?"},
    TResourceText{_ERR_EXPORT, "Fehler beim Export: %s."},
    TResourceText{_ERR_ILLEGAL_LEVEL, "Ungültige Datenstruktur"},
    TResourceText{_ERR_SCENES, "Fehler beim Szenen-Export: %s."},
    TResourceText{_INFO_CONFIG, "Dieses Projekt enthält nicht das notwendige _config Verzeichnis."},
    TResourceText{_INFO_ENV, "Zur Zeit verweisen die Automation Services auf die\r\n"
                             "Szenenkonfiguration des Projekts %s. Sollen die\r\n"
                             "Automation Services auf das neue Projekt verweisen?"},
    TResourceText{_INFO_NUM_TRIGGER, "Anzahl Trigger-Elemente: "},
    TResourceText{_INFO_NUM_ACTION, "Anzahl Aktions-Elemente: "},
    TResourceText{_RSTR_MENU_BEFORE, "Menupunkt einfügen"},
    TResourceText{_RSTR_MENU_AFTER, "Menupunkt hinzufügen"},
    TResourceText{_RSTR_MENU_SUB, "Untermenu hinzufügen"},
    TResourceText{_RSTR_INSERT_ALARM, "Alarm-Menu hinzufügen"},
    TResourceText{_RSTR_INSERT_CONFIG, "Config-Menu hinzufügen"},
    TResourceText{_RSTR_INSERT_EXIT, "Logout-Menu hinzufügen"},
    TResourceText{_RSTR_LOGOPATH, "Logo ..."},
    TResourceText{_RSTR_ALARM, "Alarm"},
    TResourceText{_RSTR_CONFIG, "Config"},
    TResourceText{_RSTR_LOGOUT, "Logout"},
    TResourceText{_RSTR_CREATE_LINK, "Sensitiven Link hinzufügen"},
};

constexpr int MillisecondsPerDay = 24 * 60 * 60 * 1000;

QHash<int, QString>& TranslatedTexts()
{
    static QHash<int, QString> texts;
    return texts;
}

// The fields of a time text: blanks before a field are skipped, empty fields are not kept.
QStringList TimeFields(const QString& text)
{
    QStringList fields;
    const QStringList parts = text.split(u':');
    for (const QString& part : parts) {
        const auto begin = std::find_if(part.begin(), part.end(), [](QChar c) { return c != u' '; });
        if (begin != part.end())
            fields.append(part.mid(begin - part.begin()));
    }
    return fields;
}

int Field(const QStringList& fields, int index)
{
    // A "$" would make it hexadecimal, which a time never is.
    const QString field = fields.value(index);
    return field.contains(u'$') ? 0 : StrToIntDef(field, 0);
}

bool InRange(int value, int limit)
{
    return value >= 0 && value < limit;
}

} // namespace

QString RcText(int id)
{
    const auto translated = TranslatedTexts().constFind(id);
    if (translated != TranslatedTexts().constEnd())
        return *translated;
    const auto* found =
        std::find_if(Texts.begin(), Texts.end(), [id](const TResourceText& row) { return row.Id == id; });
    return found == Texts.end() ? QString() : QString::fromUtf8(found->Text);
}

void SetTranslatedTexts(const QHash<int, QString>& texts)
{
    TranslatedTexts() = texts;
}

QString GetPropertyValue(const QString& text, const QString& name)
{
    const qsizetype nameAt = name.isEmpty() ? -1 : text.indexOf(name);
    const qsizetype equalsAt = nameAt < 0 ? -1 : text.indexOf(u'=', nameAt + name.size());
    if (equalsAt < 0)
        return {};
    qsizetype begin = equalsAt + 1;
    while (begin < text.size() && text[begin] == u' ')
        ++begin;
    QChar terminator = u' ';
    if (begin < text.size() && (text[begin] == u'"' || text[begin] == u'\''))
        terminator = text[begin++];
    const qsizetype end = text.indexOf(terminator, begin);
    return text.mid(begin, end < 0 ? -1 : end - begin);
}

double ConvertTime(const QString& text)
{
    const QStringList fields = TimeFields(text);
    if (fields.size() < 2)
        return 0.0;
    const int hours = Field(fields, 0);
    const int minutes = Field(fields, 1);
    const int seconds = Field(fields, 2);
    if (!InRange(hours, 24) || !InRange(minutes, 60) || !InRange(seconds, 60))
        return 0.0;
    return ((hours * 60.0 + minutes) * 60.0 + seconds) * 1000.0 / MillisecondsPerDay;
}
