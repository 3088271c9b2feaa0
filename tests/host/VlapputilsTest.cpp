#include "Vlapputils.h"

#include "ChildProcess.h"
#include "TestSupport.h"
#include "Vlerrors.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{

struct TRelPath
{
    QString First;
    QString Second;
    QString Third;

    bool operator==(const TRelPath&) const = default;
};

void PrintTo(const TRelPath& path, std::ostream* stream)
{
    *stream << path.First.toStdString() << " | " << path.Second.toStdString() << " | " << path.Third.toStdString();
}

TRelPath Split(const QString& base, const QString& path, QChar separator = PathSeparator)
{
    TRelPath result{.First = QStringLiteral("?"), .Second = QStringLiteral("?"), .Third = QStringLiteral("?")};
    ExtractRelPath(base, path, separator, result.First, result.Second, result.Third);
    return result;
}

QString LastItem(const QString& path)
{
    return GetLastPathItem(path, PathSeparator);
}

// A temporary directory for files, with a shorthand for their paths.
class Files : public testing::Test
{
protected:
    QString At(const QString& name) const { return m_directory.filePath(name); }
    void Make(const QString& name, const QByteArray& content) const { WriteAll(At(name), content); }
    QStringList Names() const
    {
        return QDir(m_directory.path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    }
    unsigned Mode(const QString& name) const
    {
        struct stat status
        {};
        EXPECT_EQ(stat(QFile::encodeName(At(name)).constData(), &status), 0);
        return status.st_mode & 07777;
    }
    void SetMode(const QString& name, unsigned mode) const
    {
        ASSERT_EQ(chmod(QFile::encodeName(At(name)).constData(), mode), 0);
    }

    QTemporaryDir m_directory;
};

class EnvStrings : public testing::Test
{
protected:
    EnvStrings()
    {
        qputenv("VL_HOME", "/opt/haus");
        qputenv("VL_EMPTY", "");
        qputenv("VL_NESTED", "%VL_HOME%");
        qputenv("VL_HÄUSER", "Wände");
        qunsetenv("VL_UNSET");
    }
    ~EnvStrings() override
    {
        for (const char* name : {"VL_HOME", "VL_EMPTY", "VL_NESTED", "VL_HÄUSER"})
            qunsetenv(name);
    }
};

} // namespace

TEST(PlatformPath, HasThePlatformsSeparatorOnly)
{
    EXPECT_EQ(ToPlatformPath(QStringLiteral("\\a\\b/c")), QStringLiteral("/a/b/c"));
    EXPECT_EQ(ToPlatformPath(QString()), QString());
}

TEST(PackagePath, HasBackslashesOnly)
{
    EXPECT_EQ(ToPackagePath(QStringLiteral("/a/b\\c/")), QStringLiteral("\\a\\b\\c\\"));
    EXPECT_EQ(ToPackagePath(QString()), QString());
}

TEST(GetLastPathItem, GivesTheLastComponent)
{
    EXPECT_EQ(LastItem(QStringLiteral("C:\\prj\\Haus")), QStringLiteral("Haus"));
    EXPECT_EQ(LastItem(QStringLiteral("Haus")), QStringLiteral("Haus"));
    EXPECT_EQ(LastItem(QStringLiteral("\\Haus")), QStringLiteral("Haus"));
}

TEST(GetLastPathItem, DoesNotCountTrailingSeparators)
{
    EXPECT_EQ(LastItem(QStringLiteral("C:\\prj\\Haus\\")), QStringLiteral("Haus"));
    EXPECT_EQ(LastItem(QStringLiteral("/prj/Haus//")), QStringLiteral("Haus"));
    EXPECT_EQ(LastItem(QStringLiteral("Haus\\\\")), QStringLiteral("Haus"));
}

