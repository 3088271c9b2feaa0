#include "ShellTree.h"

#include "OpenedUrls.h"
#include "Vlapputils.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

using VlshellctrlsTest = TShellTreeFixture;

} // namespace

TEST_F(VlshellctrlsTest, ShowsNothingBeforeItHasARoot)
{
    EXPECT_EQ(m_tree.model()->rowCount(), 0);
    EXPECT_TRUE(m_tree.Root().isEmpty());
    EXPECT_FALSE(m_tree.SelectedFolder().has_value());
    EXPECT_FALSE(m_tree.SelectPath("/"));
    m_tree.Refresh();
    m_tree.SetAutoRefresh(true);
    EXPECT_EQ(m_tree.model()->rowCount(), 0);
}

TEST_F(VlshellctrlsTest, ShowsTheRootAndWhatIsInIt)
{
    MakeFolder("b");
    MakeFile("a.txt");
    Open();
    EXPECT_EQ(m_tree.model()->index(0, 0).data().toString(), QStringLiteral("wurzel"));
    EXPECT_EQ(Outline(), QStringLiteral("b a.txt"));
    EXPECT_EQ(m_tree.Root(), Root());
}

TEST_F(VlshellctrlsTest, FoldersComeFirstAndNamesInTheirNaturalOrder)
{
    for (const char* folder : {"Zimmer", "anbau"})
        MakeFolder(folder);
    for (const char* file : {"scene_10.xml", "scene_2.xml", "Scene_1.xml", "über.txt", "zebra", "udo", "10", "9"})
        MakeFile(file);
    Open();
    EXPECT_EQ(Outline(), QStringLiteral("anbau Zimmer 9 10 Scene_1.xml scene_2.xml scene_10.xml udo über.txt zebra"));
}

TEST_F(VlshellctrlsTest, NamesThatDifferInCaseOrZerosOnlyKeepApart)
{
    for (const char* file : {"a1", "a01", "A1", "a001"})
        MakeFile(file);
    Open();
    EXPECT_EQ(Outline(), QStringLiteral("A1 a001 a01 a1"));
}

TEST_F(VlshellctrlsTest, ShowsTheKindsItIsAskedFor)
{
    MakeFolder("ordner");
    MakeFolder(".ordner");
    MakeFile("datei");
    MakeFile(".datei");
    Open();
    EXPECT_EQ(Outline(), QStringLiteral(".ordner ordner .datei datei"));
    m_tree.SetObjects(soFoldersAndFiles);
    EXPECT_EQ(Outline(), QStringLiteral("ordner datei"));
    m_tree.SetObjects(soFolders);
    EXPECT_EQ(Outline(), QStringLiteral("ordner"));
    EXPECT_EQ(m_tree.Objects(), soFolders);
    m_tree.SetObjects(soAll);
    EXPECT_EQ(Outline(), QStringLiteral(".ordner ordner .datei datei"));
}

TEST_F(VlshellctrlsTest, AFolderIsReadWhenItIsOpened)
{
    MakeFolder("a");
    Open();
    MakeFile("a/später");
    m_tree.expand(Item("a"));
    EXPECT_EQ(Outline(), QStringLiteral("a*(später)"));
}

TEST_F(VlshellctrlsTest, AnEmptyFolderLosesItsMarkWhenItIsOpened)
{
    MakeFolder("a");
    Open();
    EXPECT_TRUE(m_tree.model()->hasChildren(Item("a")));
    m_tree.expand(Item("a"));
    EXPECT_FALSE(m_tree.model()->hasChildren(Item("a")));
}

TEST_F(VlshellctrlsTest, TheSelectedItemTellsItsPathAndKind)
{
    MakeFolder("a");
    MakeFile("a/b.txt");
    Open();
    ASSERT_TRUE(Select("a/b.txt"));
    EXPECT_EQ(m_tree.SelectedFolder()->PathName(), Root() + QStringLiteral("/a/b.txt"));
    EXPECT_FALSE(m_tree.SelectedFolder()->IsFolder());
    ASSERT_TRUE(Select("a"));
    EXPECT_TRUE(m_tree.SelectedFolder()->IsFolder());
    ASSERT_TRUE(Select(""));
    EXPECT_EQ(m_tree.SelectedFolder()->PathName(), Root());
    EXPECT_FALSE(Select("a/none"));
    EXPECT_FALSE(Select("none/none"));
    EXPECT_FALSE(m_tree.SelectPath("/elsewhere"));
}

