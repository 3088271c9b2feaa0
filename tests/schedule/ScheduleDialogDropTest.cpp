#include "ScheduleDialog.h"

#include "NestedLoop.h"
#include "Vldragobjects.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

#include <memory>

namespace
{

std::unique_ptr<QMimeData> Datapoint(const char* name, const char* label, const char* type)
{
    TPropertyDragObject object;
    object.Add(QStringLiteral("name"), QString::fromUtf8(name));
    object.Add(QStringLiteral("label"), QString::fromUtf8(label));
    object.Add(QStringLiteral("type"), QString::fromUtf8(type));
    object.Add(QStringLiteral("target"), QStringLiteral("modbus"));
    return std::unique_ptr<QMimeData>(object.ToMimeData());
}

class ScheduleDialogDrop : public TScheduleDialog
{
protected:
    ScheduleDialogDrop() { Show(); }

    bool Drop(const char* field, const QMimeData& content)
    {
        QWidget* target = Field<QWidget>(field);
        return TDraggedOver(target, &content).EnterAndDrop(target->rect().center());
    }
    std::string Fields() const
    {
        return TextOf("EditName") + "|" + TextOf("EditAlias") + "|" + Box("CBoxDataType")->currentText().toStdString() +
               "|" + Box("CBoxDataSource")->currentText().toStdString();
    }
};

} // namespace

TEST_F(ScheduleDialogDrop, OnTheNameFieldFillsNameAliasTypeAndSource)
{
    m_dialog.SetNodeSource(nsVIRTUAL);
    EXPECT_TRUE(Drop("EditName", *Datapoint("1/2/3", "Licht Küche", "5")));
    EXPECT_EQ(Fields(), "1/2/3|Licht Küche|2BYTE|EIB");
}

TEST_F(ScheduleDialogDrop, OnTheAliasFieldFillsTheSameFields)
{
    EXPECT_TRUE(Drop("EditAlias", *Datapoint("1/2/3", "Licht", "6")));
    EXPECT_EQ(Fields(), "1/2/3|Licht|1BYTE[%]|EIB");
}

TEST_F(ScheduleDialogDrop, ChangesTheDialogAndNothingElse)
{
    m_dialog.SetNodeMinVal(QStringLiteral("1"));
    m_dialog.SetNodeMaxVal(QStringLiteral("9"));
    m_dialog.SetNodeAccess(3);
    m_dialog.SetEnableFlag(false);
    m_dialog.SetSection(2);
    m_dialog.SetTitle(QStringLiteral("t"));
    ASSERT_TRUE(Drop("EditName", *Datapoint("1/2/3", "Licht", "1")));
    EXPECT_TRUE(m_dialog.GetChanged());
    EXPECT_EQ(m_dialog.GetNodeMinVal(), QStringLiteral("1"));
    EXPECT_EQ(m_dialog.GetNodeMaxVal(), QStringLiteral("9"));
    EXPECT_EQ(m_dialog.GetNodeAccess(), 3);
    EXPECT_FALSE(m_dialog.GetEnableFlag());
    EXPECT_EQ(m_dialog.GetSection(), 2);
    EXPECT_EQ(m_dialog.GetTitle(), QStringLiteral("t"));
    EXPECT_FALSE(m_dialog.GetIsSchedule());
}

TEST_F(ScheduleDialogDrop, PutsEveryTypeWhereItsTableSays)
{
    const std::array<std::pair<const char*, const char*>, 14> types{{{"1", "BINÄR"},
                                                                     {"2", "BINÄR"},
                                                                     {"5", "2BYTE"},
                                                                     {"6", "1BYTE[%]"},
                                                                     {"9", "4BYTE"},
                                                                     {"10", "BINÄR"},
                                                                     {"11", "4BYTE"},
                                                                     {"14", "BINÄR"},
                                                                     {"0", "BINÄR"},
                                                                     {"-5", "BINÄR"},
                                                                     {"", "BINÄR"},
                                                                     {"6x", "BINÄR"},
                                                                     {"$5", "2BYTE"},
                                                                     {"1000", "BINÄR"}}};
    for (const auto& [type, entry] : types) {
        m_dialog.SetDataType(dtmEIS14);
        EXPECT_TRUE(Drop("EditName", *Datapoint("a", "b", type)));
        EXPECT_EQ(Box("CBoxDataType")->currentText().toStdString(), entry) << type;
    }
}

