#pragma once

#include "FoldersRc.h"
#include "Vltreenode.h"

#include <QMenu>
#include <QObject>

#include <functional>
#include <optional>
#include <span>
#include <vector>

class QAction;
class QWidget;

// One row of a frame's popup menu. Name is the operation's and becomes the object name of its action; a row without a
// name is a separator and counts as a position like any other.
template <class TFrame> struct TPopupRow
{
    const char* Name = nullptr;
    TResourceId Caption{};
    const char* Shortcut = "";
    void (TFrame::*Execute)() = nullptr;
    bool (TFrame::*Enabled)() const = nullptr; // always when null
    bool (TFrame::*Visible)() const = nullptr; // always when null
    // A row with numbers is a submenu of them, from 0 to the last one, and has no operation of its own.
    std::optional<int> LastNumber = std::nullopt;
    void (TFrame::*ChooseNumber)(int number) = nullptr;
    std::optional<int> (TFrame::*ChosenNumber)() const = nullptr; // the one that is checked
};

// What a short cut asks before it runs an operation.
enum class TShortcutRule : quint8
{
    AsInMenu,         // the row's rule, as if the menu was open
    OperationDecides, // nothing: the operation has conditions of its own, wider than the menu's
};

// A popup menu made from a table. Its actions also belong to the widget, so that short cuts work there and the host can
// list and run them. An operation runs inside the entry guard and only when its rule allows it at that moment.
class TPopupMenu : public QObject
{
public:
    // The menu belongs to `frame`, which must be the rows' TFrame.
    template <class TFrame> TPopupMenu(TFrame* frame, std::span<const TPopupRow<TFrame>> rows,
                                       TShortcutRule shortcutRule = TShortcutRule::AsInMenu)
        : TPopupMenu(static_cast<QWidget*>(frame), shortcutRule)
    {
        for (const TPopupRow<TFrame>& row : rows) {
            if (!row.Name) {
                AddSeparator();
                continue;
            }
            const auto enabled = [frame, rule = row.Enabled] { return !rule || (frame->*rule)(); };
            const auto visible = [frame, rule = row.Visible] { return !rule || (frame->*rule)(); };
            if (row.LastNumber) {
                const auto choose = [frame, operation = row.ChooseNumber](int number) { (frame->*operation)(number); };
                const auto chosen = [frame, rule = row.ChosenNumber] { return (frame->*rule)(); };
                AddNumbers({row.Name, row.Caption, "", enabled, visible}, *row.LastNumber, choose, chosen);
                continue;
            }
            const auto execute = [frame, operation = row.Execute] { (frame->*operation)(); };
            AddRow({row.Name, row.Caption, row.Shortcut, enabled, visible}, execute);
        }
    }
    ~TPopupMenu() override;

    QMenu* Menu() const { return m_menu; }

    // Gives the actions to the widget, or takes them away, with their short cuts.
    void SetAttached(bool attached);

    // From now until the chosen operation has run, the menu acts on this node (null for a place beside all nodes).
    void SetTarget(TTreeNode* node) { m_target.emplace(node); }
    // The node that the menu acts on, or `otherwise` while the menu is not in use.
    TTreeNode* Target(TTreeNode* otherwise) const { return m_target ? m_target->Get() : otherwise; }
    // Opens the menu at a place on the screen.
    void Open(const QPoint& place);

    // Puts every action into the state that its rules ask for. Done by itself before a short cut fires.
    void ApplyRules() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using TRule = std::function<bool()>;

    struct TEntry
    {
        QAction* Action;
        TRule Enabled;
        TRule Visible;
        std::function<std::optional<int>()> Chosen; // of a submenu with numbers only
    };

    struct TRow
    {
        const char* Name;
        TResourceId Caption;
        const char* Shortcut;
        TRule Enabled;
        TRule Visible;
    };

    TPopupMenu(QWidget* widget, TShortcutRule shortcutRule);

    void AddSeparator();
    void AddRow(const TRow& row, const std::function<void()>& execute);
    void AddNumbers(const TRow& row, int last, const std::function<void(int)>& choose,
                    const std::function<std::optional<int>()>& chosen);
    void Run(const TRule& allowed, const std::function<void()>& execute);
    void EnableShortcuts() const;
    void ForgetTarget();

    QWidget* m_widget;
    QMenu* m_menu;
    TShortcutRule m_shortcutRule;
    std::optional<TNodeRef> m_target;
    std::vector<TEntry> m_entries;
};
