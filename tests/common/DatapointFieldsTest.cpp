#include "DatapointFields.h"

#include "NestedLoop.h"
#include "TestSupport.h"
#include "Vldragobjects.h"
#include "Vlerrors.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace
{

std::unique_ptr<QMimeData> Datapoint(const char* name, const char* label, const char* type)
{
    TPropertyDragObject object;
    object.Add(QStringLiteral("name"), QString::fromUtf8(name));
    object.Add(QStringLiteral("label"), QString::fromUtf8(label));
    object.Add(QStringLiteral("type"), QString::fromUtf8(type));
    return std::unique_ptr<QMimeData>(object.ToMimeData());
}

// An edit field in a dialog that notes what is dropped on it.
class DatapointDrop : public testing::Test
{
protected:
    DatapointDrop() { m_drop->Watch(&m_edit); }

    bool Drop(const QMimeData& content) { return TDraggedOver(&m_edit, &content).EnterAndDrop(m_edit.rect().center()); }
    void Paste() { QTest::keyClick(&m_edit, Qt::Key_V, Qt::ControlModifier); }

    bool m_accepts = true;
    QStringList m_taken;
    QDialog m_dialog;
    QLineEdit m_edit{&m_dialog};
    TDatapointDrop* m_drop = new TDatapointDrop(
        &m_dialog, [this] { return m_accepts; },
        [this](const TDroppedDatapoint& dropped) {
            m_taken.append(QStringLiteral("%1|%2|%3").arg(dropped.Name, dropped.Label).arg(dropped.DataType));
        });
};

} // namespace

TEST(AddField, PutsALabelBeforeTheField)
{
    QDialog dialog;
    auto* layout = new QFormLayout(&dialog);
    const auto* field = AddField<QLineEdit>(layout, &dialog, "EditName", " Größe ");
    EXPECT_EQ(field->objectName(), QStringLiteral("EditName"));
    EXPECT_EQ(field->accessibleName(), QStringLiteral("Größe"));
    const auto* label = qobject_cast<QLabel*>(layout->itemAt(0, QFormLayout::LabelRole)->widget());
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), QStringLiteral(" Größe "));
    EXPECT_EQ(label->buddy(), field);
    EXPECT_EQ(layout->itemAt(0, QFormLayout::FieldRole)->widget(), field);
}

TEST(AddField, LetsATextBeAsLongAsItIs)
{
    QDialog dialog;
    auto* layout = new QFormLayout(&dialog);
    auto* field = AddField<QLineEdit>(layout, &dialog, "EditName", "Name");
    field->setText(QString(100000, u'x'));
    EXPECT_EQ(field->text().size(), 100000);
}

TEST(FieldEntries, StandInTheOrderOfTheirEnumerations)
{
    QComboBox types;
    FillDataTypes(&types);
    EXPECT_EQ(types.count(), 5);
    EXPECT_EQ(types.itemText(dtmEIS1), QStringLiteral("BINÄR"));
    EXPECT_EQ(types.itemText(dtmEIS6), QStringLiteral("1BYTE[%]"));
    EXPECT_EQ(types.itemText(dtmEIS14), QStringLiteral("1BYTE"));
    EXPECT_EQ(types.itemText(dtmEIS10), QStringLiteral("2BYTE"));
    EXPECT_EQ(types.itemText(dtmEIS11), QStringLiteral("4BYTE"));
    QComboBox sources;
    FillSources(&sources);
    EXPECT_EQ(sources.count(), 3);
    EXPECT_EQ(sources.itemText(nsEIB), QStringLiteral("EIB"));
    EXPECT_EQ(sources.itemText(nsMODBUS), QStringLiteral("MODBUS"));
    EXPECT_EQ(sources.itemText(nsVIRTUAL), QStringLiteral("VIRTUAL"));
}

TEST(SelectEntry, TellsNobody)
{
    QComboBox box;
    FillSources(&box);
    const QSignalSpy changes(&box, &QComboBox::currentIndexChanged);
    SelectEntry(&box, 2);
    EXPECT_EQ(box.currentText(), QStringLiteral("VIRTUAL"));
    EXPECT_EQ(changes.size(), 0);
    box.setCurrentIndex(1);
    EXPECT_EQ(changes.size(), 1);
}

