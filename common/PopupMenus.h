#pragma once

#include "FoldersRc.h"

#include <QMenu>
#include <QObject>

#include <functional>
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
};

// A popup menu made from a table. Its actions also belong to the widget, so that short cuts work there and the host can
// list and run them. An operation runs inside the entry guard and only when its rule allows it at that moment.
class TPopupMenu : public QObject
{
public:
    // The menu belongs to `frame`, which must be the rows' TFrame.
    template <class TFrame> TPopupMenu(TFrame* frame, std::span<const TPopupRow<TFrame>> rows) : TPopupMenu(frame)
    {
        for (const TPopupRow<TFrame>& row : rows) {
            if (!row.Name) {
                AddSeparator();
                continue;
            }
            const auto execute = [frame, operation = row.Execute] { (frame->*operation)(); };
            const auto enabled = [frame, rule = row.Enabled] { return !rule || (frame->*rule)(); };
            AddRow(row.Name, row.Caption, row.Shortcut, execute, enabled);
        }
    }
    ~TPopupMenu() override;

    QMenu* Menu() const { return m_menu; }

    // Gives the actions to the widget, or takes them away, with their short cuts.
    void SetAttached(bool attached);

    // Puts every action into the state that its rule asks for. Done by itself before a short cut fires.
    void ApplyRules() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct TEntry
    {
        QAction* Action;
        std::function<bool()> Enabled;
    };

    explicit TPopupMenu(QWidget* widget);

    void AddSeparator();
    void AddRow(const char* name, TResourceId caption, const char* shortcut, const std::function<void()>& execute,
                const std::function<bool()>& enabled);

    QWidget* m_widget;
    QMenu* m_menu;
    std::vector<TEntry> m_entries;
};
