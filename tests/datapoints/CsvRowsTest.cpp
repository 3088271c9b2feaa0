#include "CsvRows.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

namespace
{

QList<TCsvRow> Rows(const QString& text, char separator = ';')
{
    return ReadCsvRows(text, separator, [](double) { return true; });
}

QStringList Cells(const QString& text)
{
    const QList<TCsvRow> rows = Rows(text);
    return rows.size() == 1 ? rows.first().Cells : QStringList();
}

} // namespace

TEST(Separator, IsTheOneThatDividesMostLinesAlike)
{
    EXPECT_EQ(FindSeparator(u"a\tb\nc\td\n"), '\t');
    EXPECT_EQ(FindSeparator(u"a;b\nc;d\n"), ';');
    EXPECT_EQ(FindSeparator(u"a,b\nc,d\n"), ',');
    EXPECT_EQ(FindSeparator(u"Von A, B\n1;2;3\n4,5;6;7\n"), ';');
    EXPECT_EQ(FindSeparator(u"\"a;b\",c\n\"d;e\",f\n"), ',');
}

TEST(Separator, OfEqualsIsTheRarerInNames)
{
    EXPECT_EQ(FindSeparator(u"Licht, Bad;1\nLicht, Flur;2\n"), ';');
    EXPECT_EQ(FindSeparator(u"Licht; Bad\t1\nLicht; Flur\t2\n"), '\t');
}

TEST(CsvRows, KeepEmptyCells)
{
    EXPECT_EQ(Cells(QStringLiteral(";a;;b;")), QStringList({{}, QStringLiteral("a"), {}, QStringLiteral("b"), {}}));
    EXPECT_EQ(Cells(QStringLiteral("\"\";\"\"")), QStringList({{}, {}}));
}

TEST(CsvRows, TakeQuotesOff)
{
    EXPECT_EQ(Cells(QStringLiteral("\"a;b\"; \"c\"\"d\" ;e")),
              QStringList({QStringLiteral("a;b"), QStringLiteral("c\"d"), QStringLiteral("e")}));
}

TEST(CsvRows, LeaveQuotesInsideCells)
{
    EXPECT_EQ(Cells(QStringLiteral("5\" Rohr;x")), QStringList({QStringLiteral("5\" Rohr"), QStringLiteral("x")}));
}

TEST(CsvRows, CountTheLinesTheyBeginIn)
{
    const QList<TCsvRow> rows = Rows(QStringLiteral("a;b\r\n\r\n\"c\r\nd\";e\rf;g\n"));
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0].Line, 1);
    EXPECT_EQ(rows[1].Line, 3);
    EXPECT_EQ(rows[1].Cells, QStringList({QStringLiteral("c\nd"), QStringLiteral("e")}));
    EXPECT_EQ(rows[2].Line, 5);
}

TEST(CsvRows, TakeAnUnclosedQuoteAsACharacter)
{
    const QList<TCsvRow> rows = Rows(QStringLiteral("a;b\nc;\"d\ne;f\n"));
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[1].Cells, QStringList({QStringLiteral("c"), QStringLiteral("\"d")}));
    EXPECT_EQ(rows[2].Cells, QStringList({QStringLiteral("e"), QStringLiteral("f")}));
}

TEST(CsvRows, AreNotSwallowedByAQuoteThatALaterOneCloses)
{
    const QList<TCsvRow> rows = Rows(QStringLiteral("a;b\n\"Bad\" links;1\nc;d\n\"Bad\" rechts;2\n"));
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows[1].Cells, QStringList({QStringLiteral("\"Bad\" links"), QStringLiteral("1")}));
    EXPECT_EQ(rows[3].Line, 4);
}

TEST(CsvRows, EndOfTextEndsTheLastRow)
{
    EXPECT_EQ(Cells(QStringLiteral("a;\"b\"")), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_TRUE(Rows(QString()).isEmpty());
    EXPECT_TRUE(Rows(QStringLiteral("\n \n\r\n")).isEmpty());
}

TEST(CsvRows, MayBeAMegabyteLong)
{
    const QString big(1'000'000, u'x');
    EXPECT_EQ(Cells(big + u';' + big).size(), 2);
    EXPECT_EQ(Cells(QString(1'000'000, u';')).size(), 1'000'001);
    EXPECT_EQ(Cells(QString(999'999, u'"')).size(), 1);
}

TEST(CsvRows, KeepEveryCharacter)
{
    const QString text = QStringLiteral("Ä€") + QChar(0) + QStringLiteral("😀");
    EXPECT_EQ(Cells(text + u';'), QStringList({text, {}}));
}
