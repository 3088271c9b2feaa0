#include "CmdButtonsBar.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

namespace
{

class CmdButtonsKeyboard : public TBarTest
{
protected:
    CmdButtonsKeyboard()
    {
        WriteEntries({A, B, C});
        Execute();
        Button(A)->setFocus();
    }

    QString Focused()
    {
        const auto* button = qobject_cast<TCmdButton*>(QApplication::focusWidget());
        return button ? button->Action()->GetCaption() : QString();
    }
};

} // namespace

TEST_F(CmdButtonsKeyboard, TabAndArrowsGoFromButtonToButton)
{
    EXPECT_EQ(Focused(), A);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Focused(), B);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_EQ(Focused(), C);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_EQ(Focused(), B);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Focused(), A);
}

TEST_F(CmdButtonsKeyboard, EnterAndSpaceRunTheFocusedButton)
{
    QTest::keyClick(Button(B), Qt::Key_Return);
    QTest::keyClick(Button(C), Qt::Key_Enter);
    QTest::keyClick(Button(A), Qt::Key_Space);
    EXPECT_EQ(m_commands,
              QStringList({QStringLiteral("pane://b"), QStringLiteral("pane://c"), QStringLiteral("pane://a")}));
}

TEST_F(CmdButtonsKeyboard, HeldEnterRunsOnce)
{
    for (const bool repeated : {false, true, true}) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), repeated);
        QApplication::sendEvent(Button(A), &event);
    }
    EXPECT_EQ(m_commands.size(), 1);
}

TEST_F(CmdButtonsKeyboard, FocusedButtonIsScrolledIntoView)
{
    QStringList names;
    for (int i = 0; i < 20; ++i)
        names.append(QStringLiteral("z%1").arg(i));
    WriteEntries(names);
    Execute();
    Button(A)->setFocus();
    for (int i = 0; i < 22; ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Focused(), QStringLiteral("z19"));
    EXPECT_GT(Bar().verticalScrollBar()->value(), 0);
    EXPECT_FALSE(Button(QStringLiteral("z19"))->visibleRegion().isEmpty());
}

TEST_F(CmdButtonsKeyboard, RemovingTheFocusedButtonKeepsTheKeyboardInTheBar)
{
    Bar().RemoveCmdButton(Button(A));
    EXPECT_EQ(Focused(), B);
}

TEST_F(CmdButtonsKeyboard, TabDoesNotStopAtTheBarBetweenItsButtons)
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Focused(), C);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Focused(), A);
}

TEST_F(CmdButtonsKeyboard, KeyboardStaysInTheBarWhenItsButtonsAreReplaced)
{
    Button(C)->setFocus();
    Execute();
    EXPECT_EQ(Focused(), A);
    UserManager()->OpenProject(m_project.Root());
    EXPECT_EQ(Focused(), A);
    Execute("Velmora.CmdButtons.1://%PRJPATH%/fehlt");
    EXPECT_EQ(QApplication::focusWidget(), &Bar());
    Execute();
    EXPECT_EQ(Focused(), A);
}

TEST_F(CmdButtonsKeyboard, LoadingTakesNoKeyboardFromOthers)
{
    QLineEdit other(Bar().window());
    other.show();
    other.setFocus();
    Execute();
    EXPECT_EQ(QApplication::focusWidget(), &other);
}
