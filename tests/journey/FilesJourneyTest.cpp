#include "Options.h"
#include "Vlshellctrls.h"
#include "WindowRun.h"
#include "WorkbenchUser.h"

#include <QAbstractItemModel>

namespace
{

using FilesJourney = SceneJourney;
using TUser = TWorkbenchUser;

// The user's view of the project's files. Items are named by their captions, from the one below the root on.
class TFilesUser
{
public:
    TFilesUser(TRobot& robot, TUser& user) : m_robot(robot)
    {
        user.ClickTab(QStringLiteral("Projektdateien"));
        robot.WaitFor(QStringLiteral("the files"), [] { return Tree() && Tree()->isVisible() && Find({}).isValid(); });
    }

    static TCustomShellTreeView* Tree() { return TUser::Window()->findChild<TCustomShellTreeView*>(); }
    static QModelIndex Find(const QStringList& path)
    {
        const QAbstractItemModel* model = Tree()->model();
        QModelIndex item = model->index(0, 0);
        for (const QString& caption : path) {
            const QModelIndex above = item;
            item = {};
            for (int row = 0; row < model->rowCount(above); ++row) {
                if (model->index(row, 0, above).data().toString() == caption)
                    item = model->index(row, 0, above);
            }
            if (!item.isValid())
                return {};
        }
        return item;
    }
    QPoint PlaceOf(const QStringList& path)
    {
        m_robot.WaitFor(path.last(), [=] { return Find(path).isValid(); });
        return m_robot.See([=] {
            Tree()->scrollTo(Find(path));
            const QRect row = Tree()->visualRect(Find(path));
            return Tree()->viewport()->mapToGlobal(QPoint(row.left() + 40, row.center().y()));
        });
    }
    void Open(const QStringList& folder)
    {
        m_robot.Click(PlaceOf(folder));
        m_robot.Key(QStringLiteral("Return"));
        m_robot.WaitFor(QStringLiteral("an open folder"), [=] { return Tree()->isExpanded(Find(folder)); });
    }
    void WriteName(const QString& name)
    {
        m_robot.WaitFor(QStringLiteral("the field"),
                        [] { return qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr; });
        m_robot.Key(QStringLiteral("ctrl+a"));
        m_robot.Type(name);
        m_robot.Key(QStringLiteral("Return"));
    }
    bool IsSelected(const QStringList& path)
    {
        return m_robot.See([=] { return Find(path).isValid() && Tree()->currentIndex() == Find(path); });
    }

private:
    TRobot& m_robot;
};

} // namespace

// A file is renamed and a folder made in the tree; tree, disk and log tell the same.
TEST_F(FilesJourney, FromTheTreeToTheLog)
{
    const QString images = QStringLiteral("images");
    const QString log = Project() + QStringLiteral("/actions.log");
    const QString folder = Project() + QStringLiteral("/images/");
    const QString before = QDir(folder).entryList(QDir::Files).value(0);
    const QString after = QStringLiteral("haus-neu.svg");
    const QString expected =
        QStringLiteral("REN \"%1%2\" \"%1%3\"\r\nMKDIR \"%1Neuer Ordner\"\r\nREN \"%1Neuer Ordner\" \"%1Plan\"\r\n")
            .arg(folder, before, after);

    const auto journey = [&](TRobot& robot) {
        TUser user(robot);
        TFilesUser files(robot, user);
        files.Open({images});
        robot.Click(files.PlaceOf({images, before}));
        robot.Key(QStringLiteral("F2"));
        files.WriteName(after);
        robot.WaitFor(after, [&] { return TFilesUser::Find({images, after}).isValid(); });
        EXPECT_TRUE(files.IsSelected({images, after}));

        robot.Click(files.PlaceOf({images}), 3);
        user.Choose(QStringLiteral("Neuer Ordner"));
        files.WriteName(QStringLiteral("Plan"));
        robot.WaitFor(QStringLiteral("the folder"), [&] {
            return TFilesUser::Find({images, QStringLiteral("Plan")}).isValid();
        });
        robot.WaitFor(QStringLiteral("the log"), [&] { return QFile::exists(log) && ReadAll(log).count("\r\n") >= 3; });
        user.TakePicture(QStringLiteral("projektdateien"));
        robot.Key(QStringLiteral("alt+F4"));
    };
    TOptions options;
    options.ProjectDirectory = Project();
    EXPECT_EQ(TRobot::Accompany(journey, [&] { return RunWindow(options); }), 0);

    EXPECT_EQ(QString::fromLatin1(ReadAll(log)), expected);
    EXPECT_TRUE(QFile::exists(folder + after));
    EXPECT_FALSE(QFile::exists(folder + before));
    EXPECT_TRUE(QDir(folder + QStringLiteral("Plan")).exists());
}
