#include "dlgLogo.h"

#include "NestedLoop.h"
#include "TestSupport.h"
#include "Vlerrors.h"

#include <QLabel>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

#include <functional>

namespace
{

const auto Logo = QStringLiteral("/images/logo.png");

class LogoDialog : public testing::Test
{
protected:
    LogoDialog()
    {
        m_dialog->SetLogoLink(Logo);
        m_dialog->SetCloseEvent([this](TLogoDialog* sender) {
            EXPECT_EQ(sender, m_dialog.data());
            m_closed.append(sender->GetLogoLink());
        });
    }
    ~LogoDialog() override { delete m_dialog.data(); }

    void Show()
    {
        m_dialog->Display();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.data()));
    }
    template <class TField> TField* Field(const char* name) const
    {
        auto* field = m_dialog->findChild<TField*>(QLatin1StringView(name));
        EXPECT_NE(field, nullptr) << name;
        return field;
    }
    QLineEdit* Edit() const { return Field<QLineEdit>("EditPath"); }
    void Press(const char* button) const { QTest::mouseClick(Field<QPushButton>(button), Qt::LeftButton); }
    bool DropFile(const char* path)
    {
        QMimeData content;
        content.setUrls({QUrl::fromLocalFile(QString::fromUtf8(path))});
        return TDraggedOver(Edit(), &content).EnterAndDrop(Edit()->rect().center());
    }
    bool IsFreed() const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return m_dialog.isNull();
    }
    // What Execute returns when `act` is done while the dialog is open.
    bool ExecuteAnd(const std::function<void()>& act)
    {
        QTimer::singleShot(0, m_dialog.data(), act);
        return m_dialog->Execute();
    }

    QPointer<TLogoDialog> m_dialog = new TLogoDialog(nullptr);
    QStringList m_closed; // the paths at every close
};

} // namespace

