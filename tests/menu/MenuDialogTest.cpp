#include "dlgMenuProps.h"

#include "PropsDialogFixture.h"
#include "Vlerrors.h"

#include <QPushButton>
#include <QToolButton>

namespace
{

class MenuDialog : public TDialogFixture<TMenuPropsDialog>
{
protected:
    // What the access field shows and what it holds.
    std::string ShownAndHeld() const
    {
        return Access()->findChild<QLineEdit*>()->text().toStdString() + "/" + std::to_string(m_dialog.GetMenuAccess());
    }
};

constexpr auto MenuEditFields = {"EditName", "EditTitle", "EditLink", "EditHelp"};

} // namespace

TEST_F(MenuDialog, HasItsCaptionAndStaysOnTop)
{
    EXPECT_EQ(m_dialog.windowTitle(), QStringLiteral("Menu Eigenschaften"));
    EXPECT_TRUE(m_dialog.windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(MenuDialog, LabelsEveryField)
{
    EXPECT_EQ(Labels(), "EditAccess= Zugang|EditHelp= Hilfe|EditLink= Verweis|EditName= Name|EditTitle= Titel");
    for (const QLabel* label : m_dialog.findChildren<QLabel*>()) {
        EXPECT_EQ(label->palette().color(QPalette::WindowText), QColor(Qt::white)) << label->text().toStdString();
        EXPECT_TRUE(label->autoFillBackground());
    }
}

TEST_F(MenuDialog, NamesItsButtons)
{
    EXPECT_EQ(Field<QPushButton>("BtnOK")->text(), QStringLiteral("OK"));
    EXPECT_EQ(Field<QPushButton>("BtnApply")->text(), QStringLiteral("Übernehmen"));
    EXPECT_EQ(Field<QPushButton>("BtnCancel")->text(), QStringLiteral("Abbrechen"));
    EXPECT_TRUE(Field<QPushButton>("BtnOK")->isDefault());
    EXPECT_EQ(Field<QToolButton>("SBtnUp")->toolTip(), QStringLiteral("Vorhergehender Menueintrag"));
    EXPECT_EQ(Field<QToolButton>("SBtnDown")->toolTip(), QStringLiteral("Nachfolgender Menueintrag"));
    EXPECT_EQ(Field<QAbstractButton>("CheckAutoAccept")->text(),
              QStringLiteral("Änderungen bei Wechsel automatisch übernehmen"));
}

TEST_F(MenuDialog, GoesThroughItsFieldsInOrderWithTab)
{
    m_dialog.SetApplyEvent([](QObject*) {});
    EXPECT_EQ(TabOrder("EditName"),
              "EditName EditTitle EditLink EditHelp EditAccess BtnOK BtnApply BtnCancel CheckAutoAccept");
}

TEST_F(MenuDialog, BeginsEmpty)
{
    for (const char* field : MenuEditFields)
        EXPECT_EQ(TextOf(field), "") << field;
    EXPECT_EQ(ShownAndHeld(), "0/0");
    EXPECT_FALSE(m_dialog.GetLinkFixed());
    EXPECT_FALSE(m_dialog.GetChanged());
    EXPECT_TRUE(m_dialog.GetAutoAccept());
}

TEST_F(MenuDialog, GivesBackWhatItWasGiven)
{
    m_dialog.SetMenuName(QStringLiteral("Küche \"oben\""));
    m_dialog.SetMenuTitle(QStringLiteral("<Titel> & mehr"));
    m_dialog.SetMenuLink(QStringLiteral("a\\b/c.html"));
    m_dialog.SetMenuHelp(QStringLiteral(" hilfe "));
    m_dialog.SetMenuAccess(20);
    EXPECT_EQ(TextOf("EditName"), "Küche \"oben\"");
    EXPECT_EQ(TextOf("EditTitle"), "<Titel> & mehr");
    EXPECT_EQ(TextOf("EditLink"), "a\\b/c.html");
    EXPECT_EQ(TextOf("EditHelp"), " hilfe ");
    EXPECT_EQ(m_dialog.GetMenuName(), QStringLiteral("Küche \"oben\""));
    EXPECT_EQ(m_dialog.GetMenuTitle(), QStringLiteral("<Titel> & mehr"));
    EXPECT_EQ(m_dialog.GetMenuLink(), QStringLiteral("a\\b/c.html"));
    EXPECT_EQ(m_dialog.GetMenuHelp(), QStringLiteral(" hilfe "));
    EXPECT_EQ(ShownAndHeld(), "20/20");
}

TEST_F(MenuDialog, GivesBackWhatWasTyped)
{
    Show();
    for (const char* field : MenuEditFields)
        QTest::keyClicks(Edit(field), QString::fromLatin1(field));
    TypeAccess("7");
    EXPECT_EQ(m_dialog.GetMenuName(), QStringLiteral("EditName"));
    EXPECT_EQ(m_dialog.GetMenuTitle(), QStringLiteral("EditTitle"));
    EXPECT_EQ(m_dialog.GetMenuLink(), QStringLiteral("EditLink"));
    EXPECT_EQ(m_dialog.GetMenuHelp(), QStringLiteral("EditHelp"));
    EXPECT_EQ(m_dialog.GetMenuAccess(), 7);
}

TEST_F(MenuDialog, KeepsTextsOfAnyLength)
{
    const QString text(100000, u'x');
    m_dialog.SetMenuName(text);
    m_dialog.SetMenuLink(text);
    EXPECT_TRUE(m_dialog.GetMenuName() == text);
    EXPECT_TRUE(m_dialog.GetMenuLink() == text);
}

// Access

TEST_F(MenuDialog, ShowsAnAccessBeyondTheRangeAndHoldsTheNearestOne)
{
    m_dialog.SetMenuAccess(25);
    EXPECT_EQ(ShownAndHeld(), "25/20");
    m_dialog.SetMenuAccess(-3);
    EXPECT_EQ(ShownAndHeld(), "-3/0");
    m_dialog.SetMenuAccess(2147483647);
    EXPECT_EQ(ShownAndHeld(), "2147483647/20");
    m_dialog.SetMenuAccess(20);
    EXPECT_EQ(ShownAndHeld(), "20/20");
}

TEST_F(MenuDialog, ShowsAnAccessBeyondTheRangeAlsoWhenItIsDisplayed)
{
    m_dialog.SetMenuAccess(25);
    Show();
    EXPECT_EQ(ShownAndHeld(), "25/20");
    EXPECT_FALSE(m_dialog.GetChanged());
    m_dialog.SetMenuAccess(99);
    QCoreApplication::processEvents();
    EXPECT_EQ(ShownAndHeld(), "99/20");
    QTest::keyClicks(Edit("EditName"), QStringLiteral("x"));
    EXPECT_EQ(ShownAndHeld(), "99/20");
}

TEST_F(MenuDialog, ShowsTheAccessThatItHoldsWhenTheUserLeavesTheField)
{
    m_dialog.SetMenuAccess(25);
    Show();
    Access()->setFocus();
    EXPECT_EQ(ShownAndHeld(), "25/20");
    QTest::keyClick(Access(), Qt::Key_Tab);
    EXPECT_EQ(ShownAndHeld(), "20/20");
}

TEST_F(MenuDialog, StepsFromTheAccessThatItHolds)
{
    m_dialog.SetMenuAccess(25);
    Show();
    Access()->setFocus();
    for (const char* shown : {"20/20", "19/19"}) {
        QTest::keyClick(Access(), Qt::Key_Down);
        EXPECT_EQ(ShownAndHeld(), shown);
    }
    for (const char* shown : {"20/20", "20/20"}) {
        QTest::keyClick(Access(), Qt::Key_Up);
        EXPECT_EQ(ShownAndHeld(), shown);
    }
}

TEST_F(MenuDialog, TakesNoTypedAccessBeyondTheRange)
{
    Show();
    TypeAccess("25");
    EXPECT_EQ(ShownAndHeld(), "2/2");
    TypeAccess("20");
    EXPECT_EQ(ShownAndHeld(), "20/20");
    TypeAccess("x-7");
    EXPECT_EQ(ShownAndHeld(), "7/7");
}

// Changed flag

TEST_F(MenuDialog, IsChangedByTypingInEachField)
{
    Show();
    for (const char* field : MenuEditFields)
        EXPECT_TRUE(Changes([&] { QTest::keyClicks(Edit(field), QStringLiteral("x")); })) << field;
    EXPECT_TRUE(Changes([this] { TypeAccess("7"); }));
    EXPECT_TRUE(Changes([this] { QTest::keyClick(Access(), Qt::Key_Up); }));
    EXPECT_EQ(m_dialog.GetMenuAccess(), 8);
    EXPECT_FALSE(Changes([this] { QTest::keyClicks(Access(), QStringLiteral("x")); }));
}

TEST_F(MenuDialog, IsChangedBySettersThatChangeAField)
{
    EXPECT_TRUE(Changes([this] { m_dialog.SetMenuName(QStringLiteral("a")); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetMenuTitle(QStringLiteral("a")); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetMenuLink(QStringLiteral("a")); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetMenuHelp(QStringLiteral("a")); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetMenuAccess(20); }));
    EXPECT_TRUE(Changes([this] { m_dialog.SetMenuAccess(25); }));
}

TEST_F(MenuDialog, IsNotChangedBySettersThatChangeNothing)
{
    EXPECT_FALSE(Changes([this] {
        m_dialog.SetMenuName({});
        m_dialog.SetMenuTitle({});
        m_dialog.SetMenuLink({});
        m_dialog.SetMenuHelp({});
        m_dialog.SetMenuAccess(0);
    }));
    EXPECT_FALSE(Changes([this] { m_dialog.SetLinkFixed(true); }));
    EXPECT_FALSE(Changes([this] { m_dialog.SetAutoAccept(false); }));
}

// The link

TEST_F(MenuDialog, KeepsAFixedLinkFromBeingEdited)
{
    m_dialog.SetMenuLink(QStringLiteral("/alarm.html"));
    m_dialog.SetLinkFixed(true);
    EXPECT_TRUE(m_dialog.GetLinkFixed());
    EXPECT_FALSE(IsEnabled("EditLink"));
    EXPECT_TRUE(IsEnabled("EditHelp"));
    Show();
    QTest::keyClicks(Edit("EditLink"), QStringLiteral("x"));
    EXPECT_FALSE(DropFile("EditLink"));
    EXPECT_EQ(m_dialog.GetMenuLink(), QStringLiteral("/alarm.html"));
    m_dialog.SetLinkFixed(false);
    EXPECT_FALSE(m_dialog.GetLinkFixed());
    EXPECT_TRUE(DropFile("EditLink"));
}

TEST_F(MenuDialog, FindsTheLinkFixedWhereItsFieldIsDisabled)
{
    Edit("EditLink")->setEnabled(false);
    EXPECT_TRUE(m_dialog.GetLinkFixed());
}

// Files

TEST_F(MenuDialog, TakesTheValidatedPathOfAFileThatIsDroppedOnLinkOrHelp)
{
    QStringList asked;
    m_dialog.SetValidateFileEvent([&](const QObject* sender, QString& fileName) {
        asked.append(sender->objectName() + u' ' + fileName);
        fileName = QStringLiteral("/bild.png");
        return true;
    });
    Show();
    for (const char* field : {"EditLink", "EditHelp"}) {
        EXPECT_TRUE(Changes([&] { EXPECT_TRUE(DropFile(field)); })) << field;
        EXPECT_EQ(TextOf(field), "/bild.png");
    }
    EXPECT_EQ(asked,
              QStringList({QStringLiteral("EditLink \\tmp\\bild.png"), QStringLiteral("EditHelp \\tmp\\bild.png")}));
}

TEST_F(MenuDialog, TakesNothingThatItsValidationRefuses)
{
    m_dialog.SetValidateFileEvent([](QObject*, QString&) { return false; });
    Show();
    for (const char* field : {"EditLink", "EditHelp"})
        EXPECT_FALSE(Changes([&] { EXPECT_FALSE(DropFile(field)); })) << field;
    m_dialog.SetValidateFileEvent(nullptr);
    EXPECT_TRUE(DropFile("EditLink"));
    EXPECT_EQ(TextOf("EditLink"), "\\tmp\\bild.png");
}

TEST_F(MenuDialog, TakesNoDatapoint)
{
    Show();
    for (const char* field : MenuEditFields)
        EXPECT_FALSE(Drop(field, *Datapoint("1/2/3", "Licht", "5"))) << field;
    EXPECT_FALSE(m_dialog.GetChanged());
}
