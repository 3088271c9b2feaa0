#include "MenuTree.h"

#include "NestedLoop.h"

#include <QAction>
#include <QLineEdit>
#include <QMimeData>
#include <QSpinBox>
#include <QTest>
#include <QUrl>

namespace
{

constexpr auto ShownWetter = "Wetter|Das Wetter|/wetter.html| access=3";
constexpr auto ShownTuer = "40001|/tuer.html|Tür|0 source=1 type=3 access=0";

class MenuDialogs : public TMenuTree
{
protected:
    void DoubleClick(const char* name) const
    {
        Select(name);
        QTest::mouseDClick(m_frame->viewport(), Qt::LeftButton, {}, m_frame->visualItemRect(Node(name)).center());
    }
    // Drops a file of the project on a field of the dialog on screen.
    void DropFile(const char* field, const char* file) const
    {
        QMimeData content;
        content.setUrls({QUrl::fromLocalFile(m_project.Path(QString::fromUtf8(file)))});
        auto* edit = Field<QLineEdit>(field);
        EXPECT_TRUE(TDraggedOver(edit, &content).EnterAndDrop(edit->rect().center())) << field;
    }
    static std::string TextOf(const char* field) { return Field<QLineEdit>(field)->text().toStdString(); }
};

} // namespace

// Filling

TEST_F(MenuDialogs, ShowAnItemByItsRecord)
{
    ShowProperties("Wetter");
    EXPECT_EQ(ShownItem(), ShownWetter);
    EXPECT_TRUE(m_frame->IsMenuDialogShown());
    EXPECT_FALSE(m_frame->IsLinkDialogShown());
    EXPECT_TRUE(MenuDialog()->isVisible());
    EXPECT_FALSE(MenuDialog()->isModal());
    EXPECT_FALSE(MenuDialog()->GetChanged());
    Select("Start");
    EXPECT_EQ(ShownItem(), "Start|Startseite|/index.html|/hilfe/start.html access=0");
    EXPECT_FALSE(MenuDialog()->GetChanged());
}

TEST_F(MenuDialogs, ShowALinkByItsRecord)
{
    ShowProperties("Tür");
    EXPECT_EQ(ShownLink(), ShownTuer);
    EXPECT_TRUE(m_frame->IsLinkDialogShown());
    EXPECT_FALSE(m_frame->IsMenuDialogShown());
    EXPECT_FALSE(LinkDialog()->isModal());
    EXPECT_FALSE(LinkDialog()->GetChanged());
    Select("Außen");
    EXPECT_EQ(ShownLink(), "1/1/1|/aussen.html|Außen|1 source=0 type=2 access=2");
    Select("vTag");
    EXPECT_EQ(ShownLink(), "vTag||vTag| source=2 type=0 access=4");
    EXPECT_FALSE(LinkDialog()->GetChanged());
}

TEST_F(MenuDialogs, ShowAnAccessBeyondTheirRangeEachInItsWay)
{
    ShowProperties("Flur");
    EXPECT_EQ(Field<QSpinBox>("EditAccess")->text(), QStringLiteral("25"));
    EXPECT_EQ(MenuDialog()->GetMenuAccess(), 20);
    Item("Tür").Access = 25;
    ShowProperties("Tür");
    EXPECT_EQ(Field<QSpinBox>("EditAccess")->text(), QStringLiteral("20"));
    Select("Außen");
    EXPECT_EQ(Item("Tür").Access, 25) << "nothing was changed";
    Select("Tür");
    Press("BtnOK");
    EXPECT_EQ(Item("Tür").Access, 20);
}

TEST_F(MenuDialogs, OpenByADoubleClickOnWhatStandsBelowTheRoots)
{
    DoubleClick("Wetter");
    EXPECT_EQ(ShownItem(), ShownWetter);
    EXPECT_EQ(Selected(), "Wetter");
    DoubleClick("Tür");
    EXPECT_EQ(ShownLink(), ShownTuer);
    EXPECT_FALSE(m_frame->IsMenuDialogShown());
    Press("BtnCancel");
    for (const char* root : {"Menu", "Sensitive Links"}) {
        DoubleClick(root);
        EXPECT_EQ(Dialog(), nullptr) << root;
    }
}

