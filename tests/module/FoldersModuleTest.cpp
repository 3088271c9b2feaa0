#include "Folders.h"

#include "Folderman.h"
#include "TestSupport.h"
#include "Userman.h"
#include "Vlclassregistry.h"
#include "Vlerrors.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <gtest/gtest.h>

#include <memory>

namespace
{

const auto Module = QStringLiteral(VELMORA_MODULE_DIR "/libfolders");
const auto ConfigTreeClass = QStringLiteral("TConfigTreeFrame");

constexpr auto DefaultCommand = R"(Velmora.ConfigTree.1://?scenes=%PRJPATH%\_config\data\scenes\scenes.xml)";

bool IsRegistered(const QString& className)
{
    return RegisteredComponents().contains(className);
}

// The text of the refusal, or "loaded".
QString Load(const QString& fileName)
{
    try {
        const TLoadedPackage package(fileName);
    } catch (const TUserError& error) {
        return error.Message();
    }
    return QStringLiteral("loaded");
}

// The client registry that the application offers while it lives.
class TOfferedRegistry
{
public:
    TOfferedRegistry() { SetApplicationInterface(IID_IRegisterClient, &Registry); }
    ~TOfferedRegistry() { SetApplicationInterface(IID_IRegisterClient, nullptr); }
    TOfferedRegistry(const TOfferedRegistry&) = delete;
    TOfferedRegistry& operator=(const TOfferedRegistry&) = delete;

    TClientRegistry Registry;
};

// A component of the package, which is loaded meanwhile.
class FoldersComponent : public testing::Test
{
protected:
    ICmdTarget* Target() const { return qobject_cast<ICmdTarget*>(m_component.get()); }
    QTreeWidget* Tree() const { return qobject_cast<QTreeWidget*>(m_component.get()); }
    bool Execute(const char* command) const
    {
        bool handled = false;
        Target()->ExecuteCmd(command, handled);
        return handled;
    }

    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    TLoadedPackage m_package{Module};
    std::unique_ptr<QWidget> m_component{CreateComponent(ConfigTreeClass, nullptr)};
};

} // namespace

TEST(FoldersModule, RegistersItsClassesWhileItIsLoaded)
{
    ASSERT_FALSE(IsRegistered(ConfigTreeClass));
    {
        const TLoadedPackage package(Module);
        EXPECT_TRUE(IsRegistered(ConfigTreeClass));
    }
    EXPECT_FALSE(IsRegistered(ConfigTreeClass));
    EXPECT_EQ(CreateComponent(ConfigTreeClass, nullptr), nullptr);
}

TEST(FoldersModule, StaysLoadedUntilTheLastUnload)
{
    auto first = std::make_unique<TLoadedPackage>(Module);
    auto second = std::make_unique<TLoadedPackage>(Module);
    EXPECT_EQ(RegisteredComponents().count(ConfigTreeClass), 1);
    first.reset();
    EXPECT_TRUE(IsRegistered(ConfigTreeClass));
    second.reset();
    EXPECT_FALSE(IsRegistered(ConfigTreeClass));
}

TEST(FoldersModule, IsLoadedAgainAfterItsUnload)
{
    for (int i = 0; i < 3; ++i) {
        const TLoadedPackage package(Module);
        const std::unique_ptr<QWidget> component(CreateComponent(ConfigTreeClass, nullptr));
        EXPECT_NE(qobject_cast<ICmdTarget*>(component.get()), nullptr);
    }
    EXPECT_FALSE(IsRegistered(ConfigTreeClass));
}

TEST(FoldersModule, IsNotHarmedByAFinalizeTooMany)
{
    QLibrary library(Module);
    ASSERT_TRUE(library.load());
    const auto finalize = reinterpret_cast<TPackageFinalize>(library.resolve("Finalize"));
    ASSERT_NE(finalize, nullptr);
    finalize();
    finalize();
    {
        const TLoadedPackage package(Module);
        EXPECT_TRUE(IsRegistered(ConfigTreeClass));
    }
    finalize();
    EXPECT_FALSE(IsRegistered(ConfigTreeClass));
    const TLoadedPackage package(Module);
    EXPECT_TRUE(IsRegistered(ConfigTreeClass));
}

