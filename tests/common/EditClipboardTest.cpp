#include "EditClipboard.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

// top, a with a1 and a2, b
class EditClipboard : public testing::Test
{
protected:
    static TTreeNode* Append(TTreeNode* parent, const char* caption)
    {
        auto* node = new TTreeNode(QString::fromLatin1(caption));
        parent->addChild(node);
        return node;
    }
    std::string Copied() const
    {
        QStringList captions;
        for (const TTreeNode* node : m_clipboard.Copied(m_top.get()))
            captions.append(node->Caption());
        return captions.join(u' ').toStdString();
    }

    std::unique_ptr<TTreeNode> m_top = std::make_unique<TTreeNode>(QStringLiteral("top"));
    TTreeNode* m_a = Append(m_top.get(), "a");
    TTreeNode* m_a1 = Append(m_a, "a1");
    TTreeNode* m_a2 = Append(m_a, "a2");
    TTreeNode* m_b = Append(m_top.get(), "b");
    TEditClipboard m_clipboard;
};

} // namespace

TEST_F(EditClipboard, IsEmptyAtFirst)
{
    EXPECT_TRUE(m_clipboard.IsEmpty());
    EXPECT_FALSE(m_clipboard.HasCopied());
    EXPECT_EQ(m_clipboard.CutNode(), nullptr);
    EXPECT_EQ(Copied(), "");
}

TEST_F(EditClipboard, GivesCopiedNodesInTheOrderInWhichTheyWereCopied)
{
    m_clipboard.Copy(m_top.get(), {m_b, m_a1, m_top.get()});
    EXPECT_TRUE(m_clipboard.HasCopied());
    EXPECT_FALSE(m_clipboard.IsEmpty());
    EXPECT_EQ(Copied(), "b a1 top");
    EXPECT_EQ(Copied(), "b a1 top");
}

TEST_F(EditClipboard, RemembersPlacesAndNotNodes)
{
    m_clipboard.Copy(m_top.get(), {m_a1, m_b});
    delete m_a1;
    EXPECT_EQ(Copied(), "a2");
    Append(m_top.get(), "c");
    EXPECT_EQ(Copied(), "a2 c");
}

TEST_F(EditClipboard, GivesNothingOfAnEmptyTree)
{
    m_clipboard.Copy(m_top.get(), {m_a});
    EXPECT_EQ(m_clipboard.Copied(nullptr), QList<TTreeNode*>());
    EXPECT_TRUE(m_clipboard.HasCopied());
}

TEST_F(EditClipboard, GivesNothingForNodesOfAnotherTree)
{
    TTreeNode other(QStringLiteral("other"));
    m_clipboard.Copy(m_top.get(), {&other, m_a});
    EXPECT_EQ(Copied(), "a");
}

TEST_F(EditClipboard, ReplacesWhatWasCopiedBefore)
{
    m_clipboard.Copy(m_top.get(), {m_a});
    m_clipboard.Copy(m_top.get(), {m_b});
    EXPECT_EQ(Copied(), "b");
    m_clipboard.ClearCopied();
    EXPECT_FALSE(m_clipboard.HasCopied());
    EXPECT_EQ(Copied(), "");
}

TEST_F(EditClipboard, MarksTheOneNodeThatIsCut)
{
    m_clipboard.Cut(m_a);
    EXPECT_EQ(m_clipboard.CutNode(), m_a);
    EXPECT_TRUE(m_a->Cut());
    EXPECT_FALSE(m_clipboard.IsEmpty());
    m_clipboard.Cut(m_b);
    EXPECT_EQ(m_clipboard.CutNode(), m_b);
    EXPECT_FALSE(m_a->Cut());
    EXPECT_TRUE(m_b->Cut());
    m_clipboard.Cut(nullptr);
    EXPECT_EQ(m_clipboard.CutNode(), nullptr);
    EXPECT_FALSE(m_b->Cut());
    EXPECT_TRUE(m_clipboard.IsEmpty());
}

TEST_F(EditClipboard, ForgetsWhatWasCopiedWhenANodeIsCutButNotTheOtherWayRound)
{
    m_clipboard.Copy(m_top.get(), {m_b});
    m_clipboard.Cut(m_a);
    EXPECT_FALSE(m_clipboard.HasCopied());
    m_clipboard.Copy(m_top.get(), {m_b});
    EXPECT_EQ(m_clipboard.CutNode(), m_a);
    EXPECT_TRUE(m_a->Cut());
}

TEST_F(EditClipboard, ForgetsACutNodeThatIsDeleted)
{
    m_clipboard.Cut(m_a1);
    delete m_a;
    EXPECT_EQ(m_clipboard.CutNode(), nullptr);
    EXPECT_TRUE(m_clipboard.IsEmpty());
    m_clipboard.ForgetCut();
}

TEST_F(EditClipboard, ForgetsTheCutWithOrWithoutItsMark)
{
    m_clipboard.Cut(m_a);
    m_clipboard.ForgetCut();
    EXPECT_EQ(m_clipboard.CutNode(), nullptr);
    EXPECT_FALSE(m_a->Cut());
    m_clipboard.Cut(m_a);
    m_clipboard.ForgetCutOnly();
    EXPECT_EQ(m_clipboard.CutNode(), nullptr);
    EXPECT_TRUE(m_a->Cut());
}

TEST_F(EditClipboard, ForgetsEverythingWhenItIsCleared)
{
    m_clipboard.Cut(m_a);
    m_clipboard.Copy(m_top.get(), {m_b});
    m_clipboard.Clear();
    EXPECT_TRUE(m_clipboard.IsEmpty());
    EXPECT_FALSE(m_a->Cut());
}
