#include "PropsDialogFixture.h"
#include "Vlerrors.h"
#include "dlgLinkProps.h"
#include "dlgMenuProps.h"

#include <QTimer>

namespace
{

// What the dialogs of items and links have in common. The field "EditName" is in both.
template <class TDialog> class MenuDialogEvents : public TDialogFixture<TDialog>
{
protected:
    void SetEvents()
    {
        this->m_dialog.SetApplyEvent([this](QObject* sender) { Record("apply", sender); });
        this->m_dialog.SetCloseEvent([this](QObject* sender) {
            Record("close", sender);
            EXPECT_FALSE(this->m_dialog.isVisible());
        });
        this->m_dialog.SetMoveEvent([this](QObject* sender, TDirection direction) {
            Record(direction == dirUp ? "up" : direction == dirDown ? "down" : "elsewhere", sender);
            m_changedInEvent = this->m_dialog.GetChanged();
        });
    }
    void Record(const std::string& event, const QObject* sender)
    {
        EXPECT_EQ(sender, &this->m_dialog);
        m_events += m_events.empty() ? event : " " + event;
    }
    void Type() { QTest::keyClicks(this->Edit("EditName"), QStringLiteral("x")); }
    // What Execute returns when `act` is done while the dialog is open.
    bool ExecuteAnd(const std::function<void()>& act)
    {
        QTimer::singleShot(0, &this->m_dialog, act);
        return this->m_dialog.Execute();
    }

    std::string m_events;
    bool m_changedInEvent = false;
};

using TDialogs = testing::Types<TMenuPropsDialog, TLinkPropsDialog>;
TYPED_TEST_SUITE(MenuDialogEvents, TDialogs);

} // namespace

TYPED_TEST(MenuDialogEvents, HaveADialogOfAFixedSize)
{
    this->Show();
    EXPECT_FALSE(this->m_dialog.isModal());
    const QSize size = this->m_dialog.size();
    this->m_dialog.resize(size * 2);
    EXPECT_EQ(this->m_dialog.size(), size);
}

TYPED_TEST(MenuDialogEvents, BeginUnchangedWhenDisplayedAndExecuted)
{
    this->m_dialog.SetChanged(true);
    this->Show();
    EXPECT_FALSE(this->m_dialog.GetChanged());
    this->m_dialog.close();
    this->m_dialog.SetChanged(true);
    bool changed = true;
    this->ExecuteAnd([&] {
        changed = this->m_dialog.GetChanged();
        EXPECT_TRUE(this->m_dialog.isModal());
        this->m_dialog.reject();
    });
    EXPECT_FALSE(changed);
}

TYPED_TEST(MenuDialogEvents, MakeExecuteTrueUnlessItIsCancelled)
{
    this->SetEvents();
    EXPECT_TRUE(this->ExecuteAnd([this] { this->Press("BtnOK"); }));
    EXPECT_EQ(this->m_events, "apply close");
    EXPECT_FALSE(this->ExecuteAnd([this] { this->Press("BtnCancel"); }));
    EXPECT_EQ(this->m_events, "apply close close");
    EXPECT_FALSE(this->ExecuteAnd([this] { this->m_dialog.close(); }));
    EXPECT_EQ(this->m_events, "apply close close close");
}

TYPED_TEST(MenuDialogEvents, EnableTheApplyButtonExactlyWhileThereIsAnApplyEvent)
{
    EXPECT_FALSE(this->IsEnabled("BtnApply"));
    this->m_dialog.SetApplyEvent([](QObject*) {});
    EXPECT_TRUE(this->IsEnabled("BtnApply"));
    this->m_dialog.SetApplyEvent(nullptr);
    EXPECT_FALSE(this->IsEnabled("BtnApply"));
    bool enabled = true;
    this->template Field<QWidget>("BtnApply")->setEnabled(true);
    this->ExecuteAnd([&] {
        enabled = this->IsEnabled("BtnApply");
        this->m_dialog.reject();
    });
    EXPECT_FALSE(enabled);
}

TYPED_TEST(MenuDialogEvents, ApplyByItsButtonAndKeepTheDialogOpenAndChanged)
{
    this->SetEvents();
    this->Show();
    this->Type();
    this->Press("BtnApply");
    EXPECT_EQ(this->m_events, "apply");
    EXPECT_TRUE(this->m_dialog.isVisible());
    EXPECT_TRUE(this->m_dialog.GetChanged());
}

