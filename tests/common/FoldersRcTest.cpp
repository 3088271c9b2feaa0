#include "FoldersRc.h"

#include "TestSupport.h"
#include "Vlcodepage.h"

#include <gtest/gtest.h>

#include <QSet>

#include <array>

namespace
{

struct TExpectedText
{
    TResourceId Symbol;
    int Id;
    const char* Bytes; // in the system's code page
};

constexpr std::array ExpectedTexts{
    TExpectedText{_STR_NEW_ENTRY, 65520, "Neuer Eintrag"},
    TExpectedText{_RSTR_PROPERTIES, 65521, "Eigenschaften"},
    TExpectedText{_RSTR_ACCESSLEV, 65522, "Zugriffsebene"},
    TExpectedText{_RSTR_AUTO_CREATE, 65523, "Elemente hinzuf\xFCgen..."},
    TExpectedText{_RSTR_NEW_SCENE, 65524, "Neue Szene"},
    TExpectedText{_RSTR_NEW_ACTION, 65525, "Neue Aktion"},
    TExpectedText{_RSTR_NEW_GROUP, 65526, "Neue Gruppe"},
    TExpectedText{_RSTR_NEW_NODE, 65527, "Neuer Datenpunkt"},
    TExpectedText{_RSTR_INSERT, 65528, "Einf\xFCgen"},
    TExpectedText{_RSTR_RENAME, 65529, "Umbenennen"},
    TExpectedText{_RSTR_COPY, 65530, "Kopieren"},
    TExpectedText{_RSTR_COPY_OF, 65531, "Kopie von "},
    TExpectedText{_RSTR_CUT, 65532, "Ausschneiden"},
    TExpectedText{_RSTR_DELETE, 65533, "L\xF6schen"},
    TExpectedText{_RSTR_REMOVE, 65534, "Entfernen"},
    TExpectedText{_RSTR_RELOAD, 65535, "Neu laden"},
    TExpectedText{_RSTR_EXPORT, 65504, "Exportieren"},
    TExpectedText{_RSTR_SCENES, 65505, "Szenen"},
    TExpectedText{_RSTR_SCHEDULES, 65506, "Wochenschaltplan"},
    TExpectedText{_RSTR_TRIGGER_NODES, 65507, "Trigger-Elemente"},
    TExpectedText{_RSTR_ACTION_NODES, 65508, "Aktions-Elemente"},
    TExpectedText{_RSTR_SCENE_LBL, 65509, "Szene"},
    TExpectedText{_RSTR_ACTION_LBL, 65510, "Aktion"},
    TExpectedText{_RSTR_TRIGGER_LBL, 65511, "Trigger"},
    TExpectedText{_CONFIRM_TRIGGER_DEL, 65512,
                  "Wenn Sie einen Trigger-Datenpunkt l\xF6schen,\r\n"
                  "werden alle Szenen, die mit diesem Datenpunkt\r\n"
                  "verbunden sind, deaktiviert.\r\n"
                  "M\xF6"
                  "chten Sie wirklich diesen Datenpunkt l\xF6schen?"},
    TExpectedText{_CONFIRM_ACTION_DEL, 65513,
                  "Wenn Sie einen Aktionsdatenpunkt l\xF6schen,\r\n"
                  "werden alle Aktionen, die mit diesem Datenpunkt\r\n"
                  "verbunden sind, ebenfalls gel\xF6scht.\r\n"
                  "M\xF6"
                  "chten Sie wirklich diesen Datenpunkt l\xF6schen?"},
    TExpectedText{_CONFIRM_SCENE_DEL, 65514, "Szene l\xF6schen?"},
    TExpectedText{_CONFIRM_SCHEDITEM_DEL, 65515, "Element l\xF6schen?"},
    TExpectedText{_CONFIRM_MENU_DEL, 65516, "Eintrag l\xF6schen?"},
    TExpectedText{_ERR_EXPORT, 65517, "Fehler beim Export: %s."},
    TExpectedText{_ERR_ILLEGAL_LEVEL, 65518, "Ung\xFCltige Datenstruktur"},
    TExpectedText{_ERR_SCENES, 65519, "Fehler beim Szenen-Export: %s."},
    TExpectedText{_INFO_CONFIG, 65488, "Dieses Projekt enth\xE4lt nicht das notwendige _config Verzeichnis."},
    TExpectedText{_INFO_ENV, 65489,
                  "Zur Zeit verweisen die Automation Services auf die\r\n"
                  "Szenenkonfiguration des Projekts %s. Sollen die\r\n"
                  "Automation Services auf das neue Projekt verweisen?"},
    TExpectedText{_INFO_NUM_TRIGGER, 65490, "Anzahl Trigger-Elemente: "},
    TExpectedText{_INFO_NUM_ACTION, 65491, "Anzahl Aktions-Elemente: "},
    TExpectedText{_RSTR_MENU_BEFORE, 65492, "Menupunkt einf\xFCgen"},
    TExpectedText{_RSTR_MENU_AFTER, 65493, "Menupunkt hinzuf\xFCgen"},
    TExpectedText{_RSTR_MENU_SUB, 65494, "Untermenu hinzuf\xFCgen"},
    TExpectedText{_RSTR_INSERT_ALARM, 65495, "Alarm-Menu hinzuf\xFCgen"},
    TExpectedText{_RSTR_INSERT_CONFIG, 65496, "Config-Menu hinzuf\xFCgen"},
    TExpectedText{_RSTR_INSERT_EXIT, 65497, "Logout-Menu hinzuf\xFCgen"},
    TExpectedText{_RSTR_LOGOPATH, 65498, "Logo ..."},
    TExpectedText{_RSTR_ALARM, 65499, "Alarm"},
    TExpectedText{_RSTR_CONFIG, 65500, "Config"},
    TExpectedText{_RSTR_LOGOUT, 65501, "Logout"},
    TExpectedText{_RSTR_CREATE_LINK, 65502, "Sensitiven Link hinzuf\xFCgen"},
};

QString Property(const char* text, const char* name)
{
    return GetPropertyValue(QString::fromUtf8(text), QString::fromUtf8(name));
}

// The time of `text` in seconds.
double Seconds(const char* text)
{
    return ConvertTime(QString::fromUtf8(text)) * 24 * 60 * 60;
}

double At(int hours, int minutes, int seconds = 0)
{
    return hours * 3600.0 + minutes * 60.0 + seconds;
}

} // namespace

