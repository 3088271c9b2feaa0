#include "Userman.h"

#include "TestSupport.h"
#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace
{

class TListener : public QObject
{
public:
    void Hear(QObject* sender, TUserProperty property, const QString& value)
    {
        ++Calls;
        Sender = sender;
        Property = property;
        Value = value;
        if (React)
            React();
    }

    int Calls = 0;
    QObject* Sender = nullptr;
    TUserProperty Property = upUser;
    QString Value;
    std::function<void()> React;
};

// Two projects, none of them open, and the user manager.
class UserManagerTest : public testing::Test
{
protected:
    UserManagerTest()
    {
        SetupUserManager();
        TProject::Create(m_first, QStringLiteral("Haus"));
        TProject::Create(m_second, QStringLiteral("Büro"));
    }
    ~UserManagerTest() override { DisposeUserManager(); }

    static bool IsPathSet() { return qEnvironmentVariableIsSet("PRJPATH"); }

    QTemporaryDir m_directory;
    const QString m_first = m_directory.filePath(QStringLiteral("haus"));
    const QString m_second = m_directory.filePath(QStringLiteral("büro %HOME%"));
};

} // namespace

TEST(UserManagerLife, LastsAsLongAsSomebodyHoldsIt)
{
    ASSERT_EQ(UserManager(), nullptr);
    SetupUserManager();
    TUserManager* manager = UserManager();
    ASSERT_NE(manager, nullptr);
    SetupUserManager();
    EXPECT_EQ(UserManager(), manager);
    DisposeUserManager();
    EXPECT_EQ(UserManager(), manager);
    DisposeUserManager();
    EXPECT_EQ(UserManager(), nullptr);
}

TEST(UserManagerLife, IsNotHarmedByADisposeTooMany)
{
    DisposeUserManager();
    DisposeUserManager();
    SetupUserManager();
    EXPECT_NE(UserManager(), nullptr);
    DisposeUserManager();
    EXPECT_EQ(UserManager(), nullptr);
}

TEST(UserManagerLife, ForgetsTheProjectPathOfAParentProcess)
{
    qputenv("PRJPATH", "/somewhere/else");
    SetupUserManager();
    EXPECT_FALSE(qEnvironmentVariableIsSet("PRJPATH"));
    EXPECT_EQ(UserManager()->EnvToFilePath(QStringLiteral("%PRJPATH%\\x")), QStringLiteral("%PRJPATH%\\x"));
    DisposeUserManager();
}

TEST_F(UserManagerTest, HasNoProjectAtFirst)
{
    EXPECT_EQ(UserManager()->GetActiveProject(), nullptr);
    EXPECT_FALSE(IsPathSet());
}

TEST_F(UserManagerTest, OpensAProjectAndExportsItsPath)
{
    UserManager()->OpenProject(m_first + u'/');
    ASSERT_NE(UserManager()->GetActiveProject(), nullptr);
    EXPECT_EQ(UserManager()->GetActiveProject()->GetName(), QStringLiteral("Haus"));
    EXPECT_EQ(UserManager()->GetActiveProject()->GetRootDirectory(), m_first);
    EXPECT_EQ(qgetenv("PRJPATH"), m_first.toUtf8());
}

TEST_F(UserManagerTest, ExportsThePathOfTheNextProject)
{
    UserManager()->OpenProject(m_first);
    UserManager()->OpenProject(m_second);
    EXPECT_EQ(UserManager()->GetActiveProject()->GetName(), QStringLiteral("Büro"));
    EXPECT_EQ(qgetenv("PRJPATH"), m_second.toUtf8());
}

TEST_F(UserManagerTest, ClosesAProjectAndTakesItsPathBack)
{
    UserManager()->OpenProject(m_first);
    UserManager()->CloseProject();
    EXPECT_EQ(UserManager()->GetActiveProject(), nullptr);
    EXPECT_FALSE(IsPathSet());
}

TEST_F(UserManagerTest, TakesThePathBackWhenItIsDestroyed)
{
    UserManager()->OpenProject(m_first);
    DisposeUserManager();
    EXPECT_FALSE(IsPathSet());
    SetupUserManager();
}

TEST_F(UserManagerTest, KeepsTheProjectWhenTheNextOneCannotBeOpened)
{
    UserManager()->OpenProject(m_first);
    TListener listener;
    UserManager()->AddListener(&listener, &TListener::Hear);
    EXPECT_THROW(UserManager()->OpenProject(m_directory.filePath(QStringLiteral("none"))), TUserError);
    ASSERT_NE(UserManager()->GetActiveProject(), nullptr);
    EXPECT_EQ(UserManager()->GetActiveProject()->GetRootDirectory(), m_first);
    EXPECT_EQ(qgetenv("PRJPATH"), m_first.toUtf8());
    EXPECT_EQ(listener.Calls, 0);
}

