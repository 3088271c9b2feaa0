#include "DatapointBrowser.h"
#include "DatapointModel.h"
#include "ImportDialog.h"
#include "StoreFixture.h"
#include "Vldragobjects.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QTreeView>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <functional>

namespace
{

// A shown browser that has the keyboard. What is pressed goes to whatever has it at that time.
class BrowserKeyboard : public ::testing::Test
{
protected:
    BrowserKeyboard()
    {
        bool handled = false;
        m_browser.ExecuteCmd(BrowserCommand, handled);
        m_browser.resize(600, 400);
        m_browser.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_browser));
        m_browser.setFocus();
    }

    static QWidget* Target()
    {
        QWidget* popup = QApplication::activePopupWidget();
        return popup ? popup : QApplication::focusWidget();
    }

    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(Target(), key, modifiers); }
    static void Type(const QString& text) { QTest::keyClicks(Target(), text); }

    // Calls the steps one after the other, each when its window has come up.
    template <class TWindow> static void WhenShown(const std::function<void()>& step)
    {
        auto* timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, timer, [timer, step] {
            auto* window = qobject_cast<TWindow*>(QApplication::activeModalWidget());
            if (!window || !window->isActiveWindow() || !QApplication::focusWidget())
                return;
            timer->stop();
            timer->deleteLater();
            step();
        });
        timer->start(0);
    }

    QString Text(int column) const
    {
        return m_browser.View()->currentIndex().siblingAtColumn(column).data().toString();
    }

    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    TDatapointBrowser m_browser{dkEib, nullptr};
};

} // namespace

TEST_F(BrowserKeyboard, ImportsFindsTypesAndCopies)
{
    const QString path = m_project.Path(QStringLiteral("haus.esf"));
    WriteAll(path, "Haus\r\n" + EsfLine("1/1/1", "Decke Flur") + EsfLine("1/1/2", "Decke Bad"));
    WhenShown<QFileDialog>([path] {
        Type(path);
        Press(Qt::Key_Return);
    });
    WhenShown<TImportDialog>([] { Press(Qt::Key_Return); });
    Press(Qt::Key_I, Qt::ControlModifier);
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    ASSERT_EQ(m_browser.Store().Datapoints().size(), 2);

    // What a window manager does when a dialog is gone.
    m_browser.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_browser));
    Type(QStringLiteral("bad"));
    EXPECT_EQ(m_browser.FilterLine()->text(), QStringLiteral("bad"));
    Press(Qt::Key_Down);
    EXPECT_TRUE(m_browser.View()->hasFocus());
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(Text(TDatapointModel::ColumnAddress), QStringLiteral("1/1/2"));

    Press(Qt::Key_T, Qt::ControlModifier);
    ASSERT_TRUE(qobject_cast<QMenu*>(QApplication::activePopupWidget()));
    for (int i = 0; i < 5; ++i)
        Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(Text(TDatapointModel::ColumnType), QStringLiteral("EIS 5"));

    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("1/1/2"));
    const auto copied = TPropertyDragObject::FromMimeData(QApplication::clipboard()->mimeData());
    ASSERT_TRUE(copied);
    EXPECT_EQ(copied->GetValue(QStringLiteral("label")), QStringLiteral("Decke Bad"));
    EXPECT_EQ(copied->GetValue(QStringLiteral("type")), QStringLiteral("5"));
}

TEST_F(BrowserKeyboard, ShowsItsKeysInTheMenu)
{
    QStringList keys;
    for (const QAction* action : m_browser.actions()) {
        if (!action->shortcut().isEmpty() && action->isShortcutVisibleInContextMenu())
            keys.append(action->shortcut().toString(QKeySequence::PortableText));
    }
    EXPECT_EQ(keys, QStringList({QStringLiteral("Ctrl+I"), QStringLiteral("Ctrl+C"), QStringLiteral("Ctrl+T")}));
}

TEST_F(BrowserKeyboard, LeavesATypeThatTheFileGives)
{
    m_browser.Store().Import(QStringLiteral("haus.esf"), EsfLine("1/1/1", "Flur", "EIS 1 'Schalten' (1 Bit)"), {}, {});
    Press(Qt::Key_Down);
    m_browser.View()->expandAll();
    Press(Qt::Key_End);
    EXPECT_EQ(Text(TDatapointModel::ColumnAddress), QStringLiteral("1/1/1"));
    Press(Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}
