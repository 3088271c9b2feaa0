#include "LineFinder.h"

#include "Formatting.h"
#include "Vltreenode.h"

#include <gtest/gtest.h>

#include <QBuffer>

namespace
{

class LineFinder : public testing::Test
{
protected:
    // Line 1 and the last one belong to nobody, `m_long` has three lines in the middle of `m_outer`.
    const TTreeNode* NodeOf(int line) const
    {
        TLineFinder finder(line);
        WriteTo(finder);
        return finder.Node();
    }
    void WriteTo(QIODevice& device) const
    {
        TLineWriter writer(device);
        writer.Write("<document>\r\n");
        writer.BeginNode(&m_outer);
        writer.Write("<outer name=\"%s\">\r\n", QStringLiteral("a"));
        writer.BeginNode(&m_long);
        writer.Write("<long name=\"%s\" />\r\n", QStringLiteral("a\nb\r\nc"));
        writer.BeginNode(&m_outer);
        writer.Write("</outer>\r\n");
        writer.BeginNode(nullptr);
        writer.Write("</document>\r\n");
    }

    const TTreeNode m_outer;
    const TTreeNode m_long;
};

} // namespace

TEST_F(LineFinder, FindsTheNodeOfALine)
{
    EXPECT_EQ(NodeOf(2), &m_outer);
    EXPECT_EQ(NodeOf(6), &m_outer);
}

TEST_F(LineFinder, CountsTheLineEndsInTexts)
{
    for (const int line : {3, 4, 5})
        EXPECT_EQ(NodeOf(line), &m_long) << line;
}

TEST_F(LineFinder, FindsNothingForALineOfTheDocumentItselfOrOutsideOfIt)
{
    for (const int line : {1, 7, 8, 0, -1, 1000})
        EXPECT_EQ(NodeOf(line), nullptr) << line;
}

TEST_F(LineFinder, ChangesNothingOfWhatIsWrittenElsewhere)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    WriteTo(buffer);
    EXPECT_EQ(buffer.data(), "<document>\r\n<outer name=\"a\">\r\n<long name=\"a\nb\r\nc\" />\r\n</outer>\r\n"
                             "</document>\r\n");
}
