#include "ScheduleTree.h"

#include "Vlclassregistry.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QHeaderView>

namespace
{

constexpr auto Whole = "Wochenschaltplan\n  Licht\n    Flur\n      07:05\n      19:30\n    Küche\n      06:00\n"
                       "  Heizung\n    Bad\n      05:15\n  Rollladen\n    Süd\n      08:45\n    West\n  Urlaub";
constexpr auto DefaultCommand = R"(Velmora.ScheduleTree.1://?schedules=%PRJPATH%\_config\data\schedule\schedule.xml)";

// A frame that was not commanded yet, and a project with a schedule.
class ScheduleCommands : public TScheduleTree
{
protected:
    ScheduleCommands()
    {
        m_frame = std::make_unique<TScheduleTreeFrame>();
        m_messages.Notes.clear();
    }

    void Command(const QByteArray& command) const { Execute(*m_frame, command); }
    std::string Path() const { return m_frame->GetDocumentPath().toStdString(); }
    std::string SchedulePath() const { return PackagePath(m_project.Schedule()); }
    static std::string PackagePath(const QString& path) { return QString(path).replace(u'/', u'\\').toStdString(); }
    void OpenAgain() const { UserManager()->OpenProject(m_project.Root()); }
    QColor Color(QPalette::ColorRole role) const { return m_frame->palette().color(role); }
    static QColor Default(QPalette::ColorRole role) { return QApplication::palette().color(role); }
};

} // namespace

TEST_F(ScheduleCommands, BeginWithAnEmptyTreeAndItsSettings)
{
    EXPECT_EQ(Root(), nullptr);
    EXPECT_EQ(Path(), "");
    EXPECT_EQ(GroupNames(), "");
    EXPECT_TRUE(m_frame->GetHotTracking());
    EXPECT_EQ(m_frame->selectionMode(), QAbstractItemView::ExtendedSelection);
    EXPECT_TRUE(m_frame->GetEditable());
    EXPECT_TRUE(m_frame->header()->isHidden());
    EXPECT_FALSE(m_frame->expandsOnDoubleClick());
    EXPECT_FALSE(m_frame->IsModified());
    for (int level = slRoot; level <= slEntry; ++level)
        EXPECT_FALSE(m_frame->Image(level).isNull()) << level;
    EXPECT_TRUE(m_frame->Image(slEntry + 1).isNull());
}

TEST_F(ScheduleCommands, AnswerQueriesAndRequestsTheSameForEveryText)
{
    for (const char* text : {"", "x", "Velmora.CmdButtons.1://", static_cast<const char*>(nullptr)}) {
        bool accepted = false;
        m_frame->QueryCmd(text, accepted);
        EXPECT_TRUE(accepted);
        QVariant out(QStringLiteral("x"));
        m_frame->RequestData(QVariant(QString::fromLatin1(text)), out);
        EXPECT_FALSE(out.isValid());
    }
    EXPECT_EQ(Root(), nullptr);
}

TEST_F(ScheduleCommands, LoadTheScheduleOfItsKey)
{
    Command(DefaultCommand);
    EXPECT_EQ(Outline(), Whole);
    EXPECT_EQ(Path(), SchedulePath());
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_TRUE(Root()->isExpanded());
    EXPECT_FALSE(Node("Licht")->isExpanded());
    EXPECT_EQ(m_messages.Notes, QStringList({QStringLiteral("4 Gruppen, 5 Datenpunkte, 5 Schalteinträge geladen")}));
}

TEST_F(ScheduleCommands, TakeTheKeyWithoutRegardToCaseAndBothSeparators)
{
    Command("x://?SCHEDULES=$(Project)/_config/data/schedule/schedule.xml");
    EXPECT_EQ(Outline(), Whole);
    EXPECT_EQ(Path(), SchedulePath());
}

TEST_F(ScheduleCommands, DecodeOnlyTheVariablesOfTheHostInTheKey)
{
    qputenv("VELMORA_TEST_DIRECTORY", m_project.Root().toLocal8Bit());
    Command("x://?schedules=%VELMORA_TEST_DIRECTORY%/_config/data/schedule/schedule.xml");
    qunsetenv("VELMORA_TEST_DIRECTORY");
    EXPECT_EQ(Root(), nullptr);
}

TEST_F(ScheduleCommands, KeepTheTreeForAFileThatDoesNotExist)
{
    Command(DefaultCommand);
    Command(R"(x://?schedules=%PRJPATH%\none.xml)");
    EXPECT_EQ(Outline(), Whole);
    Command("x://?schedules=");
    EXPECT_EQ(Outline(), Whole);
}

TEST_F(ScheduleCommands, TakeTheFirstOfTwoKeysTwice)
{
    Command(QByteArray(DefaultCommand) + "&schedules=C:\\none.xml");
    EXPECT_EQ(Outline(), Whole);
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub|Licht|Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleCommands, IgnoreOtherKeys)
{
    Command("x://?scenes=" + m_project.Schedule().toUtf8() + "&file=a&schedule=b");
    EXPECT_EQ(Root(), nullptr);
}

