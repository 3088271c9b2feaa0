#include "MenuExport.h"

#include "ChildProcess.h"
#include "TestSupport.h"
#include "Vlerrors.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{

const auto TemplateNames = {"menu.xsl", "menu.js", "menu.css"};

// A product's home with the templates, and a project's directory that may get a menu. A template holds its own name.
class MenuTemplates : public testing::Test
{
protected:
    MenuTemplates()
    {
        qputenv("NORHOME", QFile::encodeName(m_home.path()));
        QDir(m_home.path()).mkpath(QStringLiteral("config/lang/shared/templates/kolt/_menu"));
        for (const char* name : TemplateNames)
            WriteAll(Template(name), name);
        WriteAll(Template("other.txt"), "other");
    }
    ~MenuTemplates() override { qunsetenv("NORHOME"); }

    QString Template(const char* name) const
    {
        return m_home.filePath(QStringLiteral("config/lang/shared/templates/kolt/_menu/") + QString::fromLatin1(name));
    }
    QString Menu() const { return m_project.filePath(QStringLiteral("Haus/_menu")); }
    // What stands in the menu's directory: "name=content".
    QStringList Content() const
    {
        QStringList content;
        for (const QString& name : QDir(Menu()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name))
            content.append(name + u'=' + QString::fromUtf8(ReadAll(Menu() + u'/' + name)));
        return content;
    }

    QTemporaryDir m_home;
    QTemporaryDir m_project;
    const QStringList m_all{QStringLiteral("menu.css=menu.css"), QStringLiteral("menu.js=menu.js"),
                            QStringLiteral("menu.xsl=menu.xsl")};
};

} // namespace

TEST_F(MenuTemplates, AreCopiedIntoANewDirectoryWithAllItsParents)
{
    PrepareMenuDirectory(Menu());
    EXPECT_EQ(Content(), m_all);
}

TEST_F(MenuTemplates, AreCopiedIntoADirectoryInTheFormOfThePackage)
{
    PrepareMenuDirectory(Menu().replace(u'/', u'\\'));
    EXPECT_EQ(Content(), m_all);
}

TEST_F(MenuTemplates, AreNotCopiedIntoADirectoryThatExists)
{
    QDir().mkpath(Menu());
    PrepareMenuDirectory(Menu());
    EXPECT_EQ(Content(), QStringList());
    WriteAll(Menu() + QStringLiteral("/menu.css"), "changed by the user");
    PrepareMenuDirectory(Menu());
    EXPECT_EQ(Content(), QStringList{QStringLiteral("menu.css=changed by the user")});
}

TEST_F(MenuTemplates, ArePassedOverWhereTheyAreMissing)
{
    QFile::remove(Template("menu.xsl"));
    PrepareMenuDirectory(Menu());
    EXPECT_EQ(Content(), m_all.mid(0, 2));
}

TEST_F(MenuTemplates, ArePassedOverWhereTheyAreNoFiles)
{
    QFile::remove(Template("menu.js"));
    QDir().mkpath(Template("menu.js"));
    PrepareMenuDirectory(Menu());
    EXPECT_EQ(Content(), QStringList({m_all.first(), m_all.last()}));
}

TEST_F(MenuTemplates, ArePassedOverWhereTheUserMayNotReadThem)
{
    for (const QString& directory : {m_home.path(), m_project.path()})
        ASSERT_EQ(chmod(QFile::encodeName(directory).constData(), 0777), 0);
    ASSERT_EQ(chmod(QFile::encodeName(Template("menu.css")).constData(), 0), 0);
    EXPECT_EQ(RunInChild([this] {
                  GiveUpRights();
                  PrepareMenuDirectory(Menu());
                  return Content().join(u'|');
              }),
              QStringLiteral("menu.js=menu.js|menu.xsl=menu.xsl"));
}

TEST_F(MenuTemplates, AreNotNeeded)
{
    qunsetenv("NORHOME");
    PrepareMenuDirectory(Menu());
    EXPECT_TRUE(QFileInfo(Menu()).isDir());
    EXPECT_EQ(Content(), QStringList());
}

TEST_F(MenuTemplates, HaveNoPlaceWhereTheDirectoryCannotBeMade)
{
    WriteAll(m_project.filePath(QStringLiteral("Haus")), "a file");
    EXPECT_THROW(PrepareMenuDirectory(Menu()), TFileError);
    EXPECT_EQ(ReadAll(m_project.filePath(QStringLiteral("Haus"))), "a file");
}
