#include "IScenesTree.h"

#include "Formatting.h"
#include "SceneCaptions.h"
#include "SceneDocument.h"
#include "ScenePointer.h"
#include "TreeImages.h"
#include "Vlapputils.h"
#include "Vlclassregistry.h"
#include "Vlerrors.h"
#include "Vlhourglass.h"
#include "Vlmessages.h"
#include "Vltext.h"
#include "XmlReading.h"

#include <QCoreApplication>
#include <QTimer>

namespace
{

const auto ClassName = QStringLiteral("TConfigTreeFrame");
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
    : TCmdTreeFrame(parent),
      m_scenesPath(DefaultScenesPath),
      m_scenesMod(DefaultScenesMod),
      m_files(this),
      m_popupMenu(new TPopupMenu(this, PopupRows()))
{
    setObjectName(ClassName);
    setAccessibleName(RcText(_RSTR_SCENES));
    setExpandsOnDoubleClick(false);
    InitializeMenu({});
    SetEditable(true);
    connect(this, &QTreeWidget::itemActivated, this,
            [this](QTreeWidgetItem* item) { Guarded([&] { ShowInDialog(static_cast<TSceneNode*>(item)); }); });
    connect(m_popupMenu->Menu(), &QMenu::aboutToHide, this, [this] {
        // The chosen operation runs after the menu has gone and still needs the node.
        QTimer::singleShot(0, this, [this] {
            if (m_popupMenu->Menu()->isVisible())
                return; // opened again meanwhile, for another node
            m_menuNode.reset();
            m_popupMenu->ApplyRules();
        });
    });
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
    int count = 0;
    for (const TTreeNode* node = TopNode(); node; node = node->Next())
        ++count;
    return count;
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
    m_popupMenu->ApplyRules();
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

void TConfigTreeFrame::BeginCommand()
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
    m_popupMenu->ApplyRules();
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
    InitializeXml();
    ResetSceneIds();
    RegisterComponent(ClassName, [](QWidget* parent) -> QWidget* { return new TConfigTreeFrame(parent); });
    IInterface* found = nullptr;
    FindApplicationInterface(IID_IRegisterClient, &found);
    if (found && QCoreApplication::instance())
        static_cast<IRegisterClient*>(found)->RegisterComponentClass(QString::fromLatin1(ProgIdConfigTree), ClassName);
}

void FinalizeScenesUnit()
{
    UnregisterComponent(ClassName);
    FinalizeXml();
}
