#include "TestSupport.h"
#include "Vldragobjects.h"
#include "DatapointBrowser.h"
#include "DatapointModel.h"
#include "ImportDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>
#include <gtest/gtest.h>

#include <memory>

namespace
{

constexpr auto Command = "datapoints://%PRJPATH%/_config/data/datapoints";

const QByteArray Export = "Haus\r\n"
                          "Licht.EG.1/1/1\tDecke K\xFC"
                          "che\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n"
                          "Licht.OG.1/2/1\tDecke Bad\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n"
                          "Heizung.EG.2/1/1\tSollwert\tUnbestimmt (2 Byte)\tLow\t\r\n";

class DatapointBrowser : public ::testing::Test
{
protected:
    DatapointBrowser()
    {
        QDir(Project.Root()).mkpath(QStringLiteral("_config/data/datapoints/eib"));
        Project.Write(QStringLiteral("_config/data/datapoints/eib/haus.esf"), Export);
        bool handled = false;
        Browser.ExecuteCmd(Command, handled);
        EXPECT_TRUE(handled);
    }

    TDatapointModel& Model() const { return *qobject_cast<TDatapointModel*>(Browser.View()->model()); }

    QModelIndex Find(const QString& text) const
    {
        const QModelIndexList found =
            Model().match(Model().index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly | Qt::MatchRecursive);
        return found.value(0);
    }

    QAction* Action(const char* name) const
    {
        for (QAction* action : Browser.actions()) {
            if (action->objectName() == QString::fromLatin1(name))
                return action;
        }
        return nullptr;
    }

    TTemporaryProject Project;
    TRecordedMessages Messages;
    TDatapointBrowser Browser{dkEib, nullptr};
};

TPropertyDragObject Dragged(const TDatapointModel& model, const QModelIndex& index)
{
    const std::unique_ptr<QMimeData> content(model.mimeData({index}));
    return TPropertyDragObject::FromMimeData(content.get()).value_or(TPropertyDragObject());
}

} // namespace

TEST_F(DatapointBrowser, ShowsTheProjectsAddressesInTheirGroups)
{
    ASSERT_EQ(Model().rowCount(), 2);
    const QModelIndex light = Model().index(0, 0);
    EXPECT_EQ(light.data().toString(), QStringLiteral("Licht"));
    EXPECT_EQ(Model().rowCount(light), 2);
    const QModelIndex kitchen = Find(QStringLiteral("1/1/1"));
    EXPECT_EQ(kitchen.siblingAtColumn(TDatapointModel::ColumnName).data().toString(), QStringLiteral("Decke Küche"));
    EXPECT_EQ(kitchen.siblingAtColumn(TDatapointModel::ColumnType).data().toString(), QStringLiteral("EIS 1"));
    EXPECT_EQ(kitchen.parent().data().toString(), QStringLiteral("EG"));
}

TEST_F(DatapointBrowser, FiltersByNameAndKeepsTheGroupsAbove)
{
    Browser.FilterLine()->setText(QStringLiteral("KÜCHE"));
    EXPECT_EQ(Model().ShownDatapoints(), 1);
    ASSERT_EQ(Model().rowCount(), 1);
    EXPECT_EQ(Model().index(0, 0).data().toString(), QStringLiteral("Licht"));
    EXPECT_TRUE(Browser.View()->isExpanded(Model().index(0, 0)));
    Browser.FilterLine()->clear();
    EXPECT_EQ(Model().ShownDatapoints(), 3);
}

TEST_F(DatapointBrowser, FiltersByAddress)
{
    Browser.FilterLine()->setText(QStringLiteral("2/1/"));
    EXPECT_EQ(Model().ShownDatapoints(), 1);
    EXPECT_TRUE(Find(QStringLiteral("2/1/1")).isValid());
    EXPECT_FALSE(Find(QStringLiteral("1/1/1")).isValid());
}

TEST_F(DatapointBrowser, ShowsNothingWhereNothingMatches)
{
    Browser.FilterLine()->setText(QStringLiteral("gibt es nicht"));
    EXPECT_EQ(Model().rowCount(), 0);
}

