#include "MenuTree.h"

#include "NestedLoop.h"

#include <QAbstractButton>
#include <QAction>
#include <QCoreApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QTest>
#include <QUrl>

namespace
{

class MenuLogo : public TMenuTree
{
protected:
    MenuLogo() { Run("MenuAction_LogoClick"); }

    TLogoDialog* LogoDialog() const { return m_frame->findChild<TLogoDialog*>(); }
    QLineEdit* PathField() const { return LogoDialog()->findChild<QLineEdit*>(QStringLiteral("EditPath")); }
    void Enter(const char* path) const { TypeInto(PathField(), path); }
    // Presses a button, which deletes the dialog.
    void Answer(const char* button) const
    {
        QTest::mouseClick(LogoDialog()->findChild<QAbstractButton*>(QLatin1StringView(button)), Qt::LeftButton);
        Finish();
    }
    static void Finish() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    std::string Logo() const { return m_frame->GetLogo().toStdString(); }
};

} // namespace

TEST_F(MenuLogo, IsShownAsItWasLoaded)
{
    ASSERT_NE(LogoDialog(), nullptr);
    EXPECT_TRUE(LogoDialog()->isVisible());
    EXPECT_FALSE(LogoDialog()->isModal());
    EXPECT_EQ(PathField()->text(), QStringLiteral("/images/logo.png"));
    EXPECT_EQ(Logo(), "/images/logo.png");
}

TEST_F(MenuLogo, IsTakenWithForwardSlashesAndReachesTheFileAtTheNextExport)
{
    Enter("\\bilder\\neu.png");
    Answer("BtnOK");
    EXPECT_EQ(Logo(), "/bilder/neu.png");
    EXPECT_EQ(LogoDialog(), nullptr);
    EXPECT_TRUE(m_frame->IsModified());
    EXPECT_EQ(WrittenMenu(), MenuDocument());
    Export();
    EXPECT_TRUE(WrittenMenu().contains("logo=\"/bilder/neu.png\""));
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuLogo, StaysForAnEmptyPath)
{
    Enter("");
    Answer("BtnOK");
    EXPECT_EQ(Logo(), "/images/logo.png");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuLogo, StaysWhenTheDialogIsCancelledOrClosed)
{
    Enter("/neu.png");
    Answer("BtnCancel");
    EXPECT_EQ(Logo(), "/images/logo.png");
    Run("MenuAction_LogoClick");
    Enter("/neu.png");
    LogoDialog()->close();
    Finish();
    EXPECT_EQ(LogoDialog(), nullptr);
    EXPECT_EQ(Logo(), "/images/logo.png");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuLogo, IsNoChangeWhenItIsTheSame)
{
    Answer("BtnOK");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuLogo, GetsADialogOfItsOwnForEveryUse)
{
    const QPointer<TLogoDialog> first = LogoDialog();
    Answer("BtnCancel");
    EXPECT_TRUE(first.isNull());
    Run("MenuAction_LogoClick");
    ASSERT_NE(LogoDialog(), nullptr);
    EXPECT_EQ(PathField()->text(), QStringLiteral("/images/logo.png"));
}

TEST_F(MenuLogo, OfADroppedFileIsItsAddressAndIsToldToTheUser)
{
    QMimeData content;
    content.setUrls({QUrl::fromLocalFile(m_project.Path(QStringLiteral("bilder/neu.png")))});
    EXPECT_TRUE(TDraggedOver(PathField(), &content).EnterAndDrop(PathField()->rect().center()));
    QCoreApplication::processEvents();
    EXPECT_EQ(PathField()->text(), QStringLiteral("/bilder/neu.png"));
    EXPECT_EQ(m_messages.Informations, QStringList({QStringLiteral("/bilder/neu.png")}));
    Answer("BtnOK");
    EXPECT_EQ(Logo(), "/bilder/neu.png");
}

TEST_F(MenuLogo, DialogGoesWithItsFrame)
{
    Enter("/neu.png");
    const QPointer<TLogoDialog> dialog = LogoDialog();
    m_frame.reset();
    EXPECT_TRUE(dialog.isNull());
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(MenuLogo, DialogStaysBesideThePropertiesOfANode)
{
    Select("Wetter");
    m_frame->MenuAction_AttributesExecute();
    EXPECT_TRUE(LogoDialog()->isVisible());
    TMenuTreeFrame::FinalizeMenu();
    ASSERT_NE(LogoDialog(), nullptr);
    EXPECT_TRUE(LogoDialog()->isVisible());
}
