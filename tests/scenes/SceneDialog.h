#pragma once

#include "dlgSceneProps.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <string>

// The properties dialog alone, shown, with five sections of which the first is selected.
class TSceneDialog : public testing::Test
{
protected:
    TSceneDialog()
    {
        m_dialog.SetSceneSections(Sections(5));
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
    template <class TField> TField* Field(const char* name) const
    {
        auto* field = m_dialog.findChild<TField*>(QLatin1StringView(name));
        EXPECT_NE(field, nullptr) << name;
        return field;
    }
    QLineEdit* Edit(const char* name) const { return Field<QLineEdit>(name); }
    QComboBox* Box(const char* name) const { return Field<QComboBox>(name); }
    bool IsEnabled(const char* name) const { return Field<QWidget>(name)->isEnabled(); }
    void Press(const char* button) const { QTest::mouseClick(Field<QAbstractButton>(button), Qt::LeftButton); }
    std::string Entries(const char* name) const
    {
        QStringList entries;
        for (int i = 0; i < Box(name)->count(); ++i)
            entries.append(Box(name)->itemText(i));
        return entries.join(u'|').toStdString();
    }
    std::string TextOf(const char* name) const { return Edit(name)->text().toStdString(); }

    TScenePropsDialog m_dialog{nullptr};
};