TEST(GetLastPathItem, SplitsAtBothSeparatorsWhenAskedForTheBackslash)
{
    EXPECT_EQ(LastItem(QStringLiteral("/prj/Haus")), QStringLiteral("Haus"));
    EXPECT_EQ(LastItem(QStringLiteral("C:\\prj/Haus\\Flur")), QStringLiteral("Flur"));
    EXPECT_EQ(LastItem(QStringLiteral("C:\\prj\\Haus/Flur")), QStringLiteral("Flur"));
}

TEST(GetLastPathItem, SplitsAtNothingElseWhenAskedForAnotherSeparator)
{
    EXPECT_EQ(GetLastPathItem(QStringLiteral("a/b\\c"), u'/'), QStringLiteral("b\\c"));
    EXPECT_EQ(GetLastPathItem(QStringLiteral("1/2/3"), u'/'), QStringLiteral("3"));
    EXPECT_EQ(GetLastPathItem(QStringLiteral("a;b/c"), u';'), QStringLiteral("b/c"));
}

TEST(GetLastPathItem, IsEmptyWhereThereIsNone)
{
    EXPECT_EQ(LastItem(QString()), QString());
    EXPECT_EQ(LastItem(QStringLiteral("\\")), QString());
    EXPECT_EQ(LastItem(QStringLiteral("//")), QString());
}

TEST(GetLastPathItem, TakesADriveForAnItem)
{
    EXPECT_EQ(LastItem(QStringLiteral("C:\\")), QStringLiteral("C:"));
}

TEST(ExtractRelPath, GivesThePathBelowTheBase)
{
    EXPECT_EQ(Split(QStringLiteral("C:\\prj"), QStringLiteral("C:\\prj\\_config\\x.xml")),
              (TRelPath{QStringLiteral("C:\\prj"), QString(), QStringLiteral("_config\\x.xml")}));
    EXPECT_EQ(Split(QStringLiteral("/prj"), QStringLiteral("/prj/x.xml")),
              (TRelPath{QStringLiteral("\\prj"), QString(), QStringLiteral("x.xml")}));
}

TEST(ExtractRelPath, ComparesFolderByFolder)
{
    EXPECT_EQ(Split(QStringLiteral("C:\\prj"), QStringLiteral("C:\\prj2\\x")),
              (TRelPath{QStringLiteral("C:"), QStringLiteral("..\\"), QStringLiteral("prj2\\x")}));
    EXPECT_EQ(Split(QStringLiteral("C:\\prj2"), QStringLiteral("C:\\prj\\x")),
              (TRelPath{QStringLiteral("C:"), QStringLiteral("..\\"), QStringLiteral("prj\\x")}));
}

TEST(ExtractRelPath, GivesTheWayUpOutsideTheBase)
{
    EXPECT_EQ(Split(QStringLiteral("C:\\a\\b\\c"), QStringLiteral("C:\\a\\d\\x.png")),
              (TRelPath{QStringLiteral("C:\\a"), QStringLiteral("..\\..\\"), QStringLiteral("d\\x.png")}));
    EXPECT_EQ(Split(QStringLiteral("C:\\a\\b"), QStringLiteral("C:\\a")),
              (TRelPath{QStringLiteral("C:\\a"), QStringLiteral("..\\"), QString()}));
}

TEST(ExtractRelPath, GivesNothingBelowTheBaseForTheBaseItself)
{
    EXPECT_EQ(Split(QStringLiteral("C:\\a"), QStringLiteral("C:\\a\\")),
              (TRelPath{QStringLiteral("C:\\a"), QString(), QString()}));
}

TEST(ExtractRelPath, DoesNotCountTrailingSeparatorsOfTheBase)
{
    EXPECT_EQ(Split(QStringLiteral("C:\\prj\\"), QStringLiteral("C:\\prj\\x")).Third, QStringLiteral("x"));
    EXPECT_EQ(Split(QStringLiteral("/prj//"), QStringLiteral("/prj/x")).Second, QString());
    EXPECT_EQ(Split(QStringLiteral("/prj/a/"), QStringLiteral("/prj/x")).Second, QStringLiteral("..\\"));
}

