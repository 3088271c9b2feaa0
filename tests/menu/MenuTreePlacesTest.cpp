#include "DocumentLines.h"
#include "MenuTree.h"

namespace
{

class MenuPlaces : public TMenuTree
{
protected:
    TDocumentPlace PlaceOf(const char* name, int line) const
    {
        TDocumentPlace place = m_frame->DocumentPlace(m_frame->GetMenuPath(), line);
        EXPECT_TRUE(place) << name;
        return place;
    }
    std::string Places(const QString& path, const QByteArray& document) const
    {
        return PlacesIn(*m_frame, path, document, [this] { return Selected(); });
    }
    std::string MenuPlacesNow() const { return Places(m_frame->GetMenuPath(), WrittenMenu()); }
};

constexpr auto WetterLine = 5;

} // namespace

TEST_F(MenuPlaces, AreKnownForEveryLineOfTheMenu)
{
    Export();
    EXPECT_EQ(MenuPlacesNow(), "-|-|-|Start|Wetter|Uhr|Start|Licht|Flur|Licht|Alarme|Alarme|-");
}

TEST_F(MenuPlaces, AreKnownForEveryLineOfTheLinks)
{
    Export();
    EXPECT_EQ(Places(m_frame->GetLinksPath(), WrittenLinks()), "-|-|Außen|Tür|vTag|-");
}

TEST_F(MenuPlaces, AreFoundByThePathInEitherForm)
{
    EXPECT_TRUE(m_frame->DocumentPlace(m_project.Path(QStringLiteral("_menu/menu.xml")), WetterLine));
    EXPECT_TRUE(m_frame->DocumentPlace(m_project.Path(QStringLiteral("_menu/dplinks.xml")), 3));
    EXPECT_FALSE(m_frame->DocumentPlace(m_project.Path(QStringLiteral("_menu/other.xml")), WetterLine));
    EXPECT_FALSE(m_frame->DocumentPlace({}, WetterLine));
}

TEST_F(MenuPlaces, OfATextWithLineEndsAreAllItsLines)
{
    Item("Wetter").Title = QStringLiteral("heute\r\nund \"morgen\"\n");
    Export();
    EXPECT_EQ(MenuPlacesNow(), "-|-|-|Start|Wetter|Wetter|Wetter|Uhr|Start|Licht|Flur|Licht|Alarme|Alarme|-");
}

TEST_F(MenuPlaces, OfDeeperNodesAreTheirOwn)
{
    m_frame->InsertBranch(std::make_unique<TMenuNode>(TVlMenuItem{.Caption = QStringLiteral("Tief")}, miSubItem),
                          Node("Wetter"), naAddChild);
    Export();
    EXPECT_EQ(MenuPlacesNow(), "-|-|-|Start|Wetter|Tief|Uhr|Start|Licht|Flur|Licht|Alarme|Alarme|-");
}

TEST_F(MenuPlaces, AreOpenedAndShownInTheDialog)
{
    ShowProperties("Licht");
    const TDocumentPlace place = PlaceOf("Wetter", WetterLine);
    m_frame->collapseAll();
    EXPECT_TRUE(place());
    EXPECT_EQ(Selected(), "Wetter");
    EXPECT_TRUE(m_frame->viewport()->rect().contains(m_frame->visualItemRect(Node("Wetter"))));
    EXPECT_EQ(ShownItem(), "Wetter|Das Wetter|/wetter.html| access=3");
}

TEST_F(MenuPlaces, FollowTheirNodesWhenTheTreeChanges)
{
    const TDocumentPlace place = PlaceOf("Wetter", WetterLine);
    m_frame->RemoveBranches({Node("Uhr")});
    m_frame->MoveBranch(Node("Wetter"), Node("Flur"), naInsert);
    Rename("Wetter", "Sturm");
    Select("Alarme");
    EXPECT_TRUE(place());
    EXPECT_EQ(Selected(), "Sturm");
}

TEST_F(MenuPlaces, AreGoneWithTheirNodes)
{
    const TDocumentPlace deleted = PlaceOf("Wetter", WetterLine);
    const TDocumentPlace reloaded = PlaceOf("Uhr", WetterLine + 1);
    m_frame->RemoveBranches({Node("Start")});
    Select("Alarme");
    EXPECT_FALSE(deleted());
    EXPECT_EQ(Selected(), "Alarme");
    Reload();
    EXPECT_FALSE(reloaded());
    EXPECT_EQ(Selected(), "vTag");
    const TDocumentPlace last = PlaceOf("Wetter", WetterLine);
    m_frame.reset();
    EXPECT_FALSE(last());
}

TEST_F(MenuPlaces, AreNoneBeforeAnythingIsLoaded)
{
    const TMenuTreeFrame frame;
    EXPECT_FALSE(frame.DocumentPlace(frame.GetMenuPath(), WetterLine));
    EXPECT_FALSE(frame.DocumentPlace(frame.GetMenuPath(), 1));
}

// By the name and the types that the host uses.
TEST_F(MenuPlaces, AreAskedForByName)
{
    TDocumentPlace place;
    EXPECT_TRUE(QMetaObject::invokeMethod(m_frame.get(), "DocumentPlace", Qt::DirectConnection,
                                          Q_RETURN_ARG(TDocumentPlace, place), Q_ARG(QString, m_frame->GetMenuPath()),
                                          Q_ARG(int, WetterLine)));
    ASSERT_TRUE(place);
    EXPECT_TRUE(place());
    EXPECT_EQ(Selected(), "Wetter");
}
