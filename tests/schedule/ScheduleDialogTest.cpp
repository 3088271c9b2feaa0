#include "ScheduleDialog.h"

#include <QGroupBox>
#include <QLabel>
#include <QMap>
#include <QPushButton>
#include <QToolButton>

#include <limits>

namespace
{

class ScheduleDialog : public TScheduleDialog
{};

struct TLabelled
{
    const char* Field;
    const char* Label;
};

constexpr std::array Fields{
    TLabelled{"CBoxPartSelector", "Abschnitt"},
    TLabelled{"EditAlias", "Name"},
    TLabelled{"EditName", "Objekt"},
    TLabelled{"EditMinVal", "Min. Wert"},
    TLabelled{"EditMaxVal", "Max. Wert"},
    TLabelled{"CBoxDataType", "Typ"},
    TLabelled{"CheckNodeEnabled", "Aktiv"},
    TLabelled{"EditAccess", "Zugriff"},
    TLabelled{"CBoxDataSource", "Quelle"},
    TLabelled{"CheckEnabled", "Aktiv"},
    TLabelled{"CheckPostProcess", "Nachfahren"},
    TLabelled{"TimeEdit", "Zeit"},
    TLabelled{"EditValue", "Wert"},
};

constexpr std::array NodeFields{"CBoxPartSelector", "EditAlias",        "EditName",   "EditMinVal",    "EditMaxVal",
                                "CBoxDataType",     "CheckNodeEnabled", "EditAccess", "CBoxDataSource"};
constexpr std::array EntryFields{"CheckDay1", "CheckDay7", "CheckEnabled", "CheckPostProcess", "TimeEdit", "EditValue"};

} // namespace

TEST_F(ScheduleDialog, HasItsCaptionAndStaysOnTop)
{
    EXPECT_EQ(m_dialog.windowTitle(), QStringLiteral("Wochenschaltplan Eigenschaften"));
    EXPECT_TRUE(m_dialog.windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(ScheduleDialog, HasAFixedSize)
{
    Show();
    EXPECT_EQ(m_dialog.minimumSize(), m_dialog.maximumSize());
}

TEST_F(ScheduleDialog, LabelsEveryField)
{
    QMap<QString, QString> labels;
    for (const QLabel* label : m_dialog.findChildren<QLabel*>()) {
        if (label->buddy())
            labels.insert(label->buddy()->objectName(), label->text());
    }
    EXPECT_EQ(labels.size(), static_cast<qsizetype>(Fields.size()));
    for (const TLabelled& field : Fields)
        EXPECT_EQ(labels.value(QString::fromLatin1(field.Field)).toStdString(), field.Label) << field.Field;
}

TEST_F(ScheduleDialog, NamesTheDaysFromMondayOn)
{
    QStringList names;
    for (const char* day : DayBoxes)
        names.append(Field<QCheckBox>(day)->text());
    EXPECT_EQ(names.join(u' '), QStringLiteral("Mo Di Mi Do Fr Sa So"));
    const auto* frame = qobject_cast<QGroupBox*>(Field<QCheckBox>("CheckDay1")->parentWidget());
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->title(), QStringLiteral("Wochentage"));
}

TEST_F(ScheduleDialog, OffersTypesAndSourcesInTheOrderOfTheirEnumerations)
{
    EXPECT_EQ(Entries("CBoxDataType"), "BINÄR|1BYTE[%]|1BYTE|2BYTE|4BYTE");
    EXPECT_EQ(Entries("CBoxDataSource"), "EIB|MODBUS|VIRTUAL");
    for (const char* box : {"CBoxPartSelector", "CBoxDataType", "CBoxDataSource"})
        EXPECT_FALSE(Box(box)->isEditable()) << box;
}

TEST_F(ScheduleDialog, NamesItsButtons)
{
    EXPECT_EQ(Field<QPushButton>("BtnOK")->text(), QStringLiteral("OK"));
    EXPECT_EQ(Field<QPushButton>("BtnApply")->text(), QStringLiteral("Übernehmen"));
    EXPECT_EQ(Field<QPushButton>("BtnCancel")->text(), QStringLiteral("Abbrechen"));
    EXPECT_TRUE(Field<QPushButton>("BtnOK")->isDefault());
    EXPECT_EQ(Field<QToolButton>("SBtnUp")->toolTip(), QStringLiteral("Vorhergehender Menueintrag"));
    EXPECT_EQ(Field<QToolButton>("SBtnDown")->toolTip(), QStringLiteral("Nachfolgender Menueintrag"));
    EXPECT_TRUE(Field<QToolButton>("SBtnUp")->autoRaise());
    EXPECT_TRUE(Field<QToolButton>("SBtnDown")->autoRaise());
    EXPECT_EQ(Field<QCheckBox>("CheckAutoAccept")->text(),
              QStringLiteral("Änderungen bei Wechsel automatisch übernehmen"));
}

TEST_F(ScheduleDialog, AcceptsChangesByItselfAtFirst)
{
    EXPECT_TRUE(m_dialog.GetAutoAccept());
    Show();
    Tick("CheckAutoAccept");
    EXPECT_FALSE(m_dialog.GetAutoAccept());
    EXPECT_FALSE(m_dialog.GetChanged());
    m_dialog.SetAutoAccept(true);
    EXPECT_TRUE(IsChecked("CheckAutoAccept"));
}

// Title and pages

TEST_F(ScheduleDialog, ShowsItsTitleBehindTwoBlanksOnWhite)
{
    const auto* band = Field<QLabel>("LabelTitle");
    EXPECT_EQ(m_dialog.GetTitle(), QString());
    m_dialog.SetTitle(QStringLiteral("Licht <b>Flur</b> & Küche "));
    EXPECT_EQ(band->text(), QStringLiteral("  Licht <b>Flur</b> & Küche "));
    EXPECT_EQ(band->textFormat(), Qt::PlainText);
    EXPECT_EQ(m_dialog.GetTitle(), QStringLiteral("Licht <b>Flur</b> & Küche"));
    EXPECT_EQ(band->palette().color(QPalette::Window), QColor(Qt::white));
    EXPECT_TRUE(band->autoFillBackground());
}

TEST_F(ScheduleDialog, IsNotStretchedByALongTitle)
{
    Show();
    const int width = m_dialog.width();
    m_dialog.SetTitle(QString(10000, u'x'));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_dialog.width(), width);
}