TEST(ExtractRelPath, AcceptsBothSeparatorsWhenAskedForTheBackslash)
{
    EXPECT_EQ(Split(QStringLiteral("/home/prj"), QStringLiteral("\\home\\prj\\a/b")),
              (TRelPath{QStringLiteral("\\home\\prj"), QString(), QStringLiteral("a\\b")}));
}

TEST(ExtractRelPath, SplitsAtTheGivenSeparator)
{
    EXPECT_EQ(Split(QStringLiteral("/a/b"), QStringLiteral("/a/c\\d"), u'/'),
              (TRelPath{QStringLiteral("/a"), QStringLiteral("../"), QStringLiteral("c\\d")}));
}

TEST(ExtractRelPath, GivesTheWholePathWithoutACommonRoot)
{
    EXPECT_EQ(Split(QStringLiteral("C:\\a"), QStringLiteral("D:\\a\\x")),
              (TRelPath{QString(), QString(), QStringLiteral("D:\\a\\x")}));
    EXPECT_EQ(Split(QStringLiteral("/a"), QStringLiteral("a/x")),
              (TRelPath{QString(), QString(), QStringLiteral("a/x")}));
    EXPECT_EQ(Split(QString(), QStringLiteral("/a/x")), (TRelPath{QString(), QString(), QStringLiteral("/a/x")}));
    EXPECT_EQ(Split(QStringLiteral("/a"), QString()), (TRelPath{}));
}

TEST(ExtractRelPath, SharesTheRootOfRootedPaths)
{
    const TRelPath split = Split(QStringLiteral("/a"), QStringLiteral("/b/x"));
    EXPECT_EQ(split.Second, QStringLiteral("..\\"));
    EXPECT_EQ(split.Third, QStringLiteral("b\\x"));
}

TEST(ExtractRelPath, ComparesDrivesWithoutRegardToCaseAndFoldersWithIt)
{
    EXPECT_EQ(Split(QStringLiteral("c:\\prj"), QStringLiteral("C:\\prj\\x")).Third, QStringLiteral("x"));
    EXPECT_EQ(Split(QStringLiteral("C:\\Prj"), QStringLiteral("C:\\prj\\x")).Second, QStringLiteral("..\\"));
}

TEST(JoinFilePath, PutsOneBackslashBetweenTwoComponents)
{
    EXPECT_EQ(JoinFilePath(QStringLiteral("C:\\prj"), {QStringLiteral("_config"), QStringLiteral("x.xml")}),
              QStringLiteral("C:\\prj\\_config\\x.xml"));
    EXPECT_EQ(JoinFilePath(QStringLiteral("C:\\prj\\"), {QStringLiteral("\\_config\\"), QStringLiteral("/x.xml")}),
              QStringLiteral("C:\\prj\\_config\\x.xml"));
    EXPECT_EQ(JoinFilePath(QStringLiteral("/prj/"), {QStringLiteral("a")}), QStringLiteral("/prj/a"));
    EXPECT_EQ(JoinFilePath(QStringLiteral("/"), {QStringLiteral("a")}), QStringLiteral("/a"));
}

TEST(JoinFilePath, AddsNothingForEmptyComponents)
{
    EXPECT_EQ(JoinFilePath(QStringLiteral("a"), {QString(), QStringLiteral("b"), QString(), QStringLiteral("\\")}),
              QStringLiteral("a\\b"));
    EXPECT_EQ(JoinFilePath(QStringLiteral("a\\"), {}), QStringLiteral("a\\"));
    EXPECT_EQ(JoinFilePath(QString(), {QString()}), QString());
}

TEST(JoinFilePath, LetsTheFirstComponentStandForAnEmptyBase)
{
    EXPECT_EQ(JoinFilePath(QString(), {QStringLiteral("a"), QStringLiteral("b")}), QStringLiteral("a\\b"));
    EXPECT_EQ(JoinFilePath(QString(), {QStringLiteral("\\a"), QStringLiteral("b")}), QStringLiteral("\\a\\b"));
}

