#include "SceneDialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

#include <array>
#include <limits>

namespace
{

class SceneDialog : public TSceneDialog
{};

struct TLabelled
{
    const char* Field;
    const char* Label;
};

constexpr std::array Fields{
    TLabelled{"CBoxPartSelector", " Abschnitt"},
    TLabelled{"EditAlias", " Name"},
    TLabelled{"EditName", " Objekt"},
    TLabelled{"EditValue", " Obj. Wert"},
    TLabelled{"CheckEnabled", " Aktiv"},
    TLabelled{"EditDelay", " Delay"},
    TLabelled{"CBoxDataType", " Typ"},
    TLabelled{"CBoxDataSource", " Quelle"},
};

} // namespace

TEST_F(SceneDialog, HasItsCaption)
{
    EXPECT_EQ(m_dialog.windowTitle(), QStringLiteral("Szene Eigenschaften"));
    EXPECT_TRUE(m_dialog.windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(SceneDialog, LabelsEveryFieldWithABlankBeforeTheText)
{
    const QList<QLabel*> labels = m_dialog.findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), static_cast<qsizetype>(Fields.size()));
    for (qsizetype i = 0; i < labels.size(); ++i) {
        const TLabelled& expected = Fields[static_cast<std::size_t>(i)];
        EXPECT_EQ(labels[i]->text().toStdString(), expected.Label);
        ASSERT_NE(labels[i]->buddy(), nullptr) << expected.Label;
        EXPECT_EQ(labels[i]->buddy()->objectName().toStdString(), expected.Field);
    }
}

TEST_F(SceneDialog, ShowsEveryLabelToTheLeftOfItsField)
{
    Show();
    const QList<QLabel*> labels = m_dialog.findChildren<QLabel*>();
    for (const QLabel* label : labels)
        EXPECT_LE(label->geometry().right(), label->buddy()->geometry().left()) << label->text().toStdString();
}

TEST_F(SceneDialog, OffersTypesAndSourcesInTheOrderOfTheirEnumerations)
{
    EXPECT_EQ(Entries("CBoxDataType"), "BINÄR|1BYTE[%]|1BYTE|2BYTE|4BYTE");
    EXPECT_EQ(Entries("CBoxDataSource"), "EIB|MODBUS|VIRTUAL");
    EXPECT_EQ(Box("CBoxDataSource")->currentText(), QStringLiteral("EIB"));
    EXPECT_FALSE(Box("CBoxDataType")->isEditable());
    EXPECT_FALSE(Box("CBoxPartSelector")->isEditable());
}

TEST_F(SceneDialog, NamesItsButtons)
{
    EXPECT_EQ(Field<QPushButton>("BtnOK")->text(), QStringLiteral("OK"));
    EXPECT_EQ(Field<QPushButton>("BtnApply")->text(), QStringLiteral("Übernehmen"));
    EXPECT_EQ(Field<QPushButton>("BtnCancel")->text(), QStringLiteral("Abbrechen"));
    EXPECT_TRUE(Field<QPushButton>("BtnOK")->isDefault());
    EXPECT_EQ(Field<QToolButton>("SBtnUp")->toolTip(), QStringLiteral("Vorhergehender Menueintrag"));
    EXPECT_EQ(Field<QToolButton>("SBtnDown")->toolTip(), QStringLiteral("Nachfolgender Menueintrag"));
    EXPECT_EQ(Field<QCheckBox>("CheckAutoAccept")->text(),
              QStringLiteral("Änderungen bei Wechsel automatisch übernehmen"));
}