TEST_F(ScheduleDialog, BeginsWithTheNodePage)
{
    Show();
    EXPECT_FALSE(m_dialog.GetIsSchedule());
    for (const char* field : NodeFields)
        EXPECT_TRUE(IsVisible(field)) << field;
    for (const char* field : EntryFields)
        EXPECT_FALSE(IsVisible(field)) << field;
}

TEST_F(ScheduleDialog, ShowsTheSchedulePage)
{
    Show();
    m_dialog.SetIsSchedule(true);
    EXPECT_TRUE(m_dialog.GetIsSchedule());
    for (const char* field : EntryFields)
        EXPECT_TRUE(IsVisible(field)) << field;
    for (const char* field : NodeFields)
        EXPECT_FALSE(IsVisible(field)) << field;
}

TEST_F(ScheduleDialog, EmptiesTheTitleOnlyWhenItChangesToTheNodePage)
{
    m_dialog.SetTitle(QStringLiteral("Licht"));
    m_dialog.SetIsSchedule(false);
    EXPECT_EQ(m_dialog.GetTitle(), QStringLiteral("Licht"));
    m_dialog.SetIsSchedule(true);
    EXPECT_EQ(m_dialog.GetTitle(), QStringLiteral("Licht"));
    m_dialog.SetIsSchedule(true);
    EXPECT_EQ(m_dialog.GetTitle(), QStringLiteral("Licht"));
    m_dialog.SetIsSchedule(false);
    EXPECT_EQ(m_dialog.GetTitle(), QString());
}

