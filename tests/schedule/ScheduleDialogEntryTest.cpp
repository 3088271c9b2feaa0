#include "ScheduleDialog.h"

#include <QClipboard>
#include <QGuiApplication>

namespace
{

class ScheduleDialogEntry : public TScheduleDialog
{
protected:
    void Set(const char* text) { m_dialog.SetScheduleText(QString::fromUtf8(text)); }
    std::string SetAndBuild(const char* text)
    {
        Set(text);
        return EntryText();
    }
    // Types into the time field from its beginning on.
    void TypeTime(const char* keys)
    {
        Time()->setFocus();
        QTest::keyClick(Time(), Qt::Key_Home);
        Time()->setCurrentSection(QDateTimeEdit::HourSection);
        Time()->setSelectedSection(QDateTimeEdit::HourSection);
        QTest::keyClicks(Time(), QString::fromLatin1(keys));
    }
    std::string ShownTime() const { return Time()->text().toStdString(); }
};

struct TBuildCase
{
    const char* Text;
    const char* Built;
};

constexpr auto Fresh = R"(<schedule time="00:00" dow="0000000" value="" enabled="1" postprocess="0" />)";

// What the dialog makes of a text when nothing is edited.
constexpr std::array BuildCases{
    TBuildCase{R"(<schedule time="07:05" dow="1111100" value="21,5" enabled="1" postprocess="0" />)",
               R"(<schedule time="07:05" dow="1111100" value="21,5" enabled="1" postprocess="0" />)"},
    TBuildCase{R"(<schedule time="07:05" dow="1111100" value="21,5" enabled="1" postprocess="0"/>)",
               R"(<schedule time="07:05" dow="1111100" value="21,5" enabled="1" postprocess="0" />)"},
    TBuildCase{"<schedule postprocess='1' enabled='0' value='a b' dow='0000011' time='23:59'></schedule>",
               R"(<schedule time="23:59" dow="0000011" value="a b" enabled="0" postprocess="1" />)"},
    TBuildCase{"<schedule />", Fresh},
    TBuildCase{"<schedule time='x' dow='Mo' enabled='nein' postprocess='ja'/>", Fresh},
    TBuildCase{"<schedule time='25:00' dow='' enabled='2' postprocess=''/>", Fresh},
    TBuildCase{"<schedule time='7:5:59' dow='1' enable='0' postprocess='-1' room='3'><x/></schedule>",
               R"(<schedule time="07:05" dow="1000000" value="" enabled="0" postprocess="1" />)"},
    TBuildCase{"<schedule time='x:30'/>",
               R"(<schedule time="00:30" dow="0000000" value="" enabled="1" postprocess="0" />)"},
    TBuildCase{
        "<SCHEDULE value='&quot;1&quot; &amp; &#10;'/>",
        R"(<schedule time="00:00" dow="0000000" value="&quot;1&quot; &amp; &#10;" enabled="1" postprocess="0" />)"},
    TBuildCase{"<schedule value='say \"x\" < %s'/>",
               R"(<schedule time="00:00" dow="0000000" value="say "x" < %s" enabled="1" postprocess="0" />)"},
};

} // namespace

TEST_F(ScheduleDialogEntry, ChangesToTheSchedulePage)
{
    Show();
    m_dialog.SetTitle(QStringLiteral("Licht"));
    Set("<schedule />");
    EXPECT_TRUE(m_dialog.GetIsSchedule());
    EXPECT_TRUE(IsVisible("TimeEdit"));
    EXPECT_EQ(m_dialog.GetTitle(), QStringLiteral("Licht"));
}

TEST_F(ScheduleDialogEntry, FillsEveryField)
{
    Set(R"(<schedule time="07:05" dow="1010101" value="21,5" enabled="1" postprocess="1" />)");
    EXPECT_EQ(Days(), "1010101");
    EXPECT_EQ(ShownTime(), "07:05");
    EXPECT_EQ(TextOf("EditValue"), "21,5");
    EXPECT_TRUE(IsChecked("CheckEnabled"));
    EXPECT_TRUE(IsChecked("CheckPostProcess"));
    Set("<schedule time='22:00' dow='0101010' value='' enabled='0' postprocess='0'/>");
    EXPECT_EQ(Days(), "0101010");
    EXPECT_EQ(ShownTime(), "22:00");
    EXPECT_EQ(TextOf("EditValue"), "");
    EXPECT_FALSE(IsChecked("CheckEnabled"));
    EXPECT_FALSE(IsChecked("CheckPostProcess"));
}

TEST_F(ScheduleDialogEntry, ChangesNothingForATextThatIsNone)
{
    const std::string before =
        SetAndBuild(R"(<schedule time="07:05" dow="1010101" value="21,5" enabled="0" postprocess="1" />)");
    for (const bool isSchedule : {false, true}) {
        m_dialog.SetIsSchedule(isSchedule);
        m_dialog.SetTitle(QStringLiteral("Licht"));
        for (const char* text : {"", "Licht", "<schedule/>", "<schedule", " <schedule time='1:00' />",
                                 "<schedules time='1:00' dow='1111111' value='x' enabled='1' postprocess='0' />"}) {
            EXPECT_EQ(SetAndBuild(text), before) << text;
            EXPECT_EQ(m_dialog.GetIsSchedule(), isSchedule) << text;
            EXPECT_EQ(m_dialog.GetTitle(), QStringLiteral("Licht")) << text;
        }
    }
}

TEST_F(ScheduleDialogEntry, LeavesMissingDaysUnchecked)
{
    Set("<schedule dow='1111111'/>");
    Set("<schedule dow='101'/>");
    EXPECT_EQ(Days(), "1010000");
    Set("<schedule />");
    EXPECT_EQ(Days(), "0000000");
}

TEST_F(ScheduleDialogEntry, ChecksActiveForWhatIsNoNumberAndPostProcessingNot)
{
    Set("<schedule enabled='0' postprocess='1'/>");
    Set("<schedule enabled='x' postprocess='x'/>");
    EXPECT_TRUE(IsChecked("CheckEnabled"));
    EXPECT_FALSE(IsChecked("CheckPostProcess"));
}

TEST_F(ScheduleDialogEntry, IsBuiltAnewFromWhateverWasRead)
{
    for (const TBuildCase& build : BuildCases) {
        Set("<schedule time='11:11' dow='1111111' value='old' enabled='0' postprocess='1'/>");
        EXPECT_EQ(SetAndBuild(build.Text), build.Built) << build.Text;
    }
}

TEST_F(ScheduleDialogEntry, KeepsAnythingAsItsValue)
{
    for (const QString& value : {QStringLiteral("Küche € Ω 😀"), QStringLiteral("%s %1 %n"), QStringLiteral("<x/>"),
                                 QStringLiteral("  "), QString(100000, u'x')}) {
        m_dialog.SetScheduleText(QStringLiteral("<schedule value=\"") + value + QStringLiteral("\"/>"));
        EXPECT_TRUE(m_dialog.GetScheduleText().contains(QStringLiteral(" value=\"") + value + u'"'))
            << value.left(20).toStdString();
    }
}

TEST_F(ScheduleDialogEntry, IsMidnightOnNoDayAtFirst)
{
    EXPECT_EQ(EntryText(), R"(<schedule time="00:00" dow="0000000" value="" enabled="0" postprocess="0" />)");
}

// By hand

TEST_F(ScheduleDialogEntry, TakesEachDayByAClick)
{
    ShowEntry();
    for (std::size_t day = 0; day < DayBoxes.size(); ++day) {
        Tick(DayBoxes[day]);
        std::string expected(DayBoxes.size(), '0');
        expected[day] = '1';
        EXPECT_EQ(Days(), expected);
        EXPECT_NE(EntryText().find(" dow=\"" + expected + "\" "), std::string::npos) << EntryText();
        Tick(DayBoxes[day]);
    }
}

TEST_F(ScheduleDialogEntry, TakesTheTimeThatIsTyped)
{
    ShowEntry();
    TypeTime("0730");
    EXPECT_EQ(ShownTime(), "07:30");
    EXPECT_TRUE(m_dialog.GetChanged());
    EXPECT_EQ(EntryText(), R"(<schedule time="07:30" dow="0000000" value="0" enabled="0" postprocess="0" />)");
    TypeTime("23:59");
    EXPECT_EQ(ShownTime(), "23:59");
}

TEST_F(ScheduleDialogEntry, StepsTheHoursAndTheMinutesByTheArrowKeys)
{
    ShowEntry();
    TypeTime("");
    QTest::keyClick(Time(), Qt::Key_Up);
    EXPECT_EQ(ShownTime(), "13:00");
    Time()->setSelectedSection(QDateTimeEdit::MinuteSection);
    QTest::keyClick(Time(), Qt::Key_Up);
    QTest::keyClick(Time(), Qt::Key_Up);
    EXPECT_EQ(ShownTime(), "13:02");
    EXPECT_TRUE(m_dialog.GetChanged());
}

TEST_F(ScheduleDialogEntry, ShowsNoTimeThatIsNone)
{
    ShowEntry();
    TypeTime("9999");
    EXPECT_TRUE(Time()->time().isValid());
    QTest::keyClick(Time(), Qt::Key_Tab);
    const std::string text = EntryText();
    EXPECT_EQ(text.find("time=\"99"), std::string::npos) << text;
}

TEST_F(ScheduleDialogEntry, TakesTheValueThatIsTypedAsItStands)
{
    ShowEntry();
    Edit("EditValue")->selectAll();
    QTest::keyClicks(Edit("EditValue"), QStringLiteral("a\"b & <c>"));
    EXPECT_EQ(EntryText(), R"(<schedule time="12:00" dow="0000000" value="a"b & <c>" enabled="0" postprocess="0" />)");
}

TEST_F(ScheduleDialogEntry, TakesPastedTextAsItsValue)
{
    ShowEntry();
    QGuiApplication::clipboard()->setText(QStringLiteral("21,5"));
    Edit("EditValue")->selectAll();
    QTest::keyClick(Edit("EditValue"), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(TextOf("EditValue"), "21,5");
    EXPECT_TRUE(m_dialog.GetChanged());
}

TEST_F(ScheduleDialogEntry, ComesBackAfterAChangeOfPages)
{
    const std::string before =
        SetAndBuild(R"(<schedule time="07:05" dow="1" value="7" enabled="0" postprocess="1" />)");
    m_dialog.SetIsSchedule(false);
    m_dialog.SetItemName(QStringLiteral("1/1/1"));
    m_dialog.SetEnableFlag(true);
    m_dialog.SetIsSchedule(true);
    EXPECT_EQ(EntryText(), before);
}
