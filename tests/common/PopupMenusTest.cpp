#include "PopupMenus.h"

#include "TestSupport.h"
#include "Vlerrors.h"

#include <QAction>
#include <QCoreApplication>
#include <QPointer>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <optional>

namespace
{

class TProbe : public QWidget
{
public:
    void MenuAction_Count() { ++Runs; }
    void MenuAction_Throw() { throw TUserError(QStringLiteral("Das ging nicht.")); }
    bool CanCount() const { return Allowed; }
    bool IsShown() const { return Shown; }
    void ChooseNumber(int number) { Chosen = number; }
    std::optional<int> ChosenNumber() const { return Chosen; }

    int Runs = 0;
    bool Allowed = true;
    bool Shown = true;
    std::optional<int> Chosen;
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

// A row that can be hidden, a submenu of the numbers 0 to 3, and rows with and without a short cut.
constexpr std::array<TRow, 4> WiderRows{{
    {.Name = "MenuAction_Hidden",
     .Caption = _RSTR_RELOAD,
     .Execute = &TProbe::MenuAction_Count,
     .Visible = &TProbe::IsShown},
    {.Name = "Numbers",
     .Caption = _RSTR_ACCESSLEV,
     .Enabled = &TProbe::CanCount,
     .Visible = &TProbe::IsShown,
     .LastNumber = 3,
     .ChooseNumber = &TProbe::ChooseNumber,
     .ChosenNumber = &TProbe::ChosenNumber},
    {.Name = "MenuAction_Key",
     .Caption = _RSTR_INSERT,
     .Shortcut = "Ctrl+L",
     .Execute = &TProbe::MenuAction_Count,
     .Enabled = &TProbe::CanCount},
    {.Name = "MenuAction_NoKey",
     .Caption = _RSTR_EXPORT,
     .Execute = &TProbe::MenuAction_Count,
     .Enabled = &TProbe::CanCount},
}};

QAction* ActionOf(const TPopupMenu* menu, const char* name)
{
    const QList<QAction*> actions = menu->Menu()->actions();
    for (QAction* action : actions) {
        if (action->objectName() == QLatin1StringView(name))
            return action;
    }
    ADD_FAILURE() << "no action " << name;
    return nullptr;
}

class PopupMenu : public testing::Test
{
protected:
    QAction* Action(const char* name) const { return ActionOf(m_menu, name); }

    TRecordedMessages m_messages;
    std::unique_ptr<TProbe> m_probe = std::make_unique<TProbe>();
    TPopupMenu* m_menu = new TPopupMenu(m_probe.get(), std::span<const TRow>(Rows));
};

// A shown widget whose short cuts ask their operations alone, or the menu's rules as well.
class WiderPopupMenu : public testing::TestWithParam<TShortcutRule>
{
protected:
    WiderPopupMenu()
    {
        m_menu->SetAttached(true);
        m_probe.show();
        m_probe.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_probe));
        m_probe.setFocus();
        m_menu->ApplyRules();
    }

    static bool OperationDecides() { return GetParam() == TShortcutRule::OperationDecides; }
    QAction* Action(const char* name) const { return ActionOf(m_menu, name); }
    QList<QAction*> Numbers() const { return Action("Numbers")->menu<QMenu*>()->actions(); }
    // The numbers with a check mark.
    QString Checked() const
    {
        QString checked;
        const QList<QAction*> numbers = Numbers();
        for (const QAction* number : numbers) {
            if (number->isChecked())
                checked += number->text();
        }
        return checked;
    }
    void PressShortcut() { QTest::keyClick(&m_probe, Qt::Key_L, Qt::ControlModifier); }

    TProbe m_probe;
    TPopupMenu* m_menu = new TPopupMenu(&m_probe, std::span<const TRow>(WiderRows), GetParam());
};

INSTANTIATE_TEST_SUITE_P(Rules, WiderPopupMenu,
                         testing::Values(TShortcutRule::AsInMenu, TShortcutRule::OperationDecides),
                         [](const auto& rule) {
                             return rule.param == TShortcutRule::AsInMenu ? "AsInMenu" : "OperationDecides";
                         });

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

// Hidden rows and numbers

TEST_P(WiderPopupMenu, HidesRowsAsTheirRulesSay)
{
    EXPECT_TRUE(Action("MenuAction_Hidden")->isVisible());
    m_probe.Shown = false;
    m_menu->ApplyRules();
    EXPECT_FALSE(Action("MenuAction_Hidden")->isVisible());
    EXPECT_FALSE(Action("Numbers")->isVisible());
    EXPECT_TRUE(Action("MenuAction_NoKey")->isVisible());
    m_probe.Shown = true;
    m_menu->ApplyRules();
    EXPECT_TRUE(Action("MenuAction_Hidden")->isVisible());
    EXPECT_TRUE(Action("MenuAction_Hidden")->isEnabled());
    EXPECT_TRUE(Action("Numbers")->isEnabled());
}

TEST_P(WiderPopupMenu, HasASubmenuOfNumbersInItsPosition)
{
    EXPECT_EQ(m_menu->Menu()->actions().at(1), Action("Numbers"));
    EXPECT_EQ(Action("Numbers")->text(), QStringLiteral("Zugriffsebene"));
    const QList<QAction*> numbers = Numbers();
    ASSERT_EQ(numbers.size(), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(numbers[i]->text(), QString::number(i));
        EXPECT_EQ(numbers[i]->objectName(), QStringLiteral("Numbers_%1").arg(i));
        EXPECT_TRUE(numbers[i]->isCheckable());
    }
}

