#include "MenuTree.h"

#include "Userman.h"
#include "Vlerrors.h"

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLineEdit>

namespace
{

constexpr auto OtherMenu = "<menu logo=\"/anders.png\"><menuitem caption=\"Nebenan\"/></menu>";
constexpr auto OtherLinks = "<links><link name=\"9/9/9\" alias=\"Zaun\"/></links>";
const auto NoProject = QStringLiteral("Ohne geöffnetes Projekt kann das Menu nicht exportiert werden.");

// A second project with a folder for a menu, and the frame showing the first one.
class MenuProjects : public TMenuTree
{
protected:
    MenuProjects()
    {
        OpenFirst();
        m_frame->expandAll();
        m_messages.Notes.clear();
    }

    void OpenFirst() const { UserManager()->OpenProject(m_project.Root()); }
    void OpenOther() const { UserManager()->OpenProject(m_other.Root()); }
    void WriteOtherMenu() const { m_other.Write(QStringLiteral("_menu/menu.xml"), OtherMenu); }
    void WriteOtherLinks() const { m_other.Write(QStringLiteral("_menu/dplinks.xml"), OtherLinks); }
    QString OtherPath(const char* name) const { return m_other.Path(QString::fromUtf8(name)).replace(u'/', u'\\'); }
    // Every file below the first project with its content.
    QByteArray FirstProject() const
    {
        QByteArray all;
        const QDir directory(m_project.Path(QStringLiteral("_menu")));
        const QStringList names = directory.entryList(QDir::Files | QDir::Hidden, QDir::Name);
        for (const QString& name : names)
            all += name.toUtf8() + '=' + ReadAll(directory.filePath(name)) + '\n';
        return all;
    }

    TTemporaryProject m_other{QStringLiteral("Nachbar")};
};

} // namespace

// Another project

TEST_F(MenuProjects, AreShownOneAfterTheOther)
{
    WriteOtherMenu();
    WriteOtherLinks();
    OpenOther();
    EXPECT_EQ(Outline(), "Menu\n  Nebenan\nSensitive Links\n  Zaun");
    EXPECT_EQ(m_frame->GetMenuPath(), OtherPath("_menu/menu.xml"));
    EXPECT_EQ(m_frame->GetLinksPath(), OtherPath("_menu/dplinks.xml"));
    EXPECT_EQ(m_frame->GetLogo(), QStringLiteral("/anders.png"));
    EXPECT_EQ(m_messages.Notes.size(), 1);
    OpenFirst();
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme");
    EXPECT_EQ(m_frame->GetLogo(), QStringLiteral("/images/logo.png"));
}

TEST_F(MenuProjects, WithoutDocumentsShowEmptyRootsAndForgetWhatBelongsToTheOther)
{
    OpenOther();
    EXPECT_EQ(Outline(), "Menu\nSensitive Links");
    EXPECT_EQ(m_frame->GetMenuPath(), OtherPath("_menu/menu.xml"));
    EXPECT_EQ(m_frame->GetLinksPath(), QString());
    EXPECT_EQ(m_frame->GetLogo(), QString());
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuProjects, WithoutAFolderForAMenuGetOneByTheExport)
{
    ASSERT_TRUE(QDir(m_other.Path(QStringLiteral("_menu"))).removeRecursively());
    const QByteArray first = FirstProject();
    OpenOther();
    EXPECT_EQ(m_frame->GetMenuPath(), OtherPath("_menu/menu.xml"));
    Export();
    for (const char* name : {"menu.xml", "menu.xsl", "menu.js", "menu.css", "dplinks.xml"})
        EXPECT_TRUE(m_other.Exists(QStringLiteral("_menu/") + QString::fromLatin1(name))) << name;
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_EQ(FirstProject(), first);
}

TEST_F(MenuProjects, WithAMenuAloneGetTheirOwnLinks)
{
    WriteOtherMenu();
    OpenOther();
    EXPECT_EQ(Outline(), "Menu\n  Nebenan\nSensitive Links");
    const QByteArray first = FirstProject();
    Export();
    EXPECT_TRUE(m_other.Exists(QStringLiteral("_menu/dplinks.xml")));
    EXPECT_EQ(FirstProject(), first);
}

TEST_F(MenuProjects, ForgetTheDefaultsOfAnExport)
{
    m_project.Write(QStringLiteral("_menu/menu.xsl"), Stylesheet());
    m_other.Write(QStringLiteral("_menu/menu.xsl"), Stylesheet("nebenan:"));
    WriteOtherMenu();
    Export();
    const QByteArray first = FirstProject();
    OpenOther();
    EXPECT_EQ(m_frame->GetStylePath(), QString());
    EXPECT_EQ(m_frame->GetOutputPath(), QString());
    Export();
    EXPECT_EQ(m_other.Read(QStringLiteral("_menu/menu.html")), "nebenan:Nebenan;");
    EXPECT_FALSE(m_other.Read(QStringLiteral("_menu/menu.xml")).contains("Haus"));
    EXPECT_EQ(FirstProject(), first);
}

TEST_F(MenuProjects, ResolveAnExplicitStylesheetAndOutputAnew)
{
    m_project.Write(QStringLiteral("own.xsl"), Stylesheet("eigenes:"));
    m_other.Write(QStringLiteral("own.xsl"), Stylesheet("nebenan:"));
    WriteOtherMenu();
    Execute(*m_frame, "x://?style=$(project)/own.xsl&out=%PRJPATH%/index.html");
    OpenOther();
    EXPECT_EQ(m_frame->GetStylePath(), OtherPath("own.xsl"));
    EXPECT_EQ(m_frame->GetOutputPath(), OtherPath("index.html"));
    Export();
    EXPECT_EQ(m_other.Read(QStringLiteral("index.html")), "nebenan:Nebenan;");
    EXPECT_FALSE(m_project.Exists(QStringLiteral("index.html")));
}

