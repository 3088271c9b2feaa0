#include "SceneDialog.h"

#include "Vldragobjects.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>
#include <QUrl>

#include <array>

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

std::unique_ptr<QMimeData> File(const QString& path)
{
    auto content = std::make_unique<QMimeData>();
    content->setUrls({QUrl::fromLocalFile(path)});
    return content;
}

class SceneDialogDrop : public TSceneDialog
{
protected:
    SceneDialogDrop() { Show(); }

    // Whether the field takes the drag when it enters, when it moves on, and when it is dropped, as "yes yes yes".
    std::string Drop(const char* field, const QMimeData& content)
    {
        QWidget* target = Field<QWidget>(field);
        const QPoint place = target->rect().center();
        QDragEnterEvent enter(place, Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &enter);
        QDragMoveEvent move(place, Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &move);
        QDropEvent drop(place, Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &drop);
        const auto answer = [](const QEvent& event) { return event.isAccepted() ? "yes" : "no"; };
        return std::string(answer(enter)) + " " + answer(move) + " " + answer(drop);
    }
    std::string Fields() const
    {
        return TextOf("EditName") + "|" + TextOf("EditAlias") + "|" + Box("CBoxDataType")->currentText().toStdString() +
               "|" + Box("CBoxDataSource")->currentText().toStdString();
    }
};

} // namespace

TEST_F(SceneDialogDrop, OnTheNameFieldFillsNameAliasTypeAndSource)
{
    m_dialog.SetNodeSource(nsVIRTUAL);
    EXPECT_EQ(Drop("EditName", *Datapoint("1/2/3", "Licht Küche", "5")), "yes yes yes");
    EXPECT_EQ(Fields(), "1/2/3|Licht Küche|2BYTE|EIB");
}

TEST_F(SceneDialogDrop, OnTheAliasFieldFillsTheSameFields)
{
    EXPECT_EQ(Drop("EditAlias", *Datapoint("1/2/3", "Licht", "6")), "yes yes yes");
    EXPECT_EQ(Fields(), "1/2/3|Licht|1BYTE[%]|EIB");
}

TEST_F(SceneDialogDrop, IsDoneByPastingACopiedDatapointToo)
{
    QGuiApplication::clipboard()->setMimeData(Datapoint("1/2/3", "Licht", "6").release());
    QTest::keyClick(Field<QWidget>("EditName"), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Fields(), "1/2/3|Licht|1BYTE[%]|EIB");
    EXPECT_TRUE(m_dialog.GetChanged());
}

TEST_F(SceneDialogDrop, LeavesThePastingOfPlainTextToTheField)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("4/5/6"));
    m_dialog.SetItemName({});
    QTest::keyClick(Field<QWidget>("EditName"), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(TextOf("EditName"), "4/5/6");
}

TEST_F(SceneDialogDrop, IsAcceptedInTheSectionOfTheActionsToo)
{
    m_dialog.SetSection(1);
    EXPECT_EQ(Drop("EditName", *Datapoint("1/2/3", "Licht", "1")), "yes yes yes");
    EXPECT_EQ(Fields(), "1/2/3|Licht|BINÄR|EIB");
}

TEST_F(SceneDialogDrop, SetsTheChangedFlag)
{
    Drop("EditName", *Datapoint("1/2/3", "Licht", "1"));
    EXPECT_TRUE(m_dialog.GetChanged());
}

TEST_F(SceneDialogDrop, PutsEveryTypeWhereItsTableSays)
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
        EXPECT_EQ(Drop("EditName", *Datapoint("a", "b", type)), "yes yes yes");
        EXPECT_EQ(Box("CBoxDataType")->currentText().toStdString(), entry) << type;
    }
}

TEST_F(SceneDialogDrop, OfATypeThatIsNoNumberSetsBinaryAndEib)
{
    m_dialog.SetDataType(dtmEIS11);
    m_dialog.SetNodeSource(nsMODBUS);
    Drop("EditName", *Datapoint("1/2/3", "Licht", "abc"));
    EXPECT_EQ(Fields(), "1/2/3|Licht|BINÄR|EIB");
}

