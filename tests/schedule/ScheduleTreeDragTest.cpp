#include "ScheduleDrag.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QTest>

using TNames = std::vector<const char*>;
using ScheduleDrag = TScheduleDrag;

// Where a drag begins and where it may end

TEST_F(ScheduleDrag, BeginsOnEntriesOnly)
{
    for (const char* node : {"Wochenschaltplan", "Licht", "Rollladen", "Flur", "West"})
        EXPECT_FALSE(Drag({node}, [] {})) << node;
    EXPECT_FALSE(Drag({"07:05", "Flur"}, [] {}));
    EXPECT_TRUE(Drag({"07:05"}, [] {}));
}

TEST_F(ScheduleDrag, BeginsOnlyWhileANodeIsSelected)
{
    const TMouse mouse(Frame().viewport());
    const QPoint from = PlaceOf("07:05");
    mouse.Press(from);
    Frame().clearSelection();
    mouse.Move(from + QPoint(2, 0));
    EXPECT_FALSE(RunInLoop([&] { mouse.Move(from + QPoint(30, 0)); }, [] {}));
}

TEST_F(ScheduleDrag, BeginsAfterTwentyPixels)
{
    const TMouse mouse(Frame().viewport());
    const QPoint from = PlaceOf("07:05");
    mouse.Press(from);
    EXPECT_FALSE(RunInLoop([&] { mouse.Move(from + QPoint(19, 0)); }, [] {}));
    EXPECT_TRUE(RunInLoop([&] { mouse.Move(from + QPoint(20, 0)); }, [] {}));
}

TEST_F(ScheduleDrag, EndsOnDatapointsAndEntriesOnly)
{
    const std::string before = Outline();
    for (const TNames& nodes :
         {TNames{"06:00"}, TNames{"19:30", "06:00"}, TNames{"Licht", "06:00"}, TNames{"Flur", "Bad", "06:00"}}) {
        EXPECT_TRUE(Drag(nodes, [&] { ExpectPlaces(true); }));
    }
    EXPECT_TRUE(DragOther("Bad", [&] { ExpectPlaces(true); }));
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(Frame().IsModified());
}

TEST_F(ScheduleDrag, IsNotTakenFromOtherPanes)
{
    const QMimeData plain;
    EXPECT_FALSE(TDraggedOver(Frame().viewport(), &plain).EnterAndDrop(PlaceOf("Flur")));
    const auto other = MakeFrame();
    const std::string before = OutlineOf(*other);
    const QPoint datapoint = other->visualItemRect(NodeOf(*other, "Flur")).center();
    for (const TNames& nodes : {TNames{"05:15"}, TNames{"06:00", "05:15"}}) {
        EXPECT_TRUE(
            Drag(nodes, [&] { EXPECT_FALSE(TDraggedOver(other->viewport(), Content()).EnterAndDrop(datapoint)); }));
    }
    EXPECT_EQ(OutlineOf(*other), before);
    EXPECT_FALSE(other->IsModified());
}

// One entry

