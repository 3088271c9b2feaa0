#include "CmdButtonsBar.h"

namespace
{

using CmdButtonsCommands = TBarTest;

} // namespace

TEST_F(CmdButtonsCommands, QueryAcceptsTheProgIdInAnyCaseAnywhere)
{
    const auto accepts = [this](const char* command) {
        bool accepted = false;
        Bar().QueryCmd(command, accepted);
        return accepted;
    };
    EXPECT_TRUE(accepts(FolderCommand));
    EXPECT_TRUE(accepts("velmora.cmdbuttons.1"));
    EXPECT_TRUE(accepts("x://y?z=VELMORA.CmdButtons.1"));
    EXPECT_FALSE(accepts("Velmora.CmdButtons.2://"));
    EXPECT_FALSE(accepts(""));
    EXPECT_FALSE(accepts(nullptr));
}

TEST_F(CmdButtonsCommands, ProgIdInLowerCaseDoesNothingAndIsNotHandled)
{
    WriteEntry(A);
    Execute();
    EXPECT_FALSE(Execute("velmora.cmdbuttons.1://nirgends?category=X&bgcolor=255"));
    EXPECT_EQ(Captions(), QStringList{A});
    EXPECT_EQ(Bar().GetCategory(), QStringLiteral("_buttons"));
}

TEST_F(CmdButtonsCommands, CommandStartsOver)
{
    WriteEntry(A);
    EXPECT_TRUE(Execute());
    WriteEntry(B);
    EXPECT_TRUE(Execute());
    EXPECT_EQ(Captions(), QStringList({A, B}));
}

TEST_F(CmdButtonsCommands, RequestGivesTheNullVariant)
{
    QVariant out(1);
    Bar().RequestData(QVariant(2), out);
    EXPECT_TRUE(out.isNull());
}

TEST_F(CmdButtonsCommands, IsACommandTarget)
{
    auto* target = qobject_cast<ICmdTarget*>(static_cast<QObject*>(&Bar()));
    ASSERT_NE(target, nullptr);
    void* found = nullptr;
    EXPECT_TRUE(target->QueryInterface(IID_ICmdTarget, &found));
    EXPECT_EQ(found, target);
    EXPECT_FALSE(target->QueryInterface(IID_IWeekSchedule, &found));
    EXPECT_EQ(found, nullptr);
}

TEST_F(CmdButtonsCommands, ColoursAreThoseOfTheCommand)
{
    WriteEntry(A);
    Execute("Velmora.CmdButtons.1://%PRJPATH%/_buttons?COLOR=255&bgColor=$00FF0000");
    EXPECT_EQ(Bar().palette().color(QPalette::Window), QColor(0, 0, 255));
    EXPECT_EQ(Button(A)->palette().color(QPalette::ButtonText), QColor(255, 0, 0));
}

TEST_F(CmdButtonsCommands, CommandWithoutAQueryChangesNoColourAndKeepsTheCategory)
{
    WriteEntry(A);
    Execute("Velmora.CmdButtons.1://%PRJPATH%/_buttons?color=255&bgcolor=$00FF0000&category=Büro");
    Execute();
    EXPECT_EQ(Bar().palette().color(QPalette::Window), QColor(0, 0, 255));
    EXPECT_EQ(Button(A)->palette().color(QPalette::ButtonText), QColor(255, 0, 0));
    EXPECT_EQ(Bar().GetCategory(), QStringLiteral("Büro"));
}

TEST_F(CmdButtonsCommands, ColourThatIsNoNumberGivesTheDefault)
{
    Execute("Velmora.CmdButtons.1://x?bgcolor=255&color=255");
    Execute("Velmora.CmdButtons.1://x?bgcolor=abc&color=abc");
    EXPECT_EQ(Bar().palette().color(QPalette::Window), ToQColor(AppWorkspaceColor, QApplication::palette()));
    EXPECT_EQ(Bar().palette().color(QPalette::ButtonText), QApplication::palette().color(QPalette::ButtonText));
}

TEST_F(CmdButtonsCommands, KeyGivenTwiceAppliesItsFirstValue)
{
    WriteEntry(A);
    Execute("Velmora.CmdButtons.1://%PRJPATH%/_buttons?category=Eins&CATEGORY=Zwei&unbekannt=1");
    EXPECT_EQ(Bar().GetCategory(), QStringLiteral("Eins"));
}

TEST_F(CmdButtonsCommands, CategoryOfTheCommandIsThatOfActionsWithoutTheirOwn)
{
    WriteEntry(A);
    WriteEntry(B, "Command=pane://b\nCategory=Eigene\n");
    Execute("Velmora.CmdButtons.1://%PRJPATH%/_buttons?category= Büro ");
    EXPECT_EQ(Button(A)->Action()->GetCategory(), QStringLiteral(" Büro "));
    EXPECT_EQ(Button(B)->Action()->GetCategory(), QStringLiteral("Eigene"));
}

TEST_F(CmdButtonsCommands, CategoryOfTheCommandIsThatOfADefinitionFilesActions)
{
    WriteEntry(A);
    WriteDefinition("_buttons/a.uri\r\n");
    Execute("Velmora.CmdButtons.1://%PRJPATH%/_buttons?category=Büro");
    EXPECT_EQ(Bar().GetCategory(), QStringLiteral("Büro"));
    EXPECT_EQ(Button(A)->Action()->GetCategory(), QStringLiteral("Büro"));
}

TEST_F(CmdButtonsCommands, EntryWithoutAnyCategoryGetsTheBars)
{
    Execute();
    Bar().NewButtonNotify(nullptr, TNavigation::Create(m_project.Path(QStringLiteral("x.uri")), {}));
    EXPECT_EQ(Bar().Buttons().first()->Action()->GetCategory(), QStringLiteral("_buttons"));
}
