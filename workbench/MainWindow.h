#pragma once

#include "DocumentCheck.h"
#include "Folders.h"
#include "PaneCommands.h"
#include "Panes.h"
#include "RecentProjects.h"
#include "Userman.h"

#include <QMainWindow>

class IModifiedAsker;
class TMessagePane;

// The workbench's window: the panes of the layout, the message pane, and the menu bar. It opens and closes projects and
// sees to it that no change is lost without a question.
class TMainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    // Needs the user manager. Both must outlive the window.
    TMainWindow(const TClientRegistry& clients, IModifiedAsker& asker);
    ~TMainWindow() override;

    TPanes& Panes() { return m_panes; }
    TMessagePane& Messages() { return *m_messages; }

    // From now on the window stands as it stood when it was used last, and keeps that in the user's settings.
    void RememberArrangement();
    // Moves the keyboard into the first pane that can be seen.
    void FocusFirstPane();

    // Opens a project with the panes of its layout, without a question. Throws TUserError, and the previous project
    // stays open, when there is none in `directory`.
    void LoadProject(const QString& directory);
    // Closes the project without a question; the panes are those of the installation.
    void UnloadProject();

    // What the menu does. Each asks about modified panes first; false when the user cancelled or when it failed, which
    // the user has been told.
    bool CreateProject(const QString& directory, const QString& name);
    bool OpenProject(const QString& directory);
    bool OpenRecentProject(const QString& directory);
    bool CloseProject();

    // The panes and the message pane in their first places.
    void ResetArrangement();
    // Moves the keyboard to the next visible pane, or by -1 to the previous one; the message pane is the last.
    void StepPane(int step);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildMenus();
    void BuildProjectMenu();
    void BuildHelpMenu();
    void RebuildViewMenu();
    void RebuildRecentMenu();
    QAction* AddCommand(QMenu& menu, const QString& name, const QString& caption, const QKeySequence& shortcut,
                        void (TMainWindow::*method)());

    void AskForNewProject();
    void AskForProject();
    void CloseProjectByMenu() { CloseProject(); }
    void CloseWindow() { close(); }
    void NextPane() { StepPane(1); }
    void PreviousPane() { StepPane(-1); }
    void OpenMenuInBrowser();
    void ShowAbout();

    bool MayLoseChanges();
    void ShowLayout(const TLayout& layout);
    void HandleProjectChange(QObject* sender, TUserProperty property, const QString& value);
    void HandlePaneClosing(TPane* pane, bool& allowed);
    void ShowFault(const QString& paneId, const TDocumentPlace& place);
    void UpdateTitle();

    IModifiedAsker& m_asker;
    TPanes m_panes;
    TPaneCommands m_commands;
    TMessagePane* m_messages;
    TDocumentCheck m_documentCheck;
    TRecentProjects m_recent;
    QMenu* m_recentMenu = nullptr;
    QMenu* m_viewMenu = nullptr;
    QAction* m_closeAction = nullptr;
    QAction* m_browserAction = nullptr;
    bool m_remembersArrangement = false;
};
