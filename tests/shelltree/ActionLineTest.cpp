#include "ActionLine.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

namespace
{

QByteArray Line(int kind, const QByteArray& first, const QByteArray& second = {})
{
    const std::optional<TActionLine> line = MakeActionLine(static_cast<TShellChangeKind>(kind), first, second);
    return line ? line->Text : QByteArray("none");
}

// What becomes of a name, and "exact" when it can be read back.
QByteArray Name(const QByteArray& name)
{
    const TActionLine line = MakeActionLine(scItemDeleted, name, {}).value();
    EXPECT_TRUE(line.Text.startsWith("DEL \"") && line.Text.endsWith('"'));
    return line.Text.mid(5).chopped(1) + (line.IsExact ? " exact" : "");
}

} // namespace

TEST(ActionLine, HasAFormForEachKindByItsNumber)
{
    EXPECT_EQ(Line(0, "/p/a.txt", "/p/b.txt"), "REN \"/p/a.txt\" \"/p/b.txt\"");
    EXPECT_EQ(Line(1, "/p/a"), "PUT \"/p/a\"");
    EXPECT_EQ(Line(2, "/p/a"), "DEL \"/p/a\"");
    EXPECT_EQ(Line(3, "/p/a"), "MKDIR \"/p/a\"");
    EXPECT_EQ(Line(4, "/p/a"), "RMDIR \"/p/a\"");
    EXPECT_EQ(Line(13, "/p/a"), "PUT \"/p/a\"");
    EXPECT_EQ(Line(17, "/p/a", "/p/b"), "REN \"/p/a\" \"/p/b\"");
}

TEST(ActionLine, EveryOtherKindHasNone)
{
    for (int kind = 0; kind < 256; ++kind) {
        if ((kind < 0 || kind > 4) && kind != 13 && kind != 17) {
            EXPECT_EQ(Line(kind, "/p/a", "/p/b"), "none") << kind;
        }
    }
}

TEST(ActionLine, NamesStandAsTheyAreQuotesIncluded)
{
    EXPECT_EQ(Name("a b"), "a b exact");
    EXPECT_EQ(Name("\"a\" \"b\""), "\"a\" \"b\" exact");
    EXPECT_EQ(Name("punkte..."), "punkte... exact");
    EXPECT_EQ(Name("wirklich?"), "wirklich? exact");
    EXPECT_EQ(Name("a\tb\x1b%20\\"), "a\tb\x1b%20\\ exact");
}

TEST(ActionLine, NamesStandInTheCodePage)
{
    EXPECT_EQ(Name("Büro größer"), "B\xfcro gr\xf6\xdf"
                                   "er exact");
    EXPECT_EQ(Name("5 € – „so“"), "5 \x80 \x96 \x84so\x93 exact");
    // The five numbers that the code page leaves open stand for themselves.
    EXPECT_EQ(Name("\xc2\x81\xc2\x8d\xc2\x8f\xc2\x90\xc2\x9d"), "\x81\x8d\x8f\x90\x9d exact");
}

TEST(ActionLine, ALineEndBecomesAQuestionMark)
{
    EXPECT_EQ(Name("a\nb"), "a?b");
    EXPECT_EQ(Name("a\r\nb"), "a??b");
}

TEST(ActionLine, WhatTheCodePageLacksBecomesAQuestionMark)
{
    EXPECT_EQ(Name("Łódź"), "?\xf3"
                            "d?");
    EXPECT_EQ(Name("a\xf0\x9f\x8f\xa0z"), "a?z");
    // U+0080 would be read back as the euro sign.
    EXPECT_EQ(Name("\xc2\x80"), "?");
    // Letter and accent apart are another name than both in one.
    EXPECT_EQ(Name("u\xcc\x88"), "u?");
}

TEST(ActionLine, BytesThatAreNoTextBecomeQuestionMarks)
{
    EXPECT_EQ(Name("gr\xfcn"), "gr?n");
    EXPECT_EQ(Name("\xff\xfe"), "??");
    EXPECT_EQ(Name("a\xe2\x82"), "a??");
}

TEST(ActionLine, ARenameIsExactWhenBothOfItsNamesAre)
{
    EXPECT_TRUE(MakeActionLine(scItemRenamed, "a", "b")->IsExact);
    EXPECT_FALSE(MakeActionLine(scItemRenamed, "\xff", "b")->IsExact);
    EXPECT_FALSE(MakeActionLine(scItemRenamed, "a", "\xff")->IsExact);
}

TEST(ActionLine, WhatIsLeftOfALineIsRecognised)
{
    const QByteArray whole[] = {Line(0, "/p/a", "/p/b"), Line(1, "/p/a"), Line(2, "/p/a"), Line(3, "/p/a"),
                                Line(4, "/p/a")};
    for (const QByteArray& line : whole) {
        EXPECT_EQ(ClassifyLastLine(line), TLineRemains::Unfinished) << line.toStdString();
        EXPECT_EQ(ClassifyLastLine(line + '\r'), TLineRemains::Complete) << line.toStdString();
        const qsizetype prefix = line.indexOf('"') + 1;
        for (qsizetype size = 0; size < line.size(); ++size) {
            const TLineRemains expected = size < prefix ? TLineRemains::Foreign : TLineRemains::Unfinished;
            EXPECT_EQ(ClassifyLastLine(line.first(size)), expected) << line.first(size).toStdString();
        }
    }
}

TEST(ActionLine, WhatOthersWroteIsForeign)
{
    for (const char* line : {"", "hello", "REN", "REN a b", "put \"/p/a", " DEL \"/p", "DELETE \"/p/a\""})
        EXPECT_EQ(ClassifyLastLine(line), TLineRemains::Foreign) << line;
}
