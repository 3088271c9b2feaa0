#include "StoreFixture.h"
#include "Vldragobjects.h"
#include "DatapointBrowser.h"
#include "DatapointModel.h"
#include "ImportDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <gtest/gtest.h>

#include <memory>

namespace
{

const QByteArray HouseExport = "Haus\r\n"
                               "Licht.EG.1/1/1\tDecke K\xFC"
                               "che\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n"
                               "Licht.OG.1/2/1\tDecke Bad\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n"
                               "Heizung.EG.2/1/1\tSollwert\tUnbestimmt (2 Byte)\tLow\t\r\n";

class DatapointBrowser : public ::testing::Test
{
protected:
    DatapointBrowser()
    {
        QDir(m_project.Root()).mkpath(QStringLiteral("_config/data/datapoints/eib"));
        m_project.Write(QStringLiteral("_config/data/datapoints/eib/haus.esf"), HouseExport);
        bool handled = false;
        m_browser.ExecuteCmd(BrowserCommand, handled);
        EXPECT_TRUE(handled);
    }

    TDatapointModel& Model() const { return *qobject_cast<TDatapointModel*>(m_browser.View()->model()); }

    QModelIndex Find(const QString& text) const
    {
        const QModelIndexList found =
            Model().match(Model().index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly | Qt::MatchRecursive);
        return found.value(0);
    }

    QAction* Action(const char* name) const
    {
        for (QAction* action : m_browser.actions()) {
            if (action->objectName() == QString::fromLatin1(name))
                return action;
        }
        return nullptr;
    }

    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    TDatapointBrowser m_browser{dkEib, nullptr};
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
    m_browser.FilterLine()->setText(QStringLiteral("KÜCHE"));
    EXPECT_EQ(Model().ShownDatapoints(), 1);
    ASSERT_EQ(Model().rowCount(), 1);
    EXPECT_EQ(Model().index(0, 0).data().toString(), QStringLiteral("Licht"));
    EXPECT_TRUE(m_browser.View()->isExpanded(Model().index(0, 0)));
    m_browser.FilterLine()->clear();
    EXPECT_EQ(Model().ShownDatapoints(), 3);
}

TEST_F(DatapointBrowser, FiltersByAddress)
{
    m_browser.FilterLine()->setText(QStringLiteral("2/1/"));
    EXPECT_EQ(Model().ShownDatapoints(), 1);
    EXPECT_TRUE(Find(QStringLiteral("2/1/1")).isValid());
    EXPECT_FALSE(Find(QStringLiteral("1/1/1")).isValid());
}

TEST_F(DatapointBrowser, ShowsNothingWhereNothingMatches)
{
    m_browser.FilterLine()->setText(QStringLiteral("gibt es nicht"));
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
    m_browser.Store().SetEisNumber(*Model().DatapointAt(setpoint), 5);
    EXPECT_EQ(Dragged(Model(), setpoint).GetValue(QStringLiteral("type")), QStringLiteral("5"));
}

TEST_F(DatapointBrowser, ChoosesTypesForUndeterminedAddressesOnly)
{
    m_browser.View()->expandAll();
    m_browser.View()->setCurrentIndex(Find(QStringLiteral("1/1/1")));
    EXPECT_FALSE(Action("MenuAction_ChooseType")->isEnabled());
    m_browser.View()->setCurrentIndex(Find(QStringLiteral("2/1/1")));
    EXPECT_TRUE(Action("MenuAction_ChooseType")->isEnabled());
    m_browser.findChild<QMenu*>(QStringLiteral("MenuTypes"))->actions().at(5)->trigger();
    EXPECT_EQ(Find(QStringLiteral("2/1/1")).siblingAtColumn(TDatapointModel::ColumnType).data().toString(),
              QStringLiteral("EIS 5"));
}

TEST_F(DatapointBrowser, FollowsTheProject)
{
    UserManager()->CloseProject();
    EXPECT_EQ(Model().rowCount(), 0);
    UserManager()->OpenProject(m_project.Root());
    EXPECT_EQ(Model().rowCount(), 2);
}

TEST_F(DatapointBrowser, KeepsTheMessagesOfABadFileWithinBoundsAndShowsAllOnDemand)
{
    constexpr int many = 4341;
    constexpr int shown = 20;
    m_project.Write(QStringLiteral("_config/data/datapoints/eib/schlecht.esf"),
                    QByteArray("Licht.EG.99/1/1\tFalsch\t\tLow\t\r\n").repeated(many) +
                        "Licht.EG.1/1/7\tRichtig\tUnbekannt\tLow\t\r\n");
    m_browser.MenuAction_Reload();
    const QStringList notes = m_messages.Notes.filter(QStringLiteral("schlecht.esf"));
    ASSERT_EQ(notes.size(), shown + 1);
    EXPECT_TRUE(notes.first().startsWith(QStringLiteral("schlecht.esf, Zeile 1: ")));
    EXPECT_TRUE(notes.last().startsWith(QStringLiteral("schlecht.esf: ... und 4.321 weitere, zusammen 4.341.")));

    QString text;
    QTimer::singleShot(0, qApp, [&text] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        text = dialog->findChild<QPlainTextEdit*>(QStringLiteral("EditProblems"))->toPlainText();
        dialog->reject();
    });
    Action("MenuAction_ShowProblems")->trigger();
    EXPECT_EQ(text.count(QStringLiteral("schlecht.esf, Zeile ")), many);
    EXPECT_TRUE(text.contains(QStringLiteral("schlecht.esf, Zeile 4341: ")));
}

