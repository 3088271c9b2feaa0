#include "Vlentrypaths.h"

#include "TestSupport.h"
#include "Userman.h"
#include "Vlapputils.h"

#include <gtest/gtest.h>

TEST(EntryPaths, RelativePathsLieBelowTheProject)
{
    const TTemporaryProject project;
    const QString expected = ToPackagePath(project.Path(QStringLiteral("_buttons/a.uri")));
    EXPECT_EQ(ResolveEntryPath(QStringLiteral("_buttons\\a.uri")), expected);
    EXPECT_EQ(ResolveEntryPath(QStringLiteral("_buttons/a.uri")), expected);
    EXPECT_EQ(ResolveEntryPath(QStringLiteral("%prjpath%/_buttons/a.uri")), expected);
    EXPECT_EQ(ResolveEntryPath(QStringLiteral("$(project)\\_buttons\\a.uri")), expected);
}

TEST(EntryPaths, AbsolutePathsStay)
{
    const TTemporaryProject project;
    EXPECT_EQ(ResolveEntryPath(QStringLiteral("/tmp/a.uri")), QStringLiteral("\\tmp\\a.uri"));
    EXPECT_TRUE(ResolveEntryPath({}).isEmpty());
}

TEST(EntryPaths, NothingResolvesToTheWorkingDirectoryWithoutAProject)
{
    EXPECT_TRUE(ResolveEntryPath(QStringLiteral("a.uri")).isEmpty());
    SetupUserManager();
    EXPECT_TRUE(ResolveEntryPath(QStringLiteral("a.uri")).isEmpty());
    EXPECT_TRUE(ResolveEntryPath(QStringLiteral("%PRJPATH%/a.uri")).isEmpty());
    EXPECT_EQ(ResolveEntryPath(QStringLiteral("/tmp/a.uri")), QStringLiteral("\\tmp\\a.uri"));
    DisposeUserManager();
}

TEST(EntryPaths, PathsBelowTheProjectAreWrittenByItsVariable)
{
    const TTemporaryProject project;
    EXPECT_EQ(PortableEntryPath(project.Root(), project.Path(QStringLiteral("images/a b.png"))),
              QStringLiteral("%PRJPATH%/images/a b.png"));
    EXPECT_EQ(PortableEntryPath(project.Root(), project.Root() + QStringLiteral("2/a.png")),
              project.Root() + QStringLiteral("2/a.png"));
    EXPECT_EQ(PortableEntryPath(project.Root(), QStringLiteral("/tmp/a.png")), QStringLiteral("/tmp/a.png"));
}

TEST(EntryPaths, ProjectThatIsMeantMayBeAnotherThanTheActiveOne)
{
    const TTemporaryProject active;
    const auto root = QStringLiteral("/tmp/100 %HOME% Haus");
    for (const char* path : {"a.png", "%PRJPATH%/a.png", "%prjpath%\\a.png", "$(Project)/a.png"})
        EXPECT_EQ(ResolveEntryPathIn(root, QString::fromLatin1(path)), QStringLiteral("\\tmp\\100 %HOME% Haus\\a.png"))
            << path;
    qputenv("VELMORA_TEST_FOLDER", "$(project)/b");
    EXPECT_EQ(ResolveEntryPathIn(root, QStringLiteral("%VELMORA_TEST_FOLDER%/a")),
              QStringLiteral("\\tmp\\100 %HOME% Haus\\b\\a"));
    qunsetenv("VELMORA_TEST_FOLDER");
    EXPECT_TRUE(ResolveEntryPathIn({}, QStringLiteral("a.png")).isEmpty());
    EXPECT_TRUE(ResolveEntryPathIn({}, QStringLiteral("%PRJPATH%/a.png")).isEmpty());
    EXPECT_EQ(ResolveEntryPathIn({}, QStringLiteral("/tmp/a.png")), QStringLiteral("\\tmp\\a.png"));
}

TEST(EntryPaths, EntryFilesAreKnownByTheirNames)
{
    EXPECT_TRUE(IsEntryFileName(QStringLiteral("a.uri")));
    EXPECT_TRUE(IsEntryFileName(QStringLiteral("C:\\x\\A.URI")));
    EXPECT_FALSE(IsEntryFileName(QStringLiteral("a.uri.txt")));
}
