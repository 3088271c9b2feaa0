#include "MenuTree.h"

#include "Vlapputils.h"
#include "Vlclassregistry.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>

namespace
{

constexpr auto LoadCommand = R"(Velmora.MenuTree.1://?file=%PRJPATH%\_menu\menu.xml)";

// A frame that was not commanded yet, and a project with a menu.
class MenuCommands : public TMenuTree
{
protected:
    MenuCommands()
    {
        m_frame = std::make_unique<TMenuTreeFrame>();
        m_messages.Notes.clear();
    }

    void Command(const QByteArray& command) const { Execute(*m_frame, command); }
    void OpenAgain() const { UserManager()->OpenProject(m_project.Root()); }
    std::string Path() const { return m_frame->GetMenuPath().toStdString(); }
    std::string Style() const { return m_frame->GetStylePath().toStdString(); }
    std::string Output() const { return m_frame->GetOutputPath().toStdString(); }
    QColor Color(QPalette::ColorRole role) const { return m_frame->palette().color(role); }
    static QColor Default(QPalette::ColorRole role) { return QApplication::palette().color(role); }
};

} // namespace

TEST_F(MenuCommands, BeginWithAnEmptyTreeAndItsSettings)
{
    EXPECT_EQ(m_frame->TopNode(), nullptr);
    EXPECT_EQ(Path(), PackagePath("_menu/menu.xml"));
    EXPECT_EQ(m_frame->GetLinksPath(), QString());
    EXPECT_EQ(Style(), "");
    EXPECT_EQ(Output(), "");
    EXPECT_EQ(m_frame->GetLogo(), QString());
    EXPECT_EQ(m_frame->GetLevels(), 2);
    EXPECT_EQ(m_frame->selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_TRUE(m_frame->GetEditable());
    EXPECT_TRUE(m_frame->header()->isHidden());
    EXPECT_FALSE(m_frame->expandsOnDoubleClick());
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_FALSE(m_frame->IsMenuDialogShown());
    EXPECT_FALSE(m_frame->IsLinkDialogShown());
}

TEST_F(MenuCommands, AnswerQueriesAndRequestsTheSameForEveryText)
{
    for (const char* text : {"", "x", "Velmora.CmdButtons.1://", static_cast<const char*>(nullptr)}) {
        bool accepted = false;
        m_frame->QueryCmd(text, accepted);
        EXPECT_TRUE(accepted);
        QVariant out(QStringLiteral("x"));
        m_frame->RequestData(QVariant(QString::fromLatin1(text)), out);
        EXPECT_FALSE(out.isValid());
    }
    EXPECT_EQ(m_frame->TopNode(), nullptr);
}

// "file"

TEST_F(MenuCommands, LoadTheMenuAndTheLinksBesideIt)
{
    Command(LoadCommand);
    EXPECT_EQ(Outline(), WholeOutline);
    EXPECT_EQ(Path(), PackagePath("_menu/menu.xml"));
    EXPECT_EQ(m_frame->GetLinksPath().toStdString(), PackagePath("_menu/dplinks.xml"));
    EXPECT_EQ(m_frame->GetLogo(), QStringLiteral("/images/logo.png"));
    EXPECT_EQ(m_messages.Notes, QStringList({QStringLiteral("3 Menupunkte, 3 Untermenupunkte, 3 Links geladen")}));
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuCommands, TakeKeysWithoutRegardToCaseBothSeparatorsAndAnyPathPart)
{
    Command("any://thing/at/all?FILE=$(Project)/_menu/menu.xml&Level=5");
    EXPECT_EQ(Outline(), WholeOutline);
    EXPECT_EQ(Path(), PackagePath("_menu/menu.xml"));
    EXPECT_EQ(m_frame->GetLevels(), 5);
}

TEST_F(MenuCommands, WithoutAVariableLoadOnceAndFollowNoProject)
{
    Command("x://?file=" + m_project.Path(QStringLiteral("_menu/menu.xml")).toUtf8());
    EXPECT_EQ(Outline(), WholeOutline);
    m_frame->RemoveBranches({Node("Start")});
    OpenAgain();
    EXPECT_EQ(Below(Menu()), "Licht|Alarme");
    EXPECT_EQ(m_messages.Notes.size(), 1);
}

TEST_F(MenuCommands, FollowTheProjectFromTheFirstOneWithAVariable)
{
    Command("x://?file=" + m_project.Path(QStringLiteral("_menu/menu.xml")).toUtf8());
    Command(LoadCommand);
    m_frame->RemoveBranches({Node("Start")});
    OpenAgain();
    EXPECT_EQ(Outline(), WholeOutline);
}

// An export without this would go on into the project that was open first.
TEST_F(MenuCommands, FollowTheProjectAlsoWithoutAFile)
{
    Command("x://?level=3&alarm=$(project)");
    EXPECT_EQ(m_frame->TopNode(), nullptr);
    OpenAgain();
    EXPECT_EQ(Outline(), WholeOutline);
}

TEST_F(MenuCommands, LoadOnceForAProjectChangeHoweverOftenTheyAreGiven)
{
    for (int i = 0; i < 3; ++i)
        Command(LoadCommand);
    m_messages.Notes.clear();
    OpenAgain();
    EXPECT_EQ(m_messages.Notes.size(), 1);
}

TEST_F(MenuCommands, TakeTheFirstOfTwoKeysTwice)
{
    Command(QByteArray(LoadCommand) + "&file=C:\\none.xml&level=3&level=4");
    EXPECT_EQ(Outline(), WholeOutline);
    EXPECT_EQ(m_messages.Notes.size(), 2);
    EXPECT_EQ(m_frame->GetLevels(), 3);
}

TEST_F(MenuCommands, WithoutAFileKeepTheTreeAndResolveThePathAnew)
{
    Command(LoadCommand);
    Command("x://?level=3");
    EXPECT_EQ(Outline(), WholeOutline);
    EXPECT_EQ(Path(), PackagePath("_menu/menu.xml"));
    EXPECT_EQ(m_messages.Notes.size(), 1);
}

TEST_F(MenuCommands, IgnoreOtherKeys)
{
    Command("x://?schedules=" + m_project.Path(QStringLiteral("_menu/menu.xml")).toUtf8() + "&files=a&levels=7&logo=b");
    EXPECT_EQ(m_frame->TopNode(), nullptr);
    EXPECT_EQ(m_frame->GetLevels(), 2);
    EXPECT_EQ(m_frame->GetLogo(), QString());
}

// "style" and "out"

TEST_F(MenuCommands, TakeAStylesheetOnlyWhereItExists)
{
    m_project.Write(QStringLiteral("_menu/own.xsl"), Stylesheet());
    Command("x://?style=$(project)/_menu/own.xsl");
    EXPECT_EQ(Style(), PackagePath("_menu/own.xsl"));
    Command("x://?style=$(project)/_menu/none.xsl");
    EXPECT_EQ(Style(), "");
    Command("x://?style=$(project)/_menu");
    EXPECT_EQ(Style(), "") << "a directory";
    Command("x://?style=");
    EXPECT_EQ(Style(), "");
}

TEST_F(MenuCommands, TakeAnOutputWhereItOrItsDirectoryExists)
{
    Command("x://?out=$(project)/_menu/new.html");
    EXPECT_EQ(Output(), PackagePath("_menu/new.html"));
    Command("x://?out=%prjpath%\\_menu\\menu.xml");
    EXPECT_EQ(Output(), PackagePath("_menu/menu.xml"));
    Command("x://?out=$(project)/none/new.html");
    EXPECT_EQ(Output(), "");
    for (const char* text : {"x://?out=", "x://?out=stdout", "x://?out=new.html"}) {
        Command(text);
        EXPECT_EQ(Output(), "") << text;
    }
}

TEST_F(MenuCommands, ForgetStyleOutputAndLevelOfTheOneBefore)
{
    m_project.Write(QStringLiteral("_menu/own.xsl"), Stylesheet());
    Command("x://?style=$(project)/_menu/own.xsl&out=$(project)/_menu/new.html&level=4");
    Command("");
    EXPECT_EQ(Style(), "");
    EXPECT_EQ(Output(), "");
    EXPECT_EQ(m_frame->GetLevels(), 2);
}

TEST_F(MenuCommands, ForgetTheDefaultsOfAnExport)
{
    m_project.Write(QStringLiteral("_menu/menu.xsl"), Stylesheet());
    Command(LoadCommand);
    Export();
    EXPECT_EQ(Style(), PackagePath("_menu/menu.xsl"));
    EXPECT_EQ(Output(), PackagePath("_menu/menu.html"));
    Command(LoadCommand);
    EXPECT_EQ(Style(), "");
    EXPECT_EQ(Output(), "");
}

// "level"

TEST_F(MenuCommands, TakeALevelThatIsNoNumberAsTwo)
{
    for (const auto& [text, level] : {std::pair{"x://?level=3", 3},
                                      {"x://?level=abc", 2},
                                      {"x://?level=", 2},
                                      {"x://?level=-1", -1},
                                      {"x://?level=$10", 16}}) {
        Command(text);
        EXPECT_EQ(m_frame->GetLevels(), level) << text;
    }
}

TEST_F(MenuCommands, SendTheLevelToTheDocument)
{
    Command(QByteArray(LoadCommand) + "&level=1");
    Export();
    EXPECT_TRUE(WrittenMenu().contains("<menu version=\"0.1\" levels=\"1\" "));
}

// Special items, colours

TEST_F(MenuCommands, KeepTheLinksOfSpecialItemsUntilTheyAreGivenAnew)
{
    Command(QByteArray(LoadCommand) + "&ALARM=$(project)/a&config=%PRJPATH%\\c&logout=/l");
    Command("x://?logout=/m");
    for (const char* name :
         {"MenuAction_InsertSpecExecute_1", "MenuAction_InsertSpecExecute_2", "MenuAction_InsertSpecExecute_3"})
        RunOn("Start", name);
    EXPECT_EQ(Item("Alarm").Link, QStringLiteral("$(project)/a"));
    EXPECT_EQ(Item("Config").Link, QStringLiteral("%PRJPATH%\\c"));
    EXPECT_EQ(Item("Logout").Link, QStringLiteral("/m"));
}

TEST_F(MenuCommands, ApplyColours)
{
    Command("x://?color=255&bgcolor=$FF00");
    EXPECT_EQ(Color(QPalette::Text), QColor(255, 0, 0));
    EXPECT_EQ(Color(QPalette::Base), QColor(0, 255, 0));
    Command("x://path");
    EXPECT_EQ(Color(QPalette::Base), QColor(0, 255, 0));
    Command("x://?color=abc&bgcolor=abc");
    EXPECT_EQ(Color(QPalette::Text), Default(QPalette::Text));
    EXPECT_EQ(Color(QPalette::Base), Default(QPalette::Base));
}

// The project's notifications

TEST_F(MenuCommands, TakeNoNoticeOfAClosedProjectAndOfOtherSenders)
{
    Command(LoadCommand);
    m_frame->RemoveBranches({Node("Start")});
    Q_EMIT UserManager()->Notify(m_frame.get(), upProject, QString());
    UserManager()->CloseProject();
    EXPECT_EQ(Below(Menu()), "Licht|Alarme");
}

TEST_F(MenuCommands, AreNotFollowedAnyMoreByADestroyedFrame)
{
    Command(LoadCommand);
    m_frame.reset();
    OpenAgain();
    EXPECT_EQ(m_messages.Notes.size(), 1) << "the load of the command";
}
