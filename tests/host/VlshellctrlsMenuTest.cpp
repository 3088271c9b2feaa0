#include "ShellTree.h"

#include "OpenedUrls.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>

#include <unistd.h>

namespace
{

class VlshellctrlsMenuTest : public TShellTreeFixture
{
protected:
    VlshellctrlsMenuTest()
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_directory.filePath(QStringLiteral("data"))));
        qunsetenv("VISUAL");
        qunsetenv("EDITOR");
    }
    ~VlshellctrlsMenuTest() override { qunsetenv("XDG_DATA_HOME"); }

    QString Trash() const { return m_directory.filePath(QStringLiteral("data/Trash/files/")); }
    QString Enabled() const
    {
        QStringList names;
        for (const QAction* action : m_tree.ContextMenu()->actions()) {
            if (!action->isSeparator() && action->isEnabled())
                names.append(action->objectName().mid(11));
        }
        return names.join(u' ');
    }
    QLineEdit* Editor()
    {
        QTest::qWait(1); // the selection of the name's stem
        return m_tree.viewport()->findChild<QLineEdit*>();
    }
    void TypeName(const QString& name)
    {
        QLineEdit* editor = Editor();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        editor->insert(name);
        QTest::keyClick(editor, Qt::Key_Return);
        EndEditing();
    }
    // The field goes, and then the name is taken over.
    void EndEditing()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return Editor() == nullptr; }));
        QTest::qWait(10);
    }
    // The right button of the mouse.
    void ClickRight(const QPoint& place)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, m_tree.viewport()->mapToGlobal(place));
        QApplication::sendEvent(m_tree.viewport(), &event);
    }

    TOpenedUrls m_opened;
};

struct TSituation
{
    const char* Name;
    const char* Item; // null for no selection
    const char* Enabled;
};

} // namespace

TEST_F(VlshellctrlsMenuTest, OffersWhatTheItemAllows)
{
    MakeFolder("ordner");
    MakeFile("datei.txt");
    MakeFile(".versteckt");
    MakeFile("gr\xfcn");
    ASSERT_EQ(symlink("ordner", At("link").constData()), 0);
    ASSERT_EQ(mkfifo(At("pipe").constData(), 0600), 0);
    m_tree.UpdateActions();
    EXPECT_EQ(Enabled(), QString()) << "without a root";
    Open();
    const TSituation situations[] = {
        {"nothing", nullptr, "NewFolder Refresh"},
        {"root", "", "Open NewFolder CopyPath Refresh"},
        {"folder", "ordner", "Open Rename Delete NewFolder CopyPath Refresh"},
        {"file", "datei.txt", "Open Edit Rename Delete NewFolder CopyPath Refresh"},
        {"hidden file", ".versteckt", "Open Edit Rename Delete NewFolder CopyPath Refresh"},
        {"name that is no text", "gr\xfcn", "Open Edit Rename Delete NewFolder CopyPath Refresh"},
        {"link", "link", "Open Edit Rename Delete NewFolder CopyPath Refresh"},
        {"FIFO", "pipe", "Rename Delete NewFolder CopyPath Refresh"},
    };
    for (const TSituation& situation : situations) {
        m_tree.clearSelection();
        if (situation.Item) {
            ASSERT_TRUE(Select(situation.Item)) << situation.Name;
        }
        EXPECT_EQ(Enabled(), QString::fromLatin1(situation.Enabled)) << situation.Name;
    }
}

TEST_F(VlshellctrlsMenuTest, IsGermanAndHasItsKeys)
{
    QStringList rows;
    for (const QAction* action : m_tree.ContextMenu()->actions())
        rows.append(action->text() + u'|' + action->shortcut().toString(QKeySequence::PortableText));
    const QStringList expected{
        QStringLiteral("Öffnen\tEingabe|"),
        QStringLiteral("Bearbeiten|F4"),
        QStringLiteral("|"),
        QStringLiteral("Umbenennen|F2"),
        QStringLiteral("Löschen|Del"),
        QStringLiteral("Neuer Ordner|Ctrl+Shift+N"),
        QStringLiteral("|"),
        QStringLiteral("Pfad kopieren|Ctrl+Shift+C"),
        QStringLiteral("Aktualisieren|F5"),
    };
    EXPECT_EQ(rows, expected);
    EXPECT_EQ(m_tree.actions().size(), expected.size());
}