TEST(FoldersModule, RegistersItsProgIdWithARegistryThatIsOffered)
{
    TOfferedRegistry offered;
    const TLoadedPackage package(Module);
    EXPECT_EQ(offered.Registry.ClassOf(QString::fromLatin1(ProgIdConfigTree)), ConfigTreeClass);
    EXPECT_EQ(offered.Registry.ClassOf(QStringLiteral("velmora.configtree.1")), ConfigTreeClass);
}

// Its unit makes the class known and leaves the ProgID to the host.
TEST(FoldersModule, RegistersTheBarByItsClassOnly)
{
    TOfferedRegistry offered;
    const auto barClass = QStringLiteral("TICmdButtons");
    const auto progId = QString::fromLatin1(ProgIdCmdButtons);
    {
        const TLoadedPackage package(Module);
        EXPECT_TRUE(IsRegistered(barClass));
        EXPECT_EQ(offered.Registry.ClassOf(progId), progId);
    }
    EXPECT_FALSE(IsRegistered(barClass));
}

TEST(FoldersModule, BarShowsTheFolderManagersEntriesOfTheHost)
{
    const TTemporaryProject project;
    const TRecordedMessages messages;
    const TLoadedPackage package(Module);
    project.Write(QStringLiteral("_buttons/a.uri"), "Command=pane://a");
    const std::unique_ptr<QWidget> bar(CreateComponent(QStringLiteral("TICmdButtons"), nullptr));
    auto* target = qobject_cast<ICmdTarget*>(bar.get());
    ASSERT_NE(target, nullptr);
    bool handled = false;
    target->ExecuteCmd("Velmora.CmdButtons.1://%PRJPATH%/_buttons", handled);
    EXPECT_TRUE(handled);
    ASSERT_EQ(FolderManager().Entries().size(), 1);
    FolderManager().Entries().first()->trigger();
    EXPECT_EQ(messages.Errors.size(), 1); // nobody takes commands here
}

TEST(FoldersModule, LoadsWithoutARegistry)
{
    TClientRegistry registry;
    const TLoadedPackage package(Module);
    EXPECT_EQ(registry.ClassOf(QString::fromLatin1(ProgIdConfigTree)), QString::fromLatin1(ProgIdConfigTree));
    EXPECT_TRUE(IsRegistered(ConfigTreeClass));
}

TEST(FoldersModule, TellsItsUnitsInTheirOrder)
{
    const TLoadedPackage package(Module);
    const QStringList units = package.GetUnits();
    const qsizetype texts = units.indexOf(QStringLiteral("FoldersRc"));
    const qsizetype common = units.indexOf(QStringLiteral("FoldersCommon"));
    const qsizetype files = units.indexOf(QStringLiteral("ICmdShellTree"));
    const qsizetype menu = units.indexOf(QStringLiteral("IMenuTree"));
    const qsizetype scenes = units.indexOf(QStringLiteral("IScenesTree"));
    const qsizetype bar = units.indexOf(QStringLiteral("ICmdButtons"));
    EXPECT_EQ(texts, 0);
    EXPECT_EQ(bar, common + 1);
    EXPECT_GT(common, texts);
    EXPECT_GT(files, common);
    EXPECT_GT(menu, files);
    EXPECT_GT(scenes, menu);
}

TEST(FoldersModule, OffersTheProjectFilesByTheirClassOnly)
{
    const TOfferedRegistry offered;
    const auto name = QStringLiteral("TICmdShellTreeView");
    const TLoadedPackage package(Module);
    EXPECT_TRUE(IsRegistered(name));
    const std::unique_ptr<QWidget> component(CreateComponent(name, nullptr));
    EXPECT_NE(qobject_cast<ICmdTarget*>(component.get()), nullptr);
    EXPECT_EQ(offered.Registry.ClassOf(QStringLiteral("Velmora.CmdShellTree.1")),
              QStringLiteral("Velmora.CmdShellTree.1"));
}

TEST(FoldersModule, RequiresTheHost)
{
    const TLoadedPackage package(Module);
    EXPECT_EQ(package.GetRequiredPackages(), QStringList({QStringLiteral("vlhost")}));
}