TEST(ResourceTexts, HaveTheirNumbersAndBytes)
{
    for (const TExpectedText& expected : ExpectedTexts) {
        EXPECT_EQ(static_cast<int>(expected.Symbol), expected.Id) << expected.Bytes;
        EXPECT_EQ(ToCodePage(RcText(expected.Id)), QByteArray(expected.Bytes)) << expected.Id;
    }
}

TEST(ResourceTexts, AreFortySeven)
{
    QSet<int> ids;
    for (const TExpectedText& expected : ExpectedTexts)
        ids.insert(expected.Id);
    EXPECT_EQ(ids.size(), 47);
    int found = 0;
    for (int id = 65400; id <= 65600; ++id)
        found += RcText(id).isEmpty() ? 0 : 1;
    EXPECT_EQ(found, 47);
}

TEST(ResourceTexts, AreEmptyForANumberWithoutOne)
{
    for (const int id : {65503, 65487, 65536, 0, -1})
        EXPECT_EQ(RcText(id), QString()) << id;
}

TEST(ResourceTexts, AreReplacedNumberForNumber)
{
    SetTranslatedTexts({{65505, QStringLiteral("Scenes")}, {65503, QStringLiteral("more")}});
    EXPECT_EQ(RcText(_RSTR_SCENES), QStringLiteral("Scenes"));
    EXPECT_EQ(RcText(65503), QStringLiteral("more"));
    EXPECT_EQ(RcText(_RSTR_EXPORT), QStringLiteral("Exportieren"));
    SetTranslatedTexts({});
    EXPECT_EQ(RcText(_RSTR_SCENES), QStringLiteral("Szenen"));
    EXPECT_EQ(RcText(65503), QString());
}

TEST(ResourceTexts, MayBeTranslatedToNothing)
{
    SetTranslatedTexts({{65505, QString()}});
    EXPECT_EQ(RcText(_RSTR_SCENES), QString());
    SetTranslatedTexts({});
}

TEST(GetPropertyValue, TakesTheValueUpToTheNextBlank)
{
    EXPECT_EQ(Property("dow=1,2,3 time=08:00", "dow"), QStringLiteral("1,2,3"));
    EXPECT_EQ(Property("dow=1,2,3 time=08:00", "time"), QStringLiteral("08:00"));
    EXPECT_EQ(Property("b=2 a=5", "a"), QStringLiteral("5"));
}

TEST(GetPropertyValue, TakesAQuotedValueWithItsBlanks)
{
    EXPECT_EQ(Property("a = 'x y' b=2", "a"), QStringLiteral("x y"));
    EXPECT_EQ(Property("a = \"x y\" b=2", "a"), QStringLiteral("x y"));
    EXPECT_EQ(Property("a='x' b=2", "b"), QStringLiteral("2"));
}

TEST(GetPropertyValue, EndsAQuotedValueAtTheSameQuoteOnly)
{
    EXPECT_EQ(Property("a=\"it's\" b", "a"), QStringLiteral("it's"));
    EXPECT_EQ(Property("a='say \"x\"' b", "a"), QStringLiteral("say \"x\""));
    EXPECT_EQ(Property("a=x'y z'", "a"), QStringLiteral("x'y"));
}

TEST(GetPropertyValue, TakesTheRestAfterAnOpenQuote)
{
    EXPECT_EQ(Property("a='open", "a"), QStringLiteral("open"));
    EXPECT_EQ(Property("a=\"open b=2 ", "a"), QStringLiteral("open b=2 "));
    EXPECT_EQ(Property("a='", "a"), QString());
}

