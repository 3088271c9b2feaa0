#pragma once

#include "TestSupport.h"
#include "dlgScheduleProps.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPoint>
#include <QTest>
#include <QTimeEdit>
#include <gtest/gtest.h>

#include <array>
#include <string>

// The properties dialog alone, with five sections of which the first is selected. It begins with the node page.
class TScheduleDialog : public testing::Test
{
protected:
    TScheduleDialog()
    {
        m_dialog.SetScheduleGroups(Sections(5));
        m_dialog.SetSection(0);
    }

    // "A", "B", "C", ...
    static QStringList Sections(int count)
    {
        QStringList sections;
        for (int i = 0; i < count; ++i)
            sections.append(QString(QChar(u'A' + i)));
        return sections;
    }
    void Show()
    {
        m_dialog.Display();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_dialog));
    }
    // Shown with the schedule page.
    void ShowEntry(const char* text = R"(<schedule time="12:00" dow="0000000" value="0" enabled="0" postprocess="0"/>)")
    {
        m_dialog.SetScheduleText(QString::fromUtf8(text));
        Show();
    }
    template <class TField> TField* Field(const char* name) const
    {
        auto* field = m_dialog.findChild<TField*>(QLatin1StringView(name));
        EXPECT_NE(field, nullptr) << name;
        return field;
    }
    QLineEdit* Edit(const char* name) const { return Field<QLineEdit>(name); }
    QComboBox* Box(const char* name) const { return Field<QComboBox>(name); }
    QTimeEdit* Time() const { return Field<QTimeEdit>("TimeEdit"); }
    bool IsEnabled(const char* name) const { return Field<QWidget>(name)->isEnabled(); }
    bool IsVisible(const char* name) const { return Field<QWidget>(name)->isVisible(); }
    bool IsChecked(const char* name) const { return Field<QCheckBox>(name)->isChecked(); }
    void Press(const char* button) const { QTest::mouseClick(Field<QAbstractButton>(button), Qt::LeftButton); }
    // Clicks on the box itself, whatever the width of the field.
    void Tick(const char* box) const
    {
        QWidget* field = Field<QWidget>(box);
        QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(8, field->height() / 2));
    }
    std::string Entries(const char* name) const
    {
        QStringList entries;
        for (int i = 0; i < Box(name)->count(); ++i)
            entries.append(Box(name)->itemText(i));
        return entries.join(u'|').toStdString();
    }
    std::string TextOf(const char* name) const { return Edit(name)->text().toStdString(); }
    std::string EntryText() const { return m_dialog.GetScheduleText().toStdString(); }
    // The days that are checked, as in the text of an entry.
    std::string Days() const
    {
        std::string days;
        for (const char* day : DayBoxes)
            days += IsChecked(day) ? '1' : '0';
        return days;
    }

    static constexpr std::array DayBoxes{"CheckDay1", "CheckDay2", "CheckDay3", "CheckDay4",
                                         "CheckDay5", "CheckDay6", "CheckDay7"};

    TSchedulePropsDialog m_dialog{nullptr};
};
