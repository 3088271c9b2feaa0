#include "ButtonDefinition.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

TEST(ButtonDefinition, NamesOfTheSectionAreReadInTheirOrder)
{
    EXPECT_EQ(ReadButtonNames("[CMDBUTTONS]\r\nz=\r\na=1\r\nm\r\n"),
              QStringList({QStringLiteral("z"), QStringLiteral("a"), QStringLiteral("m")}));
}

TEST(ButtonDefinition, OtherSectionsAreIgnored)
{
    EXPECT_EQ(ReadButtonNames("vor\n[ANDERE]\na=\n[cmdbuttons]\nb\n[CMDBUTTONS2]\nc\n[ CMDBUTTONS ]\nd"),
              QStringList({QStringLiteral("b"), QStringLiteral("d")}));
}

TEST(ButtonDefinition, NamesAreTakenWithAndWithoutValues)
{
    EXPECT_EQ(ReadButtonNames("[CMDBUTTONS]\n a b = c = d \n  _buttons\\x.uri  \n"),
              QStringList({QStringLiteral("a b"), QStringLiteral("_buttons\\x.uri")}));
}

TEST(ButtonDefinition, NothingIsUnescaped)
{
    EXPECT_EQ(
        ReadButtonNames("[CMDBUTTONS]\n%PRJPATH%\\n\\t\\x41.uri\n\"q\"\na%20b\n"),
        QStringList({QStringLiteral("%PRJPATH%\\n\\t\\x41.uri"), QStringLiteral("\"q\""), QStringLiteral("a%20b")}));
}

TEST(ButtonDefinition, BytesAreThoseOfTheCodePage)
{
    EXPECT_EQ(ReadButtonNames("[CMDBUTTONS]\nB\xFCro \x80.uri\n"), QStringList{QStringLiteral("Büro €.uri")});
    EXPECT_EQ(ReadButtonNames("[CMDBUTTONS]\nB\xC3\xBCro\n"), QStringList{QStringLiteral("BÃ¼ro")});
}

TEST(ButtonDefinition, CommentsEmptyLinesAndEmptyNamesAreNone)
{
    EXPECT_TRUE(ReadButtonNames("[CMDBUTTONS]\n; a=\n\n   \n=b\n = c\n").isEmpty());
    EXPECT_TRUE(ReadButtonNames("").isEmpty());
    EXPECT_TRUE(ReadButtonNames("a\nb=\n").isEmpty());
}

TEST(ButtonDefinition, EveryKindOfLineEndCounts)
{
    EXPECT_EQ(ReadButtonNames("[CMDBUTTONS]\ra\r\nb\nc"),
              QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
}

TEST(ButtonDefinition, DoubledNamesStayDoubled)
{
    EXPECT_EQ(ReadButtonNames("[CMDBUTTONS]\na\na=2\n[CMDBUTTONS]\na"),
              QStringList({QStringLiteral("a"), QStringLiteral("a"), QStringLiteral("a")}));
}

TEST(ButtonDefinition, SectionLineMayBeDamaged)
{
    EXPECT_TRUE(ReadButtonNames("[CMDBUTTONS\na\n").isEmpty());
    EXPECT_EQ(ReadButtonNames("[CMDBUTTONS] ; x\n[a\n"), QStringList{QStringLiteral("[a")});
}