TEST_F(DatapointBrowser, HasNoMessagesToShowWhereThereAreNone)
{
    EXPECT_FALSE(Action("MenuAction_ShowProblems")->isEnabled());
}

TEST_F(DatapointBrowser, ReportsUnreadableLinesWithFileLineAndReason)
{
    m_project.Write(QStringLiteral("_config/data/datapoints/eib/haus.esf"),
                    HouseExport + "Licht.EG.99/1/1\tFalsch\t\tLow\t\r\n");
    m_browser.MenuAction_Reload();
    EXPECT_EQ(m_messages.Notes.filter(QStringLiteral("haus.esf, Zeile 5")).size(), 1);
    EXPECT_EQ(Model().ShownDatapoints(), 3);
}

TEST_F(DatapointBrowser, ImportsAfterAPreview)
{
    const QString path = m_project.Path(QStringLiteral("neu.esf"));
    WriteAll(path, HouseExport + "Licht.EG.1/1/9\tNeue Lampe\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n");
    TImportDialog dialog(m_browser.Store(), path, nullptr);
    QTimer::singleShot(0, &dialog, [&dialog] {
        auto* replaced = dialog.findChild<QComboBox*>(QStringLiteral("CBoxReplaced"));
        EXPECT_EQ(replaced->currentData().toString(), QString());
        replaced->setCurrentIndex(replaced->findData(QStringLiteral("haus.esf")));
        EXPECT_TRUE(
            dialog.findChild<QLabel*>(QStringLiteral("LabelSummary"))->text().contains(QStringLiteral("1 neu")));
        EXPECT_EQ(dialog.findChild<QTreeView*>(QStringLiteral("TreePreview"))->model()->rowCount(), 4);
        dialog.findChild<QPushButton*>(QStringLiteral("BtnImport"))->click();
    });
    EXPECT_TRUE(dialog.Execute());
    EXPECT_TRUE(m_project.Exists(QStringLiteral("_config/data/datapoints/eib/neu.esf")));
    EXPECT_FALSE(m_project.Exists(QStringLiteral("_config/data/datapoints/eib/haus.esf")));
    EXPECT_EQ(m_browser.Store().Datapoints().size(), 4);
}

TEST_F(DatapointBrowser, ChangesNothingWhenAnImportIsGivenUp)
{
    const QString path = m_project.Path(QStringLiteral("neu.esf"));
    WriteAll(path, HouseExport);
    TImportDialog dialog(m_browser.Store(), path, nullptr);
    QTimer::singleShot(0, &dialog, &QDialog::reject);
    EXPECT_FALSE(dialog.Execute());
    EXPECT_FALSE(m_project.Exists(QStringLiteral("_config/data/datapoints/eib/neu.esf")));
    EXPECT_EQ(ReadAll(m_project.Path(QStringLiteral("_config/data/datapoints/eib/haus.esf"))), HouseExport);
}

TEST_F(DatapointBrowser, ShowsUmlautsInTheChosenEncodingBeforeTheImport)
{
    const QString path = m_project.Path(QStringLiteral("dos.esf"));
    WriteAll(path, "Haus\r\nLicht.EG.1/1/1\tK\x81"
                   "che\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n");
    TImportDialog dialog(m_browser.Store(), path, nullptr);
    QTimer::singleShot(0, &dialog, [&dialog] {
        auto* encodings = dialog.findChild<QComboBox*>(QStringLiteral("CBoxEncoding"));
        const auto* preview = dialog.findChild<QTreeView*>(QStringLiteral("TreePreview"));
        const auto shown = [preview] {
            QStringList names;
            for (int i = 0; i < preview->model()->rowCount(); ++i)
                names.append(preview->model()->index(i, 1).data().toString());
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
    const QString path = m_project.Path(QStringLiteral("bild.png"));
    WriteAll(path, QByteArray("\x89PNG\r\n\x1A\n\0\0", 10));
    TImportDialog dialog(m_browser.Store(), path, nullptr);
    QTimer::singleShot(0, &dialog, [&dialog] {
        EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("BtnImport"))->isEnabled());
        dialog.reject();
    });
    EXPECT_FALSE(dialog.Execute());
}

TEST_F(DatapointBrowser, ReportsAFileThatCannotBeRead)
{
    TImportDialog dialog(m_browser.Store(), m_project.Path(QStringLiteral("fehlt.esf")), nullptr);
    EXPECT_FALSE(dialog.Execute());
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.first().contains(QStringLiteral("fehlt.esf")));
}
