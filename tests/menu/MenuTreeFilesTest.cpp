#include "MenuTree.h"

#include "Vlapputils.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFile>

namespace
{

class MenuFilesOfTree : public TMenuTree
{
protected:
    QString Path(const char* name) const { return m_project.Path(QString::fromUtf8(name)); }
    void Remove(const char* name) const { ASSERT_TRUE(QFile::remove(Path(name))) << name; }
};

} // namespace

TEST_F(MenuFilesOfTree, AreLoadedBelowTheTwoRootsInTheirOrder)
{
    EXPECT_EQ(Outline(), WholeOutline);
    EXPECT_EQ(m_frame->topLevelItem(0), Menu());
    EXPECT_EQ(m_frame->topLevelItem(1), Links());
    EXPECT_EQ(Record("Start"), "Start|Startseite|/index.html|/hilfe/start.html access=0 kind=0 type=0 source=0");
    EXPECT_EQ(Record("Tür"), "Tür|40001|0|/tuer.html access=0 kind=4 type=3 source=1");
    EXPECT_EQ(Record("Menu"), "none");
    EXPECT_EQ(Record("Sensitive Links"), "none");
    for (const auto& [name, image] : {std::pair{"Menu", miRoot},
                                      {"Sensitive Links", miRoot},
                                      {"Start", miMainItem},
                                      {"Wetter", miSubItem},
                                      {"Tür", miSubItem}}) {
        EXPECT_EQ(Node(name)->ImageIndex(), image) << name;
        EXPECT_EQ(Node(name)->SelectedIndex(), image) << name;
    }
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(m_frame->updatesEnabled());
}

TEST_F(MenuFilesOfTree, AreBroughtBackByAReload)
{
    m_frame->RemoveBranches({Node("Start")});
    m_frame->RemoveBranches({Node("Tür")});
    ASSERT_TRUE(m_frame->IsModified());
    Reload();
    EXPECT_EQ(Outline(), WholeOutline);
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuFilesOfTree, LeaveTheirLastLinkSelectedInItsOpenBranch)
{
    EXPECT_EQ(Selected(), "vTag");
    Links()->setExpanded(false);
    Select("Wetter");
    Reload();
    EXPECT_EQ(Selected(), "vTag");
    EXPECT_EQ(m_frame->SelectedNodes().size(), 1);
    EXPECT_TRUE(Links()->isExpanded());
    EXPECT_FALSE(m_frame->IsModified());

    TMenuTreeFrame hidden;
    hidden.LoadLinks(Path("_menu/dplinks.xml"));
    EXPECT_EQ(hidden.SelectedNode(), hidden.LinkRoot()->Child(2));
    EXPECT_TRUE(hidden.LinkRoot()->isExpanded());
}

TEST_F(MenuFilesOfTree, SelectNothingOfTheMenuNorWhereThereIsNoLink)
{
    TMenuTreeFrame frame;
    frame.LoadMenu(Path("_menu/menu.xml"));
    EXPECT_EQ(frame.SelectedNode(), nullptr);
    for (const char* links : {"<links/>", "<links><link name=\"a"}) {
        WriteLinks(links);
        frame.LoadLinks(Path("_menu/dplinks.xml"));
        EXPECT_EQ(frame.SelectedNode(), nullptr) << links;
    }
}

// What the selection shows is the business of the user's own steps.
TEST_F(MenuFilesOfTree, LeaveTheDialogsAloneWhenAllIsLoaded)
{
    ShowProperties("Außen");
    const std::string shown = ShownLink();
    Reload();
    EXPECT_EQ(Selected(), "vTag");
    EXPECT_EQ(ShownLink(), shown);
    Type("EditAlias", "anders");
    Press("BtnApply");
    EXPECT_EQ(Record("vTag"), "vTag|vTag|| access=4 kind=4 type=0 source=2");
}

TEST_F(MenuFilesOfTree, ShowTheLastLinkInTheDialogWhenTheLinksAreLoadedAlone)
{
    ShowProperties("Außen");
    m_frame->LoadLinks(m_frame->GetLinksPath());
    EXPECT_EQ(ShownLink(), "vTag||vTag| source=2 type=0 access=4");
}

