#include "Vlmessages.h"

#include "TestSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace
{

struct TSeenBox
{
    QString Text;
    Qt::TextFormat Format = Qt::AutoText;
    QMessageBox::Icon Icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons Buttons;
};

// What the message box looked like that `action` brought up; answered with `answer`.
template <class TAction> TSeenBox Seen(Qt::Key answer, const TAction& action)
{
    TSeenBox seen;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        timer.stop();
        seen = {
            .Text = box->text(), .Format = box->textFormat(), .Icon = box->icon(), .Buttons = box->standardButtons()};
        QTest::keyClick(box, answer);
    });
    timer.start(10);
    action();
    return seen;
}

// A button is chosen by clicking it.
bool ConfirmedWith(QMessageBox::StandardButton button)
{
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            timer.stop();
            QTest::mouseClick(box->button(button), Qt::LeftButton);
        }
    });
    timer.start(10);
    return Confirm(QStringLiteral("Soll die Szene gelöscht werden?"));
}

} // namespace

TEST(Messages, GoToTheHandler)
{
    TRecordedMessages messages;
    ShowInformation(QStringLiteral("Hinweis"));
    ShowError(QStringLiteral("Fehler"));
    EXPECT_EQ(messages.Informations, QStringList{QStringLiteral("Hinweis")});
    EXPECT_EQ(messages.Errors, QStringList{QStringLiteral("Fehler")});
    EXPECT_TRUE(messages.Questions.isEmpty());
}

TEST(Messages, BringTheHandlersAnswerBack)
{
    TRecordedMessages messages;
    messages.Answer = false;
    EXPECT_FALSE(Confirm(QStringLiteral("Wirklich?")));
    messages.Answer = true;
    EXPECT_TRUE(Confirm(QStringLiteral("Wirklich?")));
    EXPECT_EQ(messages.Questions.size(), 2);
}

TEST(Messages, TellTheHandlerWhereANoteComesFrom)
{
    struct TNotes final : IMessageHandler
    {
        void ShowInformation(const QString&) override {}
        void ShowError(const QString&) override {}
        bool Confirm(const QString&) override { return false; }
        void Note(const QObject* source, const QString& text) override { Notes.append({source, text}); }

        QList<std::pair<const QObject*, QString>> Notes;
    } notes;
    const QObject component;
    IMessageHandler* previous = SetMessageHandler(&notes);
    Note(&component, QStringLiteral("geladen"));
    Note(nullptr, QStringLiteral("bereit"));
    EXPECT_EQ(SetMessageHandler(previous), &notes);
    ASSERT_EQ(notes.Notes.size(), 2);
    EXPECT_EQ(notes.Notes[0], (std::pair<const QObject*, QString>{&component, QStringLiteral("geladen")}));
    EXPECT_EQ(notes.Notes[1], (std::pair<const QObject*, QString>{nullptr, QStringLiteral("bereit")}));
}

TEST(Messages, GoToTheLatestHandlerOnly)
{
    TRecordedMessages outer;
    {
        TRecordedMessages inner;
        ShowError(QStringLiteral("innen"));
        EXPECT_EQ(inner.Errors.size(), 1);
    }
    EXPECT_TRUE(outer.Errors.isEmpty());
    ShowError(QStringLiteral("außen"));
    EXPECT_EQ(outer.Errors.size(), 1);
}

TEST(Messages, GiveNullForTheMessageBoxesThatWereReplaced)
{
    IMessageHandler* const previous = SetMessageHandler(nullptr);
    EXPECT_EQ(SetMessageHandler(nullptr), nullptr);
    SetMessageHandler(previous);
}

TEST(MessageBoxes, ShowAnInformation)
{
    const TSeenBox seen = Seen(Qt::Key_Escape, [] { ShowInformation(QStringLiteral("Fertig.")); });
    EXPECT_EQ(seen.Text, QStringLiteral("Fertig."));
    EXPECT_EQ(seen.Icon, QMessageBox::Information);
    EXPECT_EQ(seen.Buttons, QMessageBox::Ok);
}

TEST(MessageBoxes, ShowAnError)
{
    const TSeenBox seen = Seen(Qt::Key_Escape, [] { ShowError(QStringLiteral("Kaputt.")); });
    EXPECT_EQ(seen.Text, QStringLiteral("Kaputt."));
    EXPECT_EQ(seen.Icon, QMessageBox::Critical);
}

TEST(MessageBoxes, ShowNamesAsTheyStand)
{
    const TSeenBox seen = Seen(Qt::Key_Escape, [] { ShowError(QStringLiteral("<b>Flur</b> &amp; Süd")); });
    EXPECT_EQ(seen.Text, QStringLiteral("<b>Flur</b> &amp; Süd"));
    EXPECT_EQ(seen.Format, Qt::PlainText);
}

TEST(MessageBoxes, AskWithYesAndNo)
{
    const TSeenBox seen = Seen(Qt::Key_Escape, [] { Confirm(QStringLiteral("Wirklich?")); });
    EXPECT_EQ(seen.Icon, QMessageBox::Question);
    EXPECT_EQ(seen.Buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_TRUE(ConfirmedWith(QMessageBox::Yes));
    EXPECT_FALSE(ConfirmedWith(QMessageBox::No));
}

TEST(MessageBoxes, TakeEscapeForNo)
{
    bool confirmed = true;
    Seen(Qt::Key_Escape, [&] { confirmed = Confirm(QStringLiteral("Wirklich?")); });
    EXPECT_FALSE(confirmed);
}

TEST(MessageBoxes, ShowNoNotes)
{
    Note(nullptr, QStringLiteral("bereit"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}
