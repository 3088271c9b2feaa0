#include "BatchRun.h"

#include "RecentProjects.h"
#include "WorkbenchSupport.h"

#include <QSettings>
#include <QImage>

#include <sstream>

namespace
{

const QByteArray OnePane = R"({"format":1,"panes":[
    {"id":"scenes","title":"Szenen","class":"TTestComponent","command":"x://?file=%PRJPATH%"}]})";

TBatchStep Command(const char* text, const char* pane = "scenes")
{
    return {.Kind = TBatchStep::TKind::Command, .Pane = QString::fromUtf8(pane), .Text = QString::fromUtf8(text)};
}

TBatchStep Action(const char* name, const char* pane = "scenes")
{
    return {.Kind = TBatchStep::TKind::Action, .Pane = QString::fromUtf8(pane), .Text = QString::fromUtf8(name)};
}

class BatchRun : public ::testing::Test
{
protected:
    BatchRun()
    {
        qputenv("VELMORA_PACKAGE", VELMORA_TEST_PACKAGE);
        qputenv("NORHOME", "/heim");
        m_options.Batch = true;
        m_options.ProjectDirectory =
            TProject::Create(m_directory.filePath(QStringLiteral("Haus")), QStringLiteral("Haus")).GetRootDirectory();
        SetLayout(OnePane);
    }

    ~BatchRun() override
    {
        qunsetenv("VELMORA_PACKAGE");
        qunsetenv("NORHOME");
    }

    void SetLayout(const QByteArray& json)
    {
        WriteAll(m_options.ProjectDirectory + QStringLiteral("/velmora.layout"), json);
    }

    int Run(const QList<TBatchStep>& steps = {})
    {
        m_options.Steps = steps;
        std::ostringstream output;
        std::ostringstream errors;
        const int code = RunBatch(m_options, output, errors);
        m_output = QString::fromStdString(output.str()).split(u'\n', Qt::SkipEmptyParts);
        m_errors = QString::fromStdString(errors.str());
        return code;
    }

    void ExpectFailure(const QList<TBatchStep>& steps, const char* part)
    {
        EXPECT_EQ(Run(steps), 1);
        EXPECT_TRUE(m_errors.contains(QString::fromUtf8(part))) << m_errors.toStdString();
        EXPECT_EQ(m_errors.count(u'\n'), 1) << m_errors.toStdString();
    }

    TTemporarySettings m_settings;
    QTemporaryDir m_directory;
    TOptions m_options;
    QStringList m_output;
    QString m_errors;
};

TEST_F(BatchRun, OpensTheProjectAndTellsWhatItLoaded)
{
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(m_output, (QStringList{QStringLiteral("Projekt Haus geöffnet (%1)").arg(m_options.ProjectDirectory),
                                     QStringLiteral("scenes: Befehl x://?file=%1").arg(m_options.ProjectDirectory)}));
    EXPECT_TRUE(m_errors.isEmpty());
}

TEST_F(BatchRun, StepsRunInOrder)
{
    EXPECT_EQ(Run({Command("eins"), Action("MenuAction_Export"), Command("zwei")}), 0);
    EXPECT_EQ(m_output.mid(2),
              (QStringList{QStringLiteral("scenes: Befehl eins"), QStringLiteral("scenes: eins ausgeführt"),
                           QStringLiteral("scenes: exportiert nach /heim"),
                           QStringLiteral("scenes: MenuAction_Export ausgeführt"),
                           QStringLiteral("scenes: Befehl zwei"), QStringLiteral("scenes: zwei ausgeführt")}));
}

TEST_F(BatchRun, QuestionsAreAnsweredByPolicy)
{
    EXPECT_EQ(Run({Command("ask")}), 0);
    EXPECT_TRUE(m_output.contains(QStringLiteral("Wirklich? Nein")));
    m_options.AnswerYes = true;
    EXPECT_EQ(Run({Command("ask")}), 0);
    EXPECT_TRUE(m_output.contains(QStringLiteral("Wirklich? Ja")));
}

