#include "MenuTree.h"

#include <QAction>

namespace
{

constexpr auto Keys = R"(x://?alarm=\alarm.html&config=/config.html&logout=/logout.html)";
constexpr auto Alarm = "MenuAction_InsertSpecExecute_1";
constexpr auto Config = "MenuAction_InsertSpecExecute_2";
constexpr auto Logout = "MenuAction_InsertSpecExecute_3";

// A frame that knows where the special items lead.
class MenuSpecials : public TMenuTree
{
protected:
    MenuSpecials() { Execute(*m_frame, Keys); }
};

} // namespace

TEST_F(MenuSpecials, AlarmAsksForAccessTen)
{
    RunOn("Start", Alarm);
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme|Alarm");
    EXPECT_EQ(Record("Alarm"), R"(Alarm|Alarm|\alarm.html| access=10 kind=1 type=0 source=0)");
    EXPECT_EQ(Selected(), "Alarm");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(MenuSpecials, ConfigAsksForAccessTen)
{
    RunOn("Start", Config);
    EXPECT_EQ(Record("Config"), "Config|Config|/config.html| access=10 kind=2 type=0 source=0");
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme|Config");
}

TEST_F(MenuSpecials, LogoutStaysAtAccessNull)
{
    RunOn("Start", Logout);
    EXPECT_EQ(Record("Logout"), "Logout|Logout|/logout.html| access=0 kind=3 type=0 source=0");
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme|Logout");
}

TEST_F(MenuSpecials, ForASubItemAreAppendedAmongItsSiblings)
{
    RunOn("Wetter", Config);
    EXPECT_EQ(Below("Start"), "Wetter|Uhr|Config");
    EXPECT_EQ(Node("Config")->ImageIndex(), miSubItem);
}

TEST_F(MenuSpecials, WithoutASelectionGoToTheEndOfTheMenu)
{
    Select(nullptr);
    OpenMenu("Menu");
    Run(Logout);
    CloseMenu();
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme|Logout");
}

TEST_F(MenuSpecials, ForTheMenuAndForALinkGoToTheEndOfTheMenu)
{
    RunOn("Menu", Alarm);
    Select("Tür");
    OpenMenu("Menu");
    Run(Config);
    CloseMenu();
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme|Alarm|Config");
    EXPECT_EQ(Below(Links()), "Außen|Tür|vTag");
}

TEST_F(MenuSpecials, AreShownByADialogThatIsOpen)
{
    ShowProperties("Wetter");
    RunOn("Licht", Alarm);
    EXPECT_EQ(ShownItem(), R"(Alarm|Alarm|\alarm.html| access=10)");
    EXPECT_FALSE(MenuDialog()->GetChanged());
    Press("BtnOK");
    EXPECT_EQ(Record("Alarm"), "Alarm|Alarm|/alarm.html| access=10 kind=1 type=0 source=0");
}

TEST_F(MenuSpecials, TakeTheLinkOfTheLastCommand)
{
    Execute(*m_frame, "x://?logout=/ende.html");
    RunOn("Start", Logout);
    RunOn("Start", Alarm);
    EXPECT_EQ(Item("Logout").Link, QStringLiteral("/ende.html"));
    EXPECT_EQ(Item("Alarm").Link, QStringLiteral("\\alarm.html"));
}

TEST_F(MenuSpecials, AreRefusedWithoutTheirKeys)
{
    Execute(*m_frame, "x://?alarm=&config=&logout=");
    const std::string before = Outline();
    Select("Start");
    for (const char* name : {Alarm, Config, Logout}) {
        EXPECT_FALSE(Action(name)->isEnabled()) << name;
        Run(name);
    }
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuSpecials, AreOrdinaryItemsOnceSavedAndLoaded)
{
    for (const char* name : {Alarm, Config, Logout})
        RunOn("Start", name);
    Export();
    Reload();
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme|Alarm|Config|Logout");
    EXPECT_EQ(Record("Alarm"), R"(Alarm|Alarm|\alarm.html| access=10 kind=0 type=0 source=0)");
    EXPECT_EQ(Record("Config"), "Config|Config|/config.html| access=10 kind=0 type=0 source=0");
    EXPECT_EQ(Record("Logout"), "Logout|Logout|/logout.html| access=0 kind=0 type=0 source=0");
}

TEST_F(MenuSpecials, AreNotMadeWithoutAMenu)
{
    m_frame = std::make_unique<TMenuTreeFrame>();
    Execute(*m_frame, Keys);
    m_frame->MenuAction_InsertSpecExecute(mkAlarm);
    EXPECT_EQ(m_frame->TopNode(), nullptr);
    EXPECT_FALSE(m_frame->IsModified());
}
