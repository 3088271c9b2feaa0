#include "MenuTree.h"

#include "Vlerrors.h"

#include <QAction>
#include <QCoreApplication>
#include <QLineEdit>
#include <QTest>

namespace
{

using MenuRename = TMenuTree;

// A frame without content, and files of captions to fill it from.
class MenuCaptions : public testing::Test
{
protected:
    int Read(const QByteArray& content)
    {
        WriteAll(m_file, content);
        return m_frame.InitializeMenu(m_file);
    }

    QTemporaryDir m_directory;
    QString m_file = m_directory.filePath(QStringLiteral("captions.txt"));
    TMenuTreeFrame m_frame;
};

} // namespace

TEST_F(MenuRename, SetsAnEmptyTitleToo)
{
    Rename("Licht", "Lampen");
    EXPECT_EQ(Below(Menu()), "Start|Lampen|Alarme");
    EXPECT_EQ(Record("Lampen"), "Lampen|Lampen|| access=5 kind=0 type=0 source=0");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(MenuRename, KeepsATitleThatIsNotEmpty)
{
    Rename("Wetter", "Regen");
    EXPECT_EQ(Record("Regen"), "Regen|Das Wetter|/wetter.html| access=3 kind=0 type=0 source=0");
}

TEST_F(MenuRename, OfALinkChangesItsAlias)
{
    m_frame->FinishEditing(Node("Tür"), QStringLiteral("Tor"));
    EXPECT_EQ(Record("Tor"), "Tor|40001|0|/tuer.html access=0 kind=4 type=3 source=1");
}

TEST_F(MenuRename, OfALinkBeginsByItsKey)
{
    Select("Tür");
    QTest::keyClick(m_frame.get(), Qt::Key_F2);
    auto* editor = m_frame->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), QStringLiteral("Tür"));
}

