#include "ICmdShellTree.h"

#include "ActionLine.h"
#include "CommandItems.h"
#include "UIActions.h"
#include "Vlapputils.h"
#include "Vlclassregistry.h"
#include "Vlcodepage.h"
#include "Vlcolors.h"
#include "Vlerrors.h"
#include "Vlmessages.h"
#include "Vltext.h"

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace
{

const auto ClassName = QStringLiteral("TICmdShellTreeView");

TShellObjects ObjectsOf(const QString& files)
{
    if (SameText(files, u"no"))
        return soFolders;
    return SameText(files, u"all") ? soAll : soFoldersAndFiles;
}

QString LogPathOf(const TProject& project)
{
    return JoinFilePath(ExtractFileDir(project.GetProjectFile()), {QStringLiteral("actions.log")});
}

bool Launch(const QString& verb, const TShellFolder& item)
{
    TShellExecuteAction& action = UIActions().ShellExecute;
    action.SetVerb(verb);
    action.SetFileName(item.PathName());
    return action.Execute();
}

} // namespace

TICmdShellTreeView::TICmdShellTreeView(QWidget* parent) : QWidget(parent), m_shellTree(new TCustomShellTreeView(this))
{
    SetupUserManager();
    setObjectName(ClassName);
    setAccessibleName(QStringLiteral("Projektdateien"));
    m_shellTree->setAccessibleName(accessibleName());
    m_shellTree->SetHotTracking(true);
    m_shellTree->SetShowHint(true);
    m_shellTree->SetExecuteContextEvent(
        [this](QObject* sender, QMenu* contextMenu, int command, const QString& verb, bool& handled) {
            HandleExecuteContext(sender, contextMenu, command, verb, handled);
        });
    m_shellTree->SetDefaultActionEvent([this](QObject* sender) { HandleDefaultAction(sender); });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_shellTree);
    setFocusProxy(m_shellTree);
    addActions(m_shellTree->actions());
    m_isUpdating = false;
}

TICmdShellTreeView::~TICmdShellTreeView()
{
    m_isDestroying = true;
    // At the end of the application the host takes the manager down first.
    if (!QCoreApplication::closingDown()) {
        Guarded([this] { m_shellTree->DrainChanges(); });
        if (m_isListening && UserManager())
            UserManager()->RemoveListener(this, &TICmdShellTreeView::HandleUserProperties);
    }
    m_shellTree->SetExecuteContextEvent({});
    m_shellTree->SetDefaultActionEvent({});
    m_shellTree->SetChangeEvent({});
    DisposeUserManager();
}

void TICmdShellTreeView::ExecuteCmd(const char* command, bool& handled)
{
    handled = true;
    bool project = m_isListening;
    const TURLName url(CommandText(command));
    QString root = UserManager()->EnvToFilePath(url.GetPath());
    WalkCommandItems(url,
                     [&](const QString& key, const QString& value) { ApplyCommandItem(key, value, root, project); });
    if (DirectoryExists(root))
        m_shellTree->SetRoot(root);
    SetProjectListener(project);
    m_shellTree->SetAutoRefresh(true);
}

void TICmdShellTreeView::ApplyCommandItem(const QString& key, const QString& value, QString& root, bool& project)
{
    if (SameText(key, u"color"))
        ApplyColor(m_shellTree, QPalette::Text, StrToColorDef(value, DefaultColor));
    else if (SameText(key, u"bgcolor"))
        ApplyColor(m_shellTree, QPalette::Base, StrToColorDef(value, WindowColor));
    else if (SameText(key, u"root"))
        root = UserManager()->DecodeVars(value);
    else if (SameText(key, u"project"))
        project = StrToIntDef(value, 0) == 1;
    else if (SameText(key, u"log"))
        m_isLogEnabled = SameText(value, u"yes");
    else if (SameText(key, u"files"))
        m_shellTree->SetObjects(ObjectsOf(value));
}

void TICmdShellTreeView::SetProjectListener(bool on)
{
    if (on != m_isListening) {
        m_isListening = on;
        if (on)
            UserManager()->AddListener(this, &TICmdShellTreeView::HandleUserProperties);
        else
            UserManager()->RemoveListener(this, &TICmdShellTreeView::HandleUserProperties);
    }
    if (!m_isLogEnabled)
        DetachLog();
    else if (const TProject* project = UserManager()->GetActiveProject())
        AttachLog(*project);
}