TEST_F(MenuFilesOfTree, ThatAreMissingLeaveTheirItems)
{
    Remove("_menu/menu.xml");
    Remove("_menu/dplinks.xml");
    Reload();
    EXPECT_EQ(Outline(), WholeOutline);
    EXPECT_EQ(m_frame->GetLinksPath().toStdString(), PackagePath("_menu/dplinks.xml"));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(MenuFilesOfTree, OfWhichOneIsMissingLeaveOneBranch)
{
    WriteMenu("<menu><menuitem caption=\"Neu\"/></menu>");
    Remove("_menu/dplinks.xml");
    Reload();
    EXPECT_EQ(Outline(), "Menu\n  Neu\nSensitive Links\n  Außen\n  Tür\n  vTag");
    Remove("_menu/menu.xml");
    WriteLinks("<links/>");
    Reload();
    EXPECT_EQ(Outline(), "Menu\n  Neu\nSensitive Links");
}

TEST_F(MenuFilesOfTree, ThatAreMissingAreRememberedWhereTheirDirectoryExists)
{
    QDir(m_project.Root()).mkpath(QStringLiteral("other"));
    m_frame->LoadData(Path("other/menu.xml"));
    EXPECT_EQ(m_frame->GetMenuPath(), Path("other/menu.xml"));
    EXPECT_EQ(Outline(), WholeOutline);
    m_frame->LoadData(Path("none/menu.xml"));
    EXPECT_EQ(m_frame->GetMenuPath(), Path("other/menu.xml"));
    EXPECT_EQ(m_frame->GetLinksPath().toStdString(), PackagePath("_menu/dplinks.xml"));
}

TEST_F(MenuFilesOfTree, AreReadOneByOne)
{
    TMenuTreeFrame frame;
    frame.LoadLinks(Path("_menu/dplinks.xml"));
    EXPECT_EQ(OutlineOf(frame), "Menu\nSensitive Links\n  Außen\n  Tür\n  vTag");
    frame.LoadMenu(Path("_menu/menu.xml"));
    EXPECT_EQ(OutlineOf(frame), WholeOutline);
    TMenuTreeFrame empty;
    empty.LoadMenu(Path("_menu/none.xml"));
    EXPECT_EQ(OutlineOf(empty), "Menu\nSensitive Links");
}

TEST_F(MenuFilesOfTree, ThatCannotBeReadLeaveTheirBranchEmptyWithoutAMessage)
{
    for (const char* content : {"", "<menu><menuitem caption=\"a", "<other><menuitem caption=\"a\"/></other>", "text",
                                "<menu><menuitem caption=\"a\"b\"/></menu>"}) {
        WriteMenu(content);
        WriteLinks("<links><link name=\"a");
        Reload();
        EXPECT_EQ(Outline(), "Menu\nSensitive Links") << content;
        WriteMenu(MenuDocument());
        WriteLinks(LinksDocument());
        Reload();
        EXPECT_EQ(Outline(), WholeOutline);
    }
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_TRUE(m_messages.Informations.isEmpty());
    EXPECT_EQ(m_frame->GetMenuPath().toStdString(), PackagePath("_menu/menu.xml"));
}

TEST_F(MenuFilesOfTree, SetTheLogoOnlyWhereTheyHaveOne)
{
    WriteMenu("<menu levels=\"9\" helpbase=\"/h\" alarm=\"yes\" logout=\"yes\"/>");
    Reload();
    EXPECT_EQ(m_frame->GetLogo(), QStringLiteral("/images/logo.png"));
    EXPECT_EQ(m_frame->GetLevels(), 2);
    WriteMenu("<MENU LOGO=\"/neu.png\"/>");
    Reload();
    EXPECT_EQ(m_frame->GetLogo(), QStringLiteral("/neu.png"));
}

TEST_F(MenuFilesOfTree, PutAStrayItemBesideTheRoots)
{
    WriteMenu("<menu><x><menuitem caption=\"Fremd\"/><menuitem caption=\"Kind\"/></x>"
              "<menuitem caption=\"Haupt\"><menuitem caption=\"Unter\"/></menuitem></menu>");
    Reload();
    EXPECT_EQ(Outline(), "Menu\n  Haupt\n    Unter\nSensitive Links\n  Außen\n  Tür\n  vTag\nFremd\n  Kind");
    EXPECT_EQ(m_frame->topLevelItem(1), Links());
    EXPECT_FALSE(m_frame->IsLink(Node("Kind")));
    EXPECT_FALSE(m_frame->IsLink(Node("Fremd")));
    EXPECT_TRUE(m_frame->IsLink(Node("Tür")));
    Export();
    EXPECT_FALSE(WrittenMenu().contains("Fremd"));
    EXPECT_EQ(WrittenLinks(), LinksDocument());
}

TEST_F(MenuFilesOfTree, TakeStrayItemsAwayWithTheNextLoad)
{
    WriteMenu("<menu><x><menuitem caption=\"Fremd\"/></x></menu>");
    Reload();
    Reload();
    EXPECT_EQ(Outline(), "Menu\nSensitive Links\n  Außen\n  Tür\n  vTag\nFremd");
    WriteMenu(MenuDocument());
    Reload();
    EXPECT_EQ(Outline(), WholeOutline);
}

TEST_F(MenuFilesOfTree, NameLinksWithoutAnAliasByTheirName)
{
    WriteLinks("<links><link name=\"1/2/3\" value=\"x\"/></links>");
    Reload();
    EXPECT_EQ(Below(Links()), "1/2/3");
    Export();
    EXPECT_TRUE(WrittenLinks().contains("name=\"1/2/3\" alias=\"1/2/3\" value=\"x\""));
}

TEST_F(MenuFilesOfTree, AreNumberedAnew)
{
    WriteMenu("<menu><menuitem id=\"mi7\" caption=\"A\"/><menuitem id=\"mi3\" caption=\"B\"/></menu>");
    Reload();
    Export();
    EXPECT_TRUE(WrittenMenu().contains("id=\"mi0\" class=\"main\" caption=\"A\""));
    EXPECT_TRUE(WrittenMenu().contains("id=\"mi1\" class=\"main\" caption=\"B\""));
}

// The stream

TEST_F(MenuFilesOfTree, StreamHoldsTheWholeMenu)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    m_frame->SaveToStream(buffer);
    EXPECT_EQ(buffer.data(), MenuDocument());
}