TEST_F(SceneDialogDrop, OfPropertiesThatAreNotThereEmptiesTheFields)
{
    m_dialog.SetItemName(QStringLiteral("alt"));
    m_dialog.SetNodeAlias(QStringLiteral("alt"));
    TPropertyDragObject object;
    object.Add(QStringLiteral("other"), QStringLiteral("x"));
    const std::unique_ptr<QMimeData> content(object.ToMimeData());
    EXPECT_EQ(Drop("EditName", *content), "yes yes yes");
    EXPECT_EQ(Fields(), "||BINÄR|EIB");
    EXPECT_TRUE(IsEnabled("EditAlias"));
}

TEST_F(SceneDialogDrop, IsRefusedWhileASceneIsTheSection)
{
    m_dialog.SetItemName(QStringLiteral("alt"));
    for (const int section : {2, 4}) {
        m_dialog.SetSection(section);
        EXPECT_EQ(Drop("EditAlias", *Datapoint("1/2/3", "Licht", "5")), "no no no") << section;
        EXPECT_EQ(Drop("EditName", *Datapoint("1/2/3", "Licht", "5")), "no no no") << section;
    }
    EXPECT_EQ(Fields(), "alt||BINÄR|EIB");
    EXPECT_FALSE(m_dialog.GetChanged());
}

TEST_F(SceneDialogDrop, IsRefusedWithoutASection)
{
    m_dialog.SetSection(-1);
    EXPECT_EQ(Drop("EditName", *Datapoint("1/2/3", "Licht", "5")), "no no no");
    m_dialog.SetSceneSections({});
    EXPECT_EQ(Drop("EditName", *Datapoint("1/2/3", "Licht", "5")), "no no no");
    EXPECT_EQ(Fields(), "||BINÄR|EIB");
}

TEST_F(SceneDialogDrop, OfAnythingElseThanPropertiesIsRefused)
{
    QMimeData text;
    text.setText(QStringLiteral("1/2/3"));
    TTreeNode node(QStringLiteral("Knoten"));
    auto objects = std::make_shared<TObjectsDragObject>(false);
    objects->Add(&node);
    const std::unique_ptr<QMimeData> nodes(TObjectsDragObject::ToMimeData(objects));
    for (const char* field : {"EditName", "EditAlias"}) {
        EXPECT_EQ(Drop(field, text), "no no no") << field;
        EXPECT_EQ(Drop(field, *nodes), "no no no") << field;
        EXPECT_EQ(Drop(field, *File(QStringLiteral("/tmp/a.xml"))), "no no no") << field;
    }
    EXPECT_EQ(Fields(), "||BINÄR|EIB");
    EXPECT_FALSE(m_dialog.GetChanged());
}

TEST_F(SceneDialogDrop, OfAFileOnTheValueTakesItsPathAndSetsTheChangedFlag)
{
    EXPECT_EQ(Drop("EditValue", *File(QStringLiteral("/tmp/klang.wav"))), "yes yes yes");
    EXPECT_EQ(TextOf("EditValue"), "\\tmp\\klang.wav");
    EXPECT_TRUE(m_dialog.GetChanged());
}

TEST_F(SceneDialogDrop, OfAFileOnTheValueIsPossibleForAScene)
{
    m_dialog.SetSection(3);
    EXPECT_EQ(Drop("EditValue", *File(QStringLiteral("/tmp/klang.wav"))), "yes yes yes");
    EXPECT_EQ(TextOf("EditValue"), "\\tmp\\klang.wav");
}

TEST_F(SceneDialogDrop, OfADatapointOnTheValueChangesNothing)
{
    m_dialog.SetNodeValue(QStringLiteral("1"));
    Drop("EditValue", *Datapoint("1/2/3", "Licht", "5"));
    EXPECT_EQ(TextOf("EditValue"), "1");
    EXPECT_FALSE(m_dialog.GetChanged());
}
