#pragma once

#include "NestedLoop.h"
#include "TestSupport.h"
#include "Vldragobjects.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMimeData>
#include <QSpinBox>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

// A dialog of the menu editor alone, used through its widgets.
template <class TDialog> class TDialogFixture : public testing::Test
{
protected:
    void Show()
    {
        m_dialog.Display();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_dialog));
    }
    template <class TField> TField* Field(const char* name) const
    {
        auto* field = m_dialog.template findChild<TField*>(QLatin1StringView(name));
        EXPECT_NE(field, nullptr) << name;
        return field;
    }
    QLineEdit* Edit(const char* name) const { return Field<QLineEdit>(name); }
    QComboBox* Box(const char* name) const { return Field<QComboBox>(name); }
    QSpinBox* Access() const { return Field<QSpinBox>("EditAccess"); }
    bool IsEnabled(const char* name) const { return Field<QWidget>(name)->isEnabled(); }
    std::string TextOf(const char* name) const { return Edit(name)->text().toStdString(); }
    void Press(const char* button) const { QTest::mouseClick(Field<QAbstractButton>(button), Qt::LeftButton); }
    // Clicks on the box itself, whatever the width of the field.
    void Tick(const char* box) const
    {
        QWidget* field = Field<QWidget>(box);
        QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(8, field->height() / 2));
    }
    // "field=label", in the order of the fields' names.
    std::string Labels() const
    {
        QStringList labels;
        for (const QLabel* label : m_dialog.template findChildren<QLabel*>())
            labels.append(label->buddy()->objectName() + u'=' + label->text());
        labels.sort();
        return labels.join(u'|').toStdString();
    }
    std::string Entries(const char* name) const
    {
        QStringList entries;
        for (int i = 0; i < Box(name)->count(); ++i)
            entries.append(Box(name)->itemText(i));
        return entries.join(u'|').toStdString();
    }
    // The fields that the Tab key goes through, from `first` until it is there again.
    std::string TabOrder(const char* first)
    {
        constexpr int Most = 30;
        Show();
        Field<QWidget>(first)->setFocus();
        QStringList names;
        do {
            names.append(m_dialog.focusWidget()->objectName());
            QTest::keyClick(m_dialog.focusWidget(), Qt::Key_Tab);
        } while (m_dialog.focusWidget()->objectName() != names.first() && names.size() < Most);
        return names.join(u' ').toStdString();
    }
    // Whether doing `act` to an unchanged dialog changes it.
    bool Changes(const std::function<void()>& act)
    {
        m_dialog.SetChanged(false);
        act();
        return m_dialog.GetChanged();
    }
    void TypeAccess(const char* text) const
    {
        Access()->setFocus();
        Access()->selectAll();
        QTest::keyClicks(Access(), QString::fromLatin1(text));
    }

    bool Drop(const char* field, const QMimeData& content) const
    {
        QWidget* target = Field<QWidget>(field);
        return TDraggedOver(target, &content).EnterAndDrop(target->rect().center());
    }
    bool DropFile(const char* field, const char* path = "/tmp/bild.png") const
    {
        QMimeData content;
        content.setUrls({QUrl::fromLocalFile(QString::fromUtf8(path))});
        return Drop(field, content);
    }
    static std::unique_ptr<QMimeData> Datapoint(const char* name, const char* label, const char* type)
    {
        TPropertyDragObject object;
        object.Add(QStringLiteral("name"), QString::fromUtf8(name));
        object.Add(QStringLiteral("label"), QString::fromUtf8(label));
        object.Add(QStringLiteral("type"), QString::fromUtf8(type));
        object.Add(QStringLiteral("target"), QStringLiteral("modbus"));
        return std::unique_ptr<QMimeData>(object.ToMimeData());
    }

    TDialog m_dialog{nullptr};
};