TEST_F(ScheduleDrag, CopiesAnEntryToTheEndOfADatapoint)
{
    const std::string text = TextOf(Node("19:30"));
    DragTo({"19:30"}, "Bad");
    EXPECT_EQ(Below("Bad"), "05:15|19:30");
    EXPECT_EQ(Below("Flur"), "07:05|19:30");
    EXPECT_EQ(TextOf(Node("Bad")->Child(1)), text);
    EXPECT_EQ(Node("Bad")->Child(1)->ImageIndex(), 3);
    EXPECT_EQ(Frame().SelectedNode(), Node("Bad")->Child(1));
    EXPECT_EQ(Frame().currentItem(), Node("Bad")->Child(1));
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(ScheduleDrag, CopiesAnEntryToTheEndOfItsOwnDatapoint)
{
    DragTo({"07:05"}, "Flur");
    EXPECT_EQ(Below("Flur"), "07:05|19:30|07:05");
}

TEST_F(ScheduleDrag, MovesAnEntryToTheEndOfADatapointWithCtrl)
{
    const TScheduleNode* entry = Node("07:05");
    DragTo({"07:05"}, "Bad", Qt::ControlModifier);
    EXPECT_EQ(Below("Bad"), "05:15|07:05");
    EXPECT_EQ(Below("Flur"), "19:30");
    EXPECT_EQ(Node("Bad")->Child(1), entry);
    EXPECT_EQ(Frame().SelectedNode(), entry);
    EXPECT_EQ(Frame().currentItem(), entry);
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(ScheduleDrag, MovesAnEntryToTheEndOfItsOwnDatapointWithCtrl)
{
    DragTo({"07:05"}, "Flur", Qt::ControlModifier);
    EXPECT_EQ(Below("Flur"), "19:30|07:05");
    Frame().SetModified(false);
    DragTo({"07:05"}, "Flur", Qt::ControlModifier);
    EXPECT_FALSE(Frame().IsModified()) << "it stands there already";
}

TEST_F(ScheduleDrag, ReplacesTheTextOfTheEntryItIsDroppedOn)
{
    const std::string text = TextOf(Node("19:30"));
    DragTo({"19:30"}, "05:15");
    EXPECT_EQ(Below("Bad"), "19:30");
    EXPECT_EQ(TextOf(Node("Bad")->Child(0)), text);
    EXPECT_EQ(Below("Flur"), "07:05|19:30");
    EXPECT_EQ(Frame().SelectedNode(), Node("Bad")->Child(0));
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(ScheduleDrag, MovesAnEntryBeforeTheEntryItIsDroppedOnWithCtrl)
{
    const TScheduleNode* entry = Node("06:00");
    DragTo({"06:00"}, "19:30", Qt::ControlModifier);
    EXPECT_EQ(Below("Flur"), "07:05|06:00|19:30");
    EXPECT_EQ(Below("Küche"), "");
    EXPECT_EQ(Frame().SelectedNode(), entry);
    DragTo({"19:30"}, "07:05", Qt::ControlModifier);
    EXPECT_EQ(Below("Flur"), "19:30|07:05|06:00");
}

TEST_F(ScheduleDrag, ChangesNothingOnTheEntryItself)
{
    const std::string before = Outline();
    for (const auto keys : {Qt::NoModifier, Qt::ControlModifier}) {
        DragTo({"07:05"}, "07:05", keys);
        EXPECT_EQ(Outline(), before);
        EXPECT_EQ(Selected(), "07:05");
    }
    EXPECT_FALSE(Frame().IsModified());
}

TEST_F(ScheduleDrag, CopiesWithEveryOtherKey)
{
    DragTo({"07:05"}, "West", Qt::AltModifier);
    EXPECT_EQ(Below("West"), "07:05");
    EXPECT_EQ(Below("Flur"), "07:05|19:30");
}

TEST_F(ScheduleDrag, TakesNoNoticeOfCtrlAtTheDrop)
{
    EXPECT_TRUE(Drag({"07:05"}, [&] {
        ASSERT_TRUE(Over().Enter(PlaceOf("West")));
        ASSERT_TRUE(Over().Move(PlaceOf("West")));
        QDropEvent drop(PlaceOf("West"), Qt::CopyAction | Qt::MoveAction, Content(), Qt::LeftButton,
                        Qt::ControlModifier);
        QCoreApplication::sendEvent(Frame().viewport(), &drop);
        EXPECT_TRUE(drop.isAccepted());
    }));
    EXPECT_EQ(Below("West"), "07:05");
    EXPECT_EQ(Below("Flur"), "07:05|19:30");
}

TEST_F(ScheduleDrag, ForgetsCtrlUntilTheNextDrag)
{
    EXPECT_TRUE(Drag(
        {"05:15"}, [] {}, Qt::ControlModifier));
    DragTo({"05:15"}, "West");
    EXPECT_EQ(Below("Bad"), "05:15");
}

TEST_F(ScheduleDrag, ShowsTheResultInTheDialog)
{
    ShowProperties("05:15");
    DragTo({"07:05"}, "05:15");
    EXPECT_EQ(Dialog()->GetScheduleText().toStdString(), EntryText("07:05", "1111100", "1", 1, 0));
    EXPECT_EQ(Dialog()->GetTitle(), QStringLiteral("Bad"));
    EXPECT_FALSE(Dialog()->GetChanged());
}

// Its end

TEST_F(ScheduleDrag, ForgetsTheDraggedNodeAfterTheDrop)
{
    for (const TNames& nodes : {TNames{"05:15"}, TNames{"06:00", "05:15"}}) {
        EXPECT_TRUE(Drag(nodes, [&] {
            EXPECT_TRUE(Over().EnterAndDrop(PlaceOf("West")));
            const std::string after = Outline();
            EXPECT_FALSE(Over().EnterAndDrop(PlaceOf("West")));
            EXPECT_EQ(Outline(), after);
        }));
        Frame().MenuAction_Reload();
    }
}

TEST_F(ScheduleDrag, ForgetsTheDraggedNodeAtTheEnd)
{
    EXPECT_TRUE(Drag({"05:15"}, [&] { EXPECT_TRUE(Over().Enter(PlaceOf("West"))); }));
    const QMimeData content;
    EXPECT_FALSE(TDraggedOver(Frame().viewport(), &content).EnterAndDrop(PlaceOf("West")));
    EXPECT_FALSE(Frame().IsModified());
}

TEST_F(ScheduleDrag, IsRefusedWhenItsNodeIsDeletedOrLoadedAnewMeanwhile)
{
    EXPECT_TRUE(Drag({"05:15"}, [&] {
        Frame().RemoveBranches({Node("05:15")});
        EXPECT_FALSE(Over().EnterAndDrop(PlaceOf("West")));
    }));
    EXPECT_TRUE(Drag({"07:05", "06:00"}, [&] {
        Frame().MenuAction_Reload();
        Frame().expandAll();
        const std::string before = Outline();
        EXPECT_FALSE(Over().EnterAndDrop(PlaceOf("West")));
        EXPECT_EQ(Outline(), before);
    }));
}

TEST_F(ScheduleDrag, IsDroppedByTheMouse)
{
    EXPECT_TRUE(Drag({"05:15"}, [&] {
        const TMouse mouse(Frame().viewport());
        mouse.Move(PlaceOf("Flur"));
        mouse.Move(PlaceOf("West"));
        mouse.Release(PlaceOf("West"));
        QCoreApplication::processEvents();
    }));
    EXPECT_EQ(Below("West"), "05:15");
}

TEST_F(ScheduleDrag, IsCancelledWithTheEscapeKey)
{
    const std::string before = Outline();
    EXPECT_TRUE(Drag({"05:15"}, [&] {
        TMouse(Frame().viewport()).Move(PlaceOf("West"));
        QTest::keyClick(Frame().viewport(), Qt::Key_Escape);
    }));
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(Frame().IsModified());
}