TEST(ExtractFileDir, GivesTheDirectoryWithoutItsTrailingSeparator)
{
    EXPECT_EQ(ExtractFileDir(QStringLiteral("C:\\prj\\x.xml")), QStringLiteral("C:\\prj"));
    EXPECT_EQ(ExtractFileDir(QStringLiteral("/prj\\a/x")), QStringLiteral("/prj\\a"));
    EXPECT_EQ(ExtractFileDir(QStringLiteral("prj\\")), QStringLiteral("prj"));
}

TEST(ExtractFileDir, KeepsTheSeparatorOfARoot)
{
    EXPECT_EQ(ExtractFileDir(QStringLiteral("C:\\x.xml")), QStringLiteral("C:\\"));
    EXPECT_EQ(ExtractFileDir(QStringLiteral("/x.xml")), QStringLiteral("/"));
}

TEST(ExtractFileDir, IsEmptyForABareFileName)
{
    EXPECT_EQ(ExtractFileDir(QStringLiteral("x.xml")), QString());
    EXPECT_EQ(ExtractFileDir(QString()), QString());
}

TEST(ExtractFileName, GivesWhatFollowsTheLastSeparator)
{
    EXPECT_EQ(ExtractFileName(QStringLiteral("C:\\prj/a\\x.xml")), QStringLiteral("x.xml"));
    EXPECT_EQ(ExtractFileName(QStringLiteral("C:\\prj/x.xml")), QStringLiteral("x.xml"));
    EXPECT_EQ(ExtractFileName(QStringLiteral("x.xml")), QStringLiteral("x.xml"));
    EXPECT_EQ(ExtractFileName(QStringLiteral("prj\\")), QString());
}

TEST(ChangeFileExt, ReplacesTheLastExtension)
{
    EXPECT_EQ(ChangeFileExt(QStringLiteral("C:\\a.b\\x.tar.gz"), QStringLiteral(".xml")),
              QStringLiteral("C:\\a.b\\x.tar.xml"));
    EXPECT_EQ(ChangeFileExt(QStringLiteral("x.xml"), QString()), QStringLiteral("x"));
    EXPECT_EQ(ChangeFileExt(QStringLiteral("x."), QStringLiteral(".xml")), QStringLiteral("x.xml"));
}

TEST(ChangeFileExt, AddsOneWhereThereIsNone)
{
    EXPECT_EQ(ChangeFileExt(QStringLiteral("x"), QStringLiteral(".xml")), QStringLiteral("x.xml"));
    EXPECT_EQ(ChangeFileExt(QStringLiteral("C:\\a.b\\x"), QStringLiteral(".xml")), QStringLiteral("C:\\a.b\\x.xml"));
    EXPECT_EQ(ChangeFileExt(QStringLiteral("/a.b/x"), QStringLiteral(".xml")), QStringLiteral("/a.b/x.xml"));
}

TEST(ChangeFileExt, TakesADotThatBeginsTheNameForNoExtension)
{
    EXPECT_EQ(ChangeFileExt(QStringLiteral("a\\.profile"), QStringLiteral(".xml")), QStringLiteral("a\\.profile.xml"));
    EXPECT_EQ(ChangeFileExt(QStringLiteral(".profile"), QStringLiteral(".xml")), QStringLiteral(".profile.xml"));
}

TEST_F(EnvStrings, AreExpanded)
{
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("%VL_HOME%\\menu")), QStringLiteral("/opt/haus\\menu"));
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("a%VL_HOME%%VL_HOME%b")), QStringLiteral("a/opt/haus/opt/hausb"));
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("%VL_HÄUSER%")), QStringLiteral("Wände"));
}

TEST_F(EnvStrings, ThatAreSetToNothingVanish)
{
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("a%VL_EMPTY%b")), QStringLiteral("ab"));
}

TEST_F(EnvStrings, ThatAreNotSetStayAsTheyStand)
{
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("%VL_UNSET%\\x")), QStringLiteral("%VL_UNSET%\\x"));
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("%VL_UNSET%VL_HOME%")), QStringLiteral("%VL_UNSET/opt/haus"));
}

