#include "Options.h"
#include "WindowRun.h"
#include "WorkbenchUser.h"

#include <QScrollArea>
#include <QToolButton>

namespace
{

using CommandJourney = SceneJourney;
using TUser = TWorkbenchUser;

const auto Caption = QStringLiteral("Zum Menu");

// The bar has no tree of its own: it stands beside the editors.
constexpr TEditor CommandBar{.Tree = "TConfigTreeFrame", .Dialog = "TEntryPropsDialog", .Tab = "Szenen"};

QScrollArea* Bar()
{
    return TUser::Window()->findChild<QScrollArea*>(QStringLiteral("TICmdButtons"));
}

QToolButton* Button(const QString& caption)
{
    const QList<QToolButton*> buttons = Bar() ? Bar()->findChildren<QToolButton*>() : QList<QToolButton*>();
    for (QToolButton* button : buttons) {
        if (button->accessibleName() == caption && !button->visibleRegion().isEmpty())
            return button;
    }
    return nullptr;
}

QPoint PlaceOfButton(const QString& caption)
{
    const QToolButton* button = Button(caption);
    return button->mapToGlobal(button->rect().center());
}

bool IsShown(const char* tree)
{
    const auto* found = TUser::Window()->findChild<QTreeWidget*>(QLatin1StringView(tree));
    return found && !found->visibleRegion().isEmpty();
}

} // namespace

// A button, from the popup menu of the bar to the pane that it opens, and one that changes the bar it stands on.
TEST_F(CommandJourney, FromANewButtonToThePaneItOpens)
{
    const QStringList before = Files().keys();

    const auto journey = [&](TRobot& robot) {
        TUser user(robot);
        user.TurnTo(CommandBar);
        user.ClickTab(QStringLiteral("Befehle"));
        robot.WaitFor(QStringLiteral("the bar"), [] { return Button(QStringLiteral("Szenen bearbeiten")) != nullptr; });

        robot.Click(robot.See([] { return Bar()->mapToGlobal(QPoint(20, Bar()->height() - 20)); }), 3);
        user.Choose(QStringLiteral("Neue Aktion"));
        robot.WaitFor(QStringLiteral("the dialog"), [] { return TUser::Dialog() != nullptr; });
        user.Fill("EditCaption", Caption);
        user.Fill("EditTarget", QStringLiteral("pane://menu"));
        user.Fill("EditIcon", QStringLiteral("%PRJPATH%/_buttons/seite.png"));
        user.TakePicture(QStringLiteral("befehle-dialog"));
        user.Press("BtnOK");
        robot.WaitFor(QStringLiteral("the button"), [] { return Button(Caption) != nullptr; });

        EXPECT_FALSE(robot.See([] { return IsShown("TMenuTreeFrame"); }));
        robot.Click(robot.See([] { return PlaceOfButton(Caption); }));
        robot.WaitFor(QStringLiteral("the menu"), [] { return IsShown("TMenuTreeFrame"); });
        user.TakePicture(QStringLiteral("befehle"));

        robot.Click(robot.See([] { return PlaceOfButton(QStringLiteral("Planung ...")); }));
        robot.WaitFor(QStringLiteral("the other bar"), [] { return Button(QStringLiteral("Zurück")) != nullptr; });
        EXPECT_EQ(robot.See([] { return Button(Caption); }), nullptr);
        robot.Click(robot.See([] { return PlaceOfButton(QStringLiteral("Zurück")); }));
        robot.WaitFor(QStringLiteral("the first bar"), [] { return Button(Caption) != nullptr; });
        robot.Key(QStringLiteral("alt+F4"));
    };
    TOptions options;
    options.ProjectDirectory = Project();
    EXPECT_EQ(TRobot::Accompany(journey, [&] { return RunWindow(options); }), 0);

    TContents after = Files();
    for (const QString& file : before)
        after.remove(file);
    ASSERT_EQ(after.size(), 1);
    EXPECT_TRUE(after.firstKey().startsWith(QStringLiteral("musterhaus/_buttons/")));
    EXPECT_EQ(after.first(), "Caption=Zum Menu\nCommand=pane://menu\nIcon=%PRJPATH%/_buttons/seite.png\n"
                             "Removable=yes\n");
}
