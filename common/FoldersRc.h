#pragma once

#include <QHash>
#include <QString>

// The German user-interface texts that more than one editor shows, by symbol. The numbers are the keys of the table and
// stay as they are, so that a translated table can replace the texts number for number.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
enum TResourceId : int
{
    _STR_NEW_ENTRY = 65520,
    _RSTR_PROPERTIES = 65521,
    _RSTR_ACCESSLEV = 65522,
    _RSTR_AUTO_CREATE = 65523,
    _RSTR_NEW_SCENE = 65524,
    _RSTR_NEW_ACTION = 65525,
    _RSTR_NEW_GROUP = 65526,
    _RSTR_NEW_NODE = 65527,
    _RSTR_INSERT = 65528,
    _RSTR_RENAME = 65529,
    _RSTR_COPY = 65530,
    _RSTR_COPY_OF = 65531,
    _RSTR_CUT = 65532,
    _RSTR_DELETE = 65533,
    _RSTR_REMOVE = 65534,
    _RSTR_RELOAD = 65535,
    _RSTR_EXPORT = 65504,
    _RSTR_SCENES = 65505,
    _RSTR_SCHEDULES = 65506,
    _RSTR_TRIGGER_NODES = 65507,
    _RSTR_ACTION_NODES = 65508,
    _RSTR_SCENE_LBL = 65509,
    _RSTR_ACTION_LBL = 65510,
    _RSTR_TRIGGER_LBL = 65511,
    _CONFIRM_TRIGGER_DEL = 65512,
    _CONFIRM_ACTION_DEL = 65513,
    _CONFIRM_SCENE_DEL = 65514,
    _CONFIRM_SCHEDITEM_DEL = 65515,
    _CONFIRM_MENU_DEL = 65516,
    _ERR_EXPORT = 65517,
    _ERR_ILLEGAL_LEVEL = 65518,
    _ERR_SCENES = 65519,
    _INFO_CONFIG = 65488,
    _INFO_ENV = 65489,
    _INFO_NUM_TRIGGER = 65490,
    _INFO_NUM_ACTION = 65491,
    _RSTR_MENU_BEFORE = 65492,
    _RSTR_MENU_AFTER = 65493,
    _RSTR_MENU_SUB = 65494,
    _RSTR_INSERT_ALARM = 65495,
    _RSTR_INSERT_CONFIG = 65496,
    _RSTR_INSERT_EXIT = 65497,
    _RSTR_LOGOPATH = 65498,
    _RSTR_ALARM = 65499,
    _RSTR_CONFIG = 65500,
    _RSTR_LOGOUT = 65501,
    _RSTR_CREATE_LINK = 65502,
};
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

// The text of a symbol; empty for a number that carries none.
QString RcText(int id);

// Replaces the texts of the given numbers from now on; an empty table puts the German ones back.
void SetTranslatedTexts(const QHash<int, QString>& texts);

// The value of the first `name=value` in a free text such as "dow=1,2,3 time=08:00": up to the next blank, or between
// quotes of either kind. The name is searched as a plain, case-sensitive substring: "time" is also found inside
// "runtime". Empty when there is none, and for an empty name.
QString GetPropertyValue(const QString& text, const QString& name);

// The time of day that hh:mm or hh:mm:ss means, as a fraction of a day (0.5 is noon). Fields that are not numbers count
// as 0. 0.0 for fewer than two fields and for a time outside 0:00:00 to 23:59:59.
double ConvertTime(const QString& text);
