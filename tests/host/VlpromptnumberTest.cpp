#include "Vlpromptnumber.h"

#include "NestedLoop.h"
#include "TestSupport.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <gtest/gtest.h>

namespace
{

const auto Caption = QStringLiteral("Anzahl Trigger-Elemente: ");

// Nobody is there to answer a dialog.
class TNobody final : public IMessageHandler
{
public:
    TNobody() : m_previous(SetMessageHandler(this)) {}
    ~TNobody() override { SetMessageHandler(m_previous); }

    void ShowInformation(const QString&) override {}
    void ShowError(const QString& text) override { Errors.append(text); }
    bool Confirm(const QString&) override { return false; }
    void Note(const QObject*, const QString&) override {}
    bool IsInteractive() const override { return false; }

    QStringList Errors;

private:
    IMessageHandler* m_previous;
};

class PromptNumberDialog : public testing::Test
{
protected:
    // Asks, and does `answer` while the dialog is shown.
    bool Ask(const std::function<void()>& answer, const QString& caption = Caption)
    {
        bool confirmed = false;
        EXPECT_TRUE(RunInLoop([&] { confirmed = m_dialog.Execute(caption); }, answer));
        EXPECT_FALSE(m_dialog.isVisible());
        return confirmed;
    }
    void Type(const QString& text)
    {
        QTest::keyClicks(Edit(), text);
        QTest::keyClick(Edit(), Qt::Key_Return);
    }
    QSpinBox* Edit() const { return m_dialog.findChild<QSpinBox*>(QStringLiteral("EditNumber")); }
    QPushButton* Button(QDialogButtonBox::StandardButton button) const
    {
        return m_dialog.findChild<QDialogButtonBox*>()->button(button);
    }
    void Click(QDialogButtonBox::StandardButton button) const { QTest::mouseClick(Button(button), Qt::LeftButton); }

    TPromptNumberDialog m_dialog;
};

} // namespace

TEST_F(PromptNumberDialog, AsksUnderTheCaptionBeginningWithOne)
{
    Ask([&] {
        EXPECT_TRUE(m_dialog.isModal());
        EXPECT_EQ(m_dialog.windowTitle(), QApplication::applicationDisplayName());
        auto* label = m_dialog.findChild<QLabel*>();
        EXPECT_EQ(label->text(), Caption);
        EXPECT_EQ(label->buddy(), Edit());
        EXPECT_EQ(Edit()->accessibleName(), Caption.trimmed());
        EXPECT_EQ(Edit()->value(), 1);
    });
}

TEST_F(PromptNumberDialog, GivesTheNumberThatWasTyped)
{
    EXPECT_TRUE(Ask([&] { Type(QStringLiteral("25")); }));
    EXPECT_EQ(m_dialog.GetNumber(), 25);
}

TEST_F(PromptNumberDialog, IsConfirmedWithItsButton)
{
    EXPECT_TRUE(Ask([&] {
        QTest::keyClick(Edit(), Qt::Key_Up);
        Click(QDialogButtonBox::Ok);
    }));
    EXPECT_EQ(m_dialog.GetNumber(), 2);
}

TEST_F(PromptNumberDialog, KeepsTheLastConfirmedNumberWhenItIsCancelled)
{
    EXPECT_EQ(m_dialog.GetNumber(), 0);
    Ask([&] { Type(QStringLiteral("7")); });
    EXPECT_FALSE(Ask([&] {
        QTest::keyClicks(Edit(), QStringLiteral("9"));
        Click(QDialogButtonBox::Cancel);
    }));
    EXPECT_EQ(m_dialog.GetNumber(), 7);
    EXPECT_FALSE(Ask([&] { QTest::keyClick(Edit(), Qt::Key_Escape); }));
    EXPECT_FALSE(Ask([&] { m_dialog.close(); }));
    EXPECT_EQ(m_dialog.GetNumber(), 7);
}

TEST_F(PromptNumberDialog, BeginsAnewWithEveryQuestion)
{
    Ask([&] { Type(QStringLiteral("7")); });
    const auto next = QStringLiteral("Anzahl Aktions-Elemente: ");
    EXPECT_TRUE(Ask(
        [&] {
            EXPECT_EQ(m_dialog.findChild<QLabel*>()->text(), next);
            EXPECT_EQ(Edit()->value(), 1);
            EXPECT_EQ(QApplication::focusWidget(), Edit());
            Type(QStringLiteral("3"));
        },
        next));
    EXPECT_EQ(m_dialog.GetNumber(), 3);
}

TEST_F(PromptNumberDialog, StaysBetweenOneAndAMillion)
{
    Ask([&] { Type(QStringLiteral("0")); });
    EXPECT_EQ(m_dialog.GetNumber(), 1);
    Ask([&] { Type(QStringLiteral("-5")); });
    EXPECT_EQ(m_dialog.GetNumber(), 5);
    Ask([&] { Type(QStringLiteral("1000000")); });
    EXPECT_EQ(m_dialog.GetNumber(), 1'000'000);
    Ask([&] { Type(QStringLiteral("1000001")); });
    EXPECT_LE(m_dialog.GetNumber(), 1'000'000);
    Ask([&] { Type(QStringLiteral("abc")); });
    EXPECT_EQ(m_dialog.GetNumber(), 1);
}

TEST_F(PromptNumberDialog, IsRefusedWhereNobodyCanAnswer)
{
    TNobody nobody;
    EXPECT_FALSE(IsInteractive());
    bool confirmed = true;
    EXPECT_FALSE(RunInLoop([&] { confirmed = m_dialog.Execute(Caption); }, [] {}));
    EXPECT_FALSE(confirmed);
    EXPECT_EQ(nobody.Errors,
              QStringList{QStringLiteral("\"Anzahl Trigger-Elemente:\" kann hier niemand beantworten.")});
}

TEST(Messages, AreInteractiveUnlessTheirHandlerSaysOtherwise)
{
    EXPECT_TRUE(IsInteractive());
    {
        const TNobody nobody;
        EXPECT_FALSE(IsInteractive());
        const TRecordedMessages messages;
        EXPECT_TRUE(IsInteractive());
    }
    EXPECT_TRUE(IsInteractive());
}
