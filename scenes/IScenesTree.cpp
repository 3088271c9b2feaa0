#include "IScenesTree.h"

#include "Formatting.h"
#include "SceneCaptions.h"
#include "SceneDocument.h"
#include "ScenePointer.h"
#include "TreeImages.h"
#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlhourglass.h"
#include "Vlmessages.h"
#include "Vltext.h"

namespace
{

const auto ConfigTreeClass = QStringLiteral("TConfigTreeFrame");
const auto DefaultScenesPath = QStringLiteral("%PRJPATH%\\_config\\data\\scenes\\scenes.xml");
const auto DefaultScenesMod = QStringLiteral("SCENE");

QString CountsText(const TSceneCounts& counts)
{
    return QStringLiteral("%1 Trigger, %2 Aktionen, %3 Szenen, %4 Schritte")
        .arg(counts.Triggers)
        .arg(counts.Actions)
        .arg(counts.Scenes)
        .arg(counts.Steps);
}

} // namespace

TConfigTreeFrame::TConfigTreeFrame(QWidget* parent)
    : TCmdTreeFrame(parent), m_scenesPath(DefaultScenesPath), m_scenesMod(DefaultScenesMod), m_files(this)
{
    setObjectName(ConfigTreeClass);
    setAccessibleName(RcText(_RSTR_SCENES));
    setExpandsOnDoubleClick(false);
    InitializeMenu({});
    MakePopupMenu(this, PopupRows());
    SetEditable(true);
    connect(this, &QTreeWidget::itemActivated, this,
            [this](QTreeWidgetItem* item) { Guarded([&] { ShowInDialog(static_cast<TSceneNode*>(item)); }); });
}

TConfigTreeFrame::~TConfigTreeFrame()
{
    FinalizeScenes();
}

int TConfigTreeFrame::InitializeMenu(const QString& fileName)
{
    SetImages(
        {TreeImage(tiDocument), TreeImage(tiScene), TreeImage(tiFolder), TreeImage(tiAction), TreeImage(tiTrigger)});
    if (!fileName.isEmpty() && !Top())
        ReplaceContent(ReadSceneCaptions(fileName));
    return CountNodes();
}

void TConfigTreeFrame::LoadScenes(const QString& fileName)
{
    m_scenesFile = fileName;
    const THourglass hourglass;
    const TRepaintPause pause(this);
    std::unique_ptr<TSceneNode> content = LoadSceneTree(fileName, m_files);
    ReplaceContent(std::move(content));
    Top()->setExpanded(true);
    SetModified(false);
    SendSections();
    ApplyMenuRules();
    Note(this, QStringLiteral("%1 geladen").arg(CountsText(CountScenes(Top()))));
}

void TConfigTreeFrame::SaveScenes(const QString& fileName)
{
    const THourglass hourglass;
    if (!DirectoryExists(ExtractFileDir(fileName))) {
        ShowInformation(RcText(_INFO_CONFIG));
        return;
    }
    try {
        WriteDocuments(fileName);
        UpdateScenePointer(m_scenesMod);
    } catch (...) {
        ShowError(FormatText(RcText(_ERR_SCENES), ErrorText(std::current_exception())));
    }
}

void TConfigTreeFrame::WriteDocuments(const QString& fileName)
{
    const int written = SaveSceneTree(fileName, Top(), m_files);
    SetModified(false);
    Note(this, QStringLiteral("%1 in %2 Dateien exportiert nach %3")
                   .arg(CountsText(CountScenes(Top())))
                   .arg(written)
                   .arg(ToPlatformPath(ExtractFileDir(fileName))));
}

void TConfigTreeFrame::WriteDocument(const QString& path, QIODevice& device) const
{
    WriteSceneFile(device, Top(), m_scenesFile, path);
}

void TConfigTreeFrame::TriggerToStream(QIODevice& stream) const
{
    WriteTriggers(stream, Top());
}

void TConfigTreeFrame::ActionsToStream(QIODevice& stream) const
{
    WriteActions(stream, Top());
}

void TConfigTreeFrame::ScenesToStream(QIODevice& stream) const
{
    WriteScenes(stream, Top());
}

void TConfigTreeFrame::SceneActionsToStream(QIODevice& stream, const TSceneNode* scene) const
{
    WriteSceneSteps(stream, scene);
}

void TConfigTreeFrame::MenuAction_Reload()
{
    LoadScenes(m_scenesFile);
}

void TConfigTreeFrame::MenuAction_Export()
{
    CommitEdits();
    SaveScenes(m_scenesFile);
}

void TConfigTreeFrame::BeginCommand(const QString&)
{
    m_scenesFile = ExpandPath(m_scenesPath);
}

void TConfigTreeFrame::ApplyCommandItem(const QString& key, const QString& value)
{
    if (SameText(key, u"scenes")) {
        m_scenesPath = value;
        LoadScenesIfPresent(DecodePath(value));
    } else if (SameText(key, u"scenesmod")) {
        m_scenesMod = value.isEmpty() ? DefaultScenesMod : value;
    }
}

void TConfigTreeFrame::FinishCommand()
{
    SetProjectListener(m_scenesPath);
    ApplyMenuRules();
}

void TConfigTreeFrame::ReloadForProject()
{
    LoadScenes(DecodePath(m_scenesPath));
}

void TConfigTreeFrame::LoadScenesIfPresent(const QString& fileName)
{
    if (FileExists(fileName))
        LoadScenes(fileName);
}

void InitializeScenesUnit()
{
    ResetSceneIds();
    RegisterEditor(ConfigTreeClass, ProgIdConfigTree,
                   [](QWidget* parent) -> QWidget* { return new TConfigTreeFrame(parent); });
}

void FinalizeScenesUnit()
{
    UnregisterComponent(ConfigTreeClass);
}
