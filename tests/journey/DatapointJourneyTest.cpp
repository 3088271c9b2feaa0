#include "ImportDialog.h"
#include "Options.h"
#include "WindowRun.h"
#include "WorkbenchUser.h"

#include <QFileDialog>

namespace
{

using DatapointJourney = SceneJourney;

const auto DatapointsFolder = QStringLiteral("musterhaus/_config/data/datapoints/eib/");

} // namespace

// The road of one datapoint: imported, dragged from its browser into the dialog, from there as an action onto a scene,
// and exported.
TEST_F(DatapointJourney, FromTheImportedAddressToTheExportedStep)
{
    const auto newAction = QStringLiteral("Neue Aktion");
    const auto pump = QStringLiteral("Brunnenpumpe Süd");
    const auto step = QStringLiteral("Neuer Eintrag [Brunnenpumpe Süd]");
    const TContents before = Files();
    const QByteArray addresses = before.value(DatapointsFolder + QStringLiteral("musterhaus.esf")) +
                                 "Garten.Gruppe 6-7.6/7/1\tBrunnenpumpe S\xFC"
                                 "d\tEIS 6 'Skalieren' (8 Bit)\tLow\t\r\n";
    const QString file = m_directory.filePath(QStringLiteral("musterhaus.esf"));
    WriteAll(file, addresses);

    const auto journey = [&](TRobot& robot) {
        TUser user(robot);

        // Imported after a preview, in the place of the file that the project had.
        user.ChooseFromBrowser(QStringLiteral("Datenpunkte importieren..."));
        robot.WaitFor(QStringLiteral("the file dialog"), [] {
            const auto* dialog = TUser::FindWindow<QFileDialog>();
            return dialog && dialog->isActiveWindow();
        });
        robot.Type(file);
        robot.Key(QStringLiteral("Return"));
        robot.WaitFor(QStringLiteral("the preview"), [] {
            const auto* dialog = TUser::FindWindow<TImportDialog>();
            return dialog && dialog->isActiveWindow();
        });
        user.TakePicture(QStringLiteral("datenpunkte-import"));
        robot.Key(QStringLiteral("Return"));
        robot.WaitFor(QStringLiteral("the import"), [] {
            return !TUser::FindWindow<TImportDialog>() && TUser::Browser()->Store().Datapoints().size() == 105;
        });

        // A new action takes the datapoint that is dragged onto its dialog.
        user.Select({}, Actions);
        user.ChooseFromMenu({}, Actions, newAction);
        robot.WaitFor(newAction, [&] { return TUser::IsSelected(Actions, newAction); });
        robot.DoubleClick(user.PlaceOf(Actions, newAction));
        robot.WaitFor(QStringLiteral("the dialog"), [] { return TUser::Dialog() != nullptr; });
        user.MoveDialogAside();
        robot.Click(robot.See([] {
            QLineEdit* filter = TUser::Browser()->FilterLine();
            return filter->mapToGlobal(filter->rect().center());
        }));
        robot.Type(QStringLiteral("brunnen"));
        robot.WaitFor(QStringLiteral("the filter"),
                      [] { return TUser::Browser()->FilterLine()->text() == QStringLiteral("brunnen"); });
        const QPoint address = user.PlaceInBrowser(QStringLiteral("6/7/1"));
        robot.Drag(address, robot.See([] {
            auto* field = TUser::Field<QLineEdit>("EditName");
            return field->mapToGlobal(field->rect().center());
        }));
        robot.WaitFor(QStringLiteral("the dropped datapoint"),
                      [] { return TUser::TextOf("EditName") == QStringLiteral("6/7/1"); });
        EXPECT_EQ(robot.See([] { return TUser::TextOf("EditAlias"); }), pump);
        EXPECT_EQ(robot.See([] { return TUser::Field<QComboBox>("CBoxDataType")->currentText(); }),
                  QStringLiteral("1BYTE[%]"));
        user.TakePicture(QStringLiteral("datenpunkte-ziehen"));
        user.Press("BtnOK");
        robot.WaitFor(pump, [&] { return TUser::Find(Actions, pump) != nullptr; });

        // Onto a scene, and out to the files.
        user.PlaceOf({}, Scene);
        const QPoint from = user.PlaceOf(Actions, pump);
        robot.Drag(from, user.PlaceOf({}, Scene));
        robot.WaitFor(step, [&] { return TUser::Find(Scene, step) && TUser::IsSelected({}, Scene); });
        user.ChooseFromMenu({}, Scene, QStringLiteral("Exportieren"));
        robot.WaitFor(QStringLiteral("the export"), [] { return !TUser::IsModified(); });

        TContents expected = before;
        expected.insert(QStringLiteral("musterhaus.esf"), addresses);
        expected.insert(DatapointsFolder + QStringLiteral("musterhaus.esf"), addresses);
        AddLine(expected, "actions_allowed.xml",
                "<node name=\"6/7/1\" alias=\"Brunnenpumpe S\xFC"
                "d\" eis=\"6\" type=\"eib\" />");
        AddLine(expected, "scene_2.xml",
                R"(<node name="6/7/1" alias="Neuer Eintrag" value="" eis="6" delay="0" enabled="0" type="eib" />)");
        Compare(Files(), expected);

        robot.Key(QStringLiteral("alt+F4"));
    };
    TOptions options;
    options.ProjectDirectory = Project();
    EXPECT_EQ(TRobot::Accompany(journey, [&] { return RunWindow(options); }), 0);
}