TEST_F(DatapointBrowser, DragsADatapointWithItsThreeProperties)
{
    const TPropertyDragObject object = Dragged(Model(), Find(QStringLiteral("1/1/1")));
    using TProperty = std::pair<QString, QString>;
    const QList<TProperty> expected{{QStringLiteral("name"), QStringLiteral("1/1/1")},
                                    {QStringLiteral("label"), QStringLiteral("Decke Küche")},
                                    {QStringLiteral("type"), QStringLiteral("1")}};
    EXPECT_EQ(object.Properties(), expected);
}

TEST_F(DatapointBrowser, DragsAnUndeterminedTypeAsTheEmptyText)
{
    EXPECT_EQ(Dragged(Model(), Find(QStringLiteral("2/1/1"))).GetValue(QStringLiteral("type")), QString());
}

TEST_F(DatapointBrowser, DragsNoGroup)
{
    EXPECT_EQ(Model().mimeData({Model().index(0, 0)}), nullptr);
    EXPECT_FALSE(Model().flags(Model().index(0, 0)) & Qt::ItemIsDragEnabled);
}

TEST_F(DatapointBrowser, DragsATypeThatWasChosenByHand)
{
    const QModelIndex setpoint = Find(QStringLiteral("2/1/1"));
    Browser.Store().SetEisNumber(*Model().DatapointAt(setpoint), 5);
    EXPECT_EQ(Dragged(Model(), setpoint).GetValue(QStringLiteral("type")), QStringLiteral("5"));
}

TEST_F(DatapointBrowser, ChoosesTypesForUndeterminedAddressesOnly)
{
    Browser.View()->expandAll();
    Browser.View()->setCurrentIndex(Find(QStringLiteral("1/1/1")));
    EXPECT_FALSE(Action("MenuAction_ChooseType")->isEnabled());
    Browser.View()->setCurrentIndex(Find(QStringLiteral("2/1/1")));
    EXPECT_TRUE(Action("MenuAction_ChooseType")->isEnabled());
    Action("MenuAction_ChooseType")->menu()->actions().at(5)->trigger();
    EXPECT_EQ(Find(QStringLiteral("2/1/1")).siblingAtColumn(TDatapointModel::ColumnType).data().toString(),
              QStringLiteral("EIS 5"));
}

TEST_F(DatapointBrowser, IsUsedWithTheKeyboardAlone)
{
    Browser.show();
    Browser.FilterLine()->setFocus();
    QTest::keyClicks(Browser.FilterLine(), QStringLiteral("bad"));
    QTest::keyClick(Browser.FilterLine(), Qt::Key_Down);
    EXPECT_EQ(Browser.View()->currentIndex(), Model().index(0, 0));
    QTest::keyClick(Browser.View(), Qt::Key_Down);
    QTest::keyClick(Browser.View(), Qt::Key_Down);
    EXPECT_EQ(Browser.View()->currentIndex().data().toString(), QStringLiteral("1/2/1"));
    Action("MenuAction_Copy")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("1/2/1"));
    const auto copied = TPropertyDragObject::FromMimeData(QApplication::clipboard()->mimeData());
    ASSERT_TRUE(copied);
    EXPECT_EQ(copied->GetValue(QStringLiteral("label")), QStringLiteral("Decke Bad"));
}

TEST_F(DatapointBrowser, FollowsTheProject)
{
    UserManager()->CloseProject();
    EXPECT_EQ(Model().rowCount(), 0);
    UserManager()->OpenProject(Project.Root());
    EXPECT_EQ(Model().rowCount(), 2);
}

TEST_F(DatapointBrowser, ReportsUnreadableLinesWithFileLineAndReason)
{
    Project.Write(QStringLiteral("_config/data/datapoints/eib/haus.esf"),
                  Export + "Licht.EG.99/1/1\tFalsch\t\tLow\t\r\n");
    Browser.MenuAction_Reload();
    EXPECT_EQ(Messages.Notes.filter(QStringLiteral("haus.esf, Zeile 5")).size(), 1);
    EXPECT_EQ(Model().ShownDatapoints(), 3);
}

