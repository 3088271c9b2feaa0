#include "CmdButtonsBar.h"
#include "NestedLoop.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QTest>

namespace
{

const auto New = QStringLiteral("Neue Aktion");
const auto Remove = QStringLiteral("Entfernen");
const auto Properties = QStringLiteral("Eigenschaften");
const auto Free = QStringLiteral("frei");
const auto Fixed = QStringLiteral("fest");

// A bar with one button that may be removed, one that may not, and one that is disabled.
class CmdButtonsPopup : public TBarTest
{
protected:
    CmdButtonsPopup()
    {
        WriteEntry(Free);
        WriteEntry(Fixed, "Command=pane://fest\nRemovable=no\n");
        WriteEntry(QStringLiteral("grau"));
        Execute();
        Button(QStringLiteral("grau"))->setEnabled(false);
    }
    ~CmdButtonsPopup() override
    {
        if (HasBar())
            Bar().PopupMenu()->hide();
    }

    void Focus(const QString& caption) { Button(caption)->setFocus(); }
    QStringList EntriesFor(const QString& caption)
    {
        OpenPopup(caption);
        QStringList entries = VisibleEntries();
        Bar().PopupMenu()->hide();
        QApplication::processEvents();
        return entries;
    }
    QStringList EntriesByKey()
    {
        QWidget* focused = QApplication::focusWidget();
        // As the toolkit sends it: with the place of the text cursor, which a button has not.
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), focused->mapToGlobal(QPoint()));
        QApplication::sendEvent(focused, &event);
        EXPECT_TRUE(Bar().PopupMenu()->isVisible());
        return VisibleEntries();
    }
};

} // namespace

TEST_F(CmdButtonsPopup, EntriesStandInTheirOrderWithTheirCaptions)
{
    const QList<QAction*> actions = Bar().PopupMenu()->actions();
    ASSERT_EQ(actions.size(), 4);
    EXPECT_EQ(actions[0]->text(), New);
    EXPECT_EQ(actions[1]->text(), Remove);
    EXPECT_TRUE(actions[2]->isSeparator());
    EXPECT_EQ(actions[3]->text(), Properties);
}

// What is under the mouse, what has the focus, and the entries that are visible.
TEST_F(CmdButtonsPopup, VisibilityFollowsWhatIsUnderTheMouse)
{
    struct TRow
    {
        QString Under; // empty: beside all buttons
        QStringList Visible;
    };
    const QList<TRow> rows{
        {{}, {New}},
        {Free, {New, Remove, Properties}},
        {Fixed, {New, Properties}},
        {QStringLiteral("grau"), {New}},
    };
    for (const TRow& row : rows) {
        for (const QString& focused : {Free, Fixed}) {
            Focus(focused);
            EXPECT_EQ(EntriesFor(row.Under), row.Visible) << row.Under.toStdString() << '/' << focused.toStdString();
        }
    }
}

TEST_F(CmdButtonsPopup, VisibilityFollowsTheFocusForTheMenuKey)
{
    Focus(Free);
    EXPECT_EQ(EntriesByKey(), QStringList({New, Remove, Properties}));
    Bar().PopupMenu()->hide();
    Focus(Fixed);
    EXPECT_EQ(EntriesByKey(), QStringList({New, Properties}));
}

TEST_F(CmdButtonsPopup, MenuKeyMeansNoButtonWhenTheBarItselfHasTheFocus)
{
    Focus(Free);
    Bar().setFocus();
    // The toolkit sends the middle of the bar, where a button may be.
    const QPoint onButton = Button(Free)->mapTo(&Bar(), Button(Free)->rect().center());
    QContextMenuEvent event(QContextMenuEvent::Keyboard, onButton, Bar().mapToGlobal(onButton));
    QApplication::sendEvent(&Bar(), &event);
    EXPECT_EQ(VisibleEntries(), QStringList{New});
    Bar().PopupMenu()->hide();
    QApplication::processEvents();
    Bar().UpdateActions();
    EXPECT_EQ(VisibleEntries(), QStringList{New});
}

TEST_F(CmdButtonsPopup, VisibilityInTheHostsMenuFollowsTheFocus)
{
    Bar().UpdateActions();
    EXPECT_EQ(VisibleEntries(), QStringList{New});
    Focus(Free);
    Bar().UpdateActions();
    EXPECT_EQ(VisibleEntries(), QStringList({New, Remove, Properties}));
    Focus(Fixed);
    Bar().UpdateActions();
    EXPECT_EQ(VisibleEntries(), QStringList({New, Properties}));
}

TEST_F(CmdButtonsPopup, EmptyBarOffersANewActionOnly)
{
    Execute("Velmora.CmdButtons.1://");
    EXPECT_EQ(EntriesFor({}), QStringList{New});
}

TEST_F(CmdButtonsPopup, HandlerLeavesTheMenuToOpen)
{
    bool handled = true;
    Bar().HandleContextPopup(&Bar(), QPoint(5, 5), handled);
    EXPECT_FALSE(handled);
}

TEST_F(CmdButtonsPopup, RemoveTakesTheButtonUnderTheMouse)
{
    Focus(Fixed);
    OpenPopup(Free);
    Choose(Remove);
    EXPECT_EQ(Captions(), QStringList({Fixed, QStringLiteral("grau")}));
    EXPECT_TRUE(m_project.Exists(QStringLiteral("_buttons/frei.uri")));
}

TEST_F(CmdButtonsPopup, PropertiesAreThoseOfTheButtonUnderTheMouse)
{
    Focus(Free);
    OpenPopup(Fixed);
    QString target;
    EXPECT_TRUE(RunInLoop([this] { Choose(Properties); },
                          [&] {
                              target = Field<QLineEdit>("EditTarget")->text();
                              Press("BtnCancel");
                          }));
    EXPECT_EQ(target, QStringLiteral("pane://fest"));
}

