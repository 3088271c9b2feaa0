#include "SceneTree.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

namespace
{

class SceneShortcuts : public TSceneTree
{
protected:
    void Copy() const { QTest::keyClick(m_frame.get(), Qt::Key_C, Qt::ControlModifier); }
    void Paste() const { QTest::keyClick(m_frame.get(), Qt::Key_V, Qt::ControlModifier); }
    void Delete() const { QTest::keyClick(m_frame.get(), Qt::Key_Delete); }
};

} // namespace

TEST_F(SceneShortcuts, CopyAndPasteAStep)
{
    Select({"Licht aus"});
    Copy();
    Select({"Abendlicht"});
    Paste();
    EXPECT_EQ(Below("Abendlicht"), "Licht aus [Licht Flur]|Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneShortcuts, DeleteAStepAfterTheQuestion)
{
    Select({"Warm"});
    Delete();
    EXPECT_EQ(m_messages.Questions, QStringList({QStringLiteral("Szene löschen?")}));
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]");
}

TEST_F(SceneShortcuts, DoNotDeleteARootOrTheTop)
{
    for (const char* fixed : {"Szenen", "Trigger-Elemente", "Aktions-Elemente"}) {
        Select({fixed});
        Delete();
    }
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneShortcuts, DoNotDeleteWhileARootIsSelectedToo)
{
    Select({"Trigger-Elemente", "Warm"});
    Delete();
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(SceneShortcuts, DoNothingWithoutASelection)
{
    Select({});
    Copy();
    Paste();
    Delete();
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneShortcuts, DoNotCopySeveralTriggers)
{
    Select({"Taster Flur", "Zeitschalter"});
    Copy();
    Select({"Nachts"});
    Paste();
    EXPECT_EQ(Below("Nachts"), "Licht aus [Licht Flur]");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneShortcuts, DoNotPasteOnADatapoint)
{
    Select({"Licht aus"});
    Copy();
    Select({"Heizung"});
    Paste();
    EXPECT_EQ(Below("Aktions-Elemente"), "Licht Flur|Heizung");
    Select({"Abendlicht"});
    Paste();
    EXPECT_EQ(Node("Abendlicht")->Count(), 3);
}

TEST_F(SceneShortcuts, ApplyTheRulesAtTheMomentOfTheKey)
{
    Select({"Licht aus"});
    m_frame->MenuAction_CopyExecute();
    ASSERT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    Paste();
    EXPECT_EQ(Below("Nachts"), "Licht aus [Licht Flur]|Licht aus [Licht Flur]");
}

TEST_F(SceneShortcuts, FollowTheFocusInsideASelectionOfSeveral)
{
    Select({"Licht aus", "Taster Flur"});
    Copy();
    EXPECT_FALSE(Action("MenuAction_CopyExecute")->isEnabled());
    m_frame->setCurrentItem(Node("Licht aus"), 0, QItemSelectionModel::NoUpdate);
    Copy();
    EXPECT_TRUE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
}

TEST_F(SceneShortcuts, BelongToTheTextWhileANodeIsEdited)
{
    QLineEdit* editor = OpenEditor("Warm");
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Delete);
    EXPECT_EQ(editor->text(), QString());
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneShortcuts, DoNotFireWhileTheTreeIsNotEditable)
{
    m_frame->SetEditable(false);
    Select({"Licht aus"});
    Copy();
    Delete();
    Select({"Abendlicht"});
    Paste();
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    EXPECT_FALSE(m_frame->GetEditable());
    EXPECT_TRUE(m_frame->actions().isEmpty());
}

TEST_F(SceneShortcuts, ComeBackWithTheMenuWhenTheTreeIsEditableAgain)
{
    m_frame->SetEditable(false);
    OpenMenu("Nachts");
    EXPECT_FALSE(Menu()->isVisible());
    m_frame->SetEditable(true);
    EXPECT_TRUE(m_frame->GetEditable());
    Select({"Warm"});
    Delete();
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]");
    OpenMenu("Nachts");
    EXPECT_TRUE(Menu()->isVisible());
    CloseMenu();
}

TEST_F(SceneShortcuts, LeaveANodeUneditedWhileTheTreeIsNotEditable)
{
    m_frame->SetEditable(false);
    EXPECT_EQ(OpenEditor("Warm"), nullptr);
}