TEST_F(EnvStrings, LeaveLonePercentSignsAlone)
{
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("100% of %VL_HOME%")), QStringLiteral("100% of /opt/haus"));
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("%VL_HOME% 100%")), QStringLiteral("/opt/haus 100%"));
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("%%VL_HOME%%")), QStringLiteral("%/opt/haus%"));
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("%%")), QStringLiteral("%%"));
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("%")), QStringLiteral("%"));
    EXPECT_EQ(ExpandEnvStrings(QString()), QString());
}

TEST_F(EnvStrings, AreExpandedOnce)
{
    EXPECT_EQ(ExpandEnvStrings(QStringLiteral("%VL_NESTED%")), QStringLiteral("%VL_HOME%"));
}

TEST_F(EnvStrings, AreReadOneByOne)
{
    EXPECT_EQ(GetEnvironment("VL_HOME"), QStringLiteral("/opt/haus"));
    EXPECT_EQ(GetEnvironment("VL_UNSET"), QString());
}

TEST_F(Files, AreToldFromDirectories)
{
    Make(QStringLiteral("x"), "1");
    EXPECT_TRUE(FileExists(At(QStringLiteral("x"))));
    EXPECT_TRUE(FileExists(ToPackagePath(At(QStringLiteral("x")))));
    EXPECT_FALSE(DirectoryExists(At(QStringLiteral("x"))));
    EXPECT_TRUE(DirectoryExists(ToPackagePath(m_directory.path())));
    EXPECT_FALSE(FileExists(m_directory.path()));
    EXPECT_FALSE(FileExists(At(QStringLiteral("y"))));
    EXPECT_FALSE(DirectoryExists(At(QStringLiteral("y"))));
}

TEST_F(Files, ExistBehindLinksThatLeadToThem)
{
    Make(QStringLiteral("x"), "1");
    ASSERT_TRUE(QFile::link(At(QStringLiteral("x")), At(QStringLiteral("link"))));
    ASSERT_TRUE(QFile::link(At(QStringLiteral("none")), At(QStringLiteral("dangling"))));
    EXPECT_TRUE(FileExists(At(QStringLiteral("link"))));
    EXPECT_FALSE(FileExists(At(QStringLiteral("dangling"))));
}

TEST(EmptyPath, IsNothing)
{
    EXPECT_FALSE(FileExists(QString()));
    EXPECT_FALSE(DirectoryExists(QString()));
    EXPECT_THROW(ForceDirectories(QString()), TFileError);
    EXPECT_THROW(ReadFile(QString()), TFileError);
    EXPECT_THROW(WriteFile(QString(), "x"), TFileError);
}

TEST_F(Files, GetTheirDirectoriesForced)
{
    ForceDirectories(ToPackagePath(At(QStringLiteral("a/b/c"))));
    EXPECT_TRUE(DirectoryExists(At(QStringLiteral("a/b/c"))));
    ForceDirectories(At(QStringLiteral("a/b/c/")));
    EXPECT_EQ(Names(), QStringList{QStringLiteral("a")});
}

TEST_F(Files, InTheWayOfADirectoryAreAnError)
{
    Make(QStringLiteral("x"), "1");
    EXPECT_EQ(OutcomeOf([this] { ForceDirectories(At(QStringLiteral("x/y"))); }),
              QStringLiteral("\"%1\" kann nicht angelegt werden (Das Verzeichnis lässt sich hier nicht anlegen)")
                  .arg(At(QStringLiteral("x/y"))));
    EXPECT_THROW(ForceDirectories(At(QStringLiteral("x"))), TFileError);
    EXPECT_EQ(ReadAll(At(QStringLiteral("x"))), "1");
}