TEST(FoldersModule, ExportsItsThreeEntryPointsAndNothingElse)
{
    QProcess nm;
    nm.start(QStringLiteral("nm"), {QStringLiteral("-D"), QStringLiteral("--defined-only"),
                                    QStringLiteral("--format=just-symbols"), Module + QStringLiteral(".so")});
    ASSERT_TRUE(nm.waitForFinished());
    ASSERT_EQ(nm.exitCode(), 0) << nm.readAllStandardError().toStdString();
    QStringList symbols = QString::fromLatin1(nm.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    symbols.sort();
    EXPECT_EQ(symbols, QStringList({QStringLiteral("Finalize"), QStringLiteral("GetPackageInfoTable"),
                                    QStringLiteral("Initialize")}));
}

TEST(LoadedPackage, RefusesALibraryThatIsMissing)
{
    const QString missing = QStringLiteral(VELMORA_MODULE_DIR "/libnone");
    EXPECT_TRUE(Load(missing).startsWith(QStringLiteral("Das Paket \"%1\" kann nicht geladen werden: ").arg(missing)));
}

TEST(LoadedPackage, RefusesAFileThatIsNoLibrary)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("libx.so"));
    WriteAll(path, "This is text.");
    EXPECT_TRUE(Load(path).startsWith(QStringLiteral("Das Paket \"%1\" kann nicht geladen werden: ").arg(path)));
}

TEST(LoadedPackage, RefusesALibraryThatIsNoPackage)
{
    const QString host = QStringLiteral(VELMORA_MODULE_DIR "/libvlhost");
    EXPECT_EQ(Load(host), QStringLiteral("\"%1\" ist kein Paket: Eine der drei Einsprungstellen fehlt.").arg(host));
    EXPECT_FALSE(IsRegistered(ConfigTreeClass));
}

TEST_F(FoldersComponent, IsACommandTarget)
{
    ASSERT_NE(Target(), nullptr);
    void* found = nullptr;
    EXPECT_TRUE(Target()->QueryInterface(IID_ICmdTarget, &found));
    EXPECT_EQ(found, Target());
    bool accepted = false;
    Target()->QueryCmd("anything", accepted);
    EXPECT_TRUE(accepted);
    QVariant out(1);
    Target()->RequestData(QVariant(), out);
    EXPECT_TRUE(out.isNull());
}

TEST_F(FoldersComponent, IsDrivenByCommands)
{
    ASSERT_NE(Tree(), nullptr);
    EXPECT_TRUE(Execute("Velmora.ConfigTree.1://?color=255"));
    EXPECT_EQ(Tree()->palette().color(QPalette::Text), QColor(255, 0, 0));
    m_project.Write(QStringLiteral("_config/data/scenes/scenes.xml"), "<scenes><scene alias='Abend'/></scenes>");
    EXPECT_TRUE(Execute(DefaultCommand));
    ASSERT_EQ(Tree()->topLevelItemCount(), 1);
    EXPECT_EQ(Tree()->topLevelItem(0)->text(0), QStringLiteral("Szenen"));
    EXPECT_EQ(Tree()->topLevelItem(0)->child(2)->text(0), QStringLiteral("Abend"));
}

TEST_F(FoldersComponent, BelongsToItsParent)
{
    const auto parent = std::make_unique<QWidget>();
    QWidget* component = CreateComponent(ConfigTreeClass, parent.get());
    ASSERT_NE(component, nullptr);
    EXPECT_EQ(component->parentWidget(), parent.get());
}

TEST_F(FoldersComponent, SeesTheUserManagerOfItsHost)
{
    Execute(DefaultCommand);
    EXPECT_EQ(Tree()->topLevelItemCount(), 0);
    m_project.Write(QStringLiteral("_config/data/scenes/scenes.xml"), "<scenes><scene alias='Abend'/></scenes>");
    UserManager()->OpenProject(m_project.Root());
    ASSERT_EQ(Tree()->topLevelItemCount(), 1);
    EXPECT_EQ(Tree()->topLevelItem(0)->childCount(), 3);

    const QTemporaryDir directory;
    const QString other = directory.filePath(QStringLiteral("other"));
    TProject::Create(other, QStringLiteral("other"));
    UserManager()->OpenProject(other);
    EXPECT_EQ(Tree()->topLevelItem(0)->childCount(), 2);
}

TEST_F(FoldersComponent, SpeaksThroughTheMessagesOfItsHost)
{
    Execute(DefaultCommand);
    UserManager()->OpenProject(m_project.Root());
    EXPECT_EQ(m_messages.Notes, QStringList({QStringLiteral("0 Trigger, 0 Aktionen, 0 Szenen, 0 Schritte geladen")}));
}

TEST_F(FoldersComponent, IsNoLongerCalledAfterItsDestruction)
{
    Execute(DefaultCommand);
    m_component.reset();
    UserManager()->OpenProject(m_project.Root());
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}
