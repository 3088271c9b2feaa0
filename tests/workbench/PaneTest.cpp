#include "Pane.h"

#include "Panes.h"
#include "Vlerrors.h"
#include "WorkbenchSupport.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>

namespace
{

class PaneTest : public TWorkbenchTest
{
protected:
    void Show(const TLayout& layout)
    {
        Window().Panes().SetLayout(layout);
        Window().Panes().LoadAll();
    }

    QString FailureOf(const std::function<void()>& operation)
    {
        try {
            operation();
        } catch (const TUserError& error) {
            return error.Message();
        }
        return {};
    }
};

TEST_F(PaneTest, ComponentIsMadeByClassAndGetsTheLayoutsCommand)
{
    Show({TestPane(A, QStringLiteral("x://?file=Küche"))});
    EXPECT_EQ(Component(A).Commands, QStringList{QStringLiteral("x://?file=Küche")});
}

TEST_F(PaneTest, ComponentIsMadeByProgId)
{
    TPaneSetup setup = TestPane(A);
    setup.Class = QStringLiteral("velmora.configtree.1");
    Show({setup});
    EXPECT_TRUE(Component(A).Commands.isEmpty());
}

TEST_F(PaneTest, ComponentIsNotMadeBeforeThePaneIsSeen)
{
    Window().Panes().SetLayout({TestPane(A)});
    EXPECT_EQ(Pane(A).Component(), nullptr);
    Window().show();
    EXPECT_NE(Pane(A).Component(), nullptr);
}

TEST_F(PaneTest, ComponentThatWorksFromTheStartIsMadeBehindItsTab)
{
    TPaneSetup starting = TestPane(B);
    starting.Load = QStringLiteral("start");
    Window().Panes().SetLayout({TestPane(A), starting, TestPane(QStringLiteral("c"))});
    Window().show();
    EXPECT_TRUE(Pane(B).visibleRegion().isEmpty());
    Window().Panes().LoadStarting();
    EXPECT_NE(Pane(B).Component(), nullptr);
    EXPECT_EQ(Pane(QStringLiteral("c")).Component(), nullptr);
}

TEST_F(PaneTest, ComponentThatWorksFromTheStartStaysAwayWhenItsPaneIsClosed)
{
    TPaneSetup starting = TestPane(B);
    starting.Load = QStringLiteral("start");
    Window().Panes().SetLayout({TestPane(A), starting});
    Window().show();
    Pane(B).hide();
    Window().Panes().LoadStarting();
    EXPECT_EQ(Pane(B).Component(), nullptr);
}

TEST_F(PaneTest, UnknownClassShowsATextAndTheOthersWork)
{
    TPaneSetup unknown = TestPane(A);
    unknown.Class = QStringLiteral("Velmora.Unbekannt.1");
    Show({unknown, TestPane(B)});
    const auto* label = qobject_cast<QLabel*>(Pane(A).widget());
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(label->text().contains(QStringLiteral("Velmora.Unbekannt.1")));
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.first().contains(QStringLiteral("Velmora.Unbekannt.1")));
    EXPECT_NE(Pane(B).Component(), nullptr);
}

TEST_F(PaneTest, FactoryThatThrowsIsReportedAndLeavesThePaneEmpty)
{
    RegisterComponent(QStringLiteral("TThrowing"),
                      [](QWidget*) -> QWidget* { throw TUserError(QStringLiteral("Kaputt")); });
    TPaneSetup setup = TestPane(A);
    setup.Class = QStringLiteral("TThrowing");
    Show({setup});
    UnregisterComponent(setup.Class);
    EXPECT_EQ(m_messages.Errors.value(0), QStringLiteral("Kaputt"));
    EXPECT_EQ(Pane(A).Component(), nullptr);
}

TEST_F(PaneTest, CommandThatThrowsIsReportedAndTheComponentStays)
{
    Show({TestPane(A, QStringLiteral("throw"))});
    EXPECT_EQ(m_messages.Errors, QStringList{QStringLiteral("Geworfen")});
    EXPECT_NE(Pane(A).Component(), nullptr);
}

TEST_F(PaneTest, RefusedCommandIsNotExecuted)
{
    Show({TestPane(A)});
    EXPECT_TRUE(FailureOf([this] { Pane(A).Execute(QStringLiteral("refuse")); }).contains(QStringLiteral("refuse")));
    EXPECT_TRUE(Component(A).Commands.isEmpty());
}

TEST_F(PaneTest, ComponentWithoutCommandTargetTakesNoCommands)
{
    RegisterComponent(QStringLiteral("TPlain"), [](QWidget* parent) { return new QWidget(parent); });
    TPaneSetup setup = TestPane(A);
    setup.Class = QStringLiteral("TPlain");
    Show({setup});
    UnregisterComponent(setup.Class);
    EXPECT_FALSE(FailureOf([this] { Pane(A).Execute(QStringLiteral("x")); }).isEmpty());
}