TEST_P(WiderPopupMenu, ChecksTheChosenNumberAlone)
{
    EXPECT_EQ(Checked(), QString());
    for (const int number : {2, 0, 3}) {
        m_probe.Chosen = number;
        m_menu->ApplyRules();
        EXPECT_EQ(Checked(), QString::number(number));
    }
    for (const int outside : {-1, 4}) {
        m_probe.Chosen = outside;
        m_menu->ApplyRules();
        EXPECT_EQ(Checked(), QString());
    }
}

TEST_P(WiderPopupMenu, ChoosesANumberAndChecksIt)
{
    Numbers().at(2)->trigger();
    EXPECT_EQ(m_probe.Chosen, 2);
    EXPECT_EQ(Checked(), QStringLiteral("2"));
    Numbers().at(2)->trigger();
    EXPECT_EQ(Checked(), QStringLiteral("2")) << "chosen again, not switched off";
}

TEST_P(WiderPopupMenu, ChoosesNoNumberThatItsRuleForbids)
{
    m_probe.Allowed = false;
    Numbers().at(2)->trigger();
    EXPECT_EQ(m_probe.Chosen, std::nullopt);
    EXPECT_EQ(Checked(), QString());
    EXPECT_FALSE(Action("Numbers")->isEnabled());
}

// Short cuts

TEST_P(WiderPopupMenu, RunsAShortCutThatItsRuleAllows)
{
    PressShortcut();
    EXPECT_EQ(m_probe.Runs, 1);
}

TEST_P(WiderPopupMenu, RunsAShortCutThatTheMenuForbidsOnlyWhereTheOperationDecides)
{
    m_probe.Allowed = false;
    m_menu->ApplyRules();
    PressShortcut();
    EXPECT_EQ(m_probe.Runs, OperationDecides() ? 1 : 0);
    EXPECT_FALSE(Action("MenuAction_Key")->isEnabled());
}

TEST_P(WiderPopupMenu, EnablesAShortCutAtTheMomentOfItsKey)
{
    m_probe.Allowed = false;
    m_menu->ApplyRules();
    m_probe.Allowed = true;
    PressShortcut();
    EXPECT_EQ(m_probe.Runs, 1);
}

TEST_P(WiderPopupMenu, KeepsTheStatesOfItsRowsForOtherKeys)
{
    m_probe.Allowed = false;
    m_menu->ApplyRules();
    QTest::keyClick(&m_probe, Qt::Key_F12);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_probe.Runs, 0);
    EXPECT_FALSE(Action("MenuAction_Key")->isEnabled());
    EXPECT_FALSE(Action("MenuAction_NoKey")->isEnabled());
}

TEST_P(WiderPopupMenu, RunsARowWithoutAShortCutOnlyAsItsRuleAllows)
{
    m_probe.Allowed = false;
    Action("MenuAction_NoKey")->trigger();
    EXPECT_EQ(m_probe.Runs, 0);
}

TEST_P(WiderPopupMenu, RunsNoShortCutThatWasTakenAway)
{
    m_menu->SetAttached(false);
    PressShortcut();
    EXPECT_EQ(m_probe.Runs, 0);
}

// The node that the menu acts on

TEST_P(WiderPopupMenu, ActsOnItsTargetUntilTheChosenOperationHasRun)
{
    TTreeNode node;
    TTreeNode other;
    EXPECT_EQ(m_menu->Target(&other), &other);
    m_menu->SetTarget(&node);
    EXPECT_EQ(m_menu->Target(&other), &node);
    m_menu->Open(QPoint(0, 0));
    m_menu->Menu()->hide();
    EXPECT_EQ(m_menu->Target(&other), &node);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_menu->Target(&other), &other);
}

TEST_P(WiderPopupMenu, ActsOnNoNodeBesideAllOfThem)
{
    TTreeNode other;
    m_menu->SetTarget(nullptr);
    EXPECT_EQ(m_menu->Target(&other), nullptr);
}

TEST_P(WiderPopupMenu, ForgetsATargetThatIsDeleted)
{
    TTreeNode other;
    auto node = std::make_unique<TTreeNode>();
    m_menu->SetTarget(node.get());
    node.reset();
    EXPECT_EQ(m_menu->Target(&other), nullptr);
}

TEST_P(WiderPopupMenu, KeepsItsTargetWhenItIsOpenedAgainAtOnce)
{
    TTreeNode first;
    TTreeNode second;
    m_menu->SetTarget(&first);
    m_menu->Open(QPoint(0, 0));
    m_menu->Menu()->hide();
    m_menu->SetTarget(&second);
    m_menu->Open(QPoint(0, 0));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_menu->Target(nullptr), &second);
    m_menu->Menu()->hide();
}

TEST_P(WiderPopupMenu, AppliesItsRulesWhenItOpensAndWhenItHasClosed)
{
    m_probe.Allowed = false;
    m_menu->Open(QPoint(0, 0));
    EXPECT_FALSE(Action("MenuAction_NoKey")->isEnabled());
    m_probe.Allowed = true;
    m_menu->Menu()->hide();
    QCoreApplication::processEvents();
    EXPECT_TRUE(Action("MenuAction_NoKey")->isEnabled());
}
