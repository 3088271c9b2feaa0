#include "DocumentLines.h"
#include "ScheduleTree.h"

#include <QAction>

namespace
{

class SchedulePlaces : public TScheduleTree
{
protected:
    std::string Places() const
    {
        Run("MenuAction_Export");
        return PlacesIn(Frame(), m_project.Schedule(), Exported(), [this] { return Selected(); });
    }
};

} // namespace

TEST_F(SchedulePlaces, AreKnownForEveryLineOfTheSchedule)
{
    EXPECT_EQ(Places(), "-|-|Licht|Flur|07:05|19:30|Flur|Küche|06:00|Küche|Licht|Heizung|Bad|05:15|Bad|Heizung|"
                        "Rollladen|Süd|08:45|Süd|West|West|Rollladen|Urlaub|Urlaub|-");
    EXPECT_FALSE(Frame().DocumentPlace(m_project.Path(QStringLiteral("other.xml")), 3));
}

TEST_F(SchedulePlaces, OfATextWithLineEndsAreAllItsLines)
{
    Node("Bad")->Data()->MinVal = QStringLiteral("\"\n1\n2");
    m_frame->RemoveBranches({Node("Licht"), Node("Rollladen")});
    EXPECT_EQ(Places(), "-|-|Heizung|Bad|Bad|Bad|05:15|Bad|Heizung|Urlaub|Urlaub|-");
}

TEST_F(SchedulePlaces, AreGoneWithTheirNodesOnly)
{
    constexpr int KitchenLine = 8;
    const TDocumentPlace place = Frame().DocumentPlace(m_project.Schedule(), KitchenLine);
    ASSERT_TRUE(place);
    m_frame->RemoveBranches({Node("Flur")});
    EXPECT_TRUE(place());
    EXPECT_EQ(Selected(), "Küche");
    m_frame->RemoveBranches({Node("Licht")});
    EXPECT_FALSE(place());
}