TEST_F(PaneTest, TitleShowsWhetherTheComponentIsModified)
{
    Show({TestPane(A)});
    EXPECT_EQ(Pane(A).windowTitle(), QStringLiteral("Bereich a"));
    Component(A).Edit();
    EXPECT_EQ(Pane(A).windowTitle(), QStringLiteral("Bereich a*"));
    EXPECT_TRUE(Pane(A).IsModified());
    Component(A).setWindowModified(false);
    EXPECT_EQ(Pane(A).windowTitle(), QStringLiteral("Bereich a"));
}

TEST_F(PaneTest, PaneAndComponentHaveNamesForAssistiveTechnology)
{
    Show({TestPane(A)});
    EXPECT_EQ(Pane(A).objectName(), A);
    EXPECT_EQ(Pane(A).accessibleName(), QStringLiteral("Bereich a"));
    EXPECT_EQ(Component(A).accessibleName(), QStringLiteral("Bereich a"));
}

TEST_F(PaneTest, ActionsAreRunByNameAfterTheirStateWasAskedFor)
{
    Show({TestPane(A)});
    Pane(A).Trigger(QStringLiteral("MenuAction_Export"));
    EXPECT_EQ(Component(A).Exports, 1);
    EXPECT_GT(Component(A).UpdateCount, 0);
}

TEST_F(PaneTest, UnknownAndDisabledActionsAreRefused)
{
    Show({TestPane(A)});
    EXPECT_TRUE(
        FailureOf([this] { Pane(A).Trigger(QStringLiteral("MenuAction_X")); }).contains(QStringLiteral("kennt")));
    EXPECT_TRUE(FailureOf([this] {
                    Pane(A).Trigger(QStringLiteral("MenuAction_Disabled"));
                }).contains(QStringLiteral("nicht möglich")));
}

TEST_F(PaneTest, PaneIsFoundByAnythingInsideItsComponent)
{
    Show({TestPane(A), TestPane(B)});
    EXPECT_EQ(Window().Panes().PaneOf(Component(B).Field), &Pane(B));
    EXPECT_EQ(Window().Panes().PaneOf(&Component(A)), &Pane(A));
    EXPECT_EQ(Window().Panes().PaneOf(&Window()), nullptr);
    EXPECT_EQ(Window().Panes().PaneOf(nullptr), nullptr);
}

TEST_F(PaneTest, ClosingEndsTheComponentAndShowingMakesItAnew)
{
    Show({TestPane(A, QStringLiteral("x://"))});
    Window().show();
    Component(A).Commands.append(QStringLiteral("mark"));
    EXPECT_TRUE(Pane(A).close());
    EXPECT_EQ(Pane(A).Component(), nullptr);
    Pane(A).toggleViewAction()->trigger();
    EXPECT_EQ(Component(A).Commands, QStringList{QStringLiteral("x://")});
}

TEST_F(PaneTest, ComponentsAreFoundByTheNameOfTheirPane)
{
    Window().Panes().SetLayout({TestPane(A), TestPane(B)});
    Pane(A).Load();
    EXPECT_EQ(Window().Panes().ComponentOf(A), &Component(A));
    EXPECT_EQ(Window().Panes().ComponentOf(B), nullptr);
    EXPECT_EQ(Window().Panes().ComponentOf(QStringLiteral("c")), nullptr);
}

TEST_F(PaneTest, AnotherProjectSendsTheCommandOnlyWhereTheLayoutAsksForIt)
{
    TPaneSetup asks = TestPane(A, QStringLiteral("x://"));
    asks.OnProject = QStringLiteral("command");
    TPaneSetup fails = TestPane(QStringLiteral("c"), QStringLiteral("throw"));
    fails.OnProject = asks.OnProject;
    Show({fails, asks, TestPane(B, QStringLiteral("y://"))});
    m_messages.Errors.clear();
    Window().Panes().HandleOtherProject();
    EXPECT_EQ(Component(A).Commands.size(), 2);
    EXPECT_EQ(Component(B).Commands.size(), 1);
    EXPECT_EQ(m_messages.Errors, QStringList{QStringLiteral("Geworfen")});
}

TEST_F(PaneTest, EqualLayoutKeepsThePanes)
{
    Show({TestPane(A)});
    const TTestComponent* before = &Component(A);
    Window().Panes().SetLayout({TestPane(A)});
    EXPECT_EQ(&Component(A), before);
}

TEST_F(PaneTest, OtherLayoutReplacesThePanes)
{
    Show({TestPane(A)});
    Show({TestPane(B)});
    EXPECT_EQ(Window().Panes().Find(A), nullptr);
    EXPECT_EQ(TTestComponent::LiveCount, 1);
}

} // namespace
