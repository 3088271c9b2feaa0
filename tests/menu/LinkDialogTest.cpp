#include "dlgLinkProps.h"

#include "PropsDialogFixture.h"
#include "Vlerrors.h"

#include <QClipboard>
#include <QGuiApplication>

#include <array>
#include <utility>

namespace
{

class LinkDialog : public TDialogFixture<TLinkPropsDialog>
{
protected:
    void Fill(const char* name, const char* alias)
    {
        m_dialog.SetItemName(QString::fromUtf8(name));
        m_dialog.SetNodeAlias(QString::fromUtf8(alias));
    }
    // Objekt, Name, Typ and Quelle.
    std::string Fields() const
    {
        return TextOf("EditName") + "|" + TextOf("EditAlias") + "|" + Box("CBoxDataType")->currentText().toStdString() +
               "|" + Box("CBoxDataSource")->currentText().toStdString();
    }
    // Which of Name, Objekt, Typ and Quelle can be edited.
    std::string Editable() const
    {
        std::string editable;
        for (const char* field : {"EditAlias", "EditName", "CBoxDataType", "CBoxDataSource"})
            editable += IsEnabled(field) ? '1' : '0';
        return editable;
    }
    // The fields in their order: "|" before one that stands below the former, a blank before one on its right.
    std::string Rows() const
    {
        std::string rows;
        QRect before;
        for (const char* name :
             {"EditUrl", "EditAlias", "EditName", "EditValue", "CBoxDataType", "EditAccess", "CBoxDataSource"}) {
            const QWidget* field = Field<QWidget>(name);
            const QRect place(field->mapTo(&m_dialog, QPoint(0, 0)), field->size());
            const bool isBelow = place.top() > before.bottom();
            EXPECT_TRUE(isBelow || place.left() > before.right()) << name;
            rows += rows.empty() ? name : (isBelow ? "|" : " ") + std::string(name);
            before = place;
        }
        return rows;
    }
    std::string ShownAccess() const { return Access()->text().toStdString(); }
};

constexpr auto EditFields = {"EditUrl", "EditAlias", "EditName", "EditValue"};

} // namespace

