#include "ScheduleTree.h"

#include <QAction>
#include <QMenu>
#include <QTest>

namespace
{

class ScheduleAccess : public TScheduleTree
{
protected:
    const QMenu* Levels() const { return Action("SetGroupAccess")->menu<QMenu*>(); }
    void ChooseLevel(int level) const { Levels()->actions().at(level)->trigger(); }
};

} // namespace

TEST_F(ScheduleAccess, OffersTwentyOneLevels)
{
    const QList<QAction*> levels = Levels()->actions();
    ASSERT_EQ(levels.size(), 21);
    for (qsizetype level = 0; level < levels.size(); ++level) {
        EXPECT_EQ(levels[level]->text(), QString::number(level));
        EXPECT_TRUE(levels[level]->isCheckable());
    }
}

TEST_F(ScheduleAccess, SetsTheLevelOfTheGroupAndChecksItAlone)
{
    Select({"Licht"});
    for (const int level : {20, 0, 7}) {
        ChooseLevel(level);
        EXPECT_EQ(Node("Licht")->GroupAccess(), level);
        EXPECT_EQ(CheckedAccess(), std::to_string(level));
    }
    EXPECT_EQ(Node("Heizung")->GroupAccess(), 5);
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleAccess, KeepsTheCheckMarkWhenTheSameLevelIsChosen)
{
    Select({"Licht"});
    OpenMenu("Licht");
    ChooseLevel(3);
    EXPECT_EQ(CheckedAccess(), "3");
    EXPECT_EQ(Node("Licht")->GroupAccess(), 3);
    EXPECT_FALSE(m_frame->IsModified());
    CloseMenu();
}

TEST_F(ScheduleAccess, IsChosenByTheMouseForTheGroupUnderIt)
{
    Select({"Licht"});
    OpenMenu("Rollladen");
    auto* levels = Action("SetGroupAccess")->menu<QMenu*>();
    levels->popup(QPoint(0, 0));
    QTest::mouseClick(levels, Qt::LeftButton, {}, levels->actionGeometry(levels->actions().at(4)).center());
    EXPECT_EQ(Node("Rollladen")->GroupAccess(), 4);
    EXPECT_EQ(Node("Licht")->GroupAccess(), 3);
    CloseMenu();
}

TEST_F(ScheduleAccess, FollowsTheSelectedGroup)
{
    for (const auto& [group, level] :
         {std::pair{"Licht", "3"}, {"Heizung", "5"}, {"Rollladen", "20"}, {"Urlaub", "0"}}) {
        Select({group});
        EXPECT_EQ(CheckedAccess(), level) << group;
    }
    Select({"Bad"});
    EXPECT_EQ(CheckedAccess(), "");
}

TEST_F(ScheduleAccess, IsSetForTheGroupInFocusOfSeveral)
{
    Select({"Licht", "Heizung"});
    ChooseLevel(9);
    EXPECT_EQ(Node("Licht")->GroupAccess(), 3);
    EXPECT_EQ(Node("Heizung")->GroupAccess(), 9);
}

TEST_F(ScheduleAccess, IsSetForNothingButASelectedGroup)
{
    for (const char* node : {"Wochenschaltplan", "Bad", "05:15"}) {
        Select({node});
        m_frame->SetGroupAccess(9);
        ChooseLevel(9);
        EXPECT_EQ(Node(node)->GroupAccess(), 0) << node;
    }
    Select({});
    OpenMenu("Licht");
    ChooseLevel(9);
    EXPECT_EQ(Node("Licht")->GroupAccess(), 3);
    CloseMenu();
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleAccess, TakesNoLevelOutsideOfTheMenu)
{
    Select({"Licht"});
    for (const int level : {-1, 21, 1000})
        m_frame->SetGroupAccess(level);
    EXPECT_EQ(Node("Licht")->GroupAccess(), 3);
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleAccess, ChecksNothingForALevelThatTheMenuDoesNotHave)
{
    m_project.Write(QStringLiteral("_config/data/schedule/schedule.xml"),
                    R"(<eibnet><nodes name="Hoch" access="21"/><nodes name="Tief" access="-1"/></eibnet>)");
    Run("MenuAction_Reload");
    for (const char* group : {"Hoch", "Tief"}) {
        Select({group});
        EXPECT_EQ(CheckedAccess(), "") << group;
    }
    ChooseLevel(20);
    EXPECT_EQ(Node("Tief")->GroupAccess(), 20);
}

TEST_F(ScheduleAccess, IsWrittenAsItWasChosen)
{
    Select({"Heizung"});
    ChooseLevel(12);
    Run("MenuAction_Export");
    EXPECT_EQ(Exported(), Document().replace(R"(name="Heizung" access="5")", R"(name="Heizung" access="12")"));
}
