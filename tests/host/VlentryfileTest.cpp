#include "Vlentryfile.h"

#include "TestSupport.h"
#include "Vlerrors.h"

#include <gtest/gtest.h>

namespace
{

// The reason for which a text is no entry; empty for an entry.
QString Fault(const QByteArray& text)
{
    try {
        ParseEntry(text);
    } catch (const TUserError& error) {
        return error.Message();
    }
    return {};
}

TEntryRecord Sample()
{
    return {.Caption = QStringLiteral("Übersicht öffnen"),
            .Kind = TEntryKind::File,
            .Target = QStringLiteral("%PRJPATH%\\_menu\\menu.html"),
            .Category = QStringLiteral("Büro"),
            .Icon = QStringLiteral("images/haus.png"),
            .Removable = false};
}

} // namespace

TEST(EntryFile, ReadsEveryField)
{
    EXPECT_EQ(ParseEntry("Caption=Übersicht öffnen\nFile=%PRJPATH%\\_menu\\menu.html\nCategory=Büro\n"
                         "Icon=images/haus.png\nRemovable=no\n"),
              Sample());
}

TEST(EntryFile, WritesANewFileInAFixedOrder)
{
    EXPECT_EQ(FormatEntry(Sample()), "Caption=Übersicht öffnen\nFile=%PRJPATH%\\_menu\\menu.html\nCategory=Büro\n"
                                     "Icon=images/haus.png\nRemovable=no\n");
}

TEST(EntryFile, EmptyValuesNeedNoLine)
{
    EXPECT_EQ(FormatEntry({.Kind = TEntryKind::Address, .Target = QStringLiteral("https://www.example.org/?a=b")}),
              "Address=https://www.example.org/?a=b\nRemovable=yes\n");
}

TEST(EntryFile, WhatIsWrittenIsReadAgain)
{
    for (const TEntryKind kind : {TEntryKind::Command, TEntryKind::File, TEntryKind::Address}) {
        TEntryRecord record = Sample();
        record.Kind = kind;
        record.Removable = kind == TEntryKind::File;
        EXPECT_EQ(ParseEntry(FormatEntry(record)), record);
    }
}

TEST(EntryFile, KeysIgnoreCaseAndBlanksAtTheRimDoNotCount)
{
    const TEntryRecord record = ParseEntry("\t caption =  A = B \r\nCOMMAND=pane://scenes\r\nRemovable= No\r\n");
    EXPECT_EQ(record.Caption, QStringLiteral("A = B"));
    EXPECT_EQ(record.Target, QStringLiteral("pane://scenes"));
    EXPECT_FALSE(record.Removable);
}

TEST(EntryFile, CommentsEmptyLinesAndUnknownKeysSayNothing)
{
    const TEntryRecord record = ParseEntry("# Caption=Nein\n\n  \nFarbe=rot\nCommand=pane://scenes\n#");
    EXPECT_EQ(record, (TEntryRecord{.Target = QStringLiteral("pane://scenes")}));
}

TEST(EntryFile, FirstLineOfAKeyCounts)
{
    EXPECT_EQ(ParseEntry("Command=a://\nCommand=b://\n").Target, QStringLiteral("a://"));
}

TEST(EntryFile, ByteOrderMarkIsNoPartOfTheFirstKey)
{
    EXPECT_EQ(ParseEntry("\xEF\xBB\xBF"
                         "Caption=A\nFile=a.html")
                  .Caption,
              QStringLiteral("A"));
    EXPECT_EQ(FormatEntry({.Caption = QStringLiteral("B"), .Target = QStringLiteral("x://")},
                          "\xEF\xBB\xBF"
                          "Caption=A\nCommand=x://\n"),
              "Caption=B\nCommand=x://\nRemovable=yes\n");
}

