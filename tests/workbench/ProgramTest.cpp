#include "TestSupport.h"
#include "Vlprojects.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{

// The program as a user starts it, with the test package in the place of the editors.
class Program : public ::testing::Test
{
protected:
    Program()
    {
        m_environment.insert(QStringLiteral("VELMORA_PACKAGE"), QStringLiteral(VELMORA_TEST_PACKAGE));
        m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_directory.path());
        for (const char* name : {"NORHOME", "XDG_RUNTIME_DIR", "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            m_environment.remove(QString::fromLatin1(name));
        m_project =
            TProject::Create(m_directory.filePath(QStringLiteral("Haus")), QStringLiteral("Haus")).GetRootDirectory();
    }

    int Run(const QStringList& arguments)
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.start(QStringLiteral(VELMORA_WORKBENCH), arguments);
        if (!process.waitForFinished(60000))
            return -1;
        m_output = QString::fromUtf8(process.readAllStandardOutput());
        m_errors = QString::fromUtf8(process.readAllStandardError());
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    }

    int RunBatch(const QStringList& arguments)
    {
        return Run(QStringList{QStringLiteral("--batch"), QStringLiteral("--project"), m_project} + arguments);
    }

    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    QTemporaryDir m_directory;
    QString m_project;
    QString m_output;
    QString m_errors;
};

TEST_F(Program, HelpIsGerman)
{
    EXPECT_EQ(Run({QStringLiteral("--help")}), 0);
    EXPECT_TRUE(m_output.startsWith(QStringLiteral("Aufruf: "))) << m_output.toStdString();
    EXPECT_TRUE(m_output.contains(QStringLiteral("Öffnet das Projekt im Verzeichnis DIR.")));
}

TEST_F(Program, VersionIsOneLine)
{
    EXPECT_EQ(Run({QStringLiteral("--version")}), 0);
    EXPECT_TRUE(m_output.startsWith(QStringLiteral("Velmora Folders ")));
    EXPECT_EQ(m_output.count(u'\n'), 1);
}

TEST_F(Program, UnknownOptionIsALineOnStandardError)
{
    EXPECT_EQ(Run({QStringLiteral("--nonsense")}), 1);
    EXPECT_EQ(m_errors, QStringLiteral("Unbekannte Option: --nonsense\n"));
    EXPECT_TRUE(m_output.isEmpty());
}

TEST_F(Program, WindowNeedsADisplay)
{
    EXPECT_EQ(Run({}), 1);
    EXPECT_TRUE(m_errors.contains(QStringLiteral("--batch")));
}

TEST_F(Program, BatchRunsWithoutDisplayAndFindsTheProductHome)
{
    EXPECT_EQ(RunBatch({QStringLiteral("--do"), QStringLiteral("scenes=MenuAction_Export")}), 0)
        << m_errors.toStdString();
    const QString home =
        QDir::cleanPath(QFileInfo(QStringLiteral(VELMORA_WORKBENCH)).path() + QStringLiteral("/../share/velmora"));
    EXPECT_TRUE(m_output.contains(QStringLiteral("scenes: exportiert nach %1\n").arg(home))) << m_output.toStdString();
    EXPECT_TRUE(m_errors.isEmpty()) << m_errors.toStdString();
}

TEST_F(Program, ProductHomeOfTheCallerHolds)
{
    m_environment.insert(QStringLiteral("NORHOME"), QStringLiteral("/heim"));
    EXPECT_EQ(RunBatch({QStringLiteral("--do"), QStringLiteral("scenes=MenuAction_Export")}), 0);
    EXPECT_TRUE(m_output.contains(QStringLiteral("scenes: exportiert nach /heim\n")));
}

TEST_F(Program, FailureOfAStepIsTheExitCode)
{
    EXPECT_EQ(RunBatch({QStringLiteral("--command"), QStringLiteral("scenes=error")}), 1);
    EXPECT_EQ(m_errors, QStringLiteral("Gemeldet\n"));
}

TEST_F(Program, ExceptionFromTheEventLoopIsAnErrorOfItsStep)
{
    EXPECT_EQ(RunBatch({QStringLiteral("--command=scenes=later"), QStringLiteral("--do=scenes=MenuAction_Export")}), 1);
    EXPECT_EQ(m_errors, QStringLiteral("Später geworfen\n"));
    EXPECT_FALSE(m_output.contains(QStringLiteral("exportiert")));
}

TEST_F(Program, WindowIsPaintedAndQuits)
{
    m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    EXPECT_EQ(Run({QStringLiteral("--project"), m_project, QStringLiteral("--quit-after-paint")}), 0);
    EXPECT_TRUE(m_errors.isEmpty()) << m_errors.toStdString();
}

} // namespace