TEST_F(DatapointBrowser, ImportsAfterAPreview)
{
    const QString path = Project.Path(QStringLiteral("neu.esf"));
    WriteAll(path, Export + "Licht.EG.1/1/9\tNeue Lampe\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n");
    TImportDialog dialog(Browser.Store(), path, nullptr);
    QTimer::singleShot(0, &dialog, [&dialog] {
        EXPECT_TRUE(
            dialog.findChild<QLabel*>(QStringLiteral("LabelSummary"))->text().contains(QStringLiteral("1 neu")));
        EXPECT_EQ(dialog.findChild<QTreeWidget*>(QStringLiteral("TreePreview"))->topLevelItemCount(), 4);
        dialog.findChild<QPushButton*>(QStringLiteral("BtnImport"))->click();
    });
    EXPECT_TRUE(dialog.Execute());
    EXPECT_TRUE(Project.Exists(QStringLiteral("_config/data/datapoints/eib/neu.esf")));
    EXPECT_FALSE(Project.Exists(QStringLiteral("_config/data/datapoints/eib/haus.esf")));
    EXPECT_EQ(Browser.Store().Datapoints().size(), 4);
}

TEST_F(DatapointBrowser, ChangesNothingWhenAnImportIsGivenUp)
{
    const QString path = Project.Path(QStringLiteral("neu.esf"));
    WriteAll(path, Export);
    TImportDialog dialog(Browser.Store(), path, nullptr);
    QTimer::singleShot(0, &dialog, &QDialog::reject);
    EXPECT_FALSE(dialog.Execute());
    EXPECT_FALSE(Project.Exists(QStringLiteral("_config/data/datapoints/eib/neu.esf")));
    EXPECT_EQ(ReadAll(Project.Path(QStringLiteral("_config/data/datapoints/eib/haus.esf"))), Export);
}

TEST_F(DatapointBrowser, ShowsUmlautsInTheChosenEncodingBeforeTheImport)
{
    const QString path = Project.Path(QStringLiteral("dos.esf"));
    WriteAll(path, "Haus\r\nLicht.EG.1/1/1\tK\x81"
                   "che\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n");
    TImportDialog dialog(Browser.Store(), path, nullptr);
    QTimer::singleShot(0, &dialog, [&dialog] {
        auto* encodings = dialog.findChild<QComboBox*>(QStringLiteral("CBoxEncoding"));
        const auto* preview = dialog.findChild<QTreeWidget*>(QStringLiteral("TreePreview"));
        const auto shown = [preview] {
            QStringList names;
            for (int i = 0; i < preview->topLevelItemCount(); ++i)
                names.append(preview->topLevelItem(i)->text(1));
            return names;
        };
        encodings->setCurrentIndex(encodings->findData(QStringLiteral("IBM850")));
        EXPECT_TRUE(shown().contains(QStringLiteral("Küche")));
        encodings->setCurrentIndex(encodings->findData(QStringLiteral("Windows-1252")));
        EXPECT_FALSE(shown().contains(QStringLiteral("Küche")));
        dialog.reject();
    });
    EXPECT_FALSE(dialog.Execute());
}

TEST_F(DatapointBrowser, RefusesToImportWhatIsNoExport)
{
    const QString path = Project.Path(QStringLiteral("bild.png"));
    WriteAll(path, QByteArray("\x89PNG\r\n\x1A\n\0\0", 10));
    TImportDialog dialog(Browser.Store(), path, nullptr);
    QTimer::singleShot(0, &dialog, [&dialog] {
        EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("BtnImport"))->isEnabled());
        dialog.reject();
    });
    EXPECT_FALSE(dialog.Execute());
}

TEST_F(DatapointBrowser, ReportsAFileThatCannotBeRead)
{
    TImportDialog dialog(Browser.Store(), Project.Path(QStringLiteral("fehlt.esf")), nullptr);
    EXPECT_FALSE(dialog.Execute());
    ASSERT_EQ(Messages.Errors.size(), 1);
    EXPECT_TRUE(Messages.Errors.first().contains(QStringLiteral("fehlt.esf")));
}
