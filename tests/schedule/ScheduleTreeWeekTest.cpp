#include "ScheduleTree.h"

#include <QAction>
#include <QCoreApplication>

namespace
{

class ScheduleWeek : public TScheduleTree
{
protected:
    ScheduleWeek() { Settle(); }

    // Lets everything happen that waits in the event loop.
    static void Settle() { QCoreApplication::processEvents(); }
    IWeekSchedule& Week() const { return *m_frame; }
    // The entries of the week, one a line.
    std::string Entries() const
    {
        std::string lines;
        const QList<TWeekEntry> entries = Week().WeekEntries();
        for (const TWeekEntry& entry : entries) {
            std::string days;
            for (const bool day : entry.Days)
                days += day ? '1' : '0';
            lines += (lines.empty() ? "" : "\n") + entry.Datapoint.toStdString() + " " +
                     entry.Time.toString(QStringLiteral("HH:mm:ss")).toStdString() + " " + days + " " +
                     entry.Value.toStdString() + (entry.Active ? " active" : "") + (entry.PostProcess ? " late" : "");
        }
        return lines;
    }
    // How often a listener is called for a change.
    template <class TChange> int CallsFor(TChange change)
    {
        int calls = 0;
        {
            QObject receiver;
            Week().AddWeekListener(&receiver, [&calls] { ++calls; });
            change();
            EXPECT_EQ(calls, 0) << "called from the event loop only";
            Settle();
        }
        return calls;
    }
};

} // namespace

TEST_F(ScheduleWeek, IsFoundByItsIdentifier)
{
    void* found = nullptr;
    auto* target = qobject_cast<ICmdTarget*>(m_frame.get());
    ASSERT_TRUE(target->QueryInterface(IID_IWeekSchedule, &found));
    EXPECT_EQ(static_cast<IWeekSchedule*>(found), &Week());
    void* again = nullptr;
    EXPECT_TRUE(Week().QueryInterface(IID_ICmdTarget, &again));
    EXPECT_EQ(static_cast<ICmdTarget*>(again), target);
    EXPECT_FALSE(Week().QueryInterface(TGuid{1, 2, 3, {}}, &found));
    EXPECT_EQ(found, nullptr);
}

TEST_F(ScheduleWeek, SharesItsReferenceCountWithTheCommandTarget)
{
    auto* target = qobject_cast<ICmdTarget*>(m_frame.get());
    EXPECT_EQ(target->AddRef(), 1);
    EXPECT_EQ(Week().AddRef(), 2);
    EXPECT_EQ(target->Release(), 1);
    EXPECT_EQ(Week().Release(), 0);
}

TEST_F(ScheduleWeek, HasTheEntriesOfTheSelectedDatapoint)
{
    Select({"Flur"});
    EXPECT_EQ(Week().WeekTitle(), QStringLiteral("Flur"));
    EXPECT_EQ(Entries(), "Flur 07:05:00 1111100 1 active\nFlur 19:30:20 1111111 0 late");
    EXPECT_EQ(Week().SelectedWeekEntry(), -1);
}

TEST_F(ScheduleWeek, HasTheEntriesOfTheDatapointOfTheSelectedEntry)
{
    Select({"19:30"});
    EXPECT_EQ(Week().WeekTitle(), QStringLiteral("Flur"));
    EXPECT_EQ(Entries(), "Flur 07:05:00 1111100 1 active\nFlur 19:30:20 1111111 0 late");
    EXPECT_EQ(Week().SelectedWeekEntry(), 1);
}

TEST_F(ScheduleWeek, HasTheEntriesOfTheSelectedGroupInTheirOrder)
{
    Select({"Licht"});
    EXPECT_EQ(Week().WeekTitle(), QStringLiteral("Licht"));
    EXPECT_EQ(Entries(), "Flur 07:05:00 1111100 1 active\nFlur 19:30:20 1111111 0 late\n"
                         "Küche 06:00:00 0000011 1 active late");
    EXPECT_EQ(Week().SelectedWeekEntry(), -1);
}

TEST_F(ScheduleWeek, IsEmptyForTheRootForNothingAndForAnEmptyTree)
{
    for (const std::vector<const char*>& selected :
         {std::vector<const char*>{}, std::vector<const char*>{"Wochenschaltplan"}}) {
        Select(selected);
        EXPECT_EQ(Week().WeekTitle(), QString());
        EXPECT_EQ(Entries(), "");
        EXPECT_EQ(Week().SelectedWeekEntry(), -1);
        Week().SelectWeekEntry(0);
    }
    EXPECT_EQ(Selected(), "Wochenschaltplan");
    m_frame = std::make_unique<TScheduleTreeFrame>();
    EXPECT_EQ(Week().WeekTitle(), QString());
    EXPECT_EQ(Entries(), "");
}

TEST_F(ScheduleWeek, IsEmptyForADatapointWithoutEntriesAndForAnEmptyGroup)
{
    for (const char* name : {"West", "Urlaub"}) {
        Select({name});
        EXPECT_EQ(Week().WeekTitle().toStdString(), name);
        EXPECT_EQ(Entries(), "");
    }
}

TEST_F(ScheduleWeek, CallsAnEntryOfAnInactiveDatapointInactive)
{
    Select({"Bad"});
    EXPECT_EQ(Entries(), "Bad 05:15:00 1000000 21");
    Node("Bad")->Data()->Enabled = true;
    EXPECT_EQ(Entries(), "Bad 05:15:00 1000000 21 active");
}