TEST_F(Files, AreReadAndWrittenAsAWhole)
{
    const QByteArray content("K\xFC"
                             "che\r\n\0\xFF",
                             9);
    WriteFile(ToPackagePath(At(QStringLiteral("x"))), content);
    EXPECT_EQ(ReadFile(ToPackagePath(At(QStringLiteral("x")))), content);
    WriteFile(At(QStringLiteral("x")), QByteArray());
    EXPECT_EQ(ReadFile(At(QStringLiteral("x"))), QByteArray());
    EXPECT_EQ(Names(), QStringList{QStringLiteral("x")});
}

TEST_F(Files, ThatCannotBeReadAreNamedInTheError)
{
    const QString missing = OutcomeOf([this] { ReadFile(ToPackagePath(At(QStringLiteral("none")))); });
    EXPECT_TRUE(
        missing.startsWith(QStringLiteral("\"%1\" kann nicht gelesen werden (").arg(At(QStringLiteral("none")))))
        << missing.toStdString();
    EXPECT_EQ(OutcomeOf([this] { ReadFile(m_directory.path()); }),
              QStringLiteral("\"%1\" kann nicht gelesen werden (Dort steht ein Verzeichnis)").arg(m_directory.path()));
}

TEST_F(Files, WithoutReadPermissionAreAnError)
{
    Make(QStringLiteral("x"), "1");
    SetMode(QStringLiteral("x"), 0000);
    SetMode(QString(), 0755);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        return OutcomeOf([this] { ReadFile(At(QStringLiteral("x"))); });
    });
    EXPECT_TRUE(outcome.startsWith(QStringLiteral("\"%1\" kann nicht gelesen werden (").arg(At(QStringLiteral("x")))))
        << outcome.toStdString();
}

TEST_F(Files, AreCopiedWithTheirPermissions)
{
    Make(QStringLiteral("x"), "neu");
    SetMode(QStringLiteral("x"), 0750);
    EXPECT_TRUE(CopyFileTo(ToPackagePath(At(QStringLiteral("x"))), ToPackagePath(At(QStringLiteral("y"))), false));
    EXPECT_EQ(ReadAll(At(QStringLiteral("y"))), "neu");
    EXPECT_EQ(Mode(QStringLiteral("y")), 0750u);
}

TEST_F(Files, AreNotCopiedOverOthersUnlessWanted)
{
    Make(QStringLiteral("x"), "neu");
    Make(QStringLiteral("y"), "alt");
    EXPECT_FALSE(CopyFileTo(At(QStringLiteral("x")), At(QStringLiteral("y")), false));
    EXPECT_EQ(ReadAll(At(QStringLiteral("y"))), "alt");
    EXPECT_TRUE(CopyFileTo(At(QStringLiteral("x")), At(QStringLiteral("y")), true));
    EXPECT_EQ(ReadAll(At(QStringLiteral("y"))), "neu");
    EXPECT_EQ(ReadAll(At(QStringLiteral("x"))), "neu");
}

TEST_F(Files, ThatAreCopiedOverKeepTheirPermissions)
{
    Make(QStringLiteral("x"), "neu");
    Make(QStringLiteral("y"), "alt");
    SetMode(QStringLiteral("x"), 0444);
    SetMode(QStringLiteral("y"), 0640);
    EXPECT_TRUE(CopyFileTo(At(QStringLiteral("x")), At(QStringLiteral("y")), true));
    EXPECT_EQ(Mode(QStringLiteral("y")), 0640u);
}

TEST_F(Files, SurviveBeingCopiedOntoThemselves)
{
    Make(QStringLiteral("x"), "inhalt");
    EXPECT_TRUE(CopyFileTo(At(QStringLiteral("x")), At(QStringLiteral("x")), true));
    EXPECT_EQ(ReadAll(At(QStringLiteral("x"))), "inhalt");
}