TEST_F(MenuProjects, DropAnOutputThatWasNamedInsideTheOther)
{
    bool handled = false;
    const QByteArray command = "x://?out=" + m_project.Path(QStringLiteral("_menu/seite.html")).toUtf8();
    m_frame->ExecuteCmd(command.constData(), handled);
    ASSERT_TRUE(m_frame->GetOutputPath().endsWith(QStringLiteral("seite.html")));
    WriteOtherMenu();
    OpenOther();
    EXPECT_EQ(m_frame->GetOutputPath(), QString());
}

TEST_F(MenuProjects, NeverTakeAnOutputInsideAnother)
{
    bool handled = false;
    const QByteArray command = "x://?out=" + m_other.Path(QStringLiteral("_menu/seite.html")).toUtf8();
    m_frame->ExecuteCmd(command.constData(), handled);
    EXPECT_EQ(m_frame->GetOutputPath(), QString());
    EXPECT_TRUE(m_frame->ExportedPage().endsWith(QStringLiteral("_menu/menu.html")));
}

TEST_F(MenuProjects, CloseALogoDialogOfTheOther)
{
    m_frame->MenuAction_LogoClick();
    auto* dialog = m_frame->findChild<QDialog*>(QStringLiteral("TLogoDialog"));
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QLineEdit*>()->setText(QStringLiteral("/alt.png"));
    WriteOtherMenu();
    OpenOther();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(m_frame->GetLogo(), QStringLiteral("/anders.png"));
}

TEST_F(MenuProjects, DropAnExplicitStylesheetThatDoesNotExistThere)
{
    m_project.Write(QStringLiteral("own.xsl"), Stylesheet("eigenes:"));
    Execute(*m_frame, "x://?style=$(project)/own.xsl&level=4");
    OpenOther();
    EXPECT_EQ(m_frame->GetStylePath(), QString());
    EXPECT_EQ(m_frame->GetLevels(), 4);
    OpenFirst();
    EXPECT_EQ(m_frame->GetStylePath().toStdString(), PackagePath("own.xsl"));
}

TEST_F(MenuProjects, TakeStrayItemsTheCutNodeAndTheNodeInTheDialogAway)
{
    WriteMenu("<menu><x><menuitem caption=\"Fremd\"/></x><menuitem caption=\"Haupt\" title=\"t\"/></menu>");
    Reload();
    CutNode("Haupt");
    ShowProperties("Haupt");
    OpenOther();
    EXPECT_EQ(Outline(), "Menu\nSensitive Links");
    EXPECT_TRUE(m_frame->IsMenuDialogShown());
    Press("SBtnDown");
    Press("BtnOK");
    EXPECT_FALSE(m_frame->IsModified());
    RunOn("Menu", "MenuAction_CreateAfterExecute");
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
}

TEST_F(MenuProjects, LeaveNoChangeOfTheDialogInTheOther)
{
    WriteOtherMenu();
    ShowProperties("Start");
    Type("EditName", "Anders");
    OpenOther();
    EXPECT_EQ(Below(Menu()), "Nebenan");
    Press("BtnApply");
    EXPECT_EQ(Below(Menu()), "Nebenan");
    EXPECT_FALSE(m_frame->IsModified());
}

// No project

TEST_F(MenuProjects, MissingRefuseAnExportAndWriteNothingAnywhere)
{
    const QByteArray first = FirstProject();
    UserManager()->CloseProject();
    const QTemporaryDir empty;
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(empty.path()));
    for (const char* file : {"%PRJPATH%\\_menu\\menu.xml", "$(project)/_menu/menu.xml"}) {
        m_frame = std::make_unique<TMenuTreeFrame>();
        Execute(*m_frame, QByteArray("x://?file=") + file);
        EXPECT_EQ(Outline(), "Menu\nSensitive Links") << file;
        m_frame->NewMenuNode(nullptr, naAdd);
        m_messages.Errors.clear();
        Export();
        EXPECT_EQ(m_messages.Errors, QStringList({NoProject})) << file;
        EXPECT_TRUE(m_frame->IsModified());
        EXPECT_THROW(m_frame->SaveMenu(m_project.Path(QStringLiteral("x.xml"))), TUserError);
    }
    EXPECT_TRUE(QDir(empty.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    EXPECT_EQ(FirstProject(), first);
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST_F(MenuProjects, MissingForAFrameThatWasNeverCommandedRefuseAnExport)
{
    UserManager()->CloseProject();
    m_frame = std::make_unique<TMenuTreeFrame>();
    EXPECT_EQ(m_frame->GetMenuPath(), QStringLiteral("%PRJPATH%\\_menu\\menu.xml"));
    Export();
    EXPECT_EQ(m_messages.Errors, QStringList({NoProject}));
}

TEST_F(MenuProjects, OpenedLaterAreFollowedByAFrameThatHadNone)
{
    UserManager()->CloseProject();
    m_frame = std::make_unique<TMenuTreeFrame>();
    Execute(*m_frame, "x://?file=$(project)/_menu/menu.xml");
    OpenFirst();
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme");
    EXPECT_EQ(Below(Links()), "Außen|Tür|vTag");
    Export();
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(MenuProjects, ClosedAreStillTheOnesThatAreShownAndExported)
{
    UserManager()->CloseProject();
    Rename("Alarme", "Meldungen");
    Export();
    EXPECT_TRUE(WrittenMenu().contains("caption=\"Meldungen\""));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}
