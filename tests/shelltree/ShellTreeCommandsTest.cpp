#include "FileTree.h"

#include "Folders.h"
#include "Vlapputils.h"
#include "Vlclassregistry.h"

#include <QLayout>
#include <QMenu>

namespace
{

class ShellTreeCommands : public TFileTree
{
protected:
    QColor Text() const { return Tree().palette().color(QPalette::Text); }
    QColor Base() const { return Tree().palette().color(QPalette::Base); }
    TShellObjects ObjectsAfter(const char* files)
    {
        Execute(QByteArray("t://?files=") + files);
        return Tree().Objects();
    }
};

} // namespace

TEST_F(ShellTreeCommands, AcceptsAndHandlesEveryText)
{
    for (const char* command : {"", "x", "t://", "t://?", "t://?a=b&c", "Velmora.CmdButtons.1://"}) {
        bool accepted = false;
        m_component->QueryCmd(command, accepted);
        EXPECT_TRUE(accepted) << command;
        EXPECT_TRUE(Execute(command)) << command;
    }
    bool handled = false;
    m_component->ExecuteCmd(nullptr, handled);
    EXPECT_TRUE(handled);
    EXPECT_TRUE(Root().isEmpty());
}

TEST_F(ShellTreeCommands, GivesTheNullVariant)
{
    QVariant out(5);
    m_component->RequestData(QVariant(3), out);
    EXPECT_FALSE(out.isValid());
}

TEST_F(ShellTreeCommands, IsACommandTarget)
{
    void* found = nullptr;
    EXPECT_TRUE(m_component->QueryInterface(IID_ICmdTarget, &found));
    EXPECT_EQ(found, static_cast<ICmdTarget*>(m_component.get()));
    EXPECT_TRUE(m_component->QueryInterface(IID_IInterface, &found));
    EXPECT_FALSE(m_component->QueryInterface(IID_IWeekSchedule, &found));
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(qobject_cast<ICmdTarget*>(static_cast<QWidget*>(m_component.get())), m_component.get());
    EXPECT_EQ(m_component->AddRef(), 1);
    EXPECT_EQ(m_component->Release(), 0);
}

TEST_F(ShellTreeCommands, IsAPanelThatTheTreeFills)
{
    EXPECT_EQ(m_component->objectName(), QStringLiteral("TICmdShellTreeView"));
    m_component->resize(300, 200);
    m_component->layout()->activate();
    EXPECT_EQ(Tree().geometry(), QRect(0, 0, 300, 200));
    EXPECT_TRUE(Tree().GetHotTracking());
    EXPECT_TRUE(Tree().GetShowHint());
    EXPECT_FALSE(Tree().GetAutoRefresh());
    EXPECT_EQ(m_component->actions(), Tree().actions());
    EXPECT_EQ(m_component->focusProxy(), &Tree());
}

TEST_F(ShellTreeCommands, ThePathIsTheRoot)
{
    Execute("t://%PRJPATH%");
    EXPECT_EQ(Root(), m_project.Root());
    Execute("t://" + QFile::encodeName(OtherRoot()));
    EXPECT_EQ(Root(), OtherRoot());
    Execute("t://" + QFile::encodeName(ToPackagePath(m_project.Root())));
    EXPECT_EQ(Root(), m_project.Root());
    EXPECT_TRUE(Tree().GetAutoRefresh());
}

TEST_F(ShellTreeCommands, TheKeyRootReplacesThePath)
{
    Execute("t://" + QFile::encodeName(OtherRoot()) + "?ROOT=$(project)/_config");
    EXPECT_EQ(Root(), m_project.Path(QStringLiteral("_config")));
}