TEST_F(ScheduleDialog, GoesThroughTheFieldsOfEitherPageInOrderWithTab)
{
    const auto order = [this](const char* first, int count) {
        m_dialog.SetApplyEvent([](QObject*) {});
        Show();
        Field<QWidget>(first)->setFocus();
        QStringList names;
        for (int i = 0; i < count; ++i) {
            names.append(m_dialog.focusWidget()->objectName());
            QTest::keyClick(m_dialog.focusWidget(), Qt::Key_Tab);
        }
        return names.join(u' ').toStdString();
    };
    EXPECT_EQ(order("CBoxPartSelector", 14),
              "CBoxPartSelector EditAlias EditName EditMinVal EditMaxVal CBoxDataType CheckNodeEnabled EditAccess "
              "CBoxDataSource BtnOK BtnApply BtnCancel CheckAutoAccept CBoxPartSelector");
    m_dialog.SetIsSchedule(true);
    // The time has two places to stop, hours and minutes.
    EXPECT_EQ(order("CheckDay1", 17),
              "CheckDay1 CheckDay2 CheckDay3 CheckDay4 CheckDay5 CheckDay6 CheckDay7 CheckEnabled CheckPostProcess "
              "TimeEdit TimeEdit EditValue BtnOK BtnApply BtnCancel CheckAutoAccept CheckDay1");
}

// Properties of the node page

TEST_F(ScheduleDialog, GivesBackWhatItWasGiven)
{
    m_dialog.SetItemName(QStringLiteral("1/2/3"));
    m_dialog.SetNodeAlias(QStringLiteral("Licht"));
    m_dialog.SetNodeMinVal(QStringLiteral("-5,5"));
    m_dialog.SetNodeMaxVal(QStringLiteral("viel"));
    m_dialog.SetNodeAccess(-30);
    m_dialog.SetEnableFlag(true);
    m_dialog.SetDataType(dtmEIS10);
    m_dialog.SetNodeSource(nsVIRTUAL);
    m_dialog.SetSection(4);
    EXPECT_EQ(TextOf("EditName"), "1/2/3");
    EXPECT_EQ(TextOf("EditAlias"), "Licht");
    EXPECT_EQ(TextOf("EditMinVal"), "-5,5");
    EXPECT_EQ(TextOf("EditMaxVal"), "viel");
    EXPECT_EQ(TextOf("EditAccess"), "-30");
    EXPECT_TRUE(IsChecked("CheckNodeEnabled"));
    EXPECT_EQ(Box("CBoxDataType")->currentText(), QStringLiteral("2BYTE"));
    EXPECT_EQ(Box("CBoxDataSource")->currentText(), QStringLiteral("VIRTUAL"));
    EXPECT_EQ(Box("CBoxPartSelector")->currentText(), QStringLiteral("E"));
    EXPECT_EQ(m_dialog.GetItemName(), QStringLiteral("1/2/3"));
    EXPECT_EQ(m_dialog.GetNodeAlias(), QStringLiteral("Licht"));
    EXPECT_EQ(m_dialog.GetNodeMinVal(), QStringLiteral("-5,5"));
    EXPECT_EQ(m_dialog.GetNodeMaxVal(), QStringLiteral("viel"));
    EXPECT_EQ(m_dialog.GetNodeAccess(), -30);
    EXPECT_TRUE(m_dialog.GetEnableFlag());
    EXPECT_EQ(m_dialog.GetDataType(), dtmEIS10);
    EXPECT_EQ(m_dialog.GetNodeSource(), nsVIRTUAL);
    EXPECT_EQ(m_dialog.GetSection(), 4);
    m_dialog.SetEnableFlag(false);
    EXPECT_FALSE(m_dialog.GetEnableFlag());
}

TEST_F(ScheduleDialog, GivesBackEveryTypeAndSource)
{
    for (const TDataTypeMap type : {dtmEIS11, dtmEIS10, dtmEIS14, dtmEIS6, dtmEIS1}) {
        m_dialog.SetDataType(type);
        EXPECT_EQ(m_dialog.GetDataType(), type);
        EXPECT_EQ(Box("CBoxDataType")->currentIndex(), type);
    }
    for (const TNodeSource source : {nsMODBUS, nsVIRTUAL, nsEIB}) {
        m_dialog.SetNodeSource(source);
        EXPECT_EQ(m_dialog.GetNodeSource(), source);
    }
}

