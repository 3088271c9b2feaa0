#include "BatchMessages.h"
#include "MessagePane.h"
#include "Pane.h"
#include "WindowMessages.h"
#include "WorkbenchSupport.h"

#include <QRegularExpression>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>

#include <sstream>

namespace
{

// Answers boxes instead of showing them.
class TAnsweredMessages final : public TWindowMessages
{
public:
    using TWindowMessages::TWindowMessages;

    int Answer = QMessageBox::Ok;
    QStringList Boxes;
    QList<Qt::TextFormat> Formats;
    QMessageBox::StandardButtons Buttons;

protected:
    int Run(QMessageBox& box) override
    {
        Boxes.append(box.text());
        Formats.append(box.textFormat());
        Buttons = box.standardButtons();
        return Answer;
    }
};

class MessagesTest : public TWorkbenchTest
{
protected:
    MessagesTest()
    {
        Window().Panes().SetLayout({TestPane(Scenes)});
        Window().Panes().LoadAll();
    }

    QString PaneText() { return Window().Messages().Text(); }
};

class WindowMessages : public MessagesTest
{
protected:
    TAnsweredMessages m_shown{Window(), Window().Messages(), Window().Panes()};
};

TEST_F(MessagesTest, LinesCarryTheirTime)
{
    Window().Messages().AddNote(QStringLiteral("Guten Tag"));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d  Guten Tag$")).match(PaneText()).hasMatch());
}

TEST_F(MessagesTest, TextCanBeSelectedAndCopiedButNotChanged)
{
    Window().Messages().AddNote(QStringLiteral("Guten Tag"));
    auto* text = Window().Messages().findChild<QPlainTextEdit*>();
    text->selectAll();
    EXPECT_TRUE(text->textCursor().selectedText().contains(QStringLiteral("Guten Tag")));
    EXPECT_TRUE(text->isReadOnly());
    EXPECT_EQ(text->accessibleName(), QStringLiteral("Meldungen"));
}

TEST_F(MessagesTest, NewLinesSelectNothing)
{
    Window().Messages().AddNote(QStringLiteral("eins"));
    Window().Messages().AddNote(QStringLiteral("zwei"));
    EXPECT_FALSE(Window().Messages().findChild<QPlainTextEdit*>()->textCursor().hasSelection());
}

TEST_F(MessagesTest, SelectionSurvivesNewLines)
{
    Window().Messages().AddNote(QStringLiteral("eins"));
    auto* text = Window().Messages().findChild<QPlainTextEdit*>();
    text->selectAll();
    const QString selected = text->textCursor().selectedText();
    Window().Messages().AddError(QStringLiteral("zwei"));
    EXPECT_EQ(text->textCursor().selectedText(), selected);
}

TEST_F(WindowMessages, NotesNameThePaneTheyComeFrom)
{
    Note(Component(Scenes).Field, QStringLiteral("geladen"));
    EXPECT_TRUE(PaneText().endsWith(QStringLiteral("  scenes: geladen")));
    Note(nullptr, QStringLiteral("Projekt geöffnet"));
    EXPECT_TRUE(PaneText().endsWith(QStringLiteral("  Projekt geöffnet")));
    EXPECT_TRUE(m_shown.Boxes.isEmpty());
}

TEST_F(WindowMessages, ErrorsBeforeTheWindowStandsComeInOneBoxLater)
{
    ShowError(QStringLiteral("eins"));
    ShowError(QStringLiteral("zwei"));
    EXPECT_TRUE(m_shown.Boxes.isEmpty());
    EXPECT_TRUE(PaneText().contains(QStringLiteral("Fehler: eins")));
    m_shown.BeginBoxes();
    EXPECT_EQ(m_shown.Boxes, QStringList{QStringLiteral("eins\n\nzwei")});
}

TEST_F(WindowMessages, ErrorsComeAtOnceInBoxAndPane)
{
    m_shown.BeginBoxes();
    EXPECT_TRUE(m_shown.Boxes.isEmpty());
    ShowError(QStringLiteral("eins"));
    EXPECT_EQ(m_shown.Boxes, QStringList{QStringLiteral("eins")});
    EXPECT_TRUE(PaneText().endsWith(QStringLiteral("Fehler: eins")));
}

TEST_F(WindowMessages, QuestionsHaveYesAndNo)
{
    m_shown.Answer = QMessageBox::Yes;
    EXPECT_TRUE(Confirm(QStringLiteral("Wirklich?")));
    EXPECT_EQ(m_shown.Buttons, QMessageBox::Yes | QMessageBox::No);
    m_shown.Answer = QMessageBox::No;
    EXPECT_FALSE(Confirm(QStringLiteral("Wirklich?")));
}

TEST_F(WindowMessages, InformationIsABox)
{
    ShowInformation(QStringLiteral("fertig"));
    EXPECT_EQ(m_shown.Boxes, QStringList{QStringLiteral("fertig")});
}

TEST_F(WindowMessages, MarkupInATextIsShownAsText)
{
    const auto markup = QStringLiteral("<b>rm</b><!-- -rf --> &amp;");
    m_shown.BeginBoxes();
    ShowInformation(markup);
    ShowError(markup);
    Confirm(markup);
    EXPECT_EQ(m_shown.Boxes, QStringList({markup, markup, markup}));
    EXPECT_EQ(m_shown.Formats, QList<Qt::TextFormat>(3, Qt::PlainText));
}

TEST_F(WindowMessages, PreviousHandlerIsBackAfterwards)
{
    {
        const TAnsweredMessages inner(Window(), Window().Messages(), Window().Panes());
    }
    ShowInformation(QStringLiteral("fertig"));
    EXPECT_EQ(m_shown.Boxes.size(), 1);
}

TEST_F(MessagesTest, BatchPrintsOneLineEach)
{
    std::ostringstream output;
    TBatchMessages batch(output, Window().Messages(), Window().Panes(), false);
    Note(&Component(Scenes), QStringLiteral("41 Trigger"));
    ShowInformation(QStringLiteral("fertig\nganz"));
    EXPECT_FALSE(Confirm(QStringLiteral("Wirklich?")));
    EXPECT_EQ(output.str(), "scenes: 41 Trigger\nfertig ganz\nWirklich? Nein\n");
    EXPECT_TRUE(PaneText().contains(QStringLiteral("scenes: 41 Trigger")));
    EXPECT_TRUE(batch.FirstError().isEmpty());
}

TEST_F(MessagesTest, BatchAnswersYesWhenTold)
{
    std::ostringstream output;
    const TBatchMessages batch(output, Window().Messages(), Window().Panes(), true);
    EXPECT_TRUE(Confirm(QStringLiteral("Wirklich?")));
    EXPECT_EQ(output.str(), "Wirklich? Ja\n");
}

TEST_F(MessagesTest, BatchKeepsTheFirstErrorOnOneLine)
{
    std::ostringstream output;
    const TBatchMessages batch(output, Window().Messages(), Window().Panes(), false);
    ShowError(QStringLiteral("eins\nzwei"));
    ShowError(QStringLiteral("drei"));
    EXPECT_EQ(batch.FirstError(), QStringLiteral("eins zwei"));
    EXPECT_TRUE(output.str().empty());
}

} // namespace