TEST(EntryFile, DamageIsNamed)
{
    EXPECT_EQ(Fault(""), QStringLiteral("Es fehlt, was der Eintrag tut: Command, File oder Address"));
    EXPECT_EQ(Fault("Caption=A\nCommand=\n"), Fault(""));
    EXPECT_EQ(Fault("Caption=A\nCommand x\n"), QStringLiteral("In Zeile 2 fehlt das Gleichheitszeichen"));
    EXPECT_EQ(Fault("File=a\nAddress=b://\n"), QStringLiteral("Command, File und Address schließen einander aus"));
    EXPECT_EQ(Fault("File=a\nRemovable=vielleicht"), QStringLiteral("Removable ist weder yes noch no"));
    EXPECT_EQ(Fault("File=\xFF\n"), QStringLiteral("Sie ist kein Text in UTF-8"));
    EXPECT_EQ(Fault("File=a\xEF"), QStringLiteral("Sie ist kein Text in UTF-8"));
    EXPECT_EQ(Fault(QByteArray("File=a\0b\n", 9)), QStringLiteral("Sie enthält Steuerzeichen"));
    EXPECT_EQ(Fault("File=\x1B[31mrot\n"), QStringLiteral("Sie enthält Steuerzeichen"));
    EXPECT_EQ(Fault("#" + QByteArray(0x10000, 'x')), QStringLiteral("Sie ist größer als 64 KiB"));
}

TEST(EntryFile, UnknownKeysCommentsOrderAndLineEndsAreKept)
{
    const QByteArray former = "# Von Hand\r\nZiel=Büro \xFF\r\nRemovable=yes\r\nicon=alt.png\r\nCommand=a://\r\n"
                              "\r\nCaption=Alt\r\nletzte";
    EXPECT_EQ(FormatEntry(Sample(), former),
              "# Von Hand\r\nZiel=Büro \xFF\r\nRemovable=no\r\nIcon=images/haus.png\r\n"
              "File=%PRJPATH%\\_menu\\menu.html\r\n\r\nCaption=Übersicht öffnen\r\nletzte\r\nCategory=Büro\r\n");
}

TEST(EntryFile, CarriageReturnsAtTheEndOfTheFileAreNoLineEnd)
{
    const TEntryRecord record{.Kind = TEntryKind::File, .Target = QStringLiteral("a")};
    EXPECT_EQ(FormatEntry(record, "File=a\nMine=b\r\r"), "File=a\nMine=b\nRemovable=yes\n");
}

TEST(EntryFile, ByteOrderMarksOfJoinedFilesAreNoPartOfAKey)
{
    const QByteArray joined = "\xEF\xBB\xBF\xEF\xBB\xBFMine=b\n\xEF\xBB\xBF"
                              "File=a\n";
    EXPECT_EQ(ParseEntry(joined).Target, QStringLiteral("a"));
    EXPECT_EQ(FormatEntry(ParseEntry(joined), joined), "Mine=b\nFile=a\nRemovable=yes\n");
}

TEST(EntryFile, DoubledKeysAreWrittenOnce)
{
    EXPECT_EQ(FormatEntry({.Kind = TEntryKind::File, .Target = QStringLiteral("c")}, "Command=a://\nCommand=b://\n"),
              "File=c\nRemovable=yes\n");
}

TEST(EntryFile, ValueStaysOnItsLine)
{
    const TEntryRecord record{.Caption = QStringLiteral("A\nCommand=böse"), .Target = QStringLiteral("x://\r\ny")};
    EXPECT_EQ(FormatEntry(record), "Caption=A Command=böse\nCommand=x://  y\nRemovable=yes\n");
}

TEST(EntryFile, TextCutAnywhereIsAnEntryOrADamagedOne)
{
    const QByteArray whole = FormatEntry(Sample());
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        const QByteArray text = whole.first(length);
        if (Fault(text).isEmpty())
            EXPECT_FALSE(ParseEntry(text).Target.isEmpty()) << length;
        else
            EXPECT_THROW(ParseEntry(text), TUserError);
    }
}