TEST_F(ScheduleCommands, ApplyColours)
{
    Command("x://?color=255&bgcolor=$FF00");
    EXPECT_EQ(Color(QPalette::Text), QColor(255, 0, 0));
    EXPECT_EQ(Color(QPalette::Base), QColor(0, 255, 0));
    Command("x://path");
    EXPECT_EQ(Color(QPalette::Base), QColor(0, 255, 0));
    Command("x://?color=x&bgcolor=abc");
    EXPECT_EQ(Color(QPalette::Text), Default(QPalette::Text));
    EXPECT_EQ(Color(QPalette::Base), Default(QPalette::Base));
}

// The document's path

TEST_F(ScheduleCommands, TakeTheCommandTextForTheDocumentUntilOneIsLoaded)
{
    EXPECT_FALSE(Action("MenuAction_Export")->isEnabled());
    Command("x://path?color=1");
    EXPECT_EQ(Path(), "x://path?color=1");
    EXPECT_TRUE(Action("MenuAction_Export")->isEnabled());
    EXPECT_FALSE(Action("MenuAction_Reload")->isEnabled());
    Command(DefaultCommand);
    EXPECT_EQ(Path(), SchedulePath());
    EXPECT_TRUE(Action("MenuAction_Reload")->isEnabled());
    Command("");
    EXPECT_EQ(Path(), "");
    EXPECT_EQ(Outline(), Whole);
    EXPECT_FALSE(Action("MenuAction_Export")->isEnabled());
    EXPECT_FALSE(Action("MenuAction_Reload")->isEnabled());
}

TEST_F(ScheduleCommands, ExpandTheEnvironmentInTheCommandText)
{
    qputenv("VELMORA_TEST_DIRECTORY", m_project.Root().toLocal8Bit());
    Command("%VELMORA_TEST_DIRECTORY%/_config/data/schedule/schedule.xml");
    qunsetenv("VELMORA_TEST_DIRECTORY");
    EXPECT_EQ(Path(), m_project.Schedule().toStdString());
    EXPECT_EQ(Root(), nullptr);
    Run("MenuAction_Reload");
    EXPECT_EQ(Outline(), Whole);
}

TEST_F(ScheduleCommands, ExportWithoutADocumentIsAnswered)
{
    Command("x://path");
    Run("MenuAction_Export");
    EXPECT_EQ(m_messages.Informations,
              QStringList({QStringLiteral("Dieses Projekt enthält nicht das notwendige _config Verzeichnis.")}));
}

// The project

TEST_F(ScheduleCommands, LeaveTheTreeEmptyAfterAProjectChangeWhenTheTextIsNoFileName)
{
    Command(DefaultCommand);
    OpenAgain();
    EXPECT_EQ(Outline(), "Wochenschaltplan");
    EXPECT_EQ(Path(), PackagePath(QStringLiteral("Velmora.ScheduleTree.1://?schedules=") + m_project.Schedule()));
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_FALSE(Action("MenuAction_Reload")->isEnabled());
    Command(DefaultCommand);
    EXPECT_EQ(Outline(), Whole);
}

TEST_F(ScheduleCommands, LoadAfterAProjectChangeWhenTheTextIsAFileName)
{
    Command("$(project)/_config/data/schedule/schedule.xml");
    EXPECT_EQ(Root(), nullptr);
    OpenAgain();
    EXPECT_EQ(Outline(), Whole);
    EXPECT_EQ(Path(), SchedulePath());
}

TEST_F(ScheduleCommands, LoadOnceForAProjectChangeHoweverOftenTheyAreGiven)
{
    for (int i = 0; i < 3; ++i)
        Command(R"(%prjpath%\_config\data\schedule\schedule.xml)");
    OpenAgain();
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleCommands, FollowTheProjectFromTheFirstOneWithAVariable)
{
    Command("x://path");
    OpenAgain();
    EXPECT_EQ(Root(), nullptr);
    Command(R"(%PRJPATH%\_config\data\schedule\schedule.xml)");
    OpenAgain();
    EXPECT_EQ(Outline(), Whole);
}

TEST_F(ScheduleCommands, DoNotFollowTheProjectWithoutAVariable)
{
    Command("x://?schedules=" + m_project.Schedule().toUtf8());
    OpenAgain();
    EXPECT_EQ(Outline(), Whole);
}

TEST_F(ScheduleCommands, TakeNoNoticeOfAClosedProjectAndOfOtherSenders)
{
    Command(DefaultCommand);
    Q_EMIT UserManager()->Notify(m_frame.get(), upProject, QString());
    EXPECT_EQ(Outline(), Whole);
    UserManager()->CloseProject();
    EXPECT_EQ(Outline(), Whole);
}

TEST_F(ScheduleCommands, AreNotFollowedAnyMoreByADestroyedFrame)
{
    Command(DefaultCommand);
    m_frame.reset();
    OpenAgain();
    EXPECT_EQ(m_messages.Notes.size(), 1) << "the load of the command";
}

TEST_F(ScheduleCommands, LoadNothingWithoutAProject)
{
    UserManager()->CloseProject();
    Command(DefaultCommand);
    EXPECT_EQ(Root(), nullptr);
}
