#include "UIActions.h"

#include "TestSupport.h"

#include <QDesktopServices>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

namespace
{

// Stands in for the desktop: takes files and URLs of the scheme "velmora".
class TDesktop : public QObject
{
    Q_OBJECT

public:
    TDesktop()
    {
        for (const QString& scheme : m_schemes)
            QDesktopServices::setUrlHandler(scheme, this, "Open");
    }
    ~TDesktop() override
    {
        for (const QString& scheme : m_schemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }
    TDesktop(const TDesktop&) = delete;
    TDesktop& operator=(const TDesktop&) = delete;

    QStringList Opened;

public Q_SLOTS:
    void Open(const QUrl& url) { Opened.append(url.isLocalFile() ? url.toLocalFile() : url.toString()); }

private:
    const QStringList m_schemes{QStringLiteral("file"), QStringLiteral("velmora")};
};

class ShellExecute : public testing::Test
{
protected:
    ShellExecute()
    {
        WriteAll(m_file, "x");
        qunsetenv("VISUAL");
        qunsetenv("EDITOR");
    }
    ~ShellExecute() override
    {
        qunsetenv("VISUAL");
        qunsetenv("EDITOR");
    }

    bool Execute(const QString& file, const QString& verb)
    {
        TShellExecuteAction action;
        action.SetFileName(file);
        action.SetVerb(verb);
        return action.Execute();
    }

    // A program that writes its last argument into a file beside it.
    QString MakeEditor(const QString& name) const
    {
        const QString path = m_directory.filePath(name);
        WriteAll(path, "#!/bin/sh\nfor last; do :; done\nprintf '%s|%s' \"$#\" \"$last\" > \"$0.part\"\nmv \"$0.part\" "
                       "\"$0.log\"\n");
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }
    static QByteArray EditorLog(const QString& editor)
    {
        const QString log = editor + QStringLiteral(".log");
        return QTest::qWaitFor([&] { return QFile::exists(log); }, 10000) ? ReadAll(log) : QByteArray();
    }

    QTemporaryDir m_directory;
    QString m_file = m_directory.filePath(QStringLiteral("Küche 1.txt"));
    TDesktop m_desktop;
};

} // namespace

TEST(UIActions, AreOneModule)
{
    EXPECT_EQ(&UIActions(), &UIActions());
    UIActions().ShellExecute.SetFileName(QStringLiteral("plan.pdf"));
    EXPECT_EQ(UIActions().ShellExecute.GetFileName(), QStringLiteral("plan.pdf"));
    EXPECT_EQ(TUIActions().ShellExecute.GetVerb(), QStringLiteral("open"));
    EXPECT_EQ(TUIActions().ShellExecute.GetFileName(), QString());
}

TEST_F(ShellExecute, KeepsItsProperties)
{
    TShellExecuteAction action;
    action.SetFileName(m_file);
    action.SetVerb(QStringLiteral("edit"));
    EXPECT_EQ(action.GetFileName(), m_file);
    EXPECT_EQ(action.GetVerb(), QStringLiteral("edit"));
    EXPECT_TRUE(m_desktop.Opened.isEmpty());
}

TEST_F(ShellExecute, HandsAFileToTheDesktop)
{
    EXPECT_TRUE(Execute(m_file, QStringLiteral("open")));
    EXPECT_EQ(m_desktop.Opened, QStringList{m_file});
}

TEST_F(ShellExecute, OpensWithoutAVerbAndWithoutRegardToItsCase)
{
    EXPECT_TRUE(Execute(m_file, QString()));
    EXPECT_TRUE(Execute(m_file, QStringLiteral("OPEN")));
    EXPECT_EQ(m_desktop.Opened.size(), 2);
}

TEST_F(ShellExecute, TakesPackagePaths)
{
    EXPECT_TRUE(Execute(QString(m_file).replace(u'/', u'\\'), QStringLiteral("open")));
    EXPECT_EQ(m_desktop.Opened, QStringList{m_file});
}

TEST_F(ShellExecute, OpensUrlsAsTheyAre)
{
    EXPECT_TRUE(Execute(QStringLiteral("velmora://help/start"), QStringLiteral("open")));
    EXPECT_EQ(m_desktop.Opened, QStringList{QStringLiteral("velmora://help/start")});
}

TEST_F(ShellExecute, RefusesWhatItCannotOpen)
{
    EXPECT_FALSE(Execute(QString(), QStringLiteral("open")));
    EXPECT_FALSE(Execute(m_directory.filePath(QStringLiteral("none")), QStringLiteral("open")));
    EXPECT_FALSE(Execute(m_directory.filePath(QStringLiteral("none")), QStringLiteral("edit")));
    EXPECT_FALSE(Execute(m_file, QStringLiteral("print")));
    EXPECT_TRUE(m_desktop.Opened.isEmpty());
}

TEST_F(ShellExecute, EditsWithTheProgramOfTheEnvironment)
{
    const QString editor = MakeEditor(QStringLiteral("editor"));
    qputenv("EDITOR", QFile::encodeName(editor));
    EXPECT_TRUE(Execute(m_file, QStringLiteral("Edit")));
    EXPECT_EQ(EditorLog(editor), "1|" + m_file.toUtf8());
    EXPECT_TRUE(m_desktop.Opened.isEmpty());
}

TEST_F(ShellExecute, PrefersTheVisualEditorAndGivesItItsArguments)
{
    const QString visual = MakeEditor(QStringLiteral("visual"));
    const QString editor = MakeEditor(QStringLiteral("editor"));
    qputenv("VISUAL", QFile::encodeName(visual) + " --wait -n");
    qputenv("EDITOR", QFile::encodeName(editor));
    EXPECT_TRUE(Execute(m_file, QStringLiteral("edit")));
    EXPECT_EQ(EditorLog(visual), "3|" + m_file.toUtf8());
    EXPECT_FALSE(QFile::exists(editor + QStringLiteral(".log")));
}

TEST_F(ShellExecute, EditsWithTheNextProgramWhenOneDoesNotStart)
{
    const QString editor = MakeEditor(QStringLiteral("editor"));
    qputenv("VISUAL", QFile::encodeName(m_directory.filePath(QStringLiteral("none"))));
    qputenv("EDITOR", QFile::encodeName(editor));
    EXPECT_TRUE(Execute(m_file, QStringLiteral("edit")));
    EXPECT_EQ(EditorLog(editor), "1|" + m_file.toUtf8());
}

TEST_F(ShellExecute, EditsWithTheDesktopWithoutAProgramOfTheEnvironment)
{
    EXPECT_TRUE(Execute(m_file, QStringLiteral("edit")));
    EXPECT_EQ(m_desktop.Opened, QStringList{m_file});
}

#include "UIActionsTest.moc"