TEST_F(Files, ThatCannotBeCopiedLeaveTheTargetAlone)
{
    Make(QStringLiteral("y"), "alt");
    EXPECT_THROW(CopyFileTo(At(QStringLiteral("none")), At(QStringLiteral("y")), true), TFileError);
    EXPECT_EQ(ReadAll(At(QStringLiteral("y"))), "alt");
    EXPECT_THROW(CopyFileTo(At(QStringLiteral("none")), At(QStringLiteral("z")), true), TFileError);
    EXPECT_THROW(CopyFileTo(m_directory.path(), At(QStringLiteral("z")), true), TFileError);
    EXPECT_THROW(CopyFileTo(At(QStringLiteral("y")), m_directory.path(), true), TFileError);
    EXPECT_EQ(Names(), QStringList{QStringLiteral("y")});
}

TEST_F(Files, AreRenamed)
{
    Make(QStringLiteral("x"), "1");
    RenameFileTo(ToPackagePath(At(QStringLiteral("x"))), ToPackagePath(At(QStringLiteral("y"))));
    EXPECT_EQ(Names(), QStringList{QStringLiteral("y")});
    EXPECT_EQ(ReadAll(At(QStringLiteral("y"))), "1");
}

TEST_F(Files, AreRenamedInTheCaseOfTheirLettersOnly)
{
    Make(QStringLiteral("haus"), "1");
    RenameFileTo(At(QStringLiteral("haus")), At(QStringLiteral("Haus")));
    EXPECT_EQ(Names(), QStringList{QStringLiteral("Haus")});
}

TEST_F(Files, LikeDirectoriesAreRenamed)
{
    ForceDirectories(At(QStringLiteral("a")));
    Make(QStringLiteral("a/x"), "1");
    RenameFileTo(At(QStringLiteral("a")), At(QStringLiteral("b")));
    EXPECT_EQ(Names(), QStringList{QStringLiteral("b")});
    EXPECT_EQ(ReadAll(At(QStringLiteral("b/x"))), "1");
}

TEST_F(Files, AreNeverRenamedOverSomethingThatExists)
{
    Make(QStringLiteral("x"), "neu");
    Make(QStringLiteral("y"), "alt");
    ForceDirectories(At(QStringLiteral("d")));
    EXPECT_THROW(RenameFileTo(At(QStringLiteral("x")), At(QStringLiteral("y"))), TFileError);
    EXPECT_THROW(RenameFileTo(At(QStringLiteral("x")), At(QStringLiteral("d"))), TFileError);
    EXPECT_THROW(RenameFileTo(At(QStringLiteral("d")), At(QStringLiteral("y"))), TFileError);
    EXPECT_EQ(ReadAll(At(QStringLiteral("x"))), "neu");
    EXPECT_EQ(ReadAll(At(QStringLiteral("y"))), "alt");
    EXPECT_TRUE(DirectoryExists(At(QStringLiteral("d"))));
}

TEST_F(Files, AreNeverRenamedOverOrThroughALinkThatLeadsNowhere)
{
    Make(QStringLiteral("x"), "neu");
    ASSERT_TRUE(QFile::link(At(QStringLiteral("none")), At(QStringLiteral("link"))));
    EXPECT_THROW(RenameFileTo(At(QStringLiteral("x")), At(QStringLiteral("link"))), TFileError);
    EXPECT_EQ(ReadAll(At(QStringLiteral("x"))), "neu");
    EXPECT_TRUE(QFileInfo(At(QStringLiteral("link"))).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(At(QStringLiteral("none"))));
}

TEST_F(Files, ThatCannotBeRenamedAreNamedInTheError)
{
    const QString outcome = OutcomeOf([this] { RenameFileTo(At(QStringLiteral("none")), At(QStringLiteral("y"))); });
    EXPECT_TRUE(
        outcome.startsWith(QStringLiteral("\"%1\" kann nicht umbenannt werden (").arg(At(QStringLiteral("none")))))
        << outcome.toStdString();
    EXPECT_THROW(RenameFileTo(QString(), At(QStringLiteral("y"))), TFileError);
    EXPECT_TRUE(Names().isEmpty());
}

TEST_F(Files, AreDeleted)
{
    Make(QStringLiteral("x"), "1");
    DeleteFileAt(ToPackagePath(At(QStringLiteral("x"))));
    EXPECT_TRUE(Names().isEmpty());
    EXPECT_NO_THROW(DeleteFileAt(At(QStringLiteral("x"))));
}