TEST_F(LinkDialog, HasItsCaptionAndStaysOnTop)
{
    EXPECT_EQ(m_dialog.windowTitle(), QStringLiteral("Sensitiver Link Eigenschaften"));
    EXPECT_TRUE(m_dialog.windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(LinkDialog, LabelsEveryField)
{
    EXPECT_EQ(Labels(), "CBoxDataSource= Quelle|CBoxDataType= Typ|EditAccess= Zugang|EditAlias= Name|EditName= Objekt|"
                        "EditUrl= Verweis|EditValue= Obj. Wert");
}

TEST_F(LinkDialog, PutsTwoFieldsIntoEachOfItsLastTwoRows)
{
    Show();
    EXPECT_EQ(Rows(), "EditUrl|EditAlias|EditName|EditValue CBoxDataType|EditAccess CBoxDataSource");
}

TEST_F(LinkDialog, NamesEveryFieldForAssistance)
{
    for (const auto& [field, name] : {std::pair{"EditUrl", "Verweis"},
                                      {"EditAlias", "Name"},
                                      {"EditName", "Objekt"},
                                      {"EditValue", "Obj. Wert"},
                                      {"CBoxDataType", "Typ"},
                                      {"EditAccess", "Zugang"},
                                      {"CBoxDataSource", "Quelle"}})
        EXPECT_EQ(Field<QWidget>(field)->accessibleName().toStdString(), name);
}

TEST_F(LinkDialog, OffersTypesAndSourcesInTheOrderOfTheirEnumerations)
{
    EXPECT_EQ(Entries("CBoxDataType"), "BINÄR|1BYTE[%]|1BYTE|2BYTE|4BYTE");
    EXPECT_EQ(Entries("CBoxDataSource"), "EIB|MODBUS|VIRTUAL");
    EXPECT_FALSE(Box("CBoxDataType")->isEditable());
    EXPECT_FALSE(Box("CBoxDataSource")->isEditable());
}

TEST_F(LinkDialog, GoesThroughItsFieldsInOrderWithTab)
{
    m_dialog.SetApplyEvent([](QObject*) {});
    EXPECT_EQ(TabOrder("EditUrl"), "EditUrl EditAlias EditName EditValue CBoxDataType EditAccess CBoxDataSource BtnOK "
                                   "BtnApply BtnCancel CheckAutoAccept");
}

TEST_F(LinkDialog, BeginsEmpty)
{
    EXPECT_EQ(Fields(), "||BINÄR|EIB");
    EXPECT_EQ(TextOf("EditUrl"), "");
    EXPECT_EQ(TextOf("EditValue"), "");
    EXPECT_EQ(ShownAccess(), "0");
    EXPECT_EQ(Editable(), "1111");
    EXPECT_FALSE(m_dialog.GetChanged());
}

TEST_F(LinkDialog, GivesBackWhatItWasGiven)
{
    Fill("1/2/3", "Licht \"Küche\"");
    m_dialog.SetLinkUrl(QStringLiteral("a\\b.html"));
    m_dialog.SetNodeValue(QStringLiteral("21,5"));
    m_dialog.SetDataType(dtmEIS10);
    m_dialog.SetNodeSource(nsVIRTUAL);
    m_dialog.SetAccessCode(7);
    EXPECT_EQ(Fields(), "1/2/3|Licht \"Küche\"|2BYTE|VIRTUAL");
    EXPECT_EQ(TextOf("EditUrl"), "a\\b.html");
    EXPECT_EQ(TextOf("EditValue"), "21,5");
    EXPECT_EQ(ShownAccess(), "7");
    EXPECT_EQ(m_dialog.GetItemName(), QStringLiteral("1/2/3"));
    EXPECT_EQ(m_dialog.GetNodeAlias(), QStringLiteral("Licht \"Küche\""));
    EXPECT_EQ(m_dialog.GetLinkUrl(), QStringLiteral("a\\b.html"));
    EXPECT_EQ(m_dialog.GetNodeValue(), QStringLiteral("21,5"));
    EXPECT_EQ(m_dialog.GetDataType(), dtmEIS10);
    EXPECT_EQ(m_dialog.GetNodeSource(), nsVIRTUAL);
    EXPECT_EQ(m_dialog.GetAccessCode(), 7);
}

TEST_F(LinkDialog, GivesBackEveryTypeAndSource)
{
    for (const TDataTypeMap type : {dtmEIS11, dtmEIS10, dtmEIS14, dtmEIS6, dtmEIS1}) {
        m_dialog.SetDataType(type);
        EXPECT_EQ(m_dialog.GetDataType(), type);
        EXPECT_EQ(Box("CBoxDataType")->currentIndex(), type);
    }
    for (const TNodeSource source : {nsMODBUS, nsVIRTUAL, nsEIB}) {
        m_dialog.SetNodeSource(source);
        EXPECT_EQ(m_dialog.GetNodeSource(), source);
        EXPECT_EQ(Box("CBoxDataSource")->currentIndex(), source);
    }
}

TEST_F(LinkDialog, ShowsTheAccessThatItHoldsAlsoForOneBeyondTheRange)
{
    m_dialog.SetAccessCode(25);
    EXPECT_EQ(ShownAccess(), "20");
    EXPECT_EQ(m_dialog.GetAccessCode(), 20);
    m_dialog.SetAccessCode(-3);
    EXPECT_EQ(ShownAccess(), "0");
    EXPECT_EQ(m_dialog.GetAccessCode(), 0);
}

// Changed flag

TEST_F(LinkDialog, IsChangedByTypingAndChoosingInEachField)
{
    Show();
    for (const char* field : EditFields)
        EXPECT_TRUE(Changes([&] { QTest::keyClicks(Edit(field), QStringLiteral("x")); })) << field;
    EXPECT_TRUE(Changes([this] { TypeAccess("7"); }));
    EXPECT_TRUE(Changes([this] { QTest::keyClick(Access(), Qt::Key_Down); }));
    EXPECT_EQ(m_dialog.GetAccessCode(), 6);
    for (const char* box : {"CBoxDataType", "CBoxDataSource"}) {
        Box(box)->setFocus();
        EXPECT_TRUE(Changes([&] { QTest::keyClick(Box(box), Qt::Key_Down); })) << box;
        EXPECT_EQ(Box(box)->currentIndex(), 1) << box;
        EXPECT_TRUE(Changes([&] { QTest::keyClick(Box(box), Qt::Key_Up); })) << box;
        EXPECT_FALSE(Changes([&] { QTest::keyClick(Box(box), Qt::Key_Up); })) << box;
    }
}

TEST_F(LinkDialog, IsChangedBySettersThatChangeAField)
{
    EXPECT_TRUE(Changes([this] { m_dialog.SetLinkUrl(QStringLiteral("a")); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetNodeAlias(QStringLiteral("a")); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetItemName(QStringLiteral("a")); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetNodeValue(QStringLiteral("a")); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetDataType(dtmEIS11); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetNodeSource(nsMODBUS); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetAccessCode(25); }));
}

TEST_F(LinkDialog, IsNotChangedBySettersThatChangeNothing)
{
    m_dialog.SetAccessCode(20);
    EXPECT_FALSE(Changes([this] {
        m_dialog.SetLinkUrl({});
        Fill("", "");
        m_dialog.SetNodeValue({});
        m_dialog.SetDataType(dtmEIS1);
        m_dialog.SetNodeSource(nsEIB);
        m_dialog.SetAccessCode(20);
        m_dialog.SetAccessCode(25);
    }));
    EXPECT_FALSE(Changes([this] { m_dialog.SetAcceptEsfItems(true); }));
    EXPECT_FALSE(Changes([this] { m_dialog.SetAcceptEsfItems(false); }));
}

// What can be edited

TEST_F(LinkDialog, LetsTheNameBeEditedInDatapointModeOnlyWithoutAnObject)
{
    m_dialog.SetAcceptEsfItems(true);
    EXPECT_EQ(Editable(), "1111");
    m_dialog.SetItemName(QStringLiteral("1/2/3"));
    EXPECT_EQ(Editable(), "1111");
    m_dialog.SetAcceptEsfItems(true);
    EXPECT_EQ(Editable(), "0111");
    m_dialog.SetItemName(QStringLiteral("1/2/4"));
    EXPECT_EQ(Editable(), "0111");
    m_dialog.SetItemName({});
    EXPECT_EQ(Editable(), "1111");
}

TEST_F(LinkDialog, LetsOnlyTheNameBeEditedInTheOtherMode)
{
    m_dialog.SetAcceptEsfItems(false);
    EXPECT_EQ(Editable(), "1000");
    m_dialog.SetItemName(QStringLiteral("1/2/3"));
    m_dialog.SetAcceptEsfItems(false);
    EXPECT_EQ(Editable(), "1000");
    m_dialog.SetAcceptEsfItems(true);
    EXPECT_EQ(Editable(), "0111");
}

// Files

TEST_F(LinkDialog, AsksForTheValidationOfFilesOnItsUrlOnly)
{
    QStringList asked;
    m_dialog.SetValidateFileEvent([&](const QObject* sender, QString& fileName) {
        asked.append(sender->objectName() + u' ' + fileName);
        fileName = QStringLiteral("/bild.png");
        return true;
    });
    Show();
    EXPECT_TRUE(Changes([this] { EXPECT_TRUE(DropFile("EditUrl")); }));
    EXPECT_TRUE(Changes([this] { EXPECT_TRUE(DropFile("EditValue")); }));
    EXPECT_EQ(TextOf("EditUrl"), "/bild.png");
    EXPECT_EQ(TextOf("EditValue"), "\\tmp\\bild.png");
    EXPECT_EQ(asked, QStringList{QStringLiteral("EditUrl \\tmp\\bild.png")});
}

// Datapoints

TEST_F(LinkDialog, TakesADatapointOnNameAndObject)
{
    Show();
    m_dialog.SetNodeSource(nsVIRTUAL);
    m_dialog.SetLinkUrl(QStringLiteral("u"));
    m_dialog.SetNodeValue(QStringLiteral("v"));
    m_dialog.SetAccessCode(3);
    EXPECT_TRUE(Changes([this] { EXPECT_TRUE(Drop("EditName", *Datapoint("1/2/3", "Licht Küche", "5"))); }));
    EXPECT_EQ(Fields(), "1/2/3|Licht Küche|2BYTE|EIB");
    EXPECT_TRUE(Changes([this] { EXPECT_TRUE(Drop("EditAlias", *Datapoint("4/5/6", "Tor", "6"))); }));
    EXPECT_EQ(Fields(), "4/5/6|Tor|1BYTE[%]|EIB");
    EXPECT_EQ(TextOf("EditUrl"), "u");
    EXPECT_EQ(TextOf("EditValue"), "v");
    EXPECT_EQ(m_dialog.GetAccessCode(), 3);
}

TEST_F(LinkDialog, IsChangedByADatapointThatIsThereAlready)
{
    Show();
    EXPECT_TRUE(Drop("EditName", *Datapoint("1/2/3", "Licht", "1")));
    EXPECT_TRUE(Changes([this] { Drop("EditName", *Datapoint("1/2/3", "Licht", "1")); }));
}

TEST_F(LinkDialog, PutsEveryTypeOfADatapointWhereItsTableSays)
{
    Show();
    const std::array<std::pair<const char*, const char*>, 11> types{{{"1", "BINÄR"},
                                                                     {"5", "2BYTE"},
                                                                     {"6", "1BYTE[%]"},
                                                                     {"9", "4BYTE"},
                                                                     {"10", "BINÄR"},
                                                                     {"11", "4BYTE"},
                                                                     {"14", "BINÄR"},
                                                                     {"0", "BINÄR"},
                                                                     {"-5", "BINÄR"},
                                                                     {"", "BINÄR"},
                                                                     {"6x", "BINÄR"}}};
    for (const auto& [type, entry] : types) {
        m_dialog.SetDataType(dtmEIS14);
        EXPECT_TRUE(Drop("EditName", *Datapoint("a", "b", type)));
        EXPECT_EQ(Box("CBoxDataType")->currentText().toStdString(), entry) << type;
    }
}

TEST_F(LinkDialog, TakesADatapointWithoutPropertiesAsAnEmptyOne)
{
    Show();
    Fill("alt", "alt");
    m_dialog.SetAcceptEsfItems(true);
    m_dialog.SetDataType(dtmEIS11);
    m_dialog.SetNodeSource(nsMODBUS);
    TPropertyDragObject object;
    object.Add(QStringLiteral("other"), QStringLiteral("x"));
    const std::unique_ptr<QMimeData> content(object.ToMimeData());
    EXPECT_TRUE(Drop("EditName", *content));
    EXPECT_EQ(Fields(), "||BINÄR|EIB");
    EXPECT_TRUE(IsEnabled("EditAlias"));
}

TEST_F(LinkDialog, TakesADatapointNowhereElseAndNothingElseOnNameAndObject)
{
    Show();
    for (const char* field : {"EditUrl", "EditValue", "CBoxDataType", "CBoxDataSource", "EditAccess"})
        EXPECT_FALSE(Drop(field, *Datapoint("1/2/3", "Licht", "5"))) << field;
    QMimeData text;
    text.setText(QStringLiteral("1/2/3"));
    for (const char* field : {"EditName", "EditAlias"}) {
        EXPECT_FALSE(Drop(field, text)) << field;
        EXPECT_FALSE(DropFile(field)) << field;
    }
    EXPECT_EQ(Fields(), "||BINÄR|EIB");
    EXPECT_FALSE(m_dialog.GetChanged());
}

TEST_F(LinkDialog, TakesACopiedDatapointByPasting)
{
    Show();
    for (const char* field : {"EditAlias", "EditName"}) {
        Fill("", "");
        QGuiApplication::clipboard()->setMimeData(Datapoint("1/2/3", "Licht", "11").release());
        EXPECT_TRUE(Changes([&] { QTest::keyClick(Edit(field), Qt::Key_V, Qt::ControlModifier); })) << field;
        EXPECT_EQ(Fields(), "1/2/3|Licht|4BYTE|EIB") << field;
    }
}

TEST_F(LinkDialog, LeavesThePastingOfPlainTextToItsFields)
{
    Show();
    QGuiApplication::clipboard()->setText(QStringLiteral("4/5/6"));
    for (const char* field : EditFields) {
        QTest::keyClick(Edit(field), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(TextOf(field), "4/5/6") << field;
    }
}