TEST_F(MenuDialogs, DoNotOpenForTheRootsOrForNothing)
{
    for (const char* node : {static_cast<const char*>(nullptr), "Menu", "Sensitive Links"}) {
        Select(node);
        m_frame->MenuAction_AttributesExecute();
    }
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(MenuDialogs, ShowAStrayItemByTheMenuAndNotByADoubleClick)
{
    WriteMenu("<menu><x><menuitem caption=\"Fremd\" title=\"t\"/></x></menu>");
    Reload();
    m_frame->expandAll();
    DoubleClick("Fremd");
    EXPECT_EQ(Dialog(), nullptr);
    ShowProperties("Fremd");
    EXPECT_EQ(ShownItem(), "Fremd|t|| access=0");
    Type("EditLink", "/f.html");
    Press("BtnOK");
    EXPECT_EQ(Record("Fremd"), "Fremd|t|/f.html| access=0 kind=0 type=0 source=0");
}

TEST_F(MenuDialogs, AreMadeOnceEach)
{
    ShowProperties("Wetter");
    const TMenuPropsDialog* menuDialog = MenuDialog();
    ShowProperties("Tür");
    const TLinkPropsDialog* linkDialog = LinkDialog();
    ShowProperties("Uhr");
    EXPECT_EQ(MenuDialog(), menuDialog);
    ShowProperties("vTag");
    EXPECT_EQ(LinkDialog(), linkDialog);
}

// The other kind

TEST_F(MenuDialogs, AreClosedByThePropertiesOfTheOtherKind)
{
    ShowProperties("Wetter");
    ShowProperties("Tür");
    EXPECT_FALSE(MenuDialog()->isVisible());
    EXPECT_EQ(ShownLink(), ShownTuer);
    EXPECT_TRUE(m_frame->IsLinkDialogShown());
    ShowProperties("Uhr");
    EXPECT_FALSE(LinkDialog()->isVisible());
    EXPECT_FALSE(m_frame->IsLinkDialogShown());
    EXPECT_TRUE(m_frame->IsMenuDialogShown());
}

TEST_F(MenuDialogs, StayForASelectionOfTheOtherKindAndChangeNothingThen)
{
    ShowProperties("Wetter");
    Select("Tür");
    EXPECT_TRUE(m_frame->IsMenuDialogShown());
    EXPECT_EQ(ShownItem(), ShownWetter);
    const std::string tuer = Record("Tür");
    const std::string wetter = Record("Wetter");
    Type("EditTitle", "Anders");
    Press("BtnOK");
    EXPECT_EQ(Record("Tür"), tuer);
    EXPECT_EQ(Record("Wetter"), wetter);

    ShowProperties("Tür");
    Select("Wetter");
    EXPECT_TRUE(m_frame->IsLinkDialogShown());
    Type("EditValue", "9");
    Press("BtnApply");
    Select("Uhr");
    Select("Außen");
    EXPECT_EQ(Record("Tür"), tuer);
    EXPECT_EQ(Record("Wetter"), wetter);
    EXPECT_EQ(ShownLink(), "1/1/1|/aussen.html|Außen|1 source=0 type=2 access=2");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuDialogs, LoseNoChangeToASelectionOfTheOtherKind)
{
    ShowProperties("Wetter");
    Type("EditHelp", "/h.html");
    Select("Tür");
    EXPECT_EQ(Item("Wetter").Help, QStringLiteral("/h.html"));
    ShowProperties("Tür");
    Type("EditValue", "9");
    ShowProperties("Uhr");
    EXPECT_EQ(Item("Tür").Link, QStringLiteral("9"));
    EXPECT_EQ(Item("Uhr").Help, QString());
}

// Accepting

TEST_F(MenuDialogs, WriteEveryFieldOfAnItem)
{
    ShowProperties("Wetter");
    Type("EditName", "Regen");
    Type("EditTitle", "Radar\\Karte");
    Type("EditLink", "\\karten\\radar.html");
    Type("EditHelp", "\\hilfe\\radar.html");
    TypeAccess("7");
    Press("BtnOK");
    EXPECT_EQ(Record("Regen"),
              "Regen|Radar\\Karte|/karten/radar.html|/hilfe/radar.html access=7 kind=0 type=0 source=0");
    EXPECT_EQ(Below("Start"), "Regen|Uhr");
    EXPECT_TRUE(m_frame->IsModified());
    EXPECT_FALSE(m_frame->IsMenuDialogShown());
}

TEST_F(MenuDialogs, WriteEveryFieldOfALinkAndKeepItsBackslashes)
{
    ShowProperties("Tür");
    Type("EditUrl", "\\seiten\\tor.html");
    Type("EditAlias", "Tor");
    Type("EditName", "1/2/3");
    Type("EditValue", "\\an.txt");
    TypeAccess("9");
    Choose("CBoxDataType", dtmEIS6);
    Choose("CBoxDataSource", nsVIRTUAL);
    Press("BtnOK");
    EXPECT_EQ(Record("Tor"), R"(Tor|1/2/3|\an.txt|\seiten\tor.html access=9 kind=4 type=1 source=2)");
    EXPECT_EQ(Below(Links()), "Außen|Tor|vTag");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(MenuDialogs, ApplyWithoutClosingAndWithoutClearingTheFlag)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Anders");
    Press("BtnApply");
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Anders"));
    EXPECT_TRUE(MenuDialog()->GetChanged());
    EXPECT_TRUE(m_frame->IsMenuDialogShown());
    ShowProperties("Tür");
    Type("EditValue", "9");
    Press("BtnApply");
    EXPECT_EQ(Item("Tür").Link, QStringLiteral("9"));
    EXPECT_TRUE(LinkDialog()->GetChanged());
}

TEST_F(MenuDialogs, DropChangesWhenTheyAreCancelledOrClosed)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Anders");
    Press("BtnCancel");
    EXPECT_FALSE(m_frame->IsMenuDialogShown());
    ShowProperties("Tür");
    Type("EditValue", "9");
    LinkDialog()->close();
    EXPECT_FALSE(m_frame->IsLinkDialogShown());
    Select("Uhr");
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Das Wetter"));
    EXPECT_EQ(Item("Tür").Link, QStringLiteral("0"));
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_TRUE(Action("MenuAction_AttributesExecute")->isEnabled());
}

