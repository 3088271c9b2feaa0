#pragma once

#include "DatapointStore.h"
#include "Folders.h"
#include "Userman.h"

#include <QWidget>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QTreeView;
class TDatapointModel;
class TDatapointView;

// A pane that shows the datapoints of one kind in the active project, to look them up and to drag them into editors.
// Driven like every component by a command text, whose path is the project's directory of datapoints. Owned by its
// pane.
class TDatapointBrowser final : public QWidget, public TCmdTarget
{
    Q_OBJECT
    Q_INTERFACES(ICmdTarget)

public:
    TDatapointBrowser(TDatapointKind kind, QWidget* parent);
    ~TDatapointBrowser() override;

    void ExecuteCmd(const char* command, bool& handled) override;

    TDatapointStore& Store() { return m_store; }
    QTreeView* View() const;
    QLineEdit* FilterLine() const { return m_filter; }

    // Shows what the store holds by now.
    void ShowStore();

    // Brings the states of the actions up to date.
    Q_INVOKABLE void UpdateActions();

    // Asks for a file and imports it.
    void MenuAction_Import();
    // Lets the user choose the type of the selected datapoint, if it has none of its own.
    void MenuAction_ChooseType();
    // All of what the message pane has only the beginning of.
    void MenuAction_ShowProblems();
    // Copies the selected datapoint: its address as text, and all of it for the name fields of the editors' dialogs.
    void MenuAction_Copy();
    void MenuAction_Reload();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeView();
    void MakeActions();
    QAction* AddAction(const char* name, const QString& text, const QKeySequence& shortcut,
                       void (TDatapointBrowser::*execute)());
    QMenu* MakeTypeMenu();
    void Reload();
    void NoteProblems();
    void Filter(const QString& text);
    void ShowCounts();
    void ChooseType(int eisNumber);
    const TDatapoint* Selected() const;
    void HandleProjectChange(QObject* sender, TUserProperty property, const QString& value);

    TDatapointStore m_store;
    TDatapointModel* m_model;
    QLineEdit* m_filter;
    TDatapointView* m_view;
    QLabel* m_counts;
    QAction* m_import = nullptr;
    QAction* m_copy = nullptr;
    QAction* m_chooseType = nullptr;
    QAction* m_showProblems = nullptr;
    QMenu* m_typeMenu = nullptr;
    QMenu* m_menu = nullptr;
    QString m_location; // as commanded, with its variables
    bool m_listening = false;
};

// Makes the browsers known as "TEibBrowser", "TModbusBrowser" and "TVirtualBrowser".
void RegisterDatapointBrowsers();
void UnregisterDatapointBrowsers();
