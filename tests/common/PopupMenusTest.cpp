#include "PopupMenus.h"

#include "TestSupport.h"
#include "Vlerrors.h"

#include <QAction>
#include <QPointer>
#include <QWidget>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <stdexcept>

namespace
{

class TProbe : public QWidget
{
public:
    void MenuAction_Count() { ++Runs; }
    void MenuAction_Throw() { throw TUserError(QStringLiteral("Das ging nicht.")); }
    bool CanCount() const { return Allowed; }

    int Runs = 0;
    bool Allowed = true;
};

using TRow = TPopupRow<TProbe>;

constexpr std::array<TRow, 4> Rows{{
    {.Name = "MenuAction_Count",
     .Caption = _RSTR_RELOAD,
     .Shortcut = "Ctrl+L",
     .Execute = &TProbe::MenuAction_Count,
     .Enabled = &TProbe::CanCount},
    {},
    {.Name = "MenuAction_Throw", .Caption = _RSTR_EXPORT, .Execute = &TProbe::MenuAction_Throw},
    {.Name = "MenuAction_Always", .Caption = _RSTR_INSERT, .Execute = &TProbe::MenuAction_Count},
}};

class PopupMenu : public testing::Test
{
protected:
    QAction* Action(const char* name) const
    {
        const QList<QAction*> actions = m_menu->Menu()->actions();
        for (QAction* action : actions) {
            if (action->objectName() == QLatin1StringView(name))
                return action;
        }
        ADD_FAILURE() << "no action " << name;
        return nullptr;
    }

    TRecordedMessages m_messages;
    std::unique_ptr<TProbe> m_probe = std::make_unique<TProbe>();
    TPopupMenu* m_menu = new TPopupMenu(m_probe.get(), std::span<const TRow>(Rows));
};

} // namespace

TEST_F(PopupMenu, KeepsPositionsWithSeparators)
{
    const QList<QAction*> actions = m_menu->Menu()->actions();
    ASSERT_EQ(actions.size(), 4);
    EXPECT_EQ(actions[0], Action("MenuAction_Count"));
    EXPECT_TRUE(actions[1]->isSeparator());
    EXPECT_EQ(actions[2], Action("MenuAction_Throw"));
    EXPECT_EQ(actions[3], Action("MenuAction_Always"));
}

TEST_F(PopupMenu, TakesCaptionsFromTheResourceTexts)
{
    EXPECT_EQ(Action("MenuAction_Count")->text(), QStringLiteral("Neu laden"));
    EXPECT_EQ(Action("MenuAction_Always")->text(), QStringLiteral("Einfügen"));
}

TEST_F(PopupMenu, BindsShortcutsToTheWidget)
{
    EXPECT_EQ(Action("MenuAction_Count")->shortcut(), QKeySequence(QStringLiteral("Ctrl+L")));
    EXPECT_EQ(Action("MenuAction_Count")->shortcutContext(), Qt::WidgetShortcut);
    EXPECT_TRUE(Action("MenuAction_Always")->shortcut().isEmpty());
}

TEST_F(PopupMenu, GivesItsActionsToTheWidgetAndTakesThemAway)
{
    m_menu->SetAttached(true);
    EXPECT_EQ(m_probe->actions(), m_menu->Menu()->actions());
    m_menu->SetAttached(false);
    EXPECT_TRUE(m_probe->actions().isEmpty());
    EXPECT_EQ(m_menu->Menu()->actions().size(), 4);
}

TEST_F(PopupMenu, RunsTheOperation)
{
    Action("MenuAction_Count")->trigger();
    Action("MenuAction_Always")->trigger();
    EXPECT_EQ(m_probe->Runs, 2);
}

TEST_F(PopupMenu, AppliesItsRules)
{
    m_probe->Allowed = false;
    m_menu->ApplyRules();
    EXPECT_FALSE(Action("MenuAction_Count")->isEnabled());
    EXPECT_TRUE(Action("MenuAction_Always")->isEnabled());
    m_probe->Allowed = true;
    m_menu->ApplyRules();
    EXPECT_TRUE(Action("MenuAction_Count")->isEnabled());
}

TEST_F(PopupMenu, AsksTheRuleAgainBeforeItRunsTheOperation)
{
    m_menu->ApplyRules();
    m_probe->Allowed = false;
    Action("MenuAction_Count")->trigger();
    EXPECT_EQ(m_probe->Runs, 0);
    EXPECT_FALSE(Action("MenuAction_Count")->isEnabled());
}

TEST_F(PopupMenu, HandsExceptionsToTheGeneralErrorHandler)
{
    Action("MenuAction_Throw")->trigger();
    EXPECT_EQ(m_messages.Errors, QStringList({QStringLiteral("Das ging nicht.")}));
}

TEST_F(PopupMenu, GoesWithItsWidget)
{
    const QPointer<TPopupMenu> menu = m_menu;
    const QPointer<QMenu> popup = m_menu->Menu();
    m_probe.reset();
    EXPECT_TRUE(menu.isNull());
    EXPECT_TRUE(popup.isNull());
}