TEST_F(BatchRun, InformationIsOneLine)
{
    EXPECT_EQ(Run({Command("inform")}), 0);
    EXPECT_TRUE(m_output.contains(QStringLiteral("Nur so. Zweite Zeile.")));
}

TEST_F(BatchRun, ModifiedPanesDoNotStopIt)
{
    m_options.AnswerYes = true;
    EXPECT_EQ(Run({Command("ask")}), 0);
}

TEST_F(BatchRun, FailureEndsIt)
{
    ExpectFailure({Command("error"), Action("MenuAction_Export")}, "Gemeldet");
    EXPECT_FALSE(m_output.contains(QStringLiteral("scenes: error ausgeführt")));
    EXPECT_FALSE(m_output.join(u'\n').contains(QStringLiteral("exportiert")));
}

TEST_F(BatchRun, EveryFailureIsALine)
{
    ExpectFailure({Command("throw")}, "Geworfen");
    ExpectFailure({Command("refuse")}, "nimmt den Befehl \"refuse\" nicht an");
    ExpectFailure({Command("x", "keller")}, "Den Bereich \"keller\" gibt es nicht");
    ExpectFailure({Action("MenuAction_Export", "keller")}, "Den Bereich \"keller\" gibt es nicht");
    ExpectFailure({Action("MenuAction_Unbekannt")}, "kennt die Aktion \"MenuAction_Unbekannt\" nicht");
    ExpectFailure({Action("MenuAction_Disabled")},
                  "\"MenuAction_Disabled\" ist im Bereich \"scenes\" zurzeit nicht möglich");
}

TEST_F(BatchRun, ModalDialogIsRefused)
{
    ExpectFailure({Command("modal")}, "Im Stapelbetrieb ist kein Dialog möglich");
}

TEST_F(BatchRun, MissingProjectIsALine)
{
    m_options.ProjectDirectory = m_directory.filePath(QStringLiteral("fehlt"));
    ExpectFailure({}, "fehlt");
    EXPECT_TRUE(m_output.isEmpty());
}

TEST_F(BatchRun, DamagedLayoutIsALine)
{
    SetLayout("{");
    ExpectFailure({}, "velmora.layout");
}

TEST_F(BatchRun, UnknownClassIsALine)
{
    SetLayout(R"({"format":1,"panes":[{"id":"scenes","title":"Szenen","class":"TUnbekannt"}]})");
    ExpectFailure({}, "TUnbekannt");
}

TEST_F(BatchRun, MissingPackageIsALine)
{
    qputenv("VELMORA_PACKAGE", "/nirgends/libfolders.so");
    ExpectFailure({}, "/nirgends/libfolders.so");
}

TEST_F(BatchRun, PictureShowsTheWindow)
{
    m_options.PictureFile = m_directory.filePath(QStringLiteral("bild.png"));
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(QImage(m_options.PictureFile).size(), QSize(1280, 800));
    EXPECT_EQ(m_output.last(), QStringLiteral("Bild gespeichert (%1)").arg(m_options.PictureFile));
}

TEST_F(BatchRun, PictureThatCannotBeWrittenIsALine)
{
    m_options.PictureFile = QStringLiteral("/nirgends/bild.png");
    ExpectFailure({}, "/nirgends/bild.png");
}

TEST_F(BatchRun, UsersSettingsStayAsTheyAre)
{
    EXPECT_EQ(Run(), 0);
    EXPECT_TRUE(TRecentProjects().List().isEmpty());
    EXPECT_TRUE(QSettings().allKeys().isEmpty());
}

TEST_F(BatchRun, NothingOfItIsLeftAfterwards)
{
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(UserManager(), nullptr);
    EXPECT_TRUE(RegisteredComponents().isEmpty());
}

} // namespace
