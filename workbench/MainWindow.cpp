#include "MainWindow.h"

#include "MessagePane.h"
#include "ModifiedGuard.h"
#include "NewProject.h"
#include "Pane.h"
#include "Vlerrors.h"
#include "Vlmessages.h"
#include "WindowArrangement.h"

#include <QApplication>
#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace
{

constexpr QSize FirstSize(1280, 800);
constexpr int MessageHeight = 140;

// Runs what may fail; false, and the user has been told, when it did.
template <class TFunction> bool Attempt(TFunction&& function)
{
    try {
        function();
        return true;
    } catch (...) {
        HandleError(std::current_exception());
    }
    return false;
}

} // namespace

TMainWindow::TMainWindow(const TClientRegistry& clients, IModifiedAsker& asker)
    : m_asker(asker),
      m_panes(*this, clients),
      m_commands(m_panes, clients, asker),
      m_messages(new TMessagePane(this)),
      m_documentCheck(*m_messages, m_panes)
{
    setDockNestingEnabled(true);
    setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
    resize(FirstSize);
    connect(&m_panes, &TPanes::Closing, this, &TMainWindow::HandlePaneClosing);
    connect(&m_panes, &TPanes::PanesChanged, this, &TMainWindow::ResetArrangement);
    connect(m_messages, &TMessagePane::FaultActivated, this, &TMainWindow::ShowFault);
    UserManager()->AddListener(this, &TMainWindow::HandleProjectChange);
    BuildMenus();
    ResetArrangement();
    UpdateTitle();
}

TMainWindow::~TMainWindow() = default;

void TMainWindow::RememberArrangement()
{
    m_remembersArrangement = true;
    RestoreGeometry(*this);
    RestoreArrangement(*this, m_panes.Layout());
}

// The panes behind a tab have no visible part.
void TMainWindow::FocusFirstPane()
{
    const auto& panes = m_panes.All();
    const auto found =
        std::find_if(panes.begin(), panes.end(), [](const TPane* pane) { return !pane->visibleRegion().isEmpty(); });
    if (found != panes.end())
        (*found)->FocusContent();
}

// A project that cannot be opened is found out before anything of the present one is touched. Panes that do not stay
// are gone before the change: they need not read what they will never show.
void TMainWindow::LoadProject(const QString& directory)
{
    const TProject project = TProject::Load(directory);
    const TLayout layout = LayoutFor(&project);
    if (layout != m_panes.Layout())
        ShowLayout({});
    Guarded([&] { UserManager()->OpenProject(project.GetRootDirectory()); });
    m_panes.HandleOtherProject();
    ShowLayout(layout);
}

void TMainWindow::UnloadProject()
{
    const TLayout layout = LayoutFor(nullptr);
    if (layout != m_panes.Layout())
        ShowLayout({});
    Guarded([] { UserManager()->CloseProject(); });
    ShowLayout(layout);
}

bool TMainWindow::CreateProject(const QString& directory, const QString& name)
{
    return MayLoseChanges() && Attempt([&] {
               const TProject project = TProject::Create(directory, name);
               Guarded([&] { AddEmptyDocuments(project); });
               LoadProject(project.GetRootDirectory());
               m_recent.Add(UserManager()->GetActiveProject()->GetRootDirectory());
           });
}

bool TMainWindow::OpenProject(const QString& directory)
{
    return Attempt([&] { TProject::Load(directory); }) && MayLoseChanges() && Attempt([&] {
               LoadProject(directory);
               m_recent.Add(UserManager()->GetActiveProject()->GetRootDirectory());
           });
}

bool TMainWindow::OpenRecentProject(const QString& directory)
{
    if (QFileInfo::exists(QDir(directory).filePath(TProject::ProjectFileName())))
        return OpenProject(directory);
    m_recent.Remove(directory);
    ShowError(QStringLiteral("Das Projekt \"%1\" gibt es nicht mehr. Es wurde aus der Liste entfernt.").arg(directory));
    return false;
}

bool TMainWindow::CloseProject()
{
    if (!MayLoseChanges())
        return false;
    UnloadProject();
    return true;
}

bool TMainWindow::MayLoseChanges()
{
    return MayLose(m_panes.All(), m_asker);
}

void TMainWindow::ShowLayout(const TLayout& layout)
{
    if (m_remembersArrangement && !m_panes.Layout().isEmpty())
        SaveArrangement(*this, m_panes.Layout());
    m_panes.SetLayout(layout);
    if (m_remembersArrangement && !layout.isEmpty())
        RestoreArrangement(*this, layout);
    m_panes.LoadStarting();
}

void TMainWindow::ResetArrangement()
{
    m_panes.Arrange(*m_messages);
    if (TPane* first = m_panes.All().value(0))
        resizeDocks({first, m_messages}, {FirstSize.height() - MessageHeight, MessageHeight}, Qt::Vertical);
}

void TMainWindow::StepPane(int step)
{
    QList<QDockWidget*> docks(m_panes.All().begin(), m_panes.All().end());
    docks.append(m_messages);
    docks.removeIf([](const QDockWidget* dock) { return dock->isHidden(); });
    if (docks.isEmpty())
        return;
    const QWidget* focus = QApplication::focusWidget();
    const auto current =
        std::find_if(docks.begin(), docks.end(), [&](const QDockWidget* dock) { return dock->isAncestorOf(focus); });
    // From outside the panes the first step leads to the first or to the last one.
    const qsizetype from = current == docks.end() ? (step > 0 ? -1 : docks.size()) : current - docks.begin();
    QDockWidget* next = docks[(from + step + docks.size()) % docks.size()];
    if (auto* pane = qobject_cast<TPane*>(next))
        pane->FocusContent();
    else
        m_messages->FocusText();
}

void TMainWindow::closeEvent(QCloseEvent* event)
{
    const bool allowed = MayLoseChanges();
    event->setAccepted(allowed);
    if (allowed && m_remembersArrangement)
        SaveArrangement(*this, m_panes.Layout());
}

void TMainWindow::HandlePaneClosing(TPane* pane, bool& allowed)
{
    allowed = MayLose({pane}, m_asker);
}

// The window listens before any component does, so this note comes before what the components have to say.
void TMainWindow::HandleProjectChange(QObject*, TUserProperty property, const QString&)
{
    if (property != upProject)
        return;
    UpdateTitle();
    const TProject* project = UserManager()->GetActiveProject();
    Note(nullptr, project
                      ? QStringLiteral("Projekt %1 geöffnet (%2)").arg(project->GetName(), project->GetRootDirectory())
                      : QStringLiteral("Projekt geschlossen"));
}

void TMainWindow::ShowFault(const QString& paneId, const TDocumentPlace& place)
{
    TPane* pane = m_panes.Find(paneId);
    if (!pane)
        return;
    pane->FocusContent();
    if (place)
        Guarded([&] { place(); });
}

void TMainWindow::UpdateTitle()
{
    const TProject* project = UserManager()->GetActiveProject();
    const QString product = QStringLiteral("Velmora Folders");
    setWindowTitle(project ? project->GetName() + QStringLiteral(" – ") + product : product);
    m_closeAction->setEnabled(project != nullptr);
    m_browserAction->setEnabled(project != nullptr);
}
