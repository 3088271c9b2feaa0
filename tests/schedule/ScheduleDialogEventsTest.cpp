#include "ScheduleDialog.h"

#include <QTimer>

#include <functional>

namespace
{

class ScheduleDialogEvents : public TScheduleDialog
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
            Record("part " + std::to_string(part), sender);
            m_changedInEvent = m_dialog.GetChanged();
        });
    }
    void Record(const std::string& event, const QObject* sender)
    {
        EXPECT_EQ(sender, &m_dialog);
        m_events += m_events.empty() ? event : " " + event;
    }
    // What Execute returns when `act` is done while the dialog is open.
    bool ExecuteAnd(const std::function<void()>& act)
    {
        QTimer::singleShot(0, &m_dialog, act);
        return m_dialog.Execute();
    }
    // Whether doing `act` to an unchanged dialog changes it.
    bool Changes(const std::function<void()>& act)
    {
        m_dialog.SetChanged(false);
        act();
        return m_dialog.GetChanged();
    }
    void FillNodePage()
    {
        m_dialog.SetIsSchedule(false);
        m_dialog.SetTitle(QStringLiteral("t"));
        m_dialog.SetScheduleGroups(Sections(3));
        m_dialog.SetSection(2);
        m_dialog.SetItemName(QStringLiteral("a"));
        m_dialog.SetNodeAlias(QStringLiteral("b"));
        m_dialog.SetNodeMinVal(QStringLiteral("c"));
        m_dialog.SetNodeMaxVal(QStringLiteral("d"));
        m_dialog.SetNodeAccess(4);
        m_dialog.SetEnableFlag(!m_dialog.GetEnableFlag());
        m_dialog.SetDataType(dtmEIS11);
        m_dialog.SetNodeSource(nsMODBUS);
    }

    std::string m_events;
    bool m_changedInEvent = false;
};

} // namespace

// Changed flag

TEST_F(ScheduleDialogEvents, AreNotRaisedByAFillingNorDoesItChangeTheDialog)
{
    SetEvents();
    Show();
    EXPECT_FALSE(Changes([this] { FillNodePage(); }));
    EXPECT_FALSE(Changes([this] {
        m_dialog.SetScheduleText(
            QStringLiteral("<schedule time='08:30' dow='1111111' value='7' enabled='1' postprocess='1'/>"));
    }));
    EXPECT_FALSE(Changes([this] {
        m_dialog.SetScheduleText(
            QStringLiteral("<schedule time='22:00' dow='0000000' value='' enabled='0' postprocess='0'/>"));
    }));
    EXPECT_FALSE(Changes([this] { FillNodePage(); }));
    EXPECT_FALSE(Changes([this] { m_dialog.SetScheduleGroups({}); }));
    EXPECT_FALSE(Changes([this] { m_dialog.SetAutoAccept(false); }));
    EXPECT_EQ(m_events, "");
}

TEST_F(ScheduleDialogEvents, KeepTheChangeThatWasMadeBeforeAFilling)
{
    m_dialog.SetChanged(true);
    FillNodePage();
    m_dialog.SetScheduleText(QStringLiteral("<schedule />"));
    EXPECT_TRUE(m_dialog.GetChanged());
}

TEST_F(ScheduleDialogEvents, ChangeByTypingInEachEditFieldOfTheNodePage)
{
    Show();
    for (const char* field : {"EditAlias", "EditName", "EditMinVal", "EditMaxVal", "EditAccess"})
        EXPECT_TRUE(Changes([&] { QTest::keyClicks(Edit(field), QStringLiteral("7")); })) << field;
}

TEST_F(ScheduleDialogEvents, ChangeByChoosingAnotherTypeOrSource)
{
    Show();
    for (const char* box : {"CBoxDataType", "CBoxDataSource"}) {
        Box(box)->setFocus();
        EXPECT_TRUE(Changes([&] { QTest::keyClick(Box(box), Qt::Key_Down); })) << box;
        EXPECT_EQ(Box(box)->currentIndex(), 1) << box;
        EXPECT_TRUE(Changes([&] { QTest::keyClick(Box(box), Qt::Key_Up); })) << box;
        EXPECT_FALSE(Changes([&] { QTest::keyClick(Box(box), Qt::Key_Up); })) << box;
    }
}