TEST_F(Files, AreDeletedAndDirectoriesAreNot)
{
    ForceDirectories(At(QStringLiteral("d")));
    EXPECT_THROW(DeleteFileAt(At(QStringLiteral("d"))), TFileError);
    EXPECT_TRUE(DirectoryExists(At(QStringLiteral("d"))));
}

TEST_F(Files, AreDeletedButNotWhatALinkLeadsTo)
{
    Make(QStringLiteral("x"), "1");
    ASSERT_TRUE(QFile::link(At(QStringLiteral("x")), At(QStringLiteral("link"))));
    DeleteFileAt(At(QStringLiteral("link")));
    EXPECT_EQ(Names(), QStringList{QStringLiteral("x")});
}

TEST_F(Files, ThatCannotBeDeletedAreNamedInTheError)
{
    Make(QStringLiteral("x"), "1");
    SetMode(QString(), 0555);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        return OutcomeOf([this] { DeleteFileAt(At(QStringLiteral("x"))); });
    });
    SetMode(QString(), 0755);
    EXPECT_TRUE(outcome.startsWith(QStringLiteral("\"%1\" kann nicht gelöscht werden (").arg(At(QStringLiteral("x")))))
        << outcome.toStdString();
    EXPECT_EQ(ReadAll(At(QStringLiteral("x"))), "1");
}

TEST(GetTemporaryFilename, MakesANewEmptyFileEachTime)
{
    const QString first = GetTemporaryFilename(QStringLiteral(".uri"));
    const QString second = GetTemporaryFilename(QStringLiteral(".uri"));
    EXPECT_NE(first, second);
    EXPECT_TRUE(first.endsWith(QStringLiteral(".uri")));
    EXPECT_FALSE(first.contains(u'/'));
    EXPECT_EQ(ExtractFileDir(first), ToPackagePath(QDir::tempPath()));
    EXPECT_EQ(ReadFile(first), QByteArray());
    EXPECT_EQ(ReadFile(second), QByteArray());
    DeleteFileAt(first);
    DeleteFileAt(second);
    EXPECT_FALSE(FileExists(first));
}

TEST(GetTemporaryFilename, NeedsNoExtension)
{
    const QString name = GetTemporaryFilename(QString());
    EXPECT_TRUE(FileExists(name));
    EXPECT_FALSE(ExtractFileName(name).contains(u'.'));
    DeleteFileAt(name);
}

TEST_F(Files, ThatAreTemporaryNeedATemporaryDirectory)
{
    const QString outcome = RunInChild([this] {
        qputenv("TMPDIR", QFile::encodeName(At(QStringLiteral("none"))));
        return OutcomeOf([] { GetTemporaryFilename(QStringLiteral(".uri")); });
    });
    EXPECT_EQ(outcome, QStringLiteral("\"%1\" kann nicht angelegt werden (Das Verzeichnis für temporäre Dateien fehlt)")
                           .arg(At(QStringLiteral("none"))));
}

TEST_F(Files, ThatAreTemporaryNeedRoomInTheTemporaryDirectory)
{
    SetMode(QString(), 0555);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        qputenv("TMPDIR", QFile::encodeName(m_directory.path()));
        return OutcomeOf([] { GetTemporaryFilename(QStringLiteral(".uri")); });
    });
    SetMode(QString(), 0755);
    EXPECT_TRUE(outcome.startsWith(QStringLiteral("\"%1/velmora-").arg(m_directory.path()))) << outcome.toStdString();
    EXPECT_TRUE(Names().isEmpty());
}

TEST(FileErrorText, NamesThePathInThePlatformsForm)
{
    EXPECT_EQ(FileErrorText(QStringLiteral("\\a\\b%1.xml"), QStringLiteral("geschrieben"), QStringLiteral("voll %2")),
              QStringLiteral("\"/a/b%1.xml\" kann nicht geschrieben werden (voll %2)"));
}
