#pragma once

#include "Layout.h"

#include <QAction>
#include <QDockWidget>
#include <QPointer>

class ICmdTarget;
class TClientRegistry;

// A dockable pane with one component. The component is made when the pane is first seen, or by Load, and goes when the
// pane is closed; the workbench knows it as a command target and by its actions only. Belongs to the main window.
class TPane final : public QDockWidget
{
    Q_OBJECT

public:
    // `clients` must outlive the pane.
    TPane(const TPaneSetup& setup, const TClientRegistry& clients, QWidget* parent);
    ~TPane() override;

    const QString& Id() const { return m_setup.Id; }
    const TPaneSetup& Setup() const { return m_setup; }
    const QString& Title() const { return m_setup.Title; }
    // Beside the others, so that something can be dragged from one to the other.
    bool StandsBeside() const { return !m_setup.Side.isEmpty(); }

    // True when the component works from the start; not when the user has closed the pane.
    bool LoadsAtStart() const { return !m_setup.Load.isEmpty() && toggleViewAction()->isChecked(); }
    // Makes the component and sends it the layout's command, unless it is there already. What fails is told the user;
    // the pane of a class that nobody offers shows a text saying so.
    void Load();

    // The component; null before Load and when nobody offers its class.
    QWidget* Component() const { return m_component; }
    // True for the component and everything inside it.
    bool Contains(const QObject* object) const;

    // Sends the component a command text. Throws TUserError when there is no component or when it does not take the
    // text.
    void Execute(const QString& command);

    // After another project was opened: sends the layout's command again where the layout asks for it.
    void HandleOtherProject();

    // The component's actions in its own order, separators included. A component with a slot UpdateActions() is asked
    // to bring their state up to date first.
    QList<QAction*> Actions() const;
    // Runs the action of that object name. Throws TUserError when there is none or when it is disabled.
    void Trigger(const QString& actionName);

    // Lets the component take over what the user has typed and not confirmed yet.
    void CommitEdits();

    bool IsModified() const { return m_component && m_component->isWindowModified(); }

    // Moves the keyboard into the pane.
    void FocusContent();

Q_SIGNALS:
    // The component has been made and has not been sent anything yet.
    void ComponentMade();
    // The pane is about to be closed. Whoever objects clears `allowed`.
    void Closing(TPane* pane, bool& allowed);
    void ComponentChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void HandleVisibility(bool visible);
    void Unload();
    void SendCommand();
    void ShowMissingClass();
    void UpdateTitle();
    QAction* FindAction(const QString& name) const;
    void Invoke(const char* operation) const;

    TPaneSetup m_setup;
    const TClientRegistry& m_clients;
    QPointer<QWidget> m_component;
};