TEST_F(ScheduleWeek, LeavesOutATextThatIsNoEntry)
{
    m_frame->NewTreeNode(Node("Flur"), naAddChild, false, QStringLiteral("kein Eintrag"));
    CutNode("kein Eintrag");
    PasteOn("07:05");
    ASSERT_EQ(Below("Flur"), "kein Eintrag|07:05|19:30");
    Select({"07:05"});
    EXPECT_EQ(Entries(), "Flur 07:05:00 1111100 1 active\nFlur 19:30:20 1111111 0 late");
    EXPECT_EQ(Week().SelectedWeekEntry(), 0);
    Week().SelectWeekEntry(1);
    EXPECT_EQ(Selected(), "19:30");
    Select({"kein Eintrag"});
    EXPECT_EQ(Week().SelectedWeekEntry(), -1);
}

TEST_F(ScheduleWeek, CallsTheEntriesOfADatapointWithoutARecordInactive)
{
    m_frame->NewTreeNode(Node("05:15"), naAddChild, false, Node("07:05")->Caption());
    CutNode("05:15");
    PasteOn("Urlaub");
    Select({"Urlaub"});
    EXPECT_EQ(Week().WeekEntries().size(), 1);
    EXPECT_FALSE(Week().WeekEntries().value(0).Active);
}

TEST_F(ScheduleWeek, SelectsAnEntryInTheTree)
{
    Select({"Licht"});
    Week().SelectWeekEntry(2);
    EXPECT_EQ(Selected(), "06:00");
    Select({"Flur"});
    Week().SelectWeekEntry(0);
    EXPECT_EQ(Selected(), "07:05");
    for (const int nowhere : {-1, 2, 1000}) {
        Week().SelectWeekEntry(nowhere);
        EXPECT_EQ(Selected(), "07:05") << nowhere;
    }
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleWeek, KeepsTheGroupWhileItsEntriesAreChosen)
{
    Select({"Licht"});
    const std::string week = Entries();
    Week().SelectWeekEntry(2);
    EXPECT_EQ(Week().WeekTitle(), QStringLiteral("Licht"));
    EXPECT_EQ(Entries(), week);
    EXPECT_EQ(Week().SelectedWeekEntry(), 2);
    Week().SelectWeekEntry(0);
    EXPECT_EQ(Week().WeekTitle(), QStringLiteral("Licht"));
    Select({"06:00"});
    EXPECT_NE(Week().WeekTitle(), QStringLiteral("Licht"));
}

// Listeners

TEST_F(ScheduleWeek, CallsItsListenerForEveryKindOfChange)
{
    EXPECT_EQ(CallsFor([&] { Select({"Licht"}); }), 1);
    EXPECT_EQ(CallsFor([&] { Run("MenuAction_CreateNodeExecute"); }), 1);
    EXPECT_EQ(CallsFor([&] { m_frame->RemoveBranches({Node("07:05")}); }), 1);
    EXPECT_EQ(CallsFor([&] { m_frame->FinishEditing(Node("Licht"), QStringLiteral("Lampen")); }), 1);
    EXPECT_EQ(CallsFor([&] { m_frame->MoveBranch(Node("05:15"), Node("Flur"), naAddChild); }), 1);
    EXPECT_EQ(CallsFor([&] { Run("MenuAction_Reload"); }), 1);
}

TEST_F(ScheduleWeek, CallsItsListenerForWhatTheDialogApplies)
{
    ShowProperties("07:05");
    Settle();
    Type("EditValue", "42");
    EXPECT_EQ(CallsFor([&] { Press("BtnApply"); }), 1);
    EXPECT_EQ(Week().WeekEntries().value(0).Value, QStringLiteral("42"));
}

TEST_F(ScheduleWeek, CallsItsListenerOnceForManyChanges)
{
    EXPECT_EQ(CallsFor([&] {
                  Select({"Flur", "Bad", "05:15"});
                  for (int i = 0; i < 100; ++i)
                      m_frame->NewTreeNode(Node("West"), naAddChild, true, QStringLiteral("x"));
                  Run("MenuAction_Reload");
              }),
              1);
}

TEST_F(ScheduleWeek, DoesNotCallItsListenerWithoutAChange)
{
    EXPECT_EQ(CallsFor([] {}), 0);
    EXPECT_EQ(CallsFor([&] { Run("MenuAction_Export"); }), 0);
}

TEST_F(ScheduleWeek, CallsEveryListenerAndNoneWhoseReceiverIsGone)
{
    int first = 0;
    int second = 0;
    auto gone = std::make_unique<QObject>();
    QObject stays;
    Week().AddWeekListener(gone.get(), [&first] { ++first; });
    Week().AddWeekListener(&stays, [&second] { ++second; });
    Select({"Flur"});
    Settle();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
    Select({"Bad"});
    gone.reset();
    Settle();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

TEST_F(ScheduleWeek, DoesNotCallItsListenerAfterItsDestruction)
{
    int calls = 0;
    QObject receiver;
    Week().AddWeekListener(&receiver, [&calls] { ++calls; });
    Select({"Flur"});
    m_frame.reset();
    Settle();
    EXPECT_EQ(calls, 0);
}