TEST_F(ShellTreeCommands, ARootThatDoesNotExistIsIgnored)
{
    Execute("t://%PRJPATH%");
    Execute("t:///gibt/es/nicht");
    Execute("t://%PRJPATH%/velmora.project"); // a file
    Execute("t://%PRJPATH%?root=/gibt/es/nicht");
    Execute("t://?files=all");
    EXPECT_EQ(Root(), m_project.Root());
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(ShellTreeCommands, ARootOfAFormerProjectsVariableIsIgnoredWithoutAProject)
{
    UserManager()->CloseProject();
    Execute("t://%PRJPATH%");
    EXPECT_TRUE(Root().isEmpty());
    Execute("t://?root=$(project)");
    EXPECT_TRUE(Root().isEmpty());
}

TEST_F(ShellTreeCommands, ColoursAreThoseOfTheTree)
{
    const QColor text = Text();
    const QColor base = Base();
    Execute("t://?color=255&bgcolor=$00FF00");
    EXPECT_EQ(Text(), QColor(255, 0, 0));
    EXPECT_EQ(Base(), QColor(0, 255, 0));
    Execute("t://");
    EXPECT_EQ(Text(), QColor(255, 0, 0)) << "a command without a query changes no colour";
    Execute("t://?Color=abc&BGCOLOR=abc");
    EXPECT_EQ(Text(), text);
    EXPECT_EQ(Base(), base);
}

TEST_F(ShellTreeCommands, AKeyGivenTwiceAppliesItsFirstValue)
{
    Execute("t://?color=255&color=0");
    EXPECT_EQ(Text(), QColor(255, 0, 0));
    Execute("t://?files=no&files=all");
    EXPECT_EQ(Tree().Objects(), soFolders);
}

TEST_F(ShellTreeCommands, AFilesValueOfNoInAnyCaseShowsFoldersOnly)
{
    EXPECT_EQ(ObjectsAfter("No"), soFolders);
    EXPECT_EQ(ObjectsAfter("all"), soAll);
    EXPECT_EQ(ObjectsAfter("NO"), soFolders);
    EXPECT_EQ(ObjectsAfter("yes"), soFoldersAndFiles);
    EXPECT_EQ(ObjectsAfter("ALL"), soAll);
    EXPECT_EQ(ObjectsAfter(""), soFoldersAndFiles);
    Execute("t://?files=all");
    Execute("t://?color=1");
    EXPECT_EQ(Tree().Objects(), soAll) << "kept without the key";
}

TEST_F(ShellTreeCommands, AnotherCommandWithTheSameRootKeepsWhatIsSelected)
{
    m_project.Write(QStringLiteral("_config/a.txt"), "x");
    Execute("t://%PRJPATH%");
    ASSERT_TRUE(Tree().SelectPath(At("_config/a.txt")));
    Execute("t://%PRJPATH%/?color=1");
    ASSERT_TRUE(Tree().SelectedFolder());
    EXPECT_EQ(Tree().SelectedFolder()->NativePath(), At("_config/a.txt"));
}

TEST_F(ShellTreeCommands, IsRegisteredByItsClassWhileTheUnitIsLoaded)
{
    const auto name = QStringLiteral("TICmdShellTreeView");
    TClientRegistry clients;
    SetApplicationInterface(IID_IRegisterClient, &clients);
    InitializeShellTreeUnit();
    const std::unique_ptr<QWidget> made(CreateComponent(name, nullptr));
    EXPECT_NE(qobject_cast<TICmdShellTreeView*>(made.get()), nullptr);
    FinalizeShellTreeUnit();
    EXPECT_EQ(CreateComponent(name, nullptr), nullptr);
    SetApplicationInterface(IID_IRegisterClient, nullptr);
}

TEST_F(ShellTreeCommands, IsOnThePaletteOfAFormDesigner)
{
    Register();
    EXPECT_TRUE(PaletteClasses(QStringLiteral("Velmora")).contains(QStringLiteral("TICmdShellTreeView")));
}

TEST_F(ShellTreeCommands, HoldsTheUserManagerWhileItLives)
{
    DisposeUserManager(); // the project's hold
    EXPECT_NE(UserManager(), nullptr);
    m_component.reset();
    EXPECT_EQ(UserManager(), nullptr);
    SetupUserManager();
}

TEST_F(ShellTreeCommands, TheHostCanListAndRunItsActions)
{
    m_project.Write(QStringLiteral("a.txt"), "x");
    Execute("t://%PRJPATH%");
    ASSERT_TRUE(Tree().SelectPath(At("a.txt")));
    QMetaObject::invokeMethod(m_component.get(), "UpdateActions", Qt::DirectConnection);
    const auto* edit = m_component->findChild<QAction*>(QStringLiteral("MenuAction_Edit"));
    ASSERT_NE(edit, nullptr);
    EXPECT_TRUE(m_component->actions().contains(const_cast<QAction*>(edit)));
    EXPECT_TRUE(edit->isEnabled());
}
