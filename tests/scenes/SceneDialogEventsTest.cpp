#include "SceneDialog.h"

#include <QTimer>

namespace
{

class SceneDialogEvents : public TSceneDialog
{
protected:
    void SetEvents()
    {
        m_dialog.SetApplyEvent([this](QObject* sender) { Record("apply", sender); });
        m_dialog.SetCloseEvent([this](QObject* sender) {
            Record("close", sender);
            EXPECT_FALSE(m_dialog.isVisible());
        });
        m_dialog.SetMoveEvent([this](QObject* sender, TDirection direction) {
            Record(direction == dirUp ? "up" : direction == dirDown ? "down" : "elsewhere", sender);
            m_changedInEvent = m_dialog.GetChanged();
        });
        m_dialog.SetChangePartEvent([this](QObject* sender, int part) {
            Record(("part " + std::to_string(part)).c_str(), sender);
            m_changedInEvent = m_dialog.GetChanged();
            m_modeInEvent = IsEnabled("EditName");
        });
    }
    void Record(const char* event, const QObject* sender)
    {
        EXPECT_EQ(sender, &m_dialog);
        m_events += m_events.empty() ? event : std::string(" ") + event;
    }
    // What Execute returns when `act` is done while the dialog is open.
    template <class TAct> bool ExecuteAnd(TAct act)
    {
        QTimer::singleShot(0, &m_dialog, act);
        return m_dialog.Execute();
    }

    std::string m_events;
    bool m_changedInEvent = false;
    bool m_modeInEvent = false;
};

} // namespace

TEST_F(SceneDialogEvents, DoNothingWhenNoneIsSet)
{
    Show();
    m_dialog.SetChanged(true);
    Press("SBtnUp");
    EXPECT_TRUE(m_dialog.GetChanged());
    Press("BtnOK");
    EXPECT_FALSE(m_dialog.isVisible());
}

TEST_F(SceneDialogEvents, EnableTheApplyButtonExactlyWhileThereIsAnApplyEvent)
{
    EXPECT_FALSE(IsEnabled("BtnApply"));
    m_dialog.SetApplyEvent([](QObject*) {});
    EXPECT_TRUE(IsEnabled("BtnApply"));
    m_dialog.SetApplyEvent(nullptr);
    EXPECT_FALSE(IsEnabled("BtnApply"));
}

TEST_F(SceneDialogEvents, ApplyByItsButtonAndStayOpen)
{
    SetEvents();
    Show();
    Press("BtnApply");
    EXPECT_EQ(m_events, "apply");
    EXPECT_TRUE(m_dialog.isVisible());
}

TEST_F(SceneDialogEvents, ApplyAndCloseByTheOkButton)
{
    SetEvents();
    Show();
    Press("BtnOK");
    EXPECT_EQ(m_events, "apply close");
    EXPECT_EQ(m_dialog.result(), QDialog::Accepted);
}

TEST_F(SceneDialogEvents, ApplyAndCloseByEnterInAField)
{
    SetEvents();
    Show();
    QTest::keyClick(Edit("EditValue"), Qt::Key_Return);
    EXPECT_EQ(m_events, "apply close");
}

TEST_F(SceneDialogEvents, OnlyCloseByTheCancelButton)
{
    SetEvents();
    Show();
    Press("BtnCancel");
    EXPECT_EQ(m_events, "close");
    EXPECT_EQ(m_dialog.result(), QDialog::Rejected);
}

TEST_F(SceneDialogEvents, OnlyCloseByTheCloseBoxAndByEscape)
{
    SetEvents();
    Show();
    m_dialog.close();
    EXPECT_EQ(m_events, "close");
    Show();
    QTest::keyClick(&m_dialog, Qt::Key_Escape);
    EXPECT_EQ(m_events, "close close");
}