void TICmdShellTreeView::HandleUserProperties(QObject* sender, TUserProperty, const QString&)
{
    if (sender == UserManager())
        Guarded([this] { HandleProjectChange(); });
}

// The root and the log are questions of their own: the log may be missing where the root is right already.
void TICmdShellTreeView::HandleProjectChange()
{
    const TProject* active = UserManager()->GetActiveProject();
    if (!active)
        return;
    const TProject project = *active;
    if (!TCustomShellTreeView::IsSameFolder(m_shellTree->Root(), project.GetRootDirectory())) {
        // What has happened until now belongs to the former project, whose log is still the one that is written.
        m_shellTree->DrainChanges();
        if (m_isLogEnabled)
            m_shellTree->SetIgnoredFile(LogPathOf(project));
        const QScopedValueRollback updating(m_isUpdating, true);
        m_shellTree->SetRoot(project.GetRootDirectory());
    }
    if (m_isLogEnabled)
        AttachLog(project);
}

void TICmdShellTreeView::AttachLog(const TProject& project)
{
    const QString path = LogPathOf(project);
    if (path != m_logPath)
        SetLogPath(path);
    m_shellTree->SetChangeEvent(
        [this](QObject* sender, const QByteArray& firstPath, const QByteArray& secondPath, TShellChangeKind kind) {
            HandleShellChange(sender, firstPath, secondPath, kind);
        });
}

void TICmdShellTreeView::DetachLog()
{
    // What happened while it was switched on is still told.
    m_shellTree->DrainChanges();
    m_shellTree->SetChangeEvent({});
    SetLogPath({});
}

void TICmdShellTreeView::SetLogPath(const QString& path)
{
    m_shellTree->SetIgnoredFile(path);
    m_logPath = path;
    m_log.reset();
    if (!path.isEmpty())
        m_log.emplace(path);
    m_isLogFailing = false;
    m_isInexactTold = false;
}

void TICmdShellTreeView::HandleShellChange(QObject* sender, const QByteArray& firstPath, const QByteArray& secondPath,
                                           TShellChangeKind kind)
{
    if (sender != m_shellTree || m_isUpdating || m_logPath.isEmpty())
        return;
    const std::optional<TActionLine> line = MakeActionLine(kind, firstPath, secondPath);
    if (!line)
        return;
    try {
        m_log->Append(line->Text);
        m_isLogFailing = false;
    } catch (const TFileError&) {
        if (m_isLogFailing)
            return;
        m_isLogFailing = true;
        throw;
    }
    if (line->IsExact || m_isInexactTold)
        return;
    m_isInexactTold = true;
    Note(this, QStringLiteral("Das Protokoll \"%1\" kann nicht jeden Namen darstellen (%2). Was mit solchen Dateien "
                              "geschieht, lässt sich nicht wiederholen.")
                   .arg(ToPlatformPath(m_logPath), FromCodePage(line->Text)));
}

void TICmdShellTreeView::HandleExecuteContext(QObject*, QMenu*, int, const QString& verb, bool& handled)
{
    handled = false;
    if (m_isDestroying || !(SameText(verb, u"open") || SameText(verb, u"edit")))
        return;
    const std::optional<TShellFolder> item = m_shellTree->SelectedFolder();
    handled = item && Launch(verb, *item);
}

void TICmdShellTreeView::HandleDefaultAction(QObject*)
{
    const std::optional<TShellFolder> item = m_shellTree->SelectedFolder();
    if (!item || item->IsFolder())
        return;
    if (!Launch(QStringLiteral("open"), *item))
        Note(this, QStringLiteral("\"%1\" kann nicht geöffnet werden.").arg(item->PathName()));
}

void TICmdShellTreeView::UpdateActions()
{
    m_shellTree->UpdateActions();
}

void Register()
{
    RegisterOnPalette(QStringLiteral("Velmora"), ClassName);
}

void InitializeShellTreeUnit()
{
    RegisterComponent(ClassName, [](QWidget* parent) -> QWidget* { return new TICmdShellTreeView(parent); });
}

void FinalizeShellTreeUnit()
{
    UnregisterComponent(ClassName);
}