TEST_F(VlshellctrlsTest, SpellingsOfOnePathAreOneRoot)
{
    MakeFolder("a");
    MakeFile("a/b");
    Open();
    ASSERT_TRUE(Select("a/b"));
    QFile::link(Root(), m_directory.filePath(QStringLiteral("link")));
    for (const QString& spelling :
         {Root() + u'/', Root() + QStringLiteral("/a/.."), ToPackagePath(Root()),
          Root().replace(u'/', QLatin1String("//")), m_directory.filePath(QStringLiteral("link"))}) {
        EXPECT_TRUE(TCustomShellTreeView::IsSameFolder(spelling, Root())) << spelling.toStdString();
        m_tree.SetRoot(spelling);
        EXPECT_EQ(m_tree.Root(), Root());
        EXPECT_EQ(Selected(), "a/b");
    }
    EXPECT_FALSE(TCustomShellTreeView::IsSameFolder(Root(), Root() + QStringLiteral("/a")));
    EXPECT_FALSE(TCustomShellTreeView::IsSameFolder(Root() + QStringLiteral("/x"), Root() + QStringLiteral("/y")));
}

TEST_F(VlshellctrlsTest, AnotherRootStartsAnew)
{
    MakeFolder("a");
    MakeFile("a/b");
    MakeFile("c");
    Open();
    ASSERT_TRUE(Select("c"));
    m_tree.SetRoot(Root() + QStringLiteral("/a"));
    EXPECT_EQ(Outline(), QStringLiteral("b"));
    EXPECT_FALSE(m_tree.SelectedFolder().has_value());
    m_tree.SetRoot({});
    EXPECT_EQ(m_tree.model()->rowCount(), 0);
}

TEST_F(VlshellctrlsTest, ALinkIsAnItemWithoutContentWhereverItLeads)
{
    MakeFolder("a");
    for (const auto& [target, link] : {std::pair{"/", "all"}, {".", "self"}, {"nowhere", "broken"}, {"a", "b"}})
        ASSERT_EQ(symlink(target, At(link).constData()), 0);
    Open();
    EXPECT_EQ(Outline(), QStringLiteral("a all b broken self"));
    for (const char* link : {"all", "self", "broken", "b"}) {
        EXPECT_FALSE(m_tree.model()->hasChildren(Item(link))) << link;
        ASSERT_TRUE(Select(link));
        EXPECT_FALSE(m_tree.SelectedFolder()->IsFolder());
    }
    m_tree.SetObjects(soFolders);
    EXPECT_EQ(Outline(), QStringLiteral("a"));
}

TEST_F(VlshellctrlsTest, AFolderThatBecameALinkIsNotEntered)
{
    MakeFolder("a");
    Open();
    Rename("a", "b");
    ASSERT_EQ(symlink("/", At("a").constData()), 0);
    m_tree.expand(Item("a"));
    EXPECT_EQ(Outline(), QStringLiteral("a*()"));
    // What was opened is the folder of the other name.
    m_tree.Refresh();
    EXPECT_EQ(Outline(), QStringLiteral("b*() a"));
}

TEST_F(VlshellctrlsTest, FifosAndSocketsAreShownAndNeverOpened)
{
    ASSERT_EQ(mkfifo(At("pipe").constData(), 0600), 0);
    const QDir previous = QDir::current();
    ASSERT_TRUE(QDir::setCurrent(Root())); // the address has little room
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = "socket"};
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    QDir::setCurrent(previous.path());
    Open();
    EXPECT_EQ(Outline(), QStringLiteral("pipe socket"));
    for (const char* item : {"pipe", "socket"}) {
        ASSERT_TRUE(Select(item));
        EXPECT_FALSE(m_tree.SelectedFolder()->IsFolder());
        EXPECT_FALSE(m_tree.model()->hasChildren(Item(item)));
        EXPECT_FALSE(Item(item).data(Qt::DecorationRole).value<QIcon>().isNull());
    }
    close(descriptor);
}

TEST_F(VlshellctrlsTest, NamesThatAreNoTextAreShownWithMarksAndFound)
{
    MakeFile("gr\xfcn.txt");
    MakeFile("a\nb");
    MakeFolder("x\xff");
    MakeFile("x\xff/y");
    Open();
    EXPECT_EQ(Outline(), QStringLiteral("x\uFFFD a\uFFFDb gr\uFFFDn.txt"));
    ASSERT_TRUE(Select("gr\xfcn.txt"));
    EXPECT_EQ(m_tree.SelectedFolder()->NativePath(), At("gr\xfcn.txt"));
    EXPECT_TRUE(Select("x\xff/y"));
    EXPECT_TRUE(Select("a\nb"));
}

TEST_F(VlshellctrlsTest, AHintShowsTheFullPathWhenHintsAreShown)
{
    MakeFile("a.txt");
    Open();
    QHelpEvent help(QEvent::ToolTip, PlaceOf("a.txt"), m_tree.viewport()->mapToGlobal(PlaceOf("a.txt")));
    QApplication::sendEvent(m_tree.viewport(), &help);
    EXPECT_TRUE(QToolTip::text().isEmpty());
    m_tree.SetShowHint(true);
    QApplication::sendEvent(m_tree.viewport(), &help);
    EXPECT_EQ(QToolTip::text(), Root() + QStringLiteral("/a.txt"));
    QToolTip::hideText();
}