TEST_F(ScheduleDialogDrop, OfPropertiesThatAreNotThereEmptiesTheFields)
{
    m_dialog.SetItemName(QStringLiteral("alt"));
    m_dialog.SetNodeAlias(QStringLiteral("alt"));
    m_dialog.SetDataType(dtmEIS11);
    m_dialog.SetNodeSource(nsMODBUS);
    Edit("EditAlias")->setEnabled(false);
    TPropertyDragObject object;
    object.Add(QStringLiteral("other"), QStringLiteral("x"));
    const std::unique_ptr<QMimeData> content(object.ToMimeData());
    EXPECT_TRUE(Drop("EditName", *content));
    EXPECT_EQ(Fields(), "||BINÄR|EIB");
    EXPECT_TRUE(IsEnabled("EditAlias"));
}

TEST_F(ScheduleDialogDrop, IsRefusedWhileTheSchedulePageIsShown)
{
    m_dialog.SetItemName(QStringLiteral("alt"));
    m_dialog.SetIsSchedule(true);
    for (const char* field : {"EditAlias", "EditName", "EditValue"})
        EXPECT_FALSE(Drop(field, *Datapoint("1/2/3", "Licht", "5"))) << field;
    EXPECT_EQ(Fields(), "alt||BINÄR|EIB");
    EXPECT_EQ(TextOf("EditValue"), "");
    EXPECT_FALSE(m_dialog.GetChanged());
    m_dialog.SetIsSchedule(false);
    EXPECT_TRUE(Drop("EditName", *Datapoint("1/2/3", "Licht", "5")));
}

TEST_F(ScheduleDialogDrop, IsRefusedOnEveryOtherField)
{
    for (const char* field : {"EditMinVal", "EditMaxVal", "EditAccess", "CBoxDataType", "CBoxPartSelector"})
        EXPECT_FALSE(Drop(field, *Datapoint("1/2/3", "Licht", "5"))) << field;
    EXPECT_EQ(Fields(), "||BINÄR|EIB");
    EXPECT_FALSE(m_dialog.GetChanged());
}

TEST_F(ScheduleDialogDrop, OfAnythingElseThanPropertiesIsRefused)
{
    QMimeData text;
    text.setText(QStringLiteral("1/2/3"));
    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.xml"))});
    TTreeNode node(QStringLiteral("Knoten"));
    auto objects = std::make_shared<TObjectsDragObject>(false);
    objects->Add(&node);
    const std::unique_ptr<QMimeData> nodes(TObjectsDragObject::ToMimeData(objects));
    for (const char* field : {"EditName", "EditAlias"}) {
        EXPECT_FALSE(Drop(field, text)) << field;
        EXPECT_FALSE(Drop(field, file)) << field;
        EXPECT_FALSE(Drop(field, *nodes)) << field;
    }
    EXPECT_EQ(Fields(), "||BINÄR|EIB");
    EXPECT_FALSE(m_dialog.GetChanged());
}

// By keyboard

TEST_F(ScheduleDialogDrop, IsDoneByPastingACopiedDatapointToo)
{
    QGuiApplication::clipboard()->setMimeData(Datapoint("1/2/3", "Licht", "6").release());
    QTest::keyClick(Field<QWidget>("EditAlias"), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Fields(), "1/2/3|Licht|1BYTE[%]|EIB");
    EXPECT_TRUE(m_dialog.GetChanged());
}

TEST_F(ScheduleDialogDrop, LeavesThePastingOfPlainTextToTheField)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("4/5/6"));
    QTest::keyClick(Field<QWidget>("EditName"), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Fields(), "4/5/6||BINÄR|EIB");
}
