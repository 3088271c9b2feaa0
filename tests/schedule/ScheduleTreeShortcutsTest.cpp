#include "ScheduleTree.h"

#include <QAction>
#include <QCoreApplication>
#include <QLineEdit>
#include <QTest>

// Short cuts run their operations with the operations' own conditions; the menu's rows are narrower.
using ScheduleShortcuts = TScheduleTree;

TEST_F(ScheduleShortcuts, CopyAndPasteADatapoint)
{
    CopyNodes({"West"});
    PasteOn("Bad");
    EXPECT_EQ(Below("Heizung"), "Bad|West");
}

TEST_F(ScheduleShortcuts, PasteOnGroupsAlthoughTheMenuDoesNot)
{
    for (const char* group : {"Licht", "Urlaub"}) {
        CopyNodes({"West"});
        Select({group});
        OpenMenu(group);
        EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
        Run("MenuAction_PasteBeforeExecute");
        EXPECT_FALSE(m_frame->IsModified());
        CloseMenu();
        PressPaste();
        EXPECT_TRUE(m_frame->IsModified());
        m_frame->SetModified(false);
    }
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub|West");
    EXPECT_EQ(Below("Urlaub"), "West");
}

TEST_F(ScheduleShortcuts, LeaveTheMenuAsItsRulesSay)
{
    CopyNodes({"West"});
    PasteOn("Licht");
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    CopyNodes({"West"});
    Select({"Licht"});
    PressCopy();
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    EXPECT_FALSE(Action("MenuAction_CutExecute")->isEnabled());
    OpenMenu("Licht");
    EXPECT_EQ(EnabledEntries(), "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Kopieren, Löschen, Umbenennen, "
                                "Neu laden, Exportieren");
    CloseMenu();
}

TEST_F(ScheduleShortcuts, LeaveTheMenuAsItsRulesSayAlsoForAKeyThatIsNone)
{
    CopyNodes({"West"});
    Select({"Licht"});
    PressKey(Qt::Key_F12);
    QCoreApplication::processEvents();
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    EXPECT_FALSE(Action("MenuAction_CutExecute")->isEnabled());
}

TEST_F(ScheduleShortcuts, CutAGroupAlthoughTheMenuDoesNot)
{
    Select({"Rollladen"});
    EXPECT_FALSE(Action("MenuAction_CutExecute")->isEnabled());
    PressCut();
    EXPECT_TRUE(Node("Rollladen")->Cut());
    PasteOn("Licht");
    EXPECT_EQ(Below(Root()), "Rollladen|Licht|Heizung|Urlaub");
}

TEST_F(ScheduleShortcuts, CopyTheGroupInFocusOfSeveralAlthoughTheMenuDoesNot)
{
    Select({"Licht", "Heizung"});
    EXPECT_FALSE(Action("MenuAction_CopyExecute")->isEnabled());
    PressCopy();
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub|Kopie von Heizung");
}

TEST_F(ScheduleShortcuts, DeleteAfterTheQuestion)
{
    Select({"Bad"});
    PressKey(Qt::Key_Delete);
    EXPECT_EQ(m_messages.Questions, QStringList({QStringLiteral("Element löschen?")}));
    EXPECT_EQ(Below("Heizung"), "");
}

TEST_F(ScheduleShortcuts, DoNothingWithoutASelection)
{
    Select({});
    PressCopy();
    PressCut();
    PressPaste();
    PressKey(Qt::Key_Delete);
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleShortcuts, DoNothingInAnEmptyTree)
{
    m_frame = std::make_unique<TScheduleTreeFrame>();
    m_frame->show();
    PressCopy();
    PressCut();
    PressPaste();
    PressKey(Qt::Key_Delete);
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleShortcuts, BelongToTheTextWhileAGroupIsEdited)
{
    QLineEdit* editor = OpenEditor("Licht");
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Delete);
    EXPECT_EQ(editor->text(), QString());
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleShortcuts, DoNotFireWhileTheTreeIsNotEditable)
{
    m_frame->SetEditable(false);
    EXPECT_FALSE(m_frame->GetEditable());
    EXPECT_TRUE(m_frame->actions().isEmpty());
    CopyNodes({"Licht"});
    CutNode("Bad");
    PasteOn("Flur");
    PressKey(Qt::Key_Delete);
    EXPECT_FALSE(Node("Bad")->Cut());
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleShortcuts, ComeBackWhenTheTreeIsEditableAgain)
{
    EXPECT_TRUE(m_frame->GetEditable());
    m_frame->SetEditable(false);
    m_frame->SetEditable(true);
    EXPECT_TRUE(m_frame->GetEditable());
    CutNode("06:00");
    PasteOn("Bad");
    EXPECT_EQ(Below("Bad"), "06:00|05:15");
}