TEST(GetPropertyValue, IsEmptyWithoutAValue)
{
    EXPECT_EQ(Property("a=", "a"), QString());
    EXPECT_EQ(Property("a=   ", "a"), QString());
    EXPECT_EQ(Property("a='' b=2", "a"), QString());
    EXPECT_EQ(Property("a", "a"), QString());
    EXPECT_EQ(Property("", "a"), QString());
    EXPECT_EQ(Property("b=2", "a"), QString());
}

TEST(GetPropertyValue, SkipsBlanksButNoTabs)
{
    EXPECT_EQ(Property("a=   5", "a"), QStringLiteral("5"));
    EXPECT_EQ(Property("a=\t5 b", "a"), QStringLiteral("\t5"));
    EXPECT_EQ(Property("a=5\t6 b", "a"), QStringLiteral("5\t6"));
}

TEST(GetPropertyValue, FindsTheNameInsideOtherWords)
{
    EXPECT_EQ(Property("ab=1", "b"), QStringLiteral("1"));
    EXPECT_EQ(Property("abc=1", "a"), QStringLiteral("1"));
    EXPECT_EQ(Property("runtime=5 time=08:00", "time"), QStringLiteral("5"));
}

TEST(GetPropertyValue, GoesOnToTheNextEqualsSign)
{
    EXPECT_EQ(Property("a b=2", "a"), QStringLiteral("2"));
    EXPECT_EQ(Property("a==2", "a"), QStringLiteral("=2"));
}

TEST(GetPropertyValue, FindsTheNameWithItsCase)
{
    EXPECT_EQ(Property("A=1", "a"), QString());
    EXPECT_EQ(Property("A=1 a=2", "a"), QStringLiteral("2"));
}

TEST(GetPropertyValue, IsEmptyForAnEmptyName)
{
    EXPECT_EQ(Property("a=1", ""), QString());
    EXPECT_EQ(Property("=1", ""), QString());
}

TEST(ConvertTime, TakesHoursAndMinutes)
{
    EXPECT_DOUBLE_EQ(Seconds("8:30"), At(8, 30));
    EXPECT_DOUBLE_EQ(Seconds("0:00"), 0.0);
    EXPECT_DOUBLE_EQ(ConvertTime(QStringLiteral("12:00")), 0.5);
}

TEST(ConvertTime, TakesSeconds)
{
    EXPECT_DOUBLE_EQ(Seconds("08:30:15"), At(8, 30, 15));
    EXPECT_DOUBLE_EQ(Seconds("23:59:59"), At(23, 59, 59));
}

TEST(ConvertTime, IsMidnightForFewerThanTwoFields)
{
    for (const char* text : {"", "12", "12:", ":12", ":", "::", " : ", "x"})
        EXPECT_EQ(Seconds(text), 0.0) << text;
}

TEST(ConvertTime, CountsWhatIsNoNumberAsZero)
{
    EXPECT_DOUBLE_EQ(Seconds("x:30"), At(0, 30));
    EXPECT_DOUBLE_EQ(Seconds("8:x"), At(8, 0));
    EXPECT_DOUBLE_EQ(Seconds("8:30:x"), At(8, 30));
    EXPECT_DOUBLE_EQ(Seconds("8 :30"), At(0, 30));
    EXPECT_DOUBLE_EQ(Seconds("\t8:30"), At(0, 30));
    EXPECT_DOUBLE_EQ(Seconds("8.5:30"), At(0, 30));
    EXPECT_DOUBLE_EQ(Seconds("$8:30"), At(0, 30));
    EXPECT_DOUBLE_EQ(Seconds("99999999999:30"), At(0, 30));
}

TEST(ConvertTime, SkipsBlanksAtTheStartOfAField)
{
    EXPECT_DOUBLE_EQ(Seconds(" 8:  30: 15"), At(8, 30, 15));
}

TEST(ConvertTime, KeepsNoEmptyFields)
{
    EXPECT_DOUBLE_EQ(Seconds(":8:30"), At(8, 30));
    EXPECT_DOUBLE_EQ(Seconds("8::30"), At(8, 30));
    EXPECT_DOUBLE_EQ(Seconds("8: :30"), At(8, 30));
    EXPECT_DOUBLE_EQ(Seconds("8:30:"), At(8, 30));
}

TEST(ConvertTime, IgnoresFieldsBeyondTheThird)
{
    EXPECT_DOUBLE_EQ(Seconds("8:30:15:99"), At(8, 30, 15));
}

TEST(ConvertTime, IsMidnightOutsideADay)
{
    for (const char* text : {"25:00", "24:00", "10:75", "10:60", "10:10:60", "-1:30", "10:-1", "10:10:-1"})
        EXPECT_EQ(Seconds(text), 0.0) << text;
}
