#include "SceneDocument.h"

#include "ChildProcess.h"
#include "SceneFiles.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

constexpr std::int32_t LargestId = std::numeric_limits<std::int32_t>::max();

// Numbers belong to the process and are never used again. Each test therefore counts in a process of its own, where
// the counter starts at 0 as it does after loading the package; past its end it wraps, and a number raises it again.
QString CountInChild(const std::function<QString()>& body)
{
    return RunInChild([&] {
        RaiseSceneId(LargestId);
        NextSceneId();
        RaiseSceneId(0);
        return body();
    });
}

QString Number(std::int32_t id)
{
    return QString::number(id);
}

void WriteScenesWithIds(const TSceneFiles& files, const QList<QByteArray>& ids)
{
    QList<QByteArray> lines;
    for (const QByteArray& id : ids)
        lines.append("<scene id=\"" + id + "\" />");
    files.Write(QStringLiteral("scenes.xml"), SceneDocument("scenes", lines));
}

TSceneNode* AppendNewScene(TSceneNode* top)
{
    auto* scene = new TSceneNode(SceneItem("", "", "", NextSceneId()));
    top->addChild(scene);
    return scene;
}

} // namespace

TEST(SceneIds, CountFromOne)
{
    EXPECT_EQ(CountInChild([] {
                  QStringList numbers{Number(LastSceneId())};
                  for (int i = 0; i < 2; ++i)
                      numbers.append(Number(NextSceneId()));
                  return numbers.join(u' ');
              }),
              QStringLiteral("0 1 2"));
}

TEST(SceneIds, GoOnAfterTheHighestThatWasRead)
{
    EXPECT_EQ(CountInChild([] {
                  TSceneFiles files;
                  WriteScenesWithIds(files, {"3", "12", "7", "x", "-5"});
                  files.Load();
                  return Number(NextSceneId());
              }),
              QStringLiteral("13"));
}

TEST(SceneIds, NameTheFilesOfNewScenes)
{
    EXPECT_EQ(
        CountInChild([] {
            TSceneFiles files;
            WriteScenesWithIds(files, {"12"});
            const auto top = files.Load();
            TSceneNode* scene = AppendNewScene(top.get());
            files.Save(top.get());
            delete scene;
            AppendNewScene(top.get());
            files.Save(top.get());
            return QStringList(files.Contents().keys()).join(u' ');
        }),
        QStringLiteral("actions_allowed.xml scene_12.xml scene_13.xml scene_14.xml scenes.xml trigger_allowed.xml"));
}

TEST(SceneIds, StayAboveTheHighestOfASecondProject)
{
    EXPECT_EQ(CountInChild([] {
                  TSceneFiles first;
                  WriteScenesWithIds(first, {"40"});
                  first.Load();
                  TSceneFiles second;
                  WriteScenesWithIds(second, {"2", "3"});
                  second.Load();
                  return Number(NextSceneId());
              }),
              QStringLiteral("41"));
}

TEST(SceneIds, AreRaisedByAnyElement)
{
    EXPECT_EQ(CountInChild([] {
                  TSceneFiles files;
                  files.Write(QStringLiteral("actions_allowed.xml"), SceneDocument("actions", {"<node id=\"9\" />"}));
                  files.Load();
                  return Number(LastSceneId());
              }),
              QStringLiteral("9"));
}

TEST(SceneIds, AreNotRaisedByADocumentThatCannotBeRead)
{
    EXPECT_EQ(CountInChild([] {
                  TSceneFiles files;
                  files.Write(QStringLiteral("scenes.xml"), "<scenes><scene id=\"9\" />");
                  files.Load();
                  return Number(LastSceneId());
              }),
              QStringLiteral("0"));
}

TEST(SceneIds, AreNotLoweredByANegativeNumber)
{
    EXPECT_EQ(CountInChild([] {
                  RaiseSceneId(5);
                  RaiseSceneId(-1);
                  RaiseSceneId(4);
                  return Number(LastSceneId());
              }),
              QStringLiteral("5"));
}

TEST(SceneIds, WrapAfterTheLargest)
{
    EXPECT_EQ(CountInChild([] {
                  TSceneFiles files;
                  WriteScenesWithIds(files, {"2147483647"});
                  const auto top = files.Load();
                  AppendNewScene(top.get());
                  files.Save(top.get());
                  return QStringList(files.Contents().keys()).join(u' ');
              }),
              QStringLiteral("actions_allowed.xml scene_-2147483648.xml scene_2147483647.xml scenes.xml "
                             "trigger_allowed.xml"));
}

TEST(SceneIds, BeyondTheLargestAreNone)
{
    EXPECT_EQ(CountInChild([] {
                  TSceneFiles files;
                  WriteScenesWithIds(files, {"2147483648"});
                  const auto top = files.Load();
                  return Number(LastSceneId()) + u' ' + Number(top->Child(FirstSceneIndex)->Item()->Id);
              }),
              QStringLiteral("0 -1"));
}
