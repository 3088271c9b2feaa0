#include "RecentProjects.h"

#include "WorkbenchSupport.h"

namespace
{

QString Project(int number)
{
    return QStringLiteral("/projekte/%1").arg(number);
}

TEST(RecentProjects, LatestComesFirstAndNoneTwice)
{
    const TTemporarySettings settings;
    TRecentProjects recent;
    EXPECT_TRUE(recent.List().isEmpty());
    recent.Add(Project(1));
    recent.Add(Project(2));
    recent.Add(Project(1));
    EXPECT_EQ(recent.List(), (QStringList{Project(1), Project(2)}));
}

TEST(RecentProjects, TenAreKept)
{
    const TTemporarySettings settings;
    TRecentProjects recent;
    for (int i = 1; i <= 12; ++i)
        recent.Add(Project(i));
    EXPECT_EQ(recent.List().size(), 10);
    EXPECT_EQ(recent.List().first(), Project(12));
    EXPECT_EQ(recent.List().last(), Project(3));
}

TEST(RecentProjects, RemovedOneIsGone)
{
    const TTemporarySettings settings;
    TRecentProjects recent;
    recent.Add(Project(1));
    recent.Add(Project(2));
    recent.Remove(Project(2));
    EXPECT_EQ(TRecentProjects().List(), QStringList{Project(1)});
}

class RecentProjectsOfWindow : public TWorkbenchTest
{};

TEST_F(RecentProjectsOfWindow, OpenedAndCreatedOnesAreRemembered)
{
    const QString house = MakeProject(QStringLiteral("Haus"));
    ASSERT_TRUE(Window().OpenProject(house));
    ASSERT_TRUE(Window().CreateProject(m_directory.filePath(QStringLiteral("Neu")), QStringLiteral("Neu")));
    EXPECT_EQ(TRecentProjects().List(), (QStringList{m_directory.filePath(QStringLiteral("Neu")), house}));
}

TEST_F(RecentProjectsOfWindow, WhatCouldNotBeOpenedIsNot)
{
    EXPECT_FALSE(Window().OpenProject(m_directory.path()));
    EXPECT_TRUE(TRecentProjects().List().isEmpty());
}

TEST_F(RecentProjectsOfWindow, LoadingWithoutQuestionLeavesNoTrace)
{
    Window().LoadProject(MakeProject(QStringLiteral("Haus")));
    EXPECT_TRUE(TRecentProjects().List().isEmpty());
}

TEST_F(RecentProjectsOfWindow, MissingOneIsDroppedWithAMessage)
{
    TRecentProjects().Add(m_directory.filePath(QStringLiteral("weg")));
    EXPECT_FALSE(Window().OpenRecentProject(m_directory.filePath(QStringLiteral("weg"))));
    EXPECT_TRUE(TRecentProjects().List().isEmpty());
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.first().contains(m_directory.filePath(QStringLiteral("weg"))));
}

TEST_F(RecentProjectsOfWindow, DamagedOneStaysInTheList)
{
    const QString house = MakeProject(QStringLiteral("Haus"));
    WriteAll(house + u'/' + TProject::ProjectFileName(), "{");
    TRecentProjects().Add(house);
    EXPECT_FALSE(Window().OpenRecentProject(house));
    EXPECT_EQ(TRecentProjects().List(), QStringList{house});
    EXPECT_EQ(m_messages.Errors.size(), 1);
}

} // namespace