TEST_F(SceneDialog, AcceptsChangesByItselfAtFirst)
{
    EXPECT_TRUE(m_dialog.GetAutoAccept());
    Show();
    QTest::mouseClick(Field<QCheckBox>("CheckAutoAccept"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_FALSE(m_dialog.GetAutoAccept());
    m_dialog.SetAutoAccept(true);
    EXPECT_TRUE(Field<QCheckBox>("CheckAutoAccept")->isChecked());
}

TEST_F(SceneDialog, GoesThroughItsFieldsInOrderWithTab)
{
    m_dialog.SetApplyEvent([](QObject*) {});
    Show();
    Field<QWidget>("CBoxPartSelector")->setFocus();
    QStringList order;
    for (int i = 0; i < 13; ++i) {
        order.append(m_dialog.focusWidget()->objectName());
        QTest::keyClick(m_dialog.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order.join(u' ').toStdString(),
              "CBoxPartSelector EditAlias EditName EditValue CheckEnabled EditDelay CBoxDataType CBoxDataSource BtnOK "
              "BtnApply BtnCancel CheckAutoAccept CBoxPartSelector");
}

TEST_F(SceneDialog, GivesBackWhatItWasGiven)
{
    m_dialog.SetItemName(QStringLiteral("1/2/3"));
    m_dialog.SetNodeAlias(QStringLiteral("Licht"));
    m_dialog.SetNodeValue(QStringLiteral("12,5"));
    m_dialog.SetNodeDelay(-30);
    m_dialog.SetEnableFlag(true);
    m_dialog.SetDataType(dtmEIS10);
    m_dialog.SetNodeSource(nsVIRTUAL);
    m_dialog.SetSection(4);
    EXPECT_EQ(TextOf("EditName"), "1/2/3");
    EXPECT_EQ(TextOf("EditAlias"), "Licht");
    EXPECT_EQ(TextOf("EditValue"), "12,5");
    EXPECT_EQ(TextOf("EditDelay"), "-30");
    EXPECT_TRUE(Field<QCheckBox>("CheckEnabled")->isChecked());
    EXPECT_EQ(Box("CBoxDataType")->currentText(), QStringLiteral("2BYTE"));
    EXPECT_EQ(Box("CBoxDataSource")->currentText(), QStringLiteral("VIRTUAL"));
    EXPECT_EQ(Box("CBoxPartSelector")->currentText(), QStringLiteral("E"));
    EXPECT_EQ(m_dialog.GetItemName(), QStringLiteral("1/2/3"));
    EXPECT_EQ(m_dialog.GetNodeAlias(), QStringLiteral("Licht"));
    EXPECT_EQ(m_dialog.GetNodeValue(), QStringLiteral("12,5"));
    EXPECT_EQ(m_dialog.GetNodeDelay(), -30);
    EXPECT_TRUE(m_dialog.GetEnableFlag());
    EXPECT_EQ(m_dialog.GetDataType(), dtmEIS10);
    EXPECT_EQ(m_dialog.GetNodeSource(), nsVIRTUAL);
    EXPECT_EQ(m_dialog.GetSection(), 4);
}

TEST_F(SceneDialog, ReadsDelayTextThatIsNoNumberAsZero)
{
    const std::array<std::pair<const char*, int>, 7> texts{
        {{"", 0}, {"abc", 0}, {"12s", 0}, {"1,5", 0}, {"99999999999", 0}, {"-7", -7}, {"2147483647", 2147483647}}};
    for (const auto& [text, delay] : texts) {
        Edit("EditDelay")->setText(QString::fromLatin1(text));
        EXPECT_EQ(m_dialog.GetNodeDelay(), delay) << text;
    }
    m_dialog.SetNodeDelay(std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(m_dialog.GetNodeDelay(), std::numeric_limits<std::int32_t>::min());
}

// Changed flag

TEST_F(SceneDialog, IsUnchangedAfterItsFieldsWereFilled)
{
    Show();
    m_dialog.SetItemName(QStringLiteral("a"));
    m_dialog.SetNodeAlias(QStringLiteral("b"));
    m_dialog.SetNodeValue(QStringLiteral("c"));
    m_dialog.SetNodeDelay(4);
    m_dialog.SetEnableFlag(true);
    m_dialog.SetDataType(dtmEIS11);
    m_dialog.SetNodeSource(nsMODBUS);
    m_dialog.SetSection(3);
    m_dialog.SetSceneSections(Sections(2));
    EXPECT_FALSE(m_dialog.GetChanged());
}

TEST_F(SceneDialog, IsChangedByTypingInEachEditField)
{
    Show();
    for (const char* field : {"EditAlias", "EditName", "EditValue", "EditDelay"}) {
        m_dialog.SetChanged(false);
        QTest::keyClicks(Edit(field), QStringLiteral("7"));
        EXPECT_TRUE(m_dialog.GetChanged()) << field;
    }
}

TEST_F(SceneDialog, IsChangedByAClickOnTheEnabledBox)
{
    Show();
    const bool before = m_dialog.GetEnableFlag();
    QTest::mouseClick(Field<QCheckBox>("CheckEnabled"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_NE(m_dialog.GetEnableFlag(), before);
    EXPECT_TRUE(m_dialog.GetChanged());
}

TEST_F(SceneDialog, IsChangedByChoosingAnotherTypeOrSource)
{
    Show();
    for (const char* box : {"CBoxDataType", "CBoxDataSource"}) {
        m_dialog.SetChanged(false);
        Box(box)->setFocus();
        QTest::keyClick(Box(box), Qt::Key_Down);
        EXPECT_EQ(Box(box)->currentIndex(), 1) << box;
        EXPECT_TRUE(m_dialog.GetChanged()) << box;
    }
}

TEST_F(SceneDialog, IsNotChangedByTheBoxForAutomaticAcceptance)
{
    Show();
    QTest::mouseClick(Field<QCheckBox>("CheckAutoAccept"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_FALSE(m_dialog.GetChanged());
}

TEST_F(SceneDialog, BeginsUnchangedWhenDisplayedAndExecuted)
{
    m_dialog.SetChanged(true);
    Show();
    EXPECT_FALSE(m_dialog.GetChanged());
    EXPECT_FALSE(m_dialog.isModal());
    m_dialog.close();
    m_dialog.SetChanged(true);
    bool changed = true;
    QTimer::singleShot(0, &m_dialog, [&] {
        changed = m_dialog.GetChanged();
        m_dialog.reject();
    });
    m_dialog.Execute();
    EXPECT_FALSE(changed);
}

// Modes

TEST_F(SceneDialog, EditsADatapointWithoutANameCompletely)
{
    m_dialog.SetItemName({});
    m_dialog.SetAcceptEsfItems(true);
    for (const char* field : {"EditName", "EditAlias", "CBoxDataType", "CBoxDataSource", "EditValue", "EditDelay"})
        EXPECT_TRUE(IsEnabled(field)) << field;
}

TEST_F(SceneDialog, KeepsTheAliasOfADatapointWithAName)
{
    m_dialog.SetItemName(QStringLiteral("1/1/1"));
    m_dialog.SetAcceptEsfItems(true);
    EXPECT_TRUE(IsEnabled("EditName"));
    EXPECT_TRUE(IsEnabled("CBoxDataType"));
    EXPECT_TRUE(IsEnabled("CBoxDataSource"));
    EXPECT_FALSE(IsEnabled("EditAlias"));
}

TEST_F(SceneDialog, EditsTheAliasAgainWhenTheNameIsSetEmpty)
{
    m_dialog.SetItemName(QStringLiteral("1/1/1"));
    m_dialog.SetAcceptEsfItems(true);
    m_dialog.SetItemName({});
    EXPECT_TRUE(IsEnabled("EditAlias"));
    m_dialog.SetItemName(QStringLiteral("1/1/2"));
    EXPECT_TRUE(IsEnabled("EditAlias"));
}

TEST_F(SceneDialog, EditsTheAliasAgainWhenTheNameWasClearedAndTheModeIsSetAgain)
{
    m_dialog.SetItemName(QStringLiteral("1/1/1"));
    m_dialog.SetAcceptEsfItems(true);
    Show();
    Edit("EditName")->selectAll();
    QTest::keyClick(Edit("EditName"), Qt::Key_Delete);
    EXPECT_FALSE(IsEnabled("EditAlias"));
    m_dialog.SetAcceptEsfItems(true);
    EXPECT_TRUE(IsEnabled("EditAlias"));
}

TEST_F(SceneDialog, EditsOnlyTheAliasOfASceneBesidesItsOwnFields)
{
    m_dialog.SetItemName(QStringLiteral("1/1/1"));
    m_dialog.SetAcceptEsfItems(false);
    for (const char* field : {"EditName", "CBoxDataType", "CBoxDataSource"})
        EXPECT_FALSE(IsEnabled(field)) << field;
    for (const char* field : {"EditAlias", "EditValue", "EditDelay", "CheckEnabled", "CBoxPartSelector"})
        EXPECT_TRUE(IsEnabled(field)) << field;
}

TEST_F(SceneDialog, TakesItsModeFromTheSection)
{
    const std::array<std::pair<int, bool>, 5> sections{{{0, true}, {1, true}, {2, false}, {4, false}, {-1, true}}};
    for (const auto& [section, isDatapoint] : sections) {
        m_dialog.SetSection(section);
        EXPECT_EQ(m_dialog.GetSection(), section);
        EXPECT_EQ(IsEnabled("EditName"), isDatapoint) << section;
    }
}

// Sections

TEST_F(SceneDialog, SelectsTheSecondOfTwoSectionsWhenTheThirdOfThreeWasSelected)
{
    m_dialog.SetSceneSections(Sections(3));
    m_dialog.SetSection(2);
    EXPECT_FALSE(IsEnabled("EditName"));
    m_dialog.SetSceneSections(Sections(2));
    EXPECT_EQ(m_dialog.GetSection(), 1);
    EXPECT_EQ(Box("CBoxPartSelector")->currentText(), QStringLiteral("B"));
    EXPECT_TRUE(IsEnabled("EditName"));
}

TEST_F(SceneDialog, KeepsItsPositionInANewListOfSections)
{
    m_dialog.SetSection(3);
    QStringList sections = Sections(5);
    sections[3] = QStringLiteral("Neu");
    m_dialog.SetSceneSections(sections);
    EXPECT_EQ(m_dialog.GetSection(), 3);
    EXPECT_EQ(Box("CBoxPartSelector")->currentText(), QStringLiteral("Neu"));
    EXPECT_EQ(Entries("CBoxPartSelector"), "A|B|C|Neu|E");
    EXPECT_FALSE(IsEnabled("EditName"));
}

TEST_F(SceneDialog, SelectsTheFirstSectionWhenNoneWasSelected)
{
    m_dialog.SetSection(-1);
    m_dialog.SetSceneSections(Sections(3));
    EXPECT_EQ(m_dialog.GetSection(), 0);
    EXPECT_TRUE(IsEnabled("EditName"));
}

TEST_F(SceneDialog, IsSafeWithoutSections)
{
    m_dialog.SetSection(3);
    m_dialog.SetSceneSections({});
    EXPECT_EQ(m_dialog.GetSection(), -1);
    EXPECT_EQ(Box("CBoxPartSelector")->count(), 0);
    EXPECT_TRUE(IsEnabled("EditName"));
    m_dialog.SetSection(7);
    EXPECT_EQ(m_dialog.GetSection(), -1);
    m_dialog.SetSceneSections(Sections(2));
    EXPECT_EQ(m_dialog.GetSection(), 0);
}
