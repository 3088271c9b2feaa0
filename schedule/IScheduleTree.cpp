#include "IScheduleTree.h"

#include "CaptionFile.h"
#include "ScheduleDocument.h"
#include "TreeImages.h"
#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlhourglass.h"
#include "Vlmessages.h"
#include "Vltext.h"

namespace
{

const auto ScheduleTreeClass = QStringLiteral("TScheduleTreeFrame");

QString CountsText(const TScheduleCounts& counts)
{
    return QStringLiteral("%1 Gruppen, %2 Datenpunkte, %3 Schalteinträge")
        .arg(counts.Groups)
        .arg(counts.Datapoints)
        .arg(counts.Entries);
}

std::unique_ptr<TScheduleNode> ReadCaptions(const QString& fileName)
{
    const std::vector<TCaptionLine> lines = ReadCaptionFile(fileName);
    auto root = MakeScheduleNode(lines.front().Caption, slRoot);
    BuildFromCaptions(lines, root.get(), [](TScheduleNode* parent, const QString& caption) {
        TScheduleNode* node = MakeScheduleNode(caption, parent->Level() + 1).release();
        parent->addChild(node);
        return node;
    });
    return root;
}

} // namespace

TScheduleTreeFrame::TScheduleTreeFrame(QWidget* parent) : TCmdTreeFrame(parent), m_files(this)
{
    setObjectName(ScheduleTreeClass);
    setAccessibleName(RcText(_RSTR_SCHEDULES));
    setExpandsOnDoubleClick(false);
    SetHotTracking(true);
    m_weekTimer.setSingleShot(true);
    connect(&m_weekTimer, &QTimer::timeout, this, &TScheduleTreeFrame::WeekChanged);
    InitializeMenu({});
    MakePopupMenu(this, PopupRows(), TShortcutRule::OperationDecides);
    SetEditable(true);
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
        Guarded([&] {
            SelectNode(static_cast<TTreeNode*>(item));
            ShowInDialog(static_cast<TScheduleNode*>(item));
        });
    });
}

TScheduleTreeFrame::~TScheduleTreeFrame()
{
    FinalizeView();
}

bool TScheduleTreeFrame::QueryInterface(const TGuid& iid, void** result)
{
    if (iid != IID_IWeekSchedule)
        return TCmdTreeFrame::QueryInterface(iid, result);
    *result = static_cast<IWeekSchedule*>(this);
    return true;
}

int TScheduleTreeFrame::InitializeMenu(const QString& fileName)
{
    SetImages({TreeImage(tiDocument), TreeImage(tiFolder), TreeImage(tiDatapoint), TreeImage(tiClock)});
    if (!fileName.isEmpty() && !Root())
        ReplaceContent(ReadCaptions(fileName));
    return CountNodes();
}

void TScheduleTreeFrame::LoadSchedules(const QString& fileName)
{
    m_documentPath = fileName;
    const THourglass hourglass;
    const TRepaintPause pause(this);
    std::unique_ptr<TScheduleNode> content = LoadScheduleTree(fileName, m_groupNames, m_files);
    Clipboard().Clear();
    ReplaceContent(std::move(content));
    Root()->setExpanded(true);
    SetModified(false);
    SendSections();
    ApplyMenuRules();
    Note(this, QStringLiteral("%1 geladen").arg(CountsText(CountSchedule(Root()))));
}

void TScheduleTreeFrame::SaveSchedules(const QString& fileName)
{
    const THourglass hourglass;
    if (!DirectoryExists(ExtractFileDir(fileName))) {
        ShowInformation(RcText(_INFO_CONFIG));
        return;
    }
    m_files.Write(fileName, [this](QIODevice& device) { SchedulesToStream(device); });
    SetModified(false);
    Note(this,
         QStringLiteral("%1 exportiert nach %2").arg(CountsText(CountSchedule(Root())), ToPlatformPath(fileName)));
}

void TScheduleTreeFrame::SchedulesToStream(QIODevice& stream) const
{
    WriteSchedule(stream, Root());
}

void TScheduleTreeFrame::WriteDocument(const QString& path, QIODevice& device) const
{
    if (IsSameDocument(path, m_documentPath))
        SchedulesToStream(device);
}

void TScheduleTreeFrame::MenuAction_Reload()
{
    LoadSchedules(m_documentPath);
}

void TScheduleTreeFrame::MenuAction_Export()
{
    CommitEdits();
    SaveSchedules(m_documentPath);
}

void TScheduleTreeFrame::BeginCommand(const QString& command)
{
    m_commandText = command;
    m_documentPath = ExpandEnvStrings(command);
}

void TScheduleTreeFrame::ApplyCommandItem(const QString& key, const QString& value)
{
    if (!SameText(key, u"schedules"))
        return;
    const QString fileName = DecodePath(value);
    if (FileExists(fileName))
        LoadSchedules(fileName);
}

void TScheduleTreeFrame::FinishCommand()
{
    SetProjectListener(m_commandText);
    ApplyMenuRules();
}

// Deliberate: the command text as a whole is taken for the document. One that is no file name leaves the tree empty
// until the next command.
void TScheduleTreeFrame::ReloadForProject()
{
    LoadSchedules(DecodePath(m_commandText));
}

void InitializeScheduleUnit()
{
    RegisterEditor(ScheduleTreeClass, ProgIdScheduleTree,
                   [](QWidget* parent) -> QWidget* { return new TScheduleTreeFrame(parent); });
}

void FinalizeScheduleUnit()
{
    UnregisterComponent(ScheduleTreeClass);
}
