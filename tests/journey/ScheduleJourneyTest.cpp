#include "Options.h"
#include "WindowRun.h"
#include "WorkbenchUser.h"

#include <QAbstractButton>
#include <QTimeEdit>

namespace
{

using ScheduleJourney = SceneJourney;

const auto ScheduleFile = QStringLiteral("musterhaus/_config/data/schedule/schedule.xml");
const auto Group = QStringLiteral("Gartenbewässerung");
const auto Datapoint = QStringLiteral("Bewässerung Rasen");

// The document with lines put before its last one, which closes the root.
QByteArray WithLines(QByteArray document, const QByteArrayList& lines)
{
    return document.insert(document.lastIndexOf("</"), lines.join("\r\n") + "\r\n");
}

void Export(TRobot& robot, TUser& user)
{
    user.ChooseFromMenu({Group}, QStringLiteral("Exportieren"));
    robot.WaitFor(QStringLiteral("the export"), [] { return !TUser::IsModified(); });
}

} // namespace

// A group, a datapoint that is dragged from its browser into the dialog, and its switching entries.
TEST_F(ScheduleJourney, FromANewGroupToTheExportedWeekAndBack)
{
    const auto newGroup = QStringLiteral("Neue Gruppe");
    const auto newDatapoint = QStringLiteral("Neuer Datenpunkt");
    const auto empty =
        QStringLiteral(R"(<schedule time="00:00" dow="0000000" value="0" enabled="0" postprocess="0" />)");
    const auto morning =
        QStringLiteral(R"(<schedule time="06:45" dow="1010000" value="1" enabled="1" postprocess="0" />)");
    const auto reloaded =
        QStringLiteral(R"(<schedule time="06:45" dow="1010000" value="1" enabled="1" postprocess="0"/>)");
    const TContents before = Files();

    const auto journey = [&](TRobot& robot) {
        TUser user(robot);
        user.TurnTo(ScheduleEditor);

        // A group with its name, and a datapoint in it.
        user.ChooseFromMenu(QStringList{}, newGroup);
        robot.WaitFor(newGroup, [&] { return TUser::IsSelected({newGroup}); });
        user.ChooseFromMenu({newGroup}, QStringLiteral("Umbenennen"));
        robot.WaitFor(QStringLiteral("the editor in the tree"),
                      [] { return TUser::Tree()->viewport()->findChild<QLineEdit*>() != nullptr; });
        robot.Key(QStringLiteral("ctrl+a"));
        robot.Type(Group);
        robot.Key(QStringLiteral("Return"));
        robot.WaitFor(Group, [] { return TUser::IsSelected({Group}); });
        user.ChooseFromMenu({Group}, newDatapoint);
        robot.WaitFor(newDatapoint, [&] { return TUser::IsSelected({Group, newDatapoint}); });

        // The dialog takes the datapoint from the browser.
        robot.DoubleClick(user.PlaceOf({Group, newDatapoint}));
        robot.WaitFor(QStringLiteral("the dialog"), [] { return TUser::Dialog() != nullptr; });
        user.MoveDialogAside();
        robot.Click(robot.See([] {
            QLineEdit* filter = TUser::Browser()->FilterLine();
            return filter->mapToGlobal(filter->rect().center());
        }));
        robot.Type(QStringLiteral("rasen"));
        robot.WaitFor(QStringLiteral("the filter"),
                      [] { return TUser::Browser()->FilterLine()->text() == QStringLiteral("rasen"); });
        const QPoint address = user.PlaceInBrowser(QStringLiteral("4/2/1"));
        robot.Drag(address, robot.See([] {
            auto* field = TUser::Field<QLineEdit>("EditName");
            return field->mapToGlobal(field->rect().center());
        }));
        robot.WaitFor(QStringLiteral("the dropped datapoint"),
                      [] { return TUser::TextOf("EditName") == QStringLiteral("4/2/1"); });
        user.Fill("EditMaxVal", QStringLiteral("1"));
        user.TakePicture(QStringLiteral("wochenschaltplan-dialog"));
        user.Press("BtnApply");
        robot.WaitFor(Datapoint, [] { return TUser::IsSelected({Group, Datapoint}); });

        // A new entry; its days by the mouse, its time by the keyboard.
        user.ChooseFromMenu({Group, Datapoint}, QStringLiteral("Neue Aktion"));
        robot.WaitFor(empty, [&] { return TUser::IsSelected({Group, Datapoint, empty}); });
        for (const char* box : {"CheckDay1", "CheckDay3", "CheckEnabled"}) {
            user.Press(box);
            robot.WaitFor(QStringLiteral("the check mark"),
                          [=] { return TUser::Field<QAbstractButton>(box)->isChecked(); });
        }
        robot.Key(QStringLiteral("Tab"));
        robot.Key(QStringLiteral("Tab"));
        robot.WaitFor(QStringLiteral("the focus"), [] { return TUser::Field<QTimeEdit>("TimeEdit")->hasFocus(); });
        robot.Type(QStringLiteral("0645"));
        robot.WaitFor(QStringLiteral("the time"),
                      [] { return TUser::Field<QTimeEdit>("TimeEdit")->time() == QTime(6, 45); });
        user.Fill("EditValue", QStringLiteral("1"));
        user.ClickTab(QStringLiteral("Wochenansicht"));
        user.TakePicture(QStringLiteral("wochenschaltplan-eintrag"));
        user.Press("BtnOK");
        robot.WaitFor(morning, [&] { return TUser::IsSelected({Group, Datapoint, morning}); });

        EXPECT_TRUE(robot.See([] { return TUser::IsModified(); }));
        Export(robot, user);
        const QByteArray open = "<nodes name=\"Gartenbew\xE4sserung\" access=\"0\">\r\n<node name=\"4/2/1\" "
                                "alias=\"Bew\xE4sserung Rasen\" eis=\"1\" type=\"eib\" access=\"5\" enabled=\"1\" "
                                "minv=\"\" maxv=\"1\">";
        const QByteArray close = "</node>\r\n</nodes>";
        TContents expected = before;
        expected[ScheduleFile] = WithLines(before[ScheduleFile], {open, morning.toLatin1(), close});
        Compare(Files(), expected);

        // Read again, the entry has the form that the reader gives it, and so it is written from now on.
        user.ChooseFromMenu({Group}, QStringLiteral("Neu laden"));
        robot.WaitFor(QStringLiteral("the schedule from the file"), [&] {
            return TUser::Find({Group, Datapoint, reloaded}) != nullptr;
        });
        Export(robot, user);
        expected[ScheduleFile] = WithLines(before[ScheduleFile], {open, reloaded.toLatin1(), close});
        Compare(Files(), expected);

        // Ctrl moves an entry from another datapoint; it opens on the way.
        const QStringList source{QStringLiteral("Innenbeleuchtung"), QStringLiteral("Licht Treppe")};
        robot.See([&] {
            TUser::Tree()->collapseAll();
            TUser::Tree()->topLevelItem(0)->setExpanded(true);
            for (const QStringList& path : {QStringList{source[0]}, source, QStringList{Group}})
                TUser::Find(path)->setExpanded(true);
            return true;
        });
        const auto entry = robot.See([&] { return TUser::Find(source)->child(2)->text(0); });
        user.Select({source[0], source[1], entry});
        user.PlaceOf({Group, Datapoint});
        const QPoint from = user.PlaceOf({source[0], source[1], entry});
        robot.DragWith(QStringLiteral("ctrl"), from, user.PlaceOf({Group, Datapoint}));
        robot.WaitFor(QStringLiteral("the moved entry"), [&] { return TUser::IsSelected({Group, Datapoint, entry}); });
        EXPECT_EQ(robot.See([&] { return TUser::Find(source)->childCount(); }), 3);
        if (robot.See([] { return TUser::Dialog() != nullptr; })) {
            user.Press("BtnCancel");
            robot.WaitFor(QStringLiteral("the end of the dialog"), [] { return TUser::Dialog() == nullptr; });
        }
        user.TakePicture(QStringLiteral("wochenansicht"));
        Export(robot, user);
        QByteArray& document = expected[ScheduleFile];
        const QByteArray line = entry.toLatin1() + "\r\n";
        document.remove(document.indexOf(line, document.indexOf("Licht Treppe")), line.size());
        document.replace(reloaded.toLatin1() + "\r\n", reloaded.toLatin1() + "\r\n" + line);
        Compare(Files(), expected);

        robot.Key(QStringLiteral("alt+F4"));
    };
    TOptions options;
    options.ProjectDirectory = Project();
    EXPECT_EQ(TRobot::Accompany(journey, [&] { return RunWindow(options); }), 0);
}
