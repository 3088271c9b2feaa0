#include "Vlprojects.h"

#include "ChildProcess.h"
#include "TestSupport.h"
#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{

class Project : public testing::Test
{
protected:
    QString File() const { return m_root + QStringLiteral("/velmora.project"); }

    // The text with which loading ends when the project file has this content.
    QString OutcomeWith(const QByteArray& content) const
    {
        QDir().mkpath(m_root);
        WriteAll(File(), content);
        return OutcomeOf([this] { TProject::Load(m_root); });
    }
    QString Damaged(const QString& reason) const
    {
        return QStringLiteral("Die Projektdatei \"%1\" ist beschädigt: %2.").arg(File(), reason);
    }

    QTemporaryDir m_directory;
    QString m_root = m_directory.filePath(QStringLiteral("Haus Süd"));
};

} // namespace

TEST_F(Project, IsCreatedWithTheFoldersThatEditorsExpect)
{
    const TProject project = TProject::Create(m_root, QStringLiteral(" Müllers Haus "));
    EXPECT_EQ(project.GetName(), QStringLiteral("Müllers Haus"));
    EXPECT_EQ(project.GetRootDirectory(), m_root);
    EXPECT_EQ(project.GetProjectFile(), File());
    EXPECT_TRUE(DirectoryExists(m_root + QStringLiteral("/_config/data/scenes")));
    EXPECT_TRUE(DirectoryExists(m_root + QStringLiteral("/_menu")));
    EXPECT_TRUE(FileExists(File()));
}

TEST_F(Project, IsLoadedAsItWasCreated)
{
    TProject::Create(m_root, QStringLiteral("Müllers \"Haus\""));
    const TProject project = TProject::Load(m_root);
    EXPECT_EQ(project.GetName(), QStringLiteral("Müllers \"Haus\""));
    EXPECT_EQ(project.GetRootDirectory(), m_root);
    EXPECT_EQ(project.GetProjectFile(), File());
}

TEST_F(Project, IsCreatedInADirectoryThatHoldsOtherThings)
{
    QDir().mkpath(m_root + QStringLiteral("/_menu"));
    WriteAll(m_root + QStringLiteral("/_menu/menu.xml"), "<menu/>");
    TProject::Create(m_root, QStringLiteral("Haus"));
    EXPECT_EQ(ReadAll(m_root + QStringLiteral("/_menu/menu.xml")), "<menu/>");
}

TEST_F(Project, HasACleanAbsoluteRoot)
{
    TProject::Create(m_root, QStringLiteral("Haus"));
    EXPECT_EQ(TProject::Load(m_root + QStringLiteral("//")).GetRootDirectory(), m_root);
    EXPECT_EQ(TProject::Load(ToPackagePath(m_root) + u'\\').GetRootDirectory(), m_root);
    EXPECT_EQ(TProject::Load(m_root + QStringLiteral("/../Haus Süd/.")).GetRootDirectory(), m_root);

    const QString previous = QDir::currentPath();
    QDir::setCurrent(m_directory.path());
    EXPECT_EQ(TProject::Load(QStringLiteral("Haus Süd")).GetRootDirectory(),
              QDir::cleanPath(QDir::currentPath() + QStringLiteral("/Haus Süd")));
    QDir::setCurrent(previous);
}

TEST_F(Project, IsNotCreatedOverAnother)
{
    TProject::Create(m_root, QStringLiteral("Haus"));
    const QByteArray content = ReadAll(File());
    EXPECT_EQ(OutcomeOf([this] { TProject::Create(m_root, QStringLiteral("Anderes")); }),
              QStringLiteral("In \"%1\" gibt es bereits ein Projekt.").arg(m_root));
    EXPECT_EQ(ReadAll(File()), content);
}

TEST_F(Project, NeedsADirectoryAndAName)
{
    const QString refusal = QStringLiteral("Ein Projekt braucht ein Verzeichnis und einen Namen.");
    EXPECT_EQ(OutcomeOf([] { TProject::Create(QString(), QStringLiteral("Haus")); }), refusal);
    EXPECT_EQ(OutcomeOf([this] { TProject::Create(m_root, QStringLiteral("  ")); }), refusal);
    EXPECT_FALSE(DirectoryExists(m_root));
    EXPECT_EQ(OutcomeOf([] { TProject::Load(QString()); }),
              QStringLiteral("Es ist kein Projektverzeichnis angegeben."));
}

