#include "Options.h"
#include "WindowRun.h"
#include "WorkbenchUser.h"

TEST_F(SceneJourney, FromANewActionToTheExportedFilesAndBack)
{
    const auto newAction = QStringLiteral("Neue Aktion");
    const auto light = QStringLiteral("Gartenlicht");
    const auto step = QStringLiteral("Neuer Eintrag [Gartenlicht]");
    const auto lastStep = QStringLiteral("Rollladen Küche auf [Rollladen Küche]");
    const TContents before = Files();

    const auto journey = [&](TRobot& robot) {
        TUser user(robot);

        // A new action, with its name and type.
        user.Select({}, Actions);
        user.ChooseFromMenu({}, Actions, newAction);
        robot.WaitFor(newAction, [&] { return TUser::IsSelected(Actions, newAction); });
        robot.DoubleClick(user.PlaceOf(Actions, newAction));
        robot.WaitFor(QStringLiteral("the dialog"), [] { return TUser::Dialog() != nullptr; });
        user.MoveDialogAside();
        user.Fill("EditAlias", light);
        user.Fill("EditName", QStringLiteral("1/1/40"));
        user.ChooseNext("CBoxDataType");
        user.TakePicture(QStringLiteral("szenen-dialog"));
        user.Press("BtnApply");
        robot.WaitFor(light, [&] { return TUser::Find(Actions, light) != nullptr; });

        // Dragged onto a scene it becomes a step, which gets a value and a delay.
        user.PlaceOf({}, Scene); // scrolls there, the action stays in view
        const QPoint from = user.PlaceOf(Actions, light);
        robot.Drag(from, user.PlaceOf({}, Scene));
        robot.WaitFor(step, [&] { return TUser::Find(Scene, step) && TUser::IsSelected({}, Scene); });
        robot.WaitFor(QStringLiteral("the scene in the dialog"),
                      [] { return TUser::TextOf("EditAlias") == QStringLiteral("Guten Morgen"); });
        robot.Key(QStringLiteral("Right"));
        robot.WaitFor(QStringLiteral("the steps"), [&] { return TUser::Find({}, Scene)->isExpanded(); });
        user.Select(Scene, step);
        user.Fill("EditValue", QStringLiteral("75"));
        user.Fill("EditDelay", QStringLiteral("15"));
        user.TakePicture(QStringLiteral("szenen-schritt"));

        // Up and down: what was changed is accepted by itself.
        user.Press("SBtnUp");
        robot.WaitFor(lastStep, [&] { return TUser::IsSelected(Scene, lastStep); });
        EXPECT_EQ(robot.See([] { return TUser::TextOf("EditDelay"); }), QStringLiteral("120"));
        user.Fill("EditDelay", QStringLiteral("90"));
        user.Press("SBtnDown");
        robot.WaitFor(step, [&] { return TUser::IsSelected(Scene, step); });
        EXPECT_EQ(robot.See([] { return TUser::TextOf("EditValue"); }), QStringLiteral("75"));
        EXPECT_EQ(robot.See([] { return TUser::TextOf("EditDelay"); }), QStringLiteral("15"));
        user.Press("BtnCancel");
        robot.WaitFor(QStringLiteral("the end of the dialog"), [] { return TUser::Dialog() == nullptr; });

        const auto exportAll = [&] {
            user.ChooseFromMenu({}, Actions, QStringLiteral("Exportieren"));
            robot.WaitFor(QStringLiteral("the export"), [] { return !TUser::IsModified(); });
        };
        EXPECT_TRUE(robot.See([] { return TUser::IsModified(); }));
        exportAll();
        TContents expected = before;
        Replace(expected, "scene_2.xml", R"(auf" value="0" eis="6" delay="120")",
                R"(auf" value="0" eis="6" delay="90")");
        const TContents withoutLight = expected;
        AddLine(expected, "actions_allowed.xml", R"(<node name="1/1/40" alias="Gartenlicht" eis="6" type="eib" />)");
        AddLine(expected, "scene_2.xml",
                R"(<node name="1/1/40" alias="Neuer Eintrag" value="75" eis="6" delay="15" enabled="1" type="eib" />)");
        Compare(Files(), expected);

        // Deleting the action takes its step along, unless the user thinks better of it.
        user.Select(Actions, light);
        robot.Key(QStringLiteral("Delete"));
        user.Answer(QMessageBox::No);
        EXPECT_NE(robot.See([&] { return TUser::Find(Actions, light); }), nullptr);
        robot.Key(QStringLiteral("Delete"));
        user.Answer(QMessageBox::Yes);
        robot.WaitFor(QStringLiteral("the end of the action"), [&] { return !TUser::Find(Actions, light); });
        EXPECT_EQ(robot.See([&] { return TUser::Find(Scene, step); }), nullptr);
        exportAll();
        Compare(Files(), withoutLight);

        robot.Key(QStringLiteral("alt+F4"));
    };
    TOptions options;
    options.ProjectDirectory = Project();
    EXPECT_EQ(TRobot::Accompany(journey, [&] { return RunWindow(options); }), 0);
}