TEST_F(VlshellctrlsTest, TheItemUnderTheMouseIsUnderlinedWhenItIsTracked)
{
    MakeFile("a.txt");
    MakeFile("b.txt");
    const auto picture = [this](bool tracked, const QByteArray& under) {
        m_tree.SetHotTracking(tracked);
        const QPointF place = PlaceOf(under);
        QHoverEvent hover(QEvent::HoverMove, place, m_tree.viewport()->mapToGlobal(place), QPointF());
        QApplication::sendEvent(m_tree.viewport(), &hover);
        return m_tree.viewport()->grab(m_tree.visualRect(Item("a.txt"))).toImage();
    };
    Open();
    EXPECT_EQ(picture(true, "b.txt"), picture(false, "b.txt"));
    EXPECT_NE(picture(true, "a.txt"), picture(false, "a.txt"));
}

TEST_F(VlshellctrlsTest, ActivatingAnItemRaisesTheDefaultAction)
{
    MakeFile("a.txt");
    Open();
    int raised = 0;
    m_tree.SetDefaultActionEvent([&](QObject* sender) {
        EXPECT_EQ(sender, &m_tree);
        ++raised;
    });
    ASSERT_TRUE(Select("a.txt"));
    QTest::keyClick(&m_tree, Qt::Key_Return);
    EXPECT_EQ(raised, 1);
    QTest::mouseClick(m_tree.viewport(), Qt::LeftButton, {}, PlaceOf("a.txt"));
    QTest::mouseDClick(m_tree.viewport(), Qt::LeftButton, {}, PlaceOf("a.txt"));
    EXPECT_EQ(raised, 2);
}

TEST_F(VlshellctrlsTest, TheEnterKeyOpensAndClosesFolders)
{
    MakeFolder("a");
    MakeFile("a/b");
    Open();
    ASSERT_TRUE(Select("a"));
    QTest::keyClick(&m_tree, Qt::Key_Return);
    EXPECT_EQ(Outline(), QStringLiteral("a*(b)"));
    QTest::keyClick(&m_tree, Qt::Key_Enter);
    EXPECT_EQ(Outline(), QStringLiteral("a"));
}

TEST_F(VlshellctrlsTest, AnErrorInAnEventReachesTheUserAndNotTheToolkit)
{
    MakeFile("a.txt");
    Open();
    m_tree.SetDefaultActionEvent([](QObject*) { throw std::runtime_error("no"); });
    ASSERT_TRUE(Select("a.txt"));
    QTest::keyClick(&m_tree, Qt::Key_Return);
    EXPECT_EQ(m_messages.Errors.size(), 1);
}

TEST_F(VlshellctrlsTest, AFileOfEachKindHasAnIcon)
{
    for (const char* file : {"a.xml", "a.png", "a", "a.", ".a", "a.x1", "a.unbekannt"})
        MakeFile(file);
    Open();
    for (int row = 0; row < m_tree.model()->rowCount(Item("")); ++row) {
        const QModelIndex item = m_tree.model()->index(row, 0, Item(""));
        EXPECT_FALSE(item.data(Qt::DecorationRole).value<QIcon>().isNull()) << row;
    }
    EXPECT_FALSE(Item("").data(Qt::DecorationRole).value<QIcon>().isNull());
}

TEST_F(VlshellctrlsTest, AnyNumberOfFilesThatComeOrGoIsOneStep)
{
    constexpr int Count = 20'000;
    const auto name = [](int number) { return "datei" + QByteArray::number(number); };
    for (int i = 0; i < Count; ++i)
        MakeFile(name(i), "");
    int inserted = 0;
    int removed = 0;
    QObject::connect(m_tree.model(), &QAbstractItemModel::rowsInserted, &m_tree, [&] { ++inserted; });
    QObject::connect(m_tree.model(), &QAbstractItemModel::rowsRemoved, &m_tree, [&] { ++removed; });
    Open();
    EXPECT_EQ(m_tree.model()->rowCount(Item("")), Count);
    EXPECT_EQ(inserted, 1);
    EXPECT_EQ(m_tree.model()->index(Count - 1, 0, Item("")).data().toString(), QStringLiteral("datei19999"));
    ASSERT_TRUE(Select(name(5001)));
    // New ones first: the numbers of deleted files would be given to them.
    MakeFile("aaa");
    MakeFile("zzz");
    for (int i = 0; i < Count; i += 2)
        ASSERT_EQ(unlink(At(name(i)).constData()), 0);
    m_tree.Refresh();
    EXPECT_EQ(m_tree.model()->rowCount(Item("")), Count / 2 + 2);
    EXPECT_EQ(inserted, 2);
    EXPECT_EQ(removed, 1);
    EXPECT_EQ(Selected(), name(5001));
    EXPECT_EQ(m_tree.model()->index(0, 0, Item("")).data().toString(), QStringLiteral("aaa"));
    EXPECT_EQ(m_tree.model()->index(Count / 2 + 1, 0, Item("")).data().toString(), QStringLiteral("zzz"));
}
