#include "ShellTree.h"

#include "NestedLoop.h"
#include "Vlapputils.h"
#include "Vlfiledropedit.h"

#include <QMimeData>

#include <memory>

#include <sys/stat.h>

namespace
{

class VlshellctrlsDragTest : public TShellTreeFixture
{
protected:
    std::unique_ptr<QMimeData> Dragged(const QByteArray& item) const
    {
        return std::unique_ptr<QMimeData>(m_tree.model()->mimeData({Item(item)}));
    }
};

} // namespace

TEST_F(VlshellctrlsDragTest, AFileIsDraggedOutAndDroppedOnAField)
{
    MakeFile("grün & rot.html");
    Open();
    ASSERT_TRUE(Select("grün & rot.html"));
    TVlFileDropEdit field;
    field.show();
    const TMouse mouse(m_tree.viewport());
    const QPoint place = PlaceOf("grün & rot.html");
    mouse.Press(place);
    bool dropped = false;
    const bool entered = RunInLoop(
        [&] {
            mouse.Move(place + QPoint(0, 5));
            mouse.Move(place + QPoint(0, 60));
        },
        [&] {
            const std::unique_ptr<QMimeData> content = Dragged("grün & rot.html");
            dropped = TDraggedOver(&field, content.get()).EnterAndDrop(QPoint(5, 5));
        });
    mouse.Release(place);
    EXPECT_TRUE(entered);
    EXPECT_TRUE(dropped);
    EXPECT_EQ(field.text(), ToPackagePath(Root() + QStringLiteral("/grün & rot.html")));
    EXPECT_TRUE(Exists("grün & rot.html"));
}

TEST_F(VlshellctrlsDragTest, TheRootAndAFifoStayWhereTheyAre)
{
    MakeFolder("a");
    MakeFile("b");
    ASSERT_EQ(mkfifo(At("pipe").constData(), 0600), 0);
    Open();
    const auto dragged = [this](const QByteArray& item) { return Item(item).flags().testFlag(Qt::ItemIsDragEnabled); };
    EXPECT_FALSE(dragged(""));
    EXPECT_FALSE(dragged("pipe"));
    EXPECT_TRUE(dragged("a"));
    EXPECT_TRUE(dragged("b"));
    EXPECT_EQ(m_tree.model()->supportedDragActions(), Qt::CopyAction);
}

TEST_F(VlshellctrlsDragTest, ANameThatIsNoTextTravelsAsItsBytes)
{
    MakeFile("gr\xfcn#%.txt");
    Open();
    ASSERT_TRUE(Select("gr\xfcn#%.txt"));
    const std::unique_ptr<QMimeData> content(m_tree.model()->mimeData({m_tree.currentIndex()}));
    EXPECT_TRUE(content->data(QStringLiteral("text/uri-list")).contains("/gr%FCn%23%25.txt"));
}