TEST_F(ScheduleDialogEvents, ChangeByAClickOnTheEnabledBoxOfTheNodePage)
{
    Show();
    const bool before = m_dialog.GetEnableFlag();
    EXPECT_TRUE(Changes([this] { Tick("CheckNodeEnabled"); }));
    EXPECT_NE(m_dialog.GetEnableFlag(), before);
}

TEST_F(ScheduleDialogEvents, ChangeByAClickOnEachBoxOfTheSchedulePage)
{
    ShowEntry();
    for (const char* box : DayBoxes)
        EXPECT_TRUE(Changes([&] { Tick(box); })) << box;
    EXPECT_TRUE(Changes([this] { Tick("CheckEnabled"); }));
    EXPECT_TRUE(Changes([this] { Tick("CheckPostProcess"); }));
    EXPECT_EQ(EntryText(), R"(<schedule time="12:00" dow="1111111" value="0" enabled="1" postprocess="1" />)");
}

TEST_F(ScheduleDialogEvents, ChangeByTheSpaceKeyOnABox)
{
    ShowEntry();
    Field<QWidget>("CheckDay3")->setFocus();
    EXPECT_TRUE(Changes([this] { QTest::keyClick(Field<QWidget>("CheckDay3"), Qt::Key_Space); }));
    EXPECT_EQ(Days(), "0010000");
}

TEST_F(ScheduleDialogEvents, ChangeByTheValueAndTheTime)
{
    ShowEntry();
    EXPECT_TRUE(Changes([this] { QTest::keyClicks(Edit("EditValue"), QStringLiteral("7")); }));
    Time()->setFocus();
    EXPECT_TRUE(Changes([this] { QTest::keyClick(Time(), Qt::Key_Up); }));
    EXPECT_FALSE(Changes([this] { QTest::keyClick(Time(), Qt::Key_Home); }));
}

TEST_F(ScheduleDialogEvents, DoNotChangeByTheBoxForAutomaticAcceptance)
{
    Show();
    EXPECT_FALSE(Changes([this] { Tick("CheckAutoAccept"); }));
}

TEST_F(ScheduleDialogEvents, BeginUnchangedWhenDisplayedAndExecuted)
{
    m_dialog.SetChanged(true);
    Show();
    EXPECT_FALSE(m_dialog.GetChanged());
    EXPECT_FALSE(m_dialog.isModal());
    m_dialog.close();
    m_dialog.SetChanged(true);
    bool changed = true;
    ExecuteAnd([&] {
        changed = m_dialog.GetChanged();
        m_dialog.reject();
    });
    EXPECT_FALSE(changed);
}

// Buttons

TEST_F(ScheduleDialogEvents, DoNothingWhenNoneIsSet)
{
    Show();
    for (const char* button : {"SBtnUp", "SBtnDown"}) {
        m_dialog.SetChanged(true);
        Press(button);
        EXPECT_FALSE(m_dialog.GetChanged()) << button;
    }
    Press("BtnOK");
    EXPECT_FALSE(m_dialog.isVisible());
}

TEST_F(ScheduleDialogEvents, EnableTheApplyButtonExactlyWhileThereIsAnApplyEvent)
{
    EXPECT_FALSE(IsEnabled("BtnApply"));
    m_dialog.SetApplyEvent([](QObject*) {});
    EXPECT_TRUE(IsEnabled("BtnApply"));
    m_dialog.SetApplyEvent(nullptr);
    EXPECT_FALSE(IsEnabled("BtnApply"));
}

TEST_F(ScheduleDialogEvents, ApplyByItsButtonAndStayOpen)
{
    SetEvents();
    Show();
    Press("BtnApply");
    EXPECT_EQ(m_events, "apply");
    EXPECT_TRUE(m_dialog.isVisible());
}

TEST_F(ScheduleDialogEvents, ApplyAndCloseByTheOkButtonAndByEnter)
{
    SetEvents();
    Show();
    Press("BtnOK");
    EXPECT_EQ(m_events, "apply close");
    EXPECT_EQ(m_dialog.result(), QDialog::Accepted);
    m_dialog.SetIsSchedule(true);
    Show();
    QTest::keyClick(Edit("EditValue"), Qt::Key_Return);
    EXPECT_EQ(m_events, "apply close apply close");
}

TEST_F(ScheduleDialogEvents, CloseWithoutApplyingByTheCancelButton)
{
    SetEvents();
    Show();
    Press("BtnCancel");
    EXPECT_EQ(m_events, "close");
    EXPECT_EQ(m_dialog.result(), QDialog::Rejected);
}