TEST_F(UserManagerTest, TellsListenersWhatChanged)
{
    TListener listener;
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(listener.Calls, 1);
    EXPECT_EQ(listener.Sender, UserManager());
    EXPECT_EQ(listener.Property, upProject);
    EXPECT_EQ(listener.Value, m_first + QStringLiteral("/velmora.project"));
    UserManager()->CloseProject();
    EXPECT_EQ(listener.Calls, 2);
    EXPECT_EQ(listener.Value, QString());
}

TEST_F(UserManagerTest, TellsListenersWhenTheSameProjectIsOpenedAgain)
{
    TListener listener;
    UserManager()->OpenProject(m_first);
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(listener.Calls, 1);
}

TEST_F(UserManagerTest, TellsNobodyWhenThereIsNothingToClose)
{
    TListener listener;
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->CloseProject();
    EXPECT_EQ(listener.Calls, 0);
}

TEST_F(UserManagerTest, HasChangedWhenListenersAreTold)
{
    TListener listener;
    QByteArray path;
    const TProject* project = nullptr;
    listener.React = [&] {
        path = qgetenv("PRJPATH");
        project = UserManager()->GetActiveProject();
    };
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(path, m_first.toUtf8());
    EXPECT_EQ(project, UserManager()->GetActiveProject());
}

TEST_F(UserManagerTest, CallsAListenerOnceThatWasAddedTwice)
{
    TListener listener;
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(listener.Calls, 1);
}