TEST_F(Project, IsNotCreatedWhereAFileStands)
{
    WriteAll(m_root, "x");
    EXPECT_THROW(TProject::Create(m_root, QStringLiteral("Haus")), TFileError);
    EXPECT_EQ(ReadAll(m_root), "x");
}

TEST_F(Project, IsNotCreatedWhereNothingCanBeWritten)
{
    ASSERT_EQ(chmod(QFile::encodeName(m_directory.path()).constData(), 0555), 0);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        return OutcomeOf([this] { TProject::Create(m_root, QStringLiteral("Haus")); });
    });
    ASSERT_EQ(chmod(QFile::encodeName(m_directory.path()).constData(), 0755), 0);
    EXPECT_TRUE(outcome.startsWith(QStringLiteral("\"%1/_config").arg(m_root))) << outcome.toStdString();
    EXPECT_FALSE(DirectoryExists(m_root));
}

TEST_F(Project, IsMissingWithoutItsFile)
{
    const QString refusal = QStringLiteral("\"%1\" ist kein Projekt: Die Datei \"velmora.project\" fehlt.").arg(m_root);
    EXPECT_EQ(OutcomeOf([this] { TProject::Load(m_root); }), refusal);
    QDir().mkpath(m_root);
    EXPECT_EQ(OutcomeOf([this] { TProject::Load(m_root); }), refusal);
    QDir().mkpath(File());
    EXPECT_EQ(OutcomeOf([this] { TProject::Load(m_root); }), refusal);
}

TEST_F(Project, NamesTheFileThatCannotBeRead)
{
    TProject::Create(m_root, QStringLiteral("Haus"));
    ASSERT_EQ(chmod(QFile::encodeName(m_directory.path()).constData(), 0755), 0);
    ASSERT_EQ(chmod(QFile::encodeName(File()).constData(), 0), 0);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        return OutcomeOf([this] { TProject::Load(m_root); });
    });
    EXPECT_TRUE(outcome.startsWith(QStringLiteral("\"%1\" kann nicht gelesen werden (").arg(File())))
        << outcome.toStdString();
}

TEST_F(Project, IsDamagedWithoutReadableContent)
{
    for (const QByteArray content : {"", "{", "{\"format\": 1, \"name\": \"Haus\"", "Haus", "\xFF\xFE"}) {
        const QString outcome = OutcomeWith(content);
        EXPECT_TRUE(outcome.startsWith(QStringLiteral("Die Projektdatei \"%1\" ist beschädigt: ").arg(File())))
            << outcome.toStdString();
        EXPECT_TRUE(outcome.contains(QStringLiteral("(Zeichen "))) << outcome.toStdString();
    }
}

TEST_F(Project, IsDamagedWhenItsFileHoldsNoObject)
{
    EXPECT_EQ(OutcomeWith("[1]"), Damaged(QStringLiteral("Sie enthält kein Objekt")));
}

TEST_F(Project, IsDamagedWithoutItsFormat)
{
    for (const char* content : {"{}", "{\"name\": \"Haus\"}", "{\"format\": 2, \"name\": \"Haus\"}",
                                "{\"format\": \"1\", \"name\": \"Haus\"}", "{\"format\": 1.5, \"name\": \"Haus\"}"})
        EXPECT_EQ(OutcomeWith(content), Damaged(QStringLiteral("\"format\" ist nicht 1"))) << content;
}

TEST_F(Project, IsDamagedWithoutItsName)
{
    for (const char* content :
         {"{\"format\": 1}", "{\"format\": 1, \"name\": \"\"}", "{\"format\": 1, \"name\": \" \"}",
          "{\"format\": 1, \"name\": 5}", "{\"format\": 1, \"name\": null}"})
        EXPECT_EQ(OutcomeWith(content), Damaged(QStringLiteral("\"name\" fehlt"))) << content;
}

TEST_F(Project, MayHoldMoreThanIsKnown)
{
    EXPECT_EQ(OutcomeWith("\xEF\xBB\xBF{\"format\": 1, \"name\": \"Haus\", \"more\": [1]}"), QStringLiteral("ok"));
}
