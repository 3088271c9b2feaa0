#include "Options.h"
#include "WindowRun.h"
#include "WorkbenchUser.h"

namespace
{

using MenuJourney = SceneJourney;

const auto Menu = QStringLiteral("Menu");
const auto Item = QStringLiteral("Werkstatt");

} // namespace

// A menu item, from the popup menu to the page that a browser would show.
TEST_F(MenuJourney, FromANewItemToThePage)
{
    const auto newItem = QStringLiteral("Neuer Eintrag");
    const TContents before = Files();

    const auto journey = [&](TRobot& robot) {
        TUser user(robot);
        user.TurnTo(MenuEditor);

        const auto lastItem = robot.See([] {
            const QTreeWidgetItem* menu = TUser::Tree()->topLevelItem(0);
            return menu->child(menu->childCount() - 1)->text(0);
        });
        user.Select({lastItem});
        user.ChooseFromMenu(QStringList{lastItem}, QStringLiteral("Menupunkt hinzufügen"));
        robot.WaitFor(newItem, [&] { return TUser::IsSelected({newItem}); });
        robot.DoubleClick(user.PlaceOf(QStringList{newItem}));
        robot.WaitFor(QStringLiteral("the dialog"), [] { return TUser::Dialog() != nullptr; });
        user.MoveDialogAside();
        user.Fill("EditName", Item);
        user.Fill("EditLink", QStringLiteral("/seiten/werkstatt.html"));
        user.TakePicture(QStringLiteral("menu-dialog"));
        user.Press("BtnOK");
        robot.WaitFor(Item, [] { return TUser::IsSelected({Item}); });

        EXPECT_TRUE(robot.See([] { return TUser::IsModified(); }));
        user.ChooseFromMenu(QStringList{Item}, QStringLiteral("Exportieren"));
        robot.WaitFor(QStringLiteral("the export"), [] { return !TUser::IsModified(); });
        user.TakePicture(QStringLiteral("menu"));
        robot.Key(QStringLiteral("ctrl+b"));
        robot.WaitFor(QStringLiteral("the browser"), [this] { return !m_browser.Urls().isEmpty(); });
        robot.Key(QStringLiteral("alt+F4"));
    };
    TOptions options;
    options.ProjectDirectory = Project();
    EXPECT_EQ(TRobot::Accompany(journey, [&] { return RunWindow(options); }), 0);

    const QString page = Project() + QStringLiteral("/_menu/menu.html");
    EXPECT_EQ(m_browser.Urls(), QList<QUrl>{QUrl::fromLocalFile(page)});
    EXPECT_TRUE(ReadAll(page).contains("werkstatt.html"));
    TContents after = Files();
    QByteArray expected = before[QStringLiteral("musterhaus/_menu/menu.xml")];
    const QByteArray number = QByteArray::number(expected.count("<menuitem "));
    expected.insert(expected.lastIndexOf("</menu>"),
                    "<menuitem id=\"mi" + number +
                        "\" class=\"main\" caption=\"Werkstatt\" title=\"\" link=\"/seiten/werkstatt.html\" help=\"\" "
                        "access=\"0\" >\r\n</menuitem>\r\n");
    EXPECT_EQ(after[QStringLiteral("musterhaus/_menu/menu.xml")], expected);
}