TYPED_TEST(MenuDialogEvents, ApplyBeforeClosingByOkAndByEnter)
{
    this->SetEvents();
    this->Show();
    this->Type();
    this->Press("BtnOK");
    EXPECT_EQ(this->m_events, "apply close");
    EXPECT_EQ(this->m_dialog.result(), QDialog::Accepted);
    this->Show();
    QTest::keyClick(this->Edit("EditName"), Qt::Key_Return);
    EXPECT_EQ(this->m_events, "apply close apply close");
}

TYPED_TEST(MenuDialogEvents, ApplyNothingByCancelTheCloseBoxAndEscape)
{
    this->SetEvents();
    this->Show();
    this->Type();
    this->Press("BtnCancel");
    EXPECT_EQ(this->m_events, "close");
    EXPECT_EQ(this->m_dialog.result(), QDialog::Rejected);
    this->Show();
    this->Type();
    this->m_dialog.close();
    EXPECT_EQ(this->m_events, "close close");
    this->Show();
    this->Type();
    QTest::keyClick(&this->m_dialog, Qt::Key_Escape);
    EXPECT_EQ(this->m_events, "close close close");
}

TYPED_TEST(MenuDialogEvents, MoveInTheDirectionsOfTheButtonsAndThenForgetTheChange)
{
    this->SetEvents();
    this->Show();
    for (const char* button : {"SBtnUp", "SBtnDown"}) {
        this->Type();
        this->Press(button);
        EXPECT_TRUE(this->m_changedInEvent) << button;
        EXPECT_FALSE(this->m_dialog.GetChanged()) << button;
    }
    EXPECT_EQ(this->m_events, "up down");
    EXPECT_TRUE(this->m_dialog.isVisible());
}

TYPED_TEST(MenuDialogEvents, MoveByTheKeyboard)
{
    this->SetEvents();
    this->Show();
    QTest::keyClick(&this->m_dialog, Qt::Key_Up, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return this->m_events == "up"; })) << this->m_events;
    QTest::keyClick(&this->m_dialog, Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return this->m_events == "up down"; })) << this->m_events;
}

TYPED_TEST(MenuDialogEvents, AreNotNeeded)
{
    this->Show();
    for (const char* button : {"SBtnUp", "SBtnDown"}) {
        this->Type();
        ASSERT_TRUE(this->m_dialog.GetChanged());
        this->Press(button);
        EXPECT_FALSE(this->m_dialog.GetChanged()) << button;
    }
    this->Press("BtnOK");
    EXPECT_FALSE(this->m_dialog.isVisible());
}

TYPED_TEST(MenuDialogEvents, AreNotRaisedByTypingOrBySetters)
{
    this->SetEvents();
    this->Show();
    this->Type();
    this->m_dialog.SetAutoAccept(false);
    this->m_dialog.SetChanged(false);
    EXPECT_EQ(this->m_events, "");
}

TYPED_TEST(MenuDialogEvents, LeaveTheBoxForAutomaticAcceptanceToTheUser)
{
    EXPECT_TRUE(this->m_dialog.GetAutoAccept());
    this->Show();
    this->Tick("CheckAutoAccept");
    EXPECT_FALSE(this->m_dialog.GetAutoAccept());
    EXPECT_FALSE(this->m_dialog.GetChanged());
    this->m_dialog.close();
    this->Show();
    EXPECT_FALSE(this->m_dialog.GetAutoAccept());
    this->m_dialog.SetAutoAccept(true);
    EXPECT_TRUE(this->template Field<QAbstractButton>("CheckAutoAccept")->isChecked());
}

TYPED_TEST(MenuDialogEvents, ThatFailAreShownAndTheDialogStillCloses)
{
    const TRecordedMessages messages;
    this->m_dialog.SetApplyEvent([](QObject*) { throw TUserError(QStringLiteral("apply")); });
    this->m_dialog.SetCloseEvent([](QObject*) { throw TUserError(QStringLiteral("close")); });
    this->m_dialog.SetMoveEvent([](QObject*, TDirection) { throw TUserError(QStringLiteral("move")); });
    this->Show();
    this->Press("SBtnUp");
    this->Press("BtnOK");
    EXPECT_EQ(messages.Errors, QStringList({QStringLiteral("move"), QStringLiteral("apply"), QStringLiteral("close")}));
    EXPECT_FALSE(this->m_dialog.isVisible());
}