TEST_F(CmdButtonsPopup, ChangedPropertiesAreShownByTheButton)
{
    m_project.Write(QStringLiteral("_buttons/neu.png"),
                    ReadAll(QStringLiteral(VELMORA_EXAMPLES "/musterhaus/_buttons/szenen.png")));
    OpenPopup(Free);
    EXPECT_TRUE(RunInLoop([this] { Choose(Properties); },
                          [] {
                              Type("EditIcon", QStringLiteral("_buttons/neu.png"));
                              Confirm(QStringLiteral("Neu & gut"));
                          }));
    TCmdButton* button = Button(QStringLiteral("Neu & gut"));
    EXPECT_EQ(button->text(), QStringLiteral("Neu && gut"));
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Neu & gut"));
    EXPECT_FALSE(button->icon().isNull());
    EXPECT_TRUE(m_project.Read(QStringLiteral("_buttons/frei.uri")).contains("Caption=Neu & gut"));
}

TEST_F(CmdButtonsPopup, ChangeOfAnEntryThatTheButtonNoLongerHasIsIgnored)
{
    TCmdButton* button = Button(Free);
    const TNavigationPtr stranger = TNavigation::Create(m_project.Path(QStringLiteral("x.uri")), {});
    stranger->SetButton(button);
    Bar().HandleButtonChange(stranger.get());
    Bar().HandleButtonChange(button);
    Bar().HandleButtonChange(nullptr);
    EXPECT_EQ(button->text(), Free);
}

TEST_F(CmdButtonsPopup, ClicksAreTakenByTheIndexOfTheEntry)
{
    const QList<QAction*> actions = Bar().PopupMenu()->actions();
    Focus(Free);
    Bar().HandleMenuClick(actions[2]);
    Bar().HandleMenuClick(&Bar());
    Bar().HandleMenuClick(nullptr);
    EXPECT_EQ(Bar().Buttons().size(), 3);
    Bar().HandleMenuClick(actions[1]);
    EXPECT_EQ(Captions(), QStringList({Fixed, QStringLiteral("grau")}));
}

TEST_F(CmdButtonsPopup, TargetIsForgottenWithTheMenu)
{
    Focus(Fixed);
    EntriesFor(Free);
    Bar().UpdateActions();
    EXPECT_EQ(VisibleEntries(), QStringList({New, Properties}));
}

TEST_F(CmdButtonsPopup, OpenMenuOutlivesAProjectChange)
{
    OpenPopup(Free);
    OpenOther();
    EXPECT_TRUE(Bar().PopupMenu()->isVisible());
    EXPECT_EQ(VisibleEntries(), QStringList{New});
    Bar().HandleMenuClick(Bar().PopupMenu()->actions().value(1));
    Bar().HandleMenuClick(Bar().PopupMenu()->actions().value(3));
    EXPECT_EQ(Captions(), QStringList{Other});
}

TEST_F(CmdButtonsPopup, PropertiesChosenInTheMenuOutliveAProjectChange)
{
    OpenPopup(Free);
    EXPECT_TRUE(RunInLoop([this] { Choose(Properties); },
                          [this] {
                              OpenOther();
                              Bar().UpdateActions();
                              EXPECT_EQ(VisibleEntries(), QStringList{New});
                              Confirm(QStringLiteral("Neu"));
                          }));
    EXPECT_EQ(Captions(), QStringList{Other});
    EXPECT_TRUE(m_project.Read(QStringLiteral("_buttons/frei.uri")).contains("Caption=Neu"));
}

TEST_F(CmdButtonsPopup, MenuOfAButtonWhoseEntryRunsOutlivesAProjectChange)
{
    FolderManager().SetCommandEvent([this](const QString&) {
        OpenPopup(Free);
        TCmdButton* button = Button(Free);
        OpenOther();
        EXPECT_TRUE(Bar().PopupMenu()->isVisible());
        EXPECT_EQ(VisibleEntries(), QStringList{New});
        Bar().HandleMenuClick(Bar().PopupMenu()->actions().value(1));
        Bar().HandleMenuClick(Bar().PopupMenu()->actions().value(3));
        Bar().ShowProperties(button);
        Bar().RemoveCmdButton(button);
    });
    Click(Free);
    EXPECT_EQ(Captions(), QStringList{Other});
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(CmdButtonsPopup, BarMayGoWithItsMenuOpen)
{
    OpenPopup(Free);
    EndBar();
    EXPECT_TRUE(FolderManager().Entries().isEmpty());
}

TEST_F(CmdButtonsPopup, BarMayGoUnderThePropertiesOfAButton)
{
    OpenPopup(Free);
    EXPECT_TRUE(RunInLoop([this] { Choose(Properties); },
                          [this] {
                              EndBar();
                              Confirm(QStringLiteral("Neu"));
                          }));
    EXPECT_TRUE(m_project.Read(QStringLiteral("_buttons/frei.uri")).contains("Caption=Neu"));
}

TEST_F(CmdButtonsPopup, ActionOfTheHostHasNoPropertiesAndStays)
{
    QAction action(QStringLiteral("Beenden"));
    FolderManager().RegisterAction(QStringLiteral("Quit"), &action);
    WriteDefinition("Quit\r\n");
    Execute();
    EXPECT_EQ(EntriesFor(QStringLiteral("Beenden")), QStringList({New, Properties}));
    Bar().ShowProperties(Button(QStringLiteral("Beenden")));
    EXPECT_EQ(m_messages.Informations.size(), 1);
}