TEST_F(SceneDialogEvents, MoveInTheDirectionsOfTheButtonsAndThenForgetTheChange)
{
    SetEvents();
    Show();
    m_dialog.SetChanged(true);
    Press("SBtnUp");
    EXPECT_TRUE(m_changedInEvent);
    EXPECT_FALSE(m_dialog.GetChanged());
    Press("SBtnDown");
    EXPECT_FALSE(m_changedInEvent);
    EXPECT_EQ(m_events, "up down");
}

TEST_F(SceneDialogEvents, TellTheSectionThatTheUserChoseBeforeTheModeChanges)
{
    SetEvents();
    m_dialog.SetSection(1);
    Show();
    Box("CBoxPartSelector")->setFocus();
    QTest::keyClick(Box("CBoxPartSelector"), Qt::Key_Down);
    EXPECT_EQ(m_events, "part 2");
    EXPECT_TRUE(m_changedInEvent);
    EXPECT_TRUE(m_modeInEvent);
    EXPECT_TRUE(m_dialog.GetChanged());
    EXPECT_FALSE(IsEnabled("EditName"));
    QTest::keyClick(Box("CBoxPartSelector"), Qt::Key_Up);
    EXPECT_EQ(m_events, "part 2 part 1");
    EXPECT_TRUE(IsEnabled("EditName"));
}

TEST_F(SceneDialogEvents, DoNotTellASectionThatTheProgramSets)
{
    SetEvents();
    Show();
    m_dialog.SetSection(3);
    m_dialog.SetSceneSections(Sections(2));
    EXPECT_EQ(m_events, "");
}

TEST_F(SceneDialogEvents, LeaveTheModeAloneWhenNobodyListensToTheSection)
{
    m_dialog.SetSection(1);
    Show();
    Box("CBoxPartSelector")->setFocus();
    QTest::keyClick(Box("CBoxPartSelector"), Qt::Key_Down);
    EXPECT_EQ(m_dialog.GetSection(), 2);
    EXPECT_FALSE(m_dialog.GetChanged());
    EXPECT_TRUE(IsEnabled("EditName"));
}

TEST_F(SceneDialogEvents, AreNotCalledForAnEmptySelectionOfSections)
{
    SetEvents();
    m_dialog.SetSceneSections({});
    Show();
    Box("CBoxPartSelector")->setFocus();
    QTest::keyClick(Box("CBoxPartSelector"), Qt::Key_Down);
    Q_EMIT Box("CBoxPartSelector")->activated(-1);
    EXPECT_EQ(m_events, "");
    EXPECT_FALSE(m_dialog.GetChanged());
}

TEST_F(SceneDialogEvents, ExecuteModallyAndReportTheOkButton)
{
    SetEvents();
    bool modal = false;
    EXPECT_TRUE(ExecuteAnd([&] {
        modal = m_dialog.isModal() && m_dialog.isVisible();
        Press("BtnOK");
    }));
    EXPECT_TRUE(modal);
    EXPECT_EQ(m_events, "apply close");
}

TEST_F(SceneDialogEvents, ExecuteModallyAndReportTheCancelButton)
{
    SetEvents();
    EXPECT_FALSE(ExecuteAnd([&] { Press("BtnCancel"); }));
    EXPECT_EQ(m_events, "close");
}

TEST_F(SceneDialogEvents, ExecuteWithTheApplyButtonOnlyForAnApplyEvent)
{
    bool enabled = true;
    ExecuteAnd([&] {
        enabled = IsEnabled("BtnApply");
        m_dialog.reject();
    });
    EXPECT_FALSE(enabled);
    m_dialog.SetApplyEvent([](QObject*) {});
    ExecuteAnd([&] {
        enabled = IsEnabled("BtnApply");
        m_dialog.reject();
    });
    EXPECT_TRUE(enabled);
}

TEST_F(SceneDialogEvents, DisplayModelesslyAfterAnExecution)
{
    ExecuteAnd([&] { m_dialog.accept(); });
    Show();
    EXPECT_FALSE(m_dialog.isModal());
    EXPECT_TRUE(m_dialog.isVisible());
}