TEST_F(VlshellctrlsMenuTest, OpensOnTheItemUnderTheMouse)
{
    MakeFile("a");
    MakeFile("b");
    Open();
    ASSERT_TRUE(Select("a"));
    ClickRight(PlaceOf("b"));
    EXPECT_TRUE(m_tree.ContextMenu()->isVisible());
    EXPECT_EQ(Selected(), "b");
    m_tree.ContextMenu()->close();
    ClickRight(QPoint(20, m_tree.viewport()->height() - 5));
    EXPECT_EQ(Selected(), "nothing");
    EXPECT_EQ(Enabled(), QStringLiteral("NewFolder Refresh"));
    m_tree.ContextMenu()->close();
}

TEST_F(VlshellctrlsMenuTest, AsksTheExecuteContextEventFirst)
{
    MakeFile("a.txt");
    Open();
    ASSERT_TRUE(Select("a.txt"));
    QStringList asked;
    bool answer = true;
    m_tree.SetExecuteContextEvent([&](QObject* sender, QMenu* menu, int command, const QString& verb, bool& handled) {
        EXPECT_EQ(sender, &m_tree);
        EXPECT_EQ(menu, m_tree.ContextMenu());
        EXPECT_FALSE(handled);
        asked.append(QString::number(command) + verb);
        handled = answer;
    });
    Action("MenuAction_Open")->trigger();
    Action("MenuAction_Delete")->trigger();
    EXPECT_TRUE(m_opened.Urls().isEmpty());
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    answer = false;
    Action("MenuAction_Open")->trigger();
    EXPECT_EQ(m_opened.Urls(), QList<QUrl>{QUrl::fromLocalFile(Root() + QStringLiteral("/a.txt"))});
    const QStringList expected{QStringLiteral("0open"), QStringLiteral("4delete"), QStringLiteral("0open")};
    EXPECT_EQ(asked, expected);
}

TEST_F(VlshellctrlsMenuTest, OpeningAFolderShowsItsContent)
{
    MakeFolder("a");
    MakeFile("a/b");
    Open();
    ASSERT_TRUE(Select("a"));
    Action("MenuAction_Open")->trigger();
    EXPECT_EQ(Outline(), QStringLiteral("a*(b)"));
    EXPECT_TRUE(m_opened.Urls().isEmpty());
}

TEST_F(VlshellctrlsMenuTest, WhatCannotBeOpenedIsAnErrorThatNamesIt)
{
    MakeFile("gr\xfcn");
    Open();
    ASSERT_TRUE(Select("gr\xfcn"));
    Action("MenuAction_Edit")->trigger();
    EXPECT_TRUE(m_messages.Errors.value(0).contains(QStringLiteral("gr\uFFFDn\" kann nicht geöffnet werden")));
}

TEST_F(VlshellctrlsMenuTest, F2RenamesInPlaceAndKeepsTheExtension)
{
    MakeFile("alt.txt", "inhalt");
    MakeFile("b.txt");
    Open();
    ASSERT_TRUE(Select("alt.txt"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Editor()->selectedText() == QStringLiteral("alt"); }));
    QTest::keyClicks(Editor(), QStringLiteral("neu"));
    QTest::keyClick(Editor(), Qt::Key_Return);
    EndEditing();
    EXPECT_EQ(Outline(), QStringLiteral("b.txt neu.txt"));
    EXPECT_EQ(Selected(), "neu.txt");
    EXPECT_TRUE(Exists("neu.txt"));
    EXPECT_FALSE(Exists("alt.txt"));
}