TEST_F(MenuFilesOfTree, StreamOfAnEmptyTreeIsAnEmptyMenu)
{
    const TMenuTreeFrame empty;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    empty.SaveToStream(buffer);
    EXPECT_EQ(buffer.data(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
                             "<?xml-stylesheet type=\"text/xsl\" href=\"\"?>\r\n"
                             "<menu version=\"0.1\" levels=\"2\" logo=\"\" helpbase=\"\">\r\n</menu>\r\n");
}

// What was never read

TEST_F(MenuFilesOfTree, ThatCouldNotBeReadAreKeptByAnExport)
{
    WriteMenu("<menu><menuitem");
    WriteLinks("<links><link");
    Reload();
    m_messages.Notes.clear();
    Export();
    EXPECT_EQ(ReadAll(Path("_menu/menu.xml.unlesbar")), "<menu><menuitem");
    EXPECT_EQ(ReadAll(Path("_menu/dplinks.xml.unlesbar")), "<links><link");
    EXPECT_EQ(m_messages.Notes.filter(QStringLiteral(".unlesbar")).size(), 2);
    EXPECT_EQ(WrittenLinks(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<links>\r\n</links>\r\n");
    Export();
    EXPECT_EQ(MenuFiles(), "dplinks.xml|dplinks.xml.unlesbar|menu.xml|menu.xml.unlesbar");
}

TEST_F(MenuFilesOfTree, ThatWereReadAreReplaced)
{
    Export();
    EXPECT_EQ(MenuFiles(), "dplinks.xml|menu.xml");
}

TEST_F(MenuFilesOfTree, ThatAppearedAfterALoadAreKeptByAnExport)
{
    Remove("_menu/menu.xml");
    Remove("_menu/dplinks.xml");
    Reload();
    WriteMenu("<menu/>");
    WriteLinks("<links/>");
    Export();
    EXPECT_EQ(ReadAll(Path("_menu/menu.xml.unlesbar")), "<menu/>");
    EXPECT_EQ(ReadAll(Path("_menu/dplinks.xml.unlesbar")), "<links/>");
    EXPECT_EQ(WrittenMenu(), MenuDocument());
}