TEST_F(LogoDialog, HasItsTexts)
{
    EXPECT_EQ(m_dialog->windowTitle(), QStringLiteral("Logo Dialog"));
    EXPECT_TRUE(m_dialog->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(m_dialog->findChild<QLabel*>()->text(), QStringLiteral(" Pfad"));
    EXPECT_EQ(m_dialog->findChild<QLabel*>()->buddy(), Edit());
    EXPECT_EQ(Field<QPushButton>("BtnOK")->text(), QStringLiteral("OK"));
    EXPECT_TRUE(Field<QPushButton>("BtnOK")->isDefault());
    EXPECT_EQ(Field<QPushButton>("BtnCancel")->text(), QStringLiteral("Abbrechen"));
}

TEST_F(LogoDialog, HasAFixedSizeAndIsNotModal)
{
    Show();
    EXPECT_EQ(m_dialog->minimumSize(), m_dialog->maximumSize());
    EXPECT_FALSE(m_dialog->isModal());
}

TEST_F(LogoDialog, BeginsEmpty)
{
    const TLogoDialog fresh(nullptr);
    EXPECT_EQ(fresh.GetLogoLink(), QString());
}

TEST_F(LogoDialog, GivesBackWhatItWasGivenAndWhatWasTyped)
{
    EXPECT_EQ(m_dialog->GetLogoLink(), Logo);
    EXPECT_EQ(Edit()->text(), Logo);
    Show();
    Edit()->selectAll();
    QTest::keyClicks(Edit(), QStringLiteral("a\\b.png"));
    EXPECT_EQ(m_dialog->GetLogoLink(), QStringLiteral("a\\b.png"));
}

TEST_F(LogoDialog, KeepsThePathWithOkAndWithEnterAndIsFreed)
{
    Show();
    Press("BtnOK");
    EXPECT_EQ(m_closed, QStringList{Logo});
    EXPECT_TRUE(IsFreed());
    m_dialog = new TLogoDialog(nullptr);
    m_dialog->SetCloseEvent([this](TLogoDialog* sender) { m_closed.append(sender->GetLogoLink()); });
    Show();
    QTest::keyClicks(Edit(), QStringLiteral("neu"));
    QTest::keyClick(Edit(), Qt::Key_Return);
    EXPECT_EQ(m_closed, QStringList({Logo, QStringLiteral("neu")}));
    EXPECT_TRUE(IsFreed());
}

TEST_F(LogoDialog, EmptiesThePathWithCancelAndIsFreed)
{
    Show();
    Press("BtnCancel");
    EXPECT_EQ(m_closed, QStringList{QString()});
    EXPECT_TRUE(IsFreed());
}

TEST_F(LogoDialog, EmptiesThePathWithTheCloseBoxAndIsFreed)
{
    Show();
    EXPECT_TRUE(m_dialog->close());
    EXPECT_EQ(m_closed, QStringList{QString()});
    EXPECT_TRUE(IsFreed());
}

TEST_F(LogoDialog, EmptiesThePathWithEscapeAndIsFreed)
{
    Show();
    QTest::keyClick(m_dialog.data(), Qt::Key_Escape);
    EXPECT_EQ(m_closed, QStringList{QString()});
    EXPECT_TRUE(IsFreed());
}

TEST_F(LogoDialog, IsFreedWithoutACloseEventToo)
{
    m_dialog->SetCloseEvent(nullptr);
    Show();
    Press("BtnOK");
    EXPECT_TRUE(IsFreed());
}

TEST_F(LogoDialog, IsClosedThoughTheCloseEventFails)
{
    const TRecordedMessages messages;
    m_dialog->SetCloseEvent([](TLogoDialog*) { throw TUserError(QStringLiteral("close")); });
    Show();
    Press("BtnOK");
    EXPECT_EQ(messages.Errors, QStringList{QStringLiteral("close")});
    EXPECT_TRUE(IsFreed());
}

TEST_F(LogoDialog, MakesExecuteTrueWithOk)
{
    EXPECT_TRUE(ExecuteAnd([this] {
        EXPECT_TRUE(m_dialog->isModal());
        Press("BtnOK");
    }));
    EXPECT_EQ(m_closed, QStringList{Logo});
    EXPECT_TRUE(IsFreed());
}

TEST_F(LogoDialog, MakesExecuteFalseWithCancel)
{
    EXPECT_FALSE(ExecuteAnd([this] { Press("BtnCancel"); }));
    EXPECT_EQ(m_closed, QStringList{QString()});
    EXPECT_TRUE(IsFreed());
}

// Files

TEST_F(LogoDialog, ShowsItsTextInABoxAfterAFileWasDropped)
{
    const TRecordedMessages messages;
    m_dialog->SetValidateFileEvent([](QObject*, QString& fileName) {
        EXPECT_EQ(fileName, QStringLiteral("\\tmp\\bild.png"));
        fileName = QStringLiteral("/bild.png");
        return true;
    });
    Show();
    EXPECT_TRUE(DropFile("/tmp/bild.png"));
    EXPECT_EQ(m_dialog->GetLogoLink(), QStringLiteral("/bild.png"));
    // Whoever dragged the file is not held up.
    EXPECT_EQ(messages.Informations, QStringList());
    QCoreApplication::processEvents();
    EXPECT_EQ(messages.Informations, QStringList{QStringLiteral("/bild.png")});
}

TEST_F(LogoDialog, ShowsNoBoxForAFileThatIsRefused)
{
    const TRecordedMessages messages;
    m_dialog->SetValidateFileEvent([](QObject*, QString&) { return false; });
    Show();
    EXPECT_FALSE(DropFile("/tmp/bild.png"));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_dialog->GetLogoLink(), Logo);
    EXPECT_EQ(messages.Informations, QStringList());
}

TEST_F(LogoDialog, ShowsNoBoxWhenItIsGoneByThen)
{
    const TRecordedMessages messages;
    Show();
    EXPECT_TRUE(DropFile("/tmp/bild.png"));
    delete m_dialog.data();
    QCoreApplication::processEvents();
    EXPECT_EQ(messages.Informations, QStringList());
}