TEST_F(MenuRename, ToAnEmptyTextKeepsTheOldText)
{
    Rename("Licht", "");
    EXPECT_EQ(Record("Licht"), "Licht||| access=5 kind=0 type=0 source=0");
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuRename, ToTheSameTextChangesNothingButAnEmptyTitle)
{
    Rename("Wetter", "Wetter");
    EXPECT_FALSE(m_frame->IsModified());
    Rename("Uhr", "Uhr");
    EXPECT_EQ(Item("Uhr").Title, QStringLiteral("Uhr"));
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(MenuRename, WithEscapeChangesNothing)
{
    QLineEdit* editor = OpenEditor("Licht");
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("Anders"));
    QTest::keyClick(editor, Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuRename, IsRefusedForTheRoots)
{
    for (const char* root : {"Menu", "Sensitive Links"}) {
        Select(root);
        m_frame->MenuAction_RenameExecute();
        QTest::keyClick(m_frame.get(), Qt::Key_F2);
        EXPECT_EQ(m_frame->viewport()->findChild<QLineEdit*>(), nullptr) << root;
    }
    Select(nullptr);
    m_frame->MenuAction_RenameExecute();
    EXPECT_EQ(m_frame->viewport()->findChild<QLineEdit*>(), nullptr);
    m_frame->FinishEditing(Menu(), QStringLiteral("Anders"));
    EXPECT_EQ(NameOf(Menu()), "Menu");
}

TEST_F(MenuRename, ShowsTheNewTextsInAnOpenDialog)
{
    ShowProperties("Licht");
    Rename("Licht", "Lampen");
    EXPECT_EQ(ShownItem(), "Lampen|Lampen|| access=5");
    EXPECT_FALSE(MenuDialog()->GetChanged());
}

TEST_F(MenuRename, OfAnotherNodeThanTheOneInTheDialogShowsThatNode)
{
    ShowProperties("Wetter");
    Type("EditHelp", "/hilfe.html");
    m_frame->FinishEditing(Node("Licht"), QStringLiteral("Lampen"));
    EXPECT_EQ(ShownItem(), "Lampen|Lampen|| access=5");
    EXPECT_EQ(Item("Wetter").Help, QStringLiteral("/hilfe.html"));
}

TEST_F(MenuRename, StaysBesideAChangeThatWaitsInTheDialog)
{
    ShowProperties("Licht");
    Type("EditLink", "/licht.html");
    m_frame->FinishEditing(Node("Licht"), QStringLiteral("Lampen"));
    EXPECT_EQ(Record("Lampen"), "Lampen|Lampen|/licht.html| access=5 kind=0 type=0 source=0");
    EXPECT_EQ(ShownItem(), "Lampen|Lampen|/licht.html| access=5");
}

TEST_F(MenuRename, StaysAfterTheDialogWasApplied)
{
    ShowProperties("Licht");
    Type("EditName", "Leuchten");
    Press("BtnApply");
    m_frame->FinishEditing(Node("Leuchten"), QStringLiteral("Lampen"));
    EXPECT_EQ(Below(Menu()), "Start|Lampen|Alarme");
    Select("Alarme");
    EXPECT_EQ(Below(Menu()), "Start|Lampen|Alarme");
}

TEST_F(MenuRename, IsIgnoredWhileTheTreeIsNotEditable)
{
    m_frame->SetEditable(false);
    EXPECT_FALSE(m_frame->GetEditable());
    Select("Licht");
    m_frame->MenuAction_RenameExecute();
    EXPECT_EQ(m_frame->viewport()->findChild<QLineEdit*>(), nullptr);
    m_frame->FinishEditing(Node("Licht"), QStringLiteral("Anders"));
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme");
    m_frame->SetEditable(true);
    EXPECT_TRUE(m_frame->GetEditable());
    EXPECT_NE(OpenEditor("Licht"), nullptr);
}

// A tree from captions

TEST_F(MenuCaptions, FillAnEmptyTree)
{
    EXPECT_EQ(Read("Baum\r\n\tKarte\r\n\t\tStart\r\n\t\t\tWetter heute\r\n\t\tEnde\r\n\tPunkte\r\n\t\tTür\r\n"), 6);
    const TMenuNode* menu = m_frame.MenuRoot();
    EXPECT_EQ(menu->Caption(), QStringLiteral("Karte"));
    EXPECT_EQ(menu->Item(), nullptr);
    EXPECT_EQ(menu->Child(0)->Child(0)->Item()->Caption, QStringLiteral("Wetter heute"));
    EXPECT_EQ(menu->Child(0)->ImageIndex(), miMainItem);
    EXPECT_EQ(menu->Child(0)->Child(0)->ImageIndex(), miSubItem);
    EXPECT_EQ(menu->Child(1)->Item()->Kind, mkItem);
    const TMenuNode* link = m_frame.LinkRoot()->Child(0);
    EXPECT_TRUE(m_frame.IsLink(link));
    EXPECT_EQ(link->Item()->Caption, QStringLiteral("Tür"));
    EXPECT_EQ(link->Item()->Kind, mkLink);
    EXPECT_EQ(link->ImageIndex(), miSubItem);
    EXPECT_FALSE(m_frame.IsModified());
}

TEST_F(MenuCaptions, LeaveATreeAloneThatHasNodes)
{
    EXPECT_EQ(Read("Baum\n\tKarte\n\t\tStart\n\tPunkte\n"), 3);
    EXPECT_EQ(Read("Baum\n\tAndere\n\tAndere\n"), 0);
    EXPECT_EQ(m_frame.MenuRoot()->Caption(), QStringLiteral("Karte"));
    EXPECT_EQ(m_frame.MenuRoot()->Count(), 1);
}

TEST_F(MenuCaptions, OfNoFileFillNothing)
{
    EXPECT_EQ(m_frame.InitializeMenu({}), 0);
    EXPECT_EQ(m_frame.TopNode(), nullptr);
    for (const int image : {miMainItem, miSubItem, miRoot})
        EXPECT_FALSE(m_frame.Image(image).isNull()) << image;
}

TEST_F(MenuCaptions, ThatMakeNoTreeAreRefused)
{
    for (const char* content :
         {"", "Baum\n", "\tA\n", "Baum\n\tA\n", "Baum\n\tA\n\tB\n\tC\n", "Baum\n\t\tA\n\tB\n", "A\nB\n"}) {
        EXPECT_THROW(Read(content), TUserError) << content;
        EXPECT_EQ(m_frame.TopNode(), nullptr) << content;
    }
    EXPECT_THROW(m_frame.InitializeMenu(m_directory.filePath(QStringLiteral("none.txt"))), TUserError);
}
