#include "ScheduleTree.h"

#include "Vlerrors.h"

#include <QAction>
#include <QCoreApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace
{

class ScheduleRename : public TScheduleTree
{};

// A frame without content, and files of captions to fill it from.
class ScheduleCaptions : public testing::Test
{
protected:
    int Read(const QByteArray& content)
    {
        WriteAll(m_file, content);
        return m_frame.InitializeMenu(m_file);
    }
    QString Caption(std::initializer_list<int> path) const
    {
        const TScheduleNode* node = m_frame.Root();
        for (const int index : path)
            node = node->Child(index);
        return node->Caption();
    }

    QTemporaryDir m_directory;
    QString m_file = m_directory.filePath(QStringLiteral("captions.txt"));
    TScheduleTreeFrame m_frame;
};

} // namespace

TEST_F(ScheduleRename, ChangesTheCaptionAndTheNameOfAGroup)
{
    Rename("Heizung", "Kessel");
    EXPECT_EQ(Below(Root()), "Licht|Kessel|Rollladen|Urlaub");
    EXPECT_EQ(GroupNames(), "Licht|Kessel|Rollladen|Urlaub");
    EXPECT_TRUE(m_frame->IsModified());
    Run("MenuAction_Export");
    EXPECT_EQ(Exported(), Document().replace("\"Heizung\"", "\"Kessel\""));
}

TEST_F(ScheduleRename, BeginsByTheMenu)
{
    Select({"Licht"});
    OpenMenu("Heizung");
    Run("MenuAction_RenameExecute");
    CloseMenu();
    auto* editor = m_frame->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), QStringLiteral("Heizung"));
}

TEST_F(ScheduleRename, IsForGroupsOnly)
{
    for (const char* node : {"Wochenschaltplan", "Flur", "07:05"}) {
        EXPECT_EQ(OpenEditor(node), nullptr) << node;
        EXPECT_FALSE(Action("MenuAction_RenameExecute")->isEnabled()) << node;
        m_frame->MenuAction_RenameExecute();
        EXPECT_EQ(m_frame->viewport()->findChild<QLineEdit*>(), nullptr) << node;
    }
    Select({});
    m_frame->MenuAction_RenameExecute();
    EXPECT_EQ(m_frame->viewport()->findChild<QLineEdit*>(), nullptr);
}

TEST_F(ScheduleRename, ToAnEmptyTextKeepsTheOldName)
{
    Rename("Heizung", "");
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleRename, WithEnterAndNoChangeChangesNothing)
{
    QLineEdit* editor = OpenEditor("Heizung");
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleRename, WithEscapeChangesNothing)
{
    QLineEdit* editor = OpenEditor("Heizung");
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("Anders"));
    QTest::keyClick(editor, Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleRename, ReplacesTheNameAtTheIndexAlsoWhenThatIsOneOfAnEarlierLoad)
{
    Run("MenuAction_Reload");
    Rename("Heizung", "Kessel");
    EXPECT_EQ(GroupNames(), "Licht|Kessel|Rollladen|Urlaub|Licht|Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleRename, ReplacesNoNameBehindTheEndOfTheList)
{
    m_frame->NewTreeNode(Root(), naAddChild, false, QStringLiteral("Garten"));
    Rename("Garten", "Letzte");
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub|Letzte");
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleRename, SendsTheNamesToADialogThatIsShownAndLeavesItWithoutANode)
{
    ShowProperties("Bad");
    Rename("Heizung", "Kessel");
    EXPECT_EQ(Sections(), "Licht|Kessel|Rollladen|Urlaub");
    Type("EditAlias", "Anders");
    Press("BtnOK");
    EXPECT_EQ(Below("Kessel"), "Bad");
}

TEST_F(ScheduleRename, DoesNotOpenTheDialog)
{
    Rename("Heizung", "Kessel");
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(ScheduleRename, OfADatapointChangesItsAliasAndShowsItInTheDialog)
{
    ShowProperties("07:05");
    m_frame->FinishEditing(Node("Flur"), QStringLiteral("Diele"));
    EXPECT_EQ(Below("Licht"), "Diele|Küche");
    EXPECT_EQ(Node("Diele")->Data()->Alias, QStringLiteral("Diele"));
    EXPECT_EQ(ShownDatapoint(), "0 1/1/1 Diele [0..1] type=0 source=0 access=2 enabled=1");
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleRename, StaysBesideAChangeThatWaitsInTheDialog)
{
    ShowProperties("Flur");
    Type("EditMaxVal", "9");
    m_frame->FinishEditing(Node("Flur"), QStringLiteral("Diele"));
    EXPECT_EQ(Record("Diele"), "id=-1 name=1/1/1 alias=Diele source=0 type=0 access=2 enabled=1 min=0 max=9");
    EXPECT_EQ(FieldText("EditAlias"), "Diele");
    EXPECT_FALSE(Dialog()->GetChanged());
}

TEST_F(ScheduleRename, IsIgnoredWhileTheTreeIsNotEditable)
{
    m_frame->SetEditable(false);
    EXPECT_EQ(OpenEditor("Licht"), nullptr);
    m_frame->FinishEditing(Node("Licht"), QStringLiteral("Anders"));
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub");
    m_frame->SetEditable(true);
    EXPECT_NE(OpenEditor("Licht"), nullptr);
}

// A tree from captions

TEST_F(ScheduleCaptions, FillAnEmptyTree)
{
    EXPECT_EQ(Read("Plan\r\n\tLicht\r\n\t\tFlur für alle\r\n\t\t\t<schedule />\r\n\tHeizung\r\n"), 5);
    EXPECT_EQ(Caption({}), QStringLiteral("Plan"));
    EXPECT_EQ(Caption({0, 0}), QStringLiteral("Flur für alle"));
    EXPECT_EQ(Caption({0, 0, 0}), QStringLiteral("<schedule />"));
    EXPECT_EQ(Caption({1}), QStringLiteral("Heizung"));
    const TScheduleNode* datapoint = m_frame.Root()->Child(0)->Child(0);
    ASSERT_NE(datapoint->Data(), nullptr);
    EXPECT_EQ(datapoint->Data()->Alias, QStringLiteral("Flur für alle"));
    EXPECT_EQ(datapoint->ImageIndex(), 2);
    EXPECT_EQ(datapoint->Child(0)->ImageIndex(), 3);
    EXPECT_FALSE(m_frame.IsModified());
}

TEST_F(ScheduleCaptions, LeaveATreeAloneThatHasContent)
{
    EXPECT_EQ(Read("Plan\n\tLicht\n"), 2);
    EXPECT_EQ(Read("Anderer\n\tA\n\tB\n"), 2);
    EXPECT_EQ(Caption({}), QStringLiteral("Plan"));
}

TEST_F(ScheduleCaptions, OfNoFileCountTheNodes)
{
    EXPECT_EQ(m_frame.InitializeMenu({}), 0);
    EXPECT_EQ(m_frame.Root(), nullptr);
    Read("Plan\n\tLicht\n\t\tFlur\n");
    EXPECT_EQ(m_frame.InitializeMenu({}), 3);
}

TEST_F(ScheduleCaptions, ThatMakeNoTreeAreRefused)
{
    for (const char* content : {"", "\tA\n", "A\n\tB\nC\n", "A\n\t\tB\n"}) {
        EXPECT_THROW(Read(content), TUserError) << content;
        EXPECT_EQ(m_frame.Root(), nullptr) << content;
    }
    EXPECT_THROW(m_frame.InitializeMenu(m_directory.filePath(QStringLiteral("none.txt"))), TUserError);
}