TEST(ReplaceSections, KeepsThePositionAsFarAsThereAreAsMany)
{
    const QStringList five{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d"),
                           QStringLiteral("e")};
    QComboBox box;
    ReplaceSections(&box, five);
    EXPECT_EQ(box.currentIndex(), 0);
    box.setCurrentIndex(3);
    ReplaceSections(&box, five);
    EXPECT_EQ(box.currentIndex(), 3);
    ReplaceSections(&box, five.mid(0, 2));
    EXPECT_EQ(box.currentIndex(), 1);
    EXPECT_EQ(box.currentText(), QStringLiteral("b"));
    ReplaceSections(&box, {});
    EXPECT_EQ(box.currentIndex(), -1);
    ReplaceSections(&box, five);
    EXPECT_EQ(box.currentIndex(), 0);
    EXPECT_EQ(box.count(), 5);
}

TEST(ReplaceSections, TellsNobody)
{
    QComboBox box;
    const QSignalSpy changes(&box, &QComboBox::currentIndexChanged);
    ReplaceSections(&box, {QStringLiteral("a"), QStringLiteral("b")});
    ReplaceSections(&box, {});
    EXPECT_EQ(changes.size(), 0);
}

TEST_F(DatapointDrop, GivesNameLabelAndType)
{
    EXPECT_TRUE(Drop(*Datapoint("1/2/3", "Licht Küche", "6")));
    EXPECT_EQ(m_taken, QStringList({QStringLiteral("1/2/3|Licht Küche|%1").arg(dtmEIS6)}));
    EXPECT_EQ(m_edit.text(), QString());
}

TEST_F(DatapointDrop, GivesBinaryForATypeWithoutAPlace)
{
    for (const char* type : {"1", "10", "14", "", "x"})
        Drop(*Datapoint("n", "l", type));
    EXPECT_EQ(m_taken.count(QStringLiteral("n|l|%1").arg(dtmEIS1)), 5);
    m_taken.clear();
    for (const char* type : {"9", "11"})
        Drop(*Datapoint("n", "l", type));
    EXPECT_EQ(m_taken.count(QStringLiteral("n|l|%1").arg(dtmEIS11)), 2);
    Drop(*Datapoint("n", "l", "5"));
    EXPECT_EQ(m_taken.last(), QStringLiteral("n|l|%1").arg(dtmEIS10));
}

TEST_F(DatapointDrop, IsAskedForWhetherItIsWelcome)
{
    m_accepts = false;
    EXPECT_FALSE(Drop(*Datapoint("n", "l", "1")));
    m_accepts = true;
    EXPECT_TRUE(Drop(*Datapoint("n", "l", "1")));
    EXPECT_EQ(m_taken.size(), 1);
}

TEST_F(DatapointDrop, IsNotTakenWhenItIsWelcomeNoLonger)
{
    const auto content = Datapoint("n", "l", "1");
    const TDraggedOver drag(&m_edit, content.get());
    ASSERT_TRUE(drag.Enter(QPoint(1, 1)));
    m_accepts = false;
    EXPECT_FALSE(drag.Move(QPoint(2, 2)));
    EXPECT_FALSE(drag.Drop(QPoint(2, 2)));
    EXPECT_EQ(m_taken, QStringList());
}

TEST_F(DatapointDrop, RefusesPlainText)
{
    QMimeData text;
    text.setText(QStringLiteral("1/2/3"));
    EXPECT_FALSE(Drop(text));
    EXPECT_EQ(m_edit.text(), QString());
}

TEST_F(DatapointDrop, IsPastedTooButLeavesPlainTextToTheField)
{
    QGuiApplication::clipboard()->setMimeData(Datapoint("n", "l", "6").release());
    Paste();
    EXPECT_EQ(m_taken.size(), 1);
    EXPECT_EQ(m_edit.text(), QString());
    QGuiApplication::clipboard()->setText(QStringLiteral("4/5/6"));
    Paste();
    EXPECT_EQ(m_taken.size(), 1);
    EXPECT_EQ(m_edit.text(), QStringLiteral("4/5/6"));
}

TEST_F(DatapointDrop, IsNotPastedWhereItIsNotWelcome)
{
    m_accepts = false;
    QGuiApplication::clipboard()->setMimeData(Datapoint("n", "l", "6").release());
    Paste();
    EXPECT_EQ(m_taken, QStringList());
}

TEST_F(DatapointDrop, HandsAFailureToTheGeneralErrorHandler)
{
    const TRecordedMessages messages;
    QLineEdit edit(&m_dialog);
    auto* drop = new TDatapointDrop(
        &m_dialog, [] { return true; },
        [](const TDroppedDatapoint&) { throw TUserError(QStringLiteral("kein Platz")); });
    drop->Watch(&edit);
    const auto content = Datapoint("n", "l", "1");
    TDraggedOver(&edit, content.get()).EnterAndDrop(QPoint(1, 1));
    EXPECT_EQ(messages.Errors, QStringList({QStringLiteral("kein Platz")}));
}
