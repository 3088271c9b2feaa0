#include "IScenesTree.h"
#include "Measures.h"
#include "SceneDocument.h"
#include "SceneFiles.h"
#include "Vlapputils.h"
#include "Vlfilereplacer.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>

namespace
{

constexpr int ManyDatapoints = 100'000;
constexpr int ManyScenes = 5'000;
constexpr int FewAllowed = 1'000;
constexpr int ManyAllowed = 10'000;

// A scene directory that is made when it is first needed and goes with the program.
class TSceneDirectory
{
public:
    TSceneDirectory(int datapoints, int scenes)
        : m_scenesFile(MakeSceneDirectory(m_directory.path(), datapoints, scenes))
    {
    }

    const QString& ScenesFile() const { return m_scenesFile; }
    QByteArray Path(const char* name) const { return m_directory.filePath(QString::fromLatin1(name)).toLocal8Bit(); }

private:
    QTemporaryDir m_directory;
    QString m_scenesFile;
};

const TSceneDirectory& ManyActions()
{
    static const TSceneDirectory directory(0, 0);
    static const bool filled = [] {
        WriteFile(QString::fromLocal8Bit(directory.Path("actions_allowed.xml")),
                  DatapointFile("actions", ManyDatapoints));
        return true;
    }();
    Q_ASSERT(filled);
    return directory;
}

const TSceneDirectory& ScenesWithFew()
{
    static const TSceneDirectory directory(FewAllowed, ManyScenes);
    return directory;
}

const TSceneDirectory& ScenesWithMany()
{
    static const TSceneDirectory directory(ManyAllowed, ManyScenes);
    return directory;
}

// A frame in a shown window, as the user has it.
std::unique_ptr<TConfigTreeFrame> ShownFrame()
{
    auto frame = std::make_unique<TConfigTreeFrame>();
    frame->resize(400, 800);
    frame->show();
    QApplication::processEvents();
    return frame;
}

void LoadShown(benchmark::State& state, const TSceneDirectory& directory)
{
    const std::unique_ptr<TConfigTreeFrame> frame = ShownFrame();
    for ([[maybe_unused]] auto _ : state) {
        frame->LoadScenes(directory.ScenesFile());
        QApplication::processEvents();
    }
}

void ParseFile(const QByteArray& path)
{
    xmlDocPtr document = xmlParseFile(path.constData());
    benchmark::DoNotOptimize(document);
    xmlFreeDoc(document);
}

void ParseAll(benchmark::State& state, const TSceneDirectory& directory)
{
    for ([[maybe_unused]] auto _ : state) {
        for (const char* name : {"trigger_allowed.xml", "actions_allowed.xml", "scenes.xml"})
            ParseFile(directory.Path(name));
        for (int scene = 1; scene <= ManyScenes; ++scene)
            ParseFile(SceneStepsFile(directory.ScenesFile(), scene).replace(PathSeparator, u'/').toLocal8Bit());
    }
}

void LoadManyActions(benchmark::State& state)
{
    LoadShown(state, ManyActions());
}

void ParseManyActions(benchmark::State& state)
{
    const QByteArray path = ManyActions().Path("actions_allowed.xml");
    for ([[maybe_unused]] auto _ : state)
        ParseFile(path);
}

void WriteManyActions(benchmark::State& state)
{
    const std::unique_ptr<TConfigTreeFrame> frame = ShownFrame();
    frame->LoadScenes(ManyActions().ScenesFile());
    const QString target = QString::fromLocal8Bit(ManyActions().Path("written.xml"));
    for ([[maybe_unused]] auto _ : state) {
        TFileReplacer replacer(target);
        frame->ActionsToStream(replacer.Device());
        replacer.Commit();
    }
}

void SaveManyActions(benchmark::State& state)
{
    xmlDocPtr document = xmlParseFile(ManyActions().Path("actions_allowed.xml").constData());
    const QByteArray target = ManyActions().Path("saved.xml");
    for ([[maybe_unused]] auto _ : state)
        xmlSaveFile(target.constData(), document);
    xmlFreeDoc(document);
}

void LoadScenesWithFew(benchmark::State& state)
{
    LoadShown(state, ScenesWithFew());
}

void ParseScenesWithFew(benchmark::State& state)
{
    ParseAll(state, ScenesWithFew());
}

void LoadScenesWithMany(benchmark::State& state)
{
    LoadShown(state, ScenesWithMany());
}

} // namespace

void AddSceneMeasures()
{
    AddRatio("load 100000 actions : parse", 1.5, LoadManyActions, ParseManyActions);
    AddRatio("write 100000 actions : xmlSaveFile", 1.0, WriteManyActions, SaveManyActions);
    AddRatio("load 5000 scenes : parse", 1.6, LoadScenesWithFew, ParseScenesWithFew);
    AddRatio("load 5000 scenes, 10000 : 1000 datapoints", 1.3, LoadScenesWithMany, LoadScenesWithFew);
}