TEST_F(VlshellctrlsMenuTest, EscapeLeavesTheNameAsItWas)
{
    MakeFile("alt");
    Open();
    ASSERT_TRUE(Select("alt"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    QTest::keyClicks(Editor(), QStringLiteral("neu"));
    QTest::keyClick(Editor(), Qt::Key_Escape);
    EndEditing();
    EXPECT_EQ(Outline(), QStringLiteral("alt"));
    EXPECT_TRUE(Exists("alt"));
}

TEST_F(VlshellctrlsMenuTest, ARenamedFolderStaysOpen)
{
    MakeFolder("a");
    MakeFile("a/x");
    MakeFolder("m");
    Open();
    m_tree.expand(Item("a"));
    ASSERT_TRUE(Select("a"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    TypeName(QStringLiteral("z"));
    EXPECT_EQ(Outline(), QStringLiteral("m z*(x)"));
    EXPECT_EQ(Selected(), "z");
}

TEST_F(VlshellctrlsMenuTest, NamesWithQuotesAndTrailingDotsAreNames)
{
    MakeFile("a");
    Open();
    ASSERT_TRUE(Select("a"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    TypeName(QStringLiteral("\"b\" \"c..."));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_TRUE(Exists("\"b\" \"c..."));
}

TEST_F(VlshellctrlsMenuTest, ARefusedNameIsAnErrorAndLosesNothing)
{
    MakeFile("a", "A");
    MakeFile("b", "B");
    Open();
    const std::pair<QString, const char16_t*> refused[] = {
        {QStringLiteral("b"), u"Diesen Namen gibt es schon"},
        {QStringLiteral("x/y"), u"Ein Name enthält keinen Schrägstrich"},
        {QStringLiteral("x\\y"), u"Ein Name enthält keinen Schrägstrich"},
        {QStringLiteral(" "), u"Der Name ist leer"},
        {QStringLiteral(".."), u"Dieser Name ist dem System vorbehalten"},
        {QString(300, u'x'), u"Der Name ist zu lang"},
    };
    for (const auto& [name, reason] : refused) {
        m_messages.Errors.clear();
        ASSERT_TRUE(Select("a"));
        QTest::keyClick(&m_tree, Qt::Key_F2);
        TypeName(name);
        EXPECT_EQ(
            m_messages.Errors,
            QStringList{
                QStringLiteral("\"%1/a\" kann nicht umbenannt werden (%2)").arg(Root(), QString::fromUtf16(reason))});
        EXPECT_EQ(Outline(), QStringLiteral("a b"));
        EXPECT_EQ(ReadAll(Root() + QStringLiteral("/b")), "B");
    }
}

TEST_F(VlshellctrlsMenuTest, ANameThatIsNoTextCanBeReplacedByOneThatIs)
{
    MakeFile("gr\xfcn");
    Open();
    ASSERT_TRUE(Select("gr\xfcn"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    QTest::keyClick(Editor(), Qt::Key_Return);
    EndEditing();
    EXPECT_TRUE(Exists("gr\xfcn")) << "confirmed as it was";
    QTest::keyClick(&m_tree, Qt::Key_F2);
    TypeName(QStringLiteral("grün"));
    EXPECT_TRUE(Exists("grün"));
    EXPECT_FALSE(Exists("gr\xfcn"));
}

TEST_F(VlshellctrlsMenuTest, DelMovesToTheTrashAfterAQuestion)
{
    MakeFile("a", "inhalt");
    MakeFile("b");
    Open();
    ASSERT_TRUE(Select("a"));
    m_messages.Answer = false;
    QTest::keyClick(&m_tree, Qt::Key_Delete);
    EXPECT_TRUE(Exists("a"));
    m_messages.Answer = true;
    QTest::keyClick(&m_tree, Qt::Key_Delete);
    const QString question = QStringLiteral("\"%1/a\" in den Papierkorb legen?").arg(Root());
    EXPECT_EQ(m_messages.Questions, (QStringList{question, question}));
    EXPECT_FALSE(Exists("a"));
    EXPECT_EQ(Outline(), QStringLiteral("b"));
    EXPECT_EQ(ReadAll(Trash() + u'a'), "inhalt");
}

TEST_F(VlshellctrlsMenuTest, AFolderGoesToTheTrashWithItsContent)
{
    MakeFolder("a");
    MakeFile("a/b", "inhalt");
    Open();
    ASSERT_TRUE(Select("a"));
    Action("MenuAction_Delete")->trigger();
    EXPECT_EQ(Outline(), QString());
    EXPECT_EQ(ReadAll(Trash() + QStringLiteral("a/b")), "inhalt");
}

TEST_F(VlshellctrlsMenuTest, WithoutATrashNothingIsDeleted)
{
    WriteAll(m_directory.filePath(QStringLiteral("data")), "no folder");
    MakeFile("a");
    MakeFile("gr\xfcn");
    Open();
    for (const char* file : {"a", "gr\xfcn"}) {
        m_messages.Errors.clear();
        ASSERT_TRUE(Select(file));
        Action("MenuAction_Delete")->trigger();
        EXPECT_EQ(m_messages.Errors.size(), 1);
        EXPECT_TRUE(m_messages.Errors.value(0).contains(QStringLiteral("kann nicht in den Papierkorb gelegt werden")));
        EXPECT_TRUE(Exists(file));
    }
}

TEST_F(VlshellctrlsMenuTest, DeletingWhatIsGoneIsAnError)
{
    MakeFile("a");
    Open();
    ASSERT_TRUE(Select("a"));
    unlink(At("a").constData());
    Action("MenuAction_Delete")->trigger();
    EXPECT_TRUE(m_messages.Errors.value(0).contains(QStringLiteral("Nicht mehr vorhanden")));
}

TEST_F(VlshellctrlsMenuTest, ANewFolderIsMadeWhereTheSelectionIsAndNamedAtOnce)
{
    MakeFolder("a");
    MakeFile("a/b");
    Open();
    ASSERT_TRUE(Select("a/b"));
    QTest::keyClick(&m_tree, Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Outline(), QStringLiteral("a*(Neuer Ordner b)"));
    TypeName(QStringLiteral("Bilder"));
    EXPECT_EQ(Outline(), QStringLiteral("a*(Bilder b)"));
    EXPECT_EQ(Selected(), "a/Bilder");
    m_tree.clearSelection();
    Action("MenuAction_NewFolder")->trigger();
    QTest::keyClick(Editor(), Qt::Key_Escape);
    m_tree.clearSelection();
    Action("MenuAction_NewFolder")->trigger();
    QTest::keyClick(Editor(), Qt::Key_Escape);
    EXPECT_EQ(Outline(), QStringLiteral("a*(Bilder b) Neuer Ordner Neuer Ordner (2)"));
}

TEST_F(VlshellctrlsMenuTest, ANewFolderOpensTheClosedOneAroundIt)
{
    MakeFolder("a");
    MakeFile("a/b");
    Open();
    ASSERT_TRUE(Select("a"));
    Action("MenuAction_NewFolder")->trigger();
    EXPECT_EQ(Outline(), QStringLiteral("a*(Neuer Ordner b)"));
}

TEST_F(VlshellctrlsMenuTest, WhereNoFolderCanBeMadeTheUserIsTold)
{
    MakeFolder("a");
    Open();
    ASSERT_TRUE(Select("a"));
    rmdir(At("a").constData());
    Action("MenuAction_NewFolder")->trigger();
    EXPECT_TRUE(m_messages.Errors.value(0).contains(QStringLiteral("kann nicht angelegt werden")));
}

TEST_F(VlshellctrlsMenuTest, ThePathIsCopied)
{
    MakeFile("a b");
    Open();
    ASSERT_TRUE(Select("a b"));
    QTest::keyClick(&m_tree, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), Root() + QStringLiteral("/a b"));
}

TEST_F(VlshellctrlsMenuTest, F5ShowsWhatIsThereNow)
{
    Open();
    MakeFile("a");
    QTest::keyClick(&m_tree, Qt::Key_F5);
    EXPECT_EQ(Outline(), QStringLiteral("a"));
}

TEST_F(VlshellctrlsMenuTest, AKeyDoesNothingThatTheMenuDoesNotOffer)
{
    Open();
    ASSERT_TRUE(Select(""));
    QTest::keyClick(&m_tree, Qt::Key_Delete);
    QTest::keyClick(&m_tree, Qt::Key_F2);
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    EXPECT_EQ(Editor(), nullptr);
}

TEST_F(VlshellctrlsMenuTest, AHandlerMayTakeTheTreeDown)
{
    MakeFile("a");
    auto* tree = new TCustomShellTreeView;
    tree->SetRoot(Root());
    ASSERT_TRUE(tree->SelectPath(At("a")));
    tree->SetExecuteContextEvent([=](auto&&...) { tree->deleteLater(); });
    const QPointer<QObject> watched(tree);
    tree->findChild<QAction*>(QStringLiteral("MenuAction_CopyPath"))->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(watched.isNull());
}