TEST_F(UserManagerTest, EndsAllThatAddingAListenerTwiceBegan)
{
    TListener listener;
    TListener other;
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->AddListener(&other, &TListener::Hear);
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->RemoveListener(&listener, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(listener.Calls, 0);
    EXPECT_EQ(other.Calls, 1);
}

TEST_F(UserManagerTest, TakesAListenerAgainAfterItWasRemoved)
{
    TListener listener;
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->RemoveListener(&listener, &TListener::Hear);
    UserManager()->RemoveListener(&listener, &TListener::Hear);
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(listener.Calls, 1);
}

TEST_F(UserManagerTest, IsNotHarmedByRemovingAListenerThatWasNeverAdded)
{
    TListener listener;
    UserManager()->RemoveListener(&listener, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(listener.Calls, 0);
}

TEST_F(UserManagerTest, LetsAListenerRemoveItselfWhileItIsCalled)
{
    TListener first;
    TListener second;
    first.React = [&] { UserManager()->RemoveListener(&first, &TListener::Hear); };
    UserManager()->AddListener(&first, &TListener::Hear);
    UserManager()->AddListener(&second, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    UserManager()->OpenProject(m_second);
    EXPECT_EQ(first.Calls, 1);
    EXPECT_EQ(second.Calls, 2);
}

TEST_F(UserManagerTest, DoesNotCallAListenerThatAnEarlierOneRemoved)
{
    TListener first;
    TListener second;
    TListener third;
    first.React = [&] { UserManager()->RemoveListener(&second, &TListener::Hear); };
    for (TListener* listener : {&first, &second, &third})
        UserManager()->AddListener(listener, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(second.Calls, 0);
    EXPECT_EQ(third.Calls, 1);
}

TEST_F(UserManagerTest, CallsAListenerThatWasAddedByAnotherFromTheNextChangeOn)
{
    TListener first;
    TListener second;
    first.React = [&] { UserManager()->AddListener(&second, &TListener::Hear); };
    UserManager()->AddListener(&first, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(second.Calls, 0);
    UserManager()->OpenProject(m_second);
    EXPECT_EQ(second.Calls, 1);
}

TEST_F(UserManagerTest, DropsDestroyedListeners)
{
    auto listener = std::make_unique<TListener>();
    TListener other;
    UserManager()->AddListener(listener.get(), &TListener::Hear);
    UserManager()->AddListener(&other, &TListener::Hear);
    listener.reset();
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(other.Calls, 1);
}

TEST_F(UserManagerTest, LetsAListenerDestroyAnotherWhileItIsCalled)
{
    TListener first;
    auto second = std::make_unique<TListener>();
    TListener third;
    first.React = [&] { second.reset(); };
    UserManager()->AddListener(&first, &TListener::Hear);
    UserManager()->AddListener(second.get(), &TListener::Hear);
    UserManager()->AddListener(&third, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(third.Calls, 1);
}

TEST_F(UserManagerTest, MayBeDisposedOfByAListener)
{
    TListener listener;
    listener.React = [] { DisposeUserManager(); };
    UserManager()->AddListener(&listener, &TListener::Hear);
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(UserManager(), nullptr);
    EXPECT_FALSE(IsPathSet());
    SetupUserManager();
}

TEST_F(UserManagerTest, ReplacesBothReferencesToTheProjectWithoutRegardToCase)
{
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(UserManager()->DecodeVars(QStringLiteral("$(project)\\a;%PRJPATH%/b;$(PROJECT);%prjpath%")),
              QStringLiteral("%1\\a;%1/b;%1;%1").arg(m_first));
}

TEST_F(UserManagerTest, ReplacesNothingElseInATextWithVariables)
{
    UserManager()->OpenProject(m_first);
    const QString text = QStringLiteral("$(projekt) %PRJPATH $project %HOME% (project) $( project )");
    EXPECT_EQ(UserManager()->DecodeVars(text), text);
    EXPECT_EQ(UserManager()->DecodeVars(QString()), QString());
}

TEST_F(UserManagerTest, LeavesReferencesAsTheyStandWithoutAProject)
{
    const QString text = QStringLiteral("$(project)\\_config;%PRJPATH%\\x;%prjpath%");
    EXPECT_EQ(UserManager()->DecodeVars(text), text);
    EXPECT_EQ(UserManager()->EnvToFilePath(text), text);
    UserManager()->OpenProject(m_first);
    UserManager()->CloseProject();
    EXPECT_EQ(UserManager()->DecodeVars(text), text);
    EXPECT_EQ(UserManager()->EnvToFilePath(text), text);
}

TEST_F(UserManagerTest, TurnsTheProjectsReferencesIntoPackagePaths)
{
    UserManager()->OpenProject(m_first);
    EXPECT_EQ(UserManager()->EnvToFilePath(QStringLiteral("$(project)\\_config/x.xml")),
              ToPackagePath(m_first) + QStringLiteral("\\_config\\x.xml"));
    EXPECT_EQ(UserManager()->EnvToFilePath(QStringLiteral("%prjpath%\\x.xml")),
              ToPackagePath(m_first) + QStringLiteral("\\x.xml"));
    EXPECT_EQ(UserManager()->EnvToFilePath(QStringLiteral("%PRJPATH%\\x.xml")),
              ToPackagePath(m_first) + QStringLiteral("\\x.xml"));
}

TEST_F(UserManagerTest, TurnsEnvironmentReferencesIntoPackagePaths)
{
    qputenv("VL_HOME", "/opt/haus");
    EXPECT_EQ(UserManager()->EnvToFilePath(QStringLiteral("%VL_HOME%/menu\\%VL_NONE%")),
              QStringLiteral("\\opt\\haus\\menu\\%VL_NONE%"));
    qunsetenv("VL_HOME");
    EXPECT_EQ(UserManager()->EnvToFilePath(QStringLiteral("C:\\a 100%")), QStringLiteral("C:\\a 100%"));
    EXPECT_EQ(UserManager()->EnvToFilePath(QString()), QString());
}

TEST_F(UserManagerTest, TakesThePercentSignsOfAProjectDirectoryForNoReference)
{
    UserManager()->OpenProject(m_second);
    EXPECT_EQ(UserManager()->EnvToFilePath(QStringLiteral("$(project)\\x")),
              ToPackagePath(m_second) + QStringLiteral("\\x"));
    EXPECT_EQ(UserManager()->EnvToFilePath(QStringLiteral("%PRJPATH%\\x")),
              ToPackagePath(m_second) + QStringLiteral("\\x"));
}

TEST(UserManagerTexts, DependOnTheProjectWhenTheyReferToIt)
{
    EXPECT_TRUE(TUserManager::DependsOnProject(QStringLiteral("a\\$(Project)\\b")));
    EXPECT_TRUE(TUserManager::DependsOnProject(QStringLiteral("%prjPath%")));
    EXPECT_FALSE(TUserManager::DependsOnProject(QStringLiteral("%PRJPATH\\x")));
    EXPECT_FALSE(TUserManager::DependsOnProject(QStringLiteral("C:\\project")));
    EXPECT_FALSE(TUserManager::DependsOnProject(QString()));
}