TEST_F(ScheduleDialogEvents, CloseWithoutApplyingByTheCloseBoxAndByEscape)
{
    SetEvents();
    Show();
    m_dialog.close();
    EXPECT_EQ(m_events, "close");
    Show();
    QTest::keyClick(&m_dialog, Qt::Key_Escape);
    EXPECT_EQ(m_events, "close close");
}

TEST_F(ScheduleDialogEvents, MoveInTheDirectionsOfTheButtonsAndThenForgetTheChange)
{
    SetEvents();
    Show();
    m_dialog.SetChanged(true);
    Press("SBtnUp");
    EXPECT_TRUE(m_changedInEvent);
    EXPECT_FALSE(m_dialog.GetChanged());
    m_dialog.SetChanged(true);
    Press("SBtnDown");
    EXPECT_TRUE(m_changedInEvent);
    EXPECT_FALSE(m_dialog.GetChanged());
    EXPECT_EQ(m_events, "up down");
}

TEST_F(ScheduleDialogEvents, MoveOnEitherPageByTheKeyboard)
{
    SetEvents();
    Show();
    QTest::keyClick(&m_dialog, Qt::Key_Up, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_events == "up"; })) << m_events;
    m_dialog.SetIsSchedule(true);
    QTest::keyClick(&m_dialog, Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_events == "up down"; })) << m_events;
}

// Sections

TEST_F(ScheduleDialogEvents, TellTheSectionThatTheUserChooses)
{
    SetEvents();
    Show();
    Box("CBoxPartSelector")->setFocus();
    QTest::keyClick(Box("CBoxPartSelector"), Qt::Key_Down);
    EXPECT_EQ(m_events, "part 1");
    EXPECT_TRUE(m_changedInEvent);
    EXPECT_TRUE(m_dialog.GetChanged());
    QTest::keyClick(Box("CBoxPartSelector"), Qt::Key_End);
    EXPECT_EQ(m_events, "part 1 part 4");
    EXPECT_EQ(m_dialog.GetSection(), 4);
}

TEST_F(ScheduleDialogEvents, LeaveTheDialogUnchangedWhenNobodyListensToTheSection)
{
    Show();
    Box("CBoxPartSelector")->setFocus();
    EXPECT_FALSE(Changes([this] { QTest::keyClick(Box("CBoxPartSelector"), Qt::Key_Down); }));
    EXPECT_EQ(m_dialog.GetSection(), 1);
}

TEST_F(ScheduleDialogEvents, TellNoSectionWhereThereIsNone)
{
    SetEvents();
    m_dialog.SetScheduleGroups({});
    Show();
    Box("CBoxPartSelector")->setFocus();
    EXPECT_FALSE(Changes([this] {
        QTest::keyClick(Box("CBoxPartSelector"), Qt::Key_Down);
        Q_EMIT Box("CBoxPartSelector")->activated(-1);
    }));
    EXPECT_EQ(m_events, "");
}

// Modal

TEST_F(ScheduleDialogEvents, ExecuteModallyAndReportHowItEnded)
{
    SetEvents();
    bool modal = false;
    EXPECT_TRUE(ExecuteAnd([&] {
        modal = m_dialog.isModal() && m_dialog.isVisible();
        Press("BtnOK");
    }));
    EXPECT_TRUE(modal);
    EXPECT_EQ(m_events, "apply close");
    EXPECT_FALSE(ExecuteAnd([this] { Press("BtnCancel"); }));
    EXPECT_EQ(m_events, "apply close close");
}

TEST_F(ScheduleDialogEvents, ExecuteWithTheApplyButtonOnlyForAnApplyEvent)
{
    bool enabled = true;
    const auto look = [&] {
        enabled = IsEnabled("BtnApply");
        m_dialog.reject();
    };
    ExecuteAnd(look);
    EXPECT_FALSE(enabled);
    m_dialog.SetApplyEvent([](QObject*) {});
    ExecuteAnd(look);
    EXPECT_TRUE(enabled);
}

TEST_F(ScheduleDialogEvents, DisplayModelesslyAfterAnExecution)
{
    ExecuteAnd([this] { m_dialog.accept(); });
    Show();
    EXPECT_FALSE(m_dialog.isModal());
    EXPECT_TRUE(m_dialog.isVisible());
}
