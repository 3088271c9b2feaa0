#pragma once

#include "Folders.h"
#include "PopupMenus.h"
#include "Userman.h"
#include "Vlcolors.h"
#include "Vlnavigation.h"

#include <QPointer>
#include <QScrollArea>

#include <functional>
#include <optional>

class QVBoxLayout;
class TCmdButton;

// A scrolling bar of large flat buttons, one for each navigation entry of a folder or of a definition file. A button
// runs its entry; a popup menu adds, removes and edits buttons. The host's form owns the bar, the bar its buttons.
class TICmdButtons final : public QScrollArea, public TCmdTarget
{
    Q_OBJECT
    Q_INTERFACES(ICmdTarget)

public:
    explicit TICmdButtons(QWidget* parent);
    ~TICmdButtons() override;

    // Not handled, and nothing is done, unless the text contains the ProgID exactly.
    void ExecuteCmd(const char* command, bool& handled) override;
    // Accepts what contains the ProgID without regard to case.
    void QueryCmd(const char* command, bool& accepted) override;

    // Adds the buttons of a folder or of a definition file; nothing for a path that is neither. Throws TFileError for a
    // definition file that cannot be read.
    void LoadCmdItems(const QString& path);

    // Adds a button at the bottom.
    TCmdButton* AddCmdButton(TNavigationPtr action);
    // Removes a button with its action; the entry's file stays. Other controls are left alone.
    void RemoveCmdButton(QWidget* control);
    // Makes a new entry with the properties dialog and adds its button. Throws TUserError where nothing is shown that
    // it could belong to.
    void AssignNewAction();
    // Takes a new entry into the bar.
    void NewButtonNotify(QObject* sender, TNavigationPtr action);
    // Shows the properties of a button's entry.
    void ShowProperties(QWidget* control);

    // An entry's properties have changed: its button shows them.
    void HandleButtonChange(QObject* sender);
    // The popup menu is about to open for a place of the bar; it opens all the same.
    void HandleContextPopup(QObject* sender, const QPoint& mousePosition, bool& handled);
    // Does what an entry of the popup menu stands for, by its index.
    void HandleMenuClick(QObject* sender);
    void HandleProjectChange(QObject* sender, TUserProperty property, const QString& value);
    // Follows the project from now on, or does so no longer, as the location asks for it.
    void SetProjectListener();

    QMenu* PopupMenu() const { return m_popupMenu->Menu(); }
    // In their order.
    QList<TCmdButton*> Buttons() const;
    const QString& GetCategory() const { return m_category; }
    // Where the buttons were loaded from: the folder or the definition file; empty while there is none.
    const QString& GetSourceLocation() const { return m_sourceLocation; }

    // Brings the states of the actions up to date; the host calls it by name before it shows or runs them.
    Q_INVOKABLE void UpdateActions() { m_popupMenu->ApplyRules(); }

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    // In the order of the popup menu; a separator counts.
    enum TMenuIndex : int
    {
        miNewAction = 0,
        miRemove = 1,
        miProperties = 3,
    };

    static std::span<const TPopupRow<TICmdButtons>> PopupRows();
    void MenuAction_NewAction() { RunMenuEntry(miNewAction); }
    void MenuAction_Remove() { RunMenuEntry(miRemove); }
    void MenuAction_Properties() { RunMenuEntry(miProperties); }
    void RunMenuEntry(qsizetype index);
    void DoMenuEntry(qsizetype index);
    bool HasTarget() const { return MenuTarget() != nullptr; }
    bool CanRemove() const;
    // The button that the menu acts on: while it is open the one under the mouse, else the one with the focus.
    TCmdButton* MenuTarget() const;
    TCmdButton* FocusedButton() const;
    void ForgetTarget();

    void ApplyItem(const QString& key, const QString& value);
    void RemoveButtons();
    void LoadFolder(const QString& directory);
    void LoadDefinition(const QString& file);
    void ReportTo(const std::function<void()>& load);

    TPopupMenu* m_popupMenu;
    QString m_category;
    QString m_sourceLocation;
    QString m_location; // as it was commanded, unexpanded
    bool m_listening = false;

    QVBoxLayout* m_layout;
    int m_runningEntries = 0;                     // of the popup menu
    std::optional<QPointer<TCmdButton>> m_target; // while the menu is in use; null beside all buttons
};

// What the unit runs at load and at unload. The bar is known by its class only: its ProgID is the host's to give.
void InitializeCmdButtonsUnit();
void FinalizeCmdButtonsUnit();