TEST_F(MenuDialogs, AcceptAutomaticallyWhenAnotherNodeIsSelected)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Anders");
    Select("Uhr");
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Anders"));
    EXPECT_FALSE(MenuDialog()->GetChanged());
    EXPECT_EQ(Item("Uhr").Title, QString());
    ShowProperties("Tür");
    Type("EditValue", "9");
    Select("vTag");
    EXPECT_EQ(Item("Tür").Link, QStringLiteral("9"));
    EXPECT_EQ(Item("vTag").Link, QString());
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(MenuDialogs, AcceptWhenAnotherNodeIsShownByADoubleClick)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Anders");
    DoubleClick("Uhr");
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Anders"));
}

TEST_F(MenuDialogs, DropChangesWithoutAutomaticAcceptance)
{
    ShowProperties("Wetter");
    MenuDialog()->SetAutoAccept(false);
    Type("EditTitle", "Anders");
    Select("Uhr");
    EXPECT_FALSE(MenuDialog()->GetChanged());
    MenuDialog()->SetAutoAccept(true);
    ShowProperties("Tür");
    LinkDialog()->SetAutoAccept(false);
    Type("EditValue", "9");
    Select("vTag");
    EXPECT_FALSE(LinkDialog()->GetChanged());
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Das Wetter"));
    EXPECT_EQ(Item("Tür").Link, QStringLiteral("0"));
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuDialogs, StayOnTheirNodeWhenARootIsSelected)
{
    for (const char* root : {"Menu", "Sensitive Links"}) {
        ShowProperties("Wetter");
        Select(root);
        EXPECT_EQ(ShownItem().substr(0, 6), "Wetter");
        Type("EditTitle", root);
        Press("BtnOK");
        EXPECT_EQ(Item("Wetter").Title.toStdString(), root);
    }
}

// Files

TEST_F(MenuDialogs, TurnDroppedFilesIntoAddresses)
{
    ShowProperties("Wetter");
    DropFile("EditLink", "seiten/wetter karte.html");
    DropFile("EditHelp", "hilfe.html");
    EXPECT_EQ(TextOf("EditLink"), "/seiten/wetter karte.html");
    EXPECT_EQ(TextOf("EditHelp"), "/hilfe.html");
    EXPECT_TRUE(MenuDialog()->GetChanged());
    ShowProperties("Tür");
    DropFile("EditUrl", "seiten/tor.html");
    DropFile("EditValue", "an.txt");
    EXPECT_EQ(TextOf("EditUrl"), "/seiten/tor.html");
    EXPECT_EQ(TextOf("EditValue"), PackagePath("an.txt")) << "the value is no address";
}

// What takes the node away

TEST_F(MenuDialogs, ForgetTheirNodeByALoad)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Anders");
    Reload();
    EXPECT_TRUE(m_frame->IsMenuDialogShown());
    Press("BtnApply");
    Press("SBtnDown");
    Press("BtnOK");
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Das Wetter"));
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuDialogs, DoNotFollowWhileTheTreeIsNotEditableAndAreRefreshedThen)
{
    ShowProperties("Wetter");
    m_frame->SetEditable(false);
    Select("Uhr");
    EXPECT_EQ(ShownItem(), ShownWetter);
    m_frame->SetEditable(true);
    EXPECT_EQ(ShownItem(), "Uhr||/uhr.html| access=0");
}

TEST_F(MenuDialogs, LoseNoChangeWhenTheTreeBecomesEditableAgain)
{
    ShowProperties("Wetter");
    m_frame->SetEditable(false);
    Type("EditTitle", "Anders");
    m_frame->SetEditable(true);
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Anders"));
}