TEST_F(ScheduleDialog, KeepsTheEnabledFlagsOfBothPagesApart)
{
    m_dialog.SetEnableFlag(true);
    m_dialog.SetScheduleText(QStringLiteral("<schedule enabled=\"0\"/>"));
    EXPECT_TRUE(m_dialog.GetEnableFlag());
    m_dialog.SetEnableFlag(false);
    m_dialog.SetScheduleText(QStringLiteral("<schedule enabled=\"1\"/>"));
    EXPECT_FALSE(m_dialog.GetEnableFlag());
}

TEST_F(ScheduleDialog, ReadsAccessThatIsNoNumberAsZero)
{
    const std::array<std::pair<const char*, int>, 8> texts{{{"", 0},
                                                            {"abc", 0},
                                                            {"12x", 0},
                                                            {"1,5", 0},
                                                            {"99999999999", 0},
                                                            {"-7", -7},
                                                            {" 3", 3},
                                                            {"2147483647", 2147483647}}};
    Show();
    for (const auto& [text, access] : texts) {
        Edit("EditAccess")->selectAll();
        QTest::keyClick(Edit("EditAccess"), Qt::Key_Delete);
        QTest::keyClicks(Edit("EditAccess"), QString::fromLatin1(text));
        EXPECT_EQ(m_dialog.GetNodeAccess(), access) << text;
    }
    m_dialog.SetNodeAccess(std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(m_dialog.GetNodeAccess(), std::numeric_limits<std::int32_t>::min());
}

TEST_F(ScheduleDialog, EnablesTheAliasWhenAnEmptyNameIsSet)
{
    Edit("EditAlias")->setEnabled(false);
    m_dialog.SetItemName(QStringLiteral("1/1/1"));
    EXPECT_FALSE(IsEnabled("EditAlias"));
    m_dialog.SetItemName({});
    EXPECT_TRUE(IsEnabled("EditAlias"));
}

// Sections

TEST_F(ScheduleDialog, KeepsItsPositionInANewListOfSections)
{
    m_dialog.SetSection(3);
    QStringList sections = Sections(5);
    sections[3] = QStringLiteral("Neu");
    m_dialog.SetScheduleGroups(sections);
    EXPECT_EQ(m_dialog.GetSection(), 3);
    EXPECT_EQ(Box("CBoxPartSelector")->currentText(), QStringLiteral("Neu"));
    EXPECT_EQ(Entries("CBoxPartSelector"), "A|B|C|Neu|E");
}

TEST_F(ScheduleDialog, LowersItsPositionToTheLastOfFewerSections)
{
    m_dialog.SetSection(4);
    m_dialog.SetScheduleGroups(Sections(2));
    EXPECT_EQ(m_dialog.GetSection(), 1);
    EXPECT_EQ(Box("CBoxPartSelector")->currentText(), QStringLiteral("B"));
}

TEST_F(ScheduleDialog, SelectsTheFirstSectionWhenNoneWasSelected)
{
    m_dialog.SetSection(-1);
    m_dialog.SetScheduleGroups(Sections(3));
    EXPECT_EQ(m_dialog.GetSection(), 0);
    EXPECT_EQ(Box("CBoxPartSelector")->currentText(), QStringLiteral("A"));
}

TEST_F(ScheduleDialog, IsSafeWithoutSections)
{
    m_dialog.SetSection(3);
    m_dialog.SetScheduleGroups({});
    EXPECT_EQ(m_dialog.GetSection(), -1);
    EXPECT_EQ(Box("CBoxPartSelector")->count(), 0);
    m_dialog.SetSection(0);
    EXPECT_EQ(m_dialog.GetSection(), -1);
    m_dialog.SetScheduleGroups(Sections(2));
    EXPECT_EQ(m_dialog.GetSection(), 0);
}

TEST_F(ScheduleDialog, ShowsSectionsOfTheSameName)
{
    m_dialog.SetScheduleGroups({QStringLiteral("Flur"), QStringLiteral("Flur"), QString()});
    EXPECT_EQ(Entries("CBoxPartSelector"), "Flur|Flur|");
    m_dialog.SetSection(1);
    EXPECT_EQ(m_dialog.GetSection(), 1);
}
