#include "CaptionFile.h"

#include "TestSupport.h"
#include "Vlerrors.h"
#include "Vltreenode.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

namespace
{

class CaptionFile : public testing::Test
{
protected:
    // "0:caption" for each line, or what the user is told.
    QStringList Read(const QByteArray& content)
    {
        WriteAll(m_path, content);
        QStringList lines;
        try {
            for (const TCaptionLine& line : ReadCaptionFile(m_path))
                lines.append(QStringLiteral("%1:%2").arg(line.Level).arg(line.Caption));
        } catch (const TUserError& error) {
            lines = {error.Message()};
        }
        return lines;
    }
    QStringList MalformedAt(int line) const
    {
        return {QStringLiteral("\"%1\", Zeile %2: Die Einrückung ergibt keinen Baum.").arg(m_path).arg(line)};
    }

    QTemporaryDir m_directory;
    QString m_path = m_directory.filePath(QStringLiteral("x.txt"));
};

void AppendOutline(const TTreeNode* node, QStringList& lines)
{
    lines.append(QString(node->Level(), u'-') + node->Caption());
    for (int i = 0; i < node->Count(); ++i)
        AppendOutline(node->Child(i), lines);
}

} // namespace

TEST_F(CaptionFile, GivesLevelsAndCaptions)
{
    EXPECT_EQ(Read("a\n\tb\n\t\tc\n\td\n\t\te\n\t\t\tf\n\tg\n"),
              QStringList({QStringLiteral("0:a"), QStringLiteral("1:b"), QStringLiteral("2:c"), QStringLiteral("1:d"),
                           QStringLiteral("2:e"), QStringLiteral("3:f"), QStringLiteral("1:g")}));
}

TEST_F(CaptionFile, TakesEveryLineEnd)
{
    const QStringList expected{QStringLiteral("0:a"), QStringLiteral("1:b")};
    EXPECT_EQ(Read("a\n\tb"), expected);
    EXPECT_EQ(Read("a\n\tb\n"), expected);
    EXPECT_EQ(Read("a\r\n\tb\r\n"), expected);
}

TEST_F(CaptionFile, IsUtf8)
{
    EXPECT_EQ(Read("K\xC3\xBC"
                   "che \xE2\x82\xAC"),
              QStringList({QStringLiteral("0:Küche €")}));
}

TEST_F(CaptionFile, KeepsBlanksAndTabsBehindTheFirstCharacter)
{
    EXPECT_EQ(Read("a b\n\tc\td "), QStringList({QStringLiteral("0:a b"), QStringLiteral("1:c\td ")}));
}

TEST_F(CaptionFile, KeepsEmptyCaptions)
{
    EXPECT_EQ(Read("a\n\t\n\t\tc"), QStringList({QStringLiteral("0:a"), QStringLiteral("1:"), QStringLiteral("2:c")}));
}

TEST_F(CaptionFile, IsRefusedWhereItMakesNoTree)
{
    EXPECT_EQ(Read(""), MalformedAt(1));
    EXPECT_EQ(Read("\ta"), MalformedAt(1));
    EXPECT_EQ(Read("a\nb"), MalformedAt(2));
    EXPECT_EQ(Read("a\n\tb\nc\n"), MalformedAt(3));
    EXPECT_EQ(Read("a\n\t\tb"), MalformedAt(2));
    EXPECT_EQ(Read("a\n\tb\n\t\t\tc"), MalformedAt(3));
    EXPECT_EQ(Read("a\n\n\tb"), MalformedAt(2));
    EXPECT_EQ(Read("a\n\tb\n\n"), MalformedAt(3));
}

TEST_F(CaptionFile, IsRefusedWhenItCannotBeRead)
{
    EXPECT_THROW(ReadCaptionFile(m_path), TUserError);
    EXPECT_THROW(ReadCaptionFile(m_directory.path()), TUserError);
}

TEST(MalformedCaptions, NameWhatWasExpected)
{
    try {
        ThrowMalformedCaptions(QStringLiteral("x.txt"), 7, QStringLiteral("Wochenschaltplan"));
    } catch (const TUserError& error) {
        EXPECT_EQ(error.Message(),
                  QStringLiteral("\"x.txt\", Zeile 7: Die Einrückung ergibt keinen Wochenschaltplan."));
        return;
    }
    ADD_FAILURE() << "nothing was thrown";
}

TEST(BuildFromCaptions, MakesTheTreeThatTheLinesDescribe)
{
    std::vector<TCaptionLine> lines;
    for (const auto& [level, caption] :
         {std::pair{0, "ignored"}, {1, "a"}, {2, "b"}, {3, "c"}, {1, "d"}, {2, "e"}, {2, "f"}, {3, "g"}, {2, "h"}})
        lines.push_back({.Level = level, .Caption = QString::fromLatin1(caption)});
    const auto top = std::make_unique<TTreeNode>(QStringLiteral("top"));
    BuildFromCaptions(lines, top.get(), [](TTreeNode* parent, const QString& caption) {
        auto* node = new TTreeNode(caption);
        parent->addChild(node);
        return node;
    });
    QStringList outline;
    AppendOutline(top.get(), outline);
    EXPECT_EQ(outline.join(u' ').toStdString(), "top -a --b ---c -d --e --f ---g --h");
}

TEST(BuildFromCaptions, AddsNothingForASingleLine)
{
    const auto top = std::make_unique<TTreeNode>(QStringLiteral("top"));
    BuildFromCaptions({{.Level = 0, .Caption = QStringLiteral("top")}}, top.get(),
                      [](TTreeNode* parent, const QString&) {
                          ADD_FAILURE();
                          return parent;
                      });
    EXPECT_EQ(top->Count(), 0);
}
