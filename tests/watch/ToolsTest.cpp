#include "WatchFixture.h"

#include <QStandardPaths>

#include <filesystem>

namespace fs = std::filesystem;

namespace
{

// What people and their tools do to a whole project at once.
class ToolsTest : public FileWatchTest
{
protected:
    void Shell(const char* script) { Run(QStringLiteral("/bin/sh"), {QStringLiteral("-ec"), QLatin1String(script)}); }

    static int FolderCount() { return AreLong() ? 200 : 20; }

    // A hundred files in each folder.
    void MakeManyFiles() const
    {
        for (int folder = 0; folder < FolderCount(); ++folder) {
            const std::string parent = "q/" + std::to_string(folder);
            MakeFolder(parent);
            for (int file = 0; file < 100; ++file)
                Write(parent + "/" + std::to_string(file), std::to_string(folder * file));
        }
    }

    static bool Has(const char* program) { return !QStandardPaths::findExecutable(QLatin1String(program)).isEmpty(); }
};

} // namespace

TEST_F(ToolsTest, FollowsTheUnpackingOfManyFiles)
{
    MakeManyFiles();
    Shell("tar cf ../q.tar q; rm -r q");
    Start();
    Shell("tar xf ../q.tar");
    EXPECT_EQ(Differences(), "");
    EXPECT_GE(m_changes.size(), static_cast<size_t>(FolderCount()) * 100);
}

TEST_F(ToolsTest, FollowsTheRemovalAndTheReturnOfManyFiles)
{
    MakeManyFiles();
    Shell("cp -a q ../q");
    Start();
    Shell("rm -rf q; cp -a ../q q; rm -rf q; mv ../q q");
    EXPECT_EQ(Differences(), "");
}

TEST_F(ToolsTest, FollowsACheckoutBetweenDistantCommits)
{
    ASSERT_TRUE(Has("git"));
    Shell("git init -q .; git config user.email a@b; git config user.name a; git config core.fsync none;"
          "mkdir a b; for f in $(seq 1 400); do echo $f > a/$f; echo $f > b/$f; done; git add -A; git commit -qm 1;"
          "git tag eins; git mv a c; for f in $(seq 1 200); do echo neu > b/$f; git rm -q b/$((f + 200)); done;"
          "mkdir -p d/e/f; for f in $(seq 1 200); do echo $f > d/e/f/$f; done; rm -rf c/1; ln -s 2 c/verweis;"
          "git add -A; git commit -qm 2; git tag zwei");
    Start();
    Shell("git checkout -q eins; git checkout -q zwei; git checkout -q eins; git gc -q");
    EXPECT_EQ(Differences(), "");
}

TEST_F(ToolsTest, FollowsASynchronisation)
{
    ASSERT_TRUE(Has("rsync"));
    Shell("mkdir -p a/b; for f in $(seq 1 500); do echo $f > a/$f; echo $f > a/b/$f; done;"
          "cp -a . ../q; cd ../q; rm a/1*; mkdir -p a/c/d; for f in $(seq 1 500); do echo neu$f > a/b/$f;"
          "echo $f > a/c/d/$f; done; mv a/b a/e");
    Start();
    Shell("rsync -a --delete ../q/ .; rsync -a --delete --inplace ../q/ .; rsync -a --delete --delay-updates ../q/ .");
    EXPECT_EQ(Differences(), "");
}

TEST_F(ToolsTest, FollowsTheSafeSavesOfEditors)
{
    Shell("mkdir a; for f in $(seq 1 50); do echo $f > a/$f; done");
    Start();
    // A temporary name; a backup by renaming; a backup by copying; a link to the old content; writing in place.
    Shell("for f in $(seq 1 10); do echo neu > a/.$f.tmp; mv a/.$f.tmp a/$f; done;"
          "for f in $(seq 11 20); do mv a/$f a/$f~; echo neu > a/$f; rm a/$f~; done;"
          "for f in $(seq 21 30); do cp a/$f a/$f.bak; echo neu > a/$f; done;"
          "for f in $(seq 31 40); do ln a/$f a/$f.bak; echo neu > a/t; mv a/t a/$f; done;"
          "for f in $(seq 41 50); do echo mehr >> a/$f; touch a/4913; rm a/4913; done");
    EXPECT_EQ(Differences(), "");
    EXPECT_FALSE(fs::exists(Path("a/t")));
}
