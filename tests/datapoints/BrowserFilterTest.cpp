#include "DatapointBrowser.h"
#include "DatapointModel.h"
#include "StoreFixture.h"

#include <QLineEdit>
#include <QTreeView>
#include <QTest>

namespace
{

// Two groups of one level: Licht with Decke and Wand, Heizung with Decke and Boden.
class BrowserFilter : public ::testing::Test
{
protected:
    BrowserFilter()
    {
        bool handled = false;
        m_browser.ExecuteCmd(BrowserCommand, handled);
        m_browser.Store().Import(QStringLiteral("haus.esf"),
                                 "Licht.1/1/1\tDecke Licht\tUnbekannt\tLow\t\n"
                                 "Licht.1/1/2\tWand Licht\tUnbekannt\tLow\t\n"
                                 "Heizung.2/1/1\tDecke Heizung\tUnbekannt\tLow\t\n"
                                 "Heizung.2/1/2\tBoden Heizung\tUnbekannt\tLow\t\n",
                                 {}, {});
        m_browser.resize(600, 400);
        m_browser.show();
    }

    QModelIndex Find(const char* text) const
    {
        return m_browser.View()
            ->model()
            ->match(m_browser.View()->model()->index(0, 0), Qt::DisplayRole, QString::fromLatin1(text), 1,
                    Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }

    bool IsOpen(const char* group) const { return m_browser.View()->isExpanded(Find(group)); }
    void Open(const char* group, bool open) const { m_browser.View()->setExpanded(Find(group), open); }
    void Filter(const char* text) const { m_browser.FilterLine()->setText(QString::fromLatin1(text)); }

    QString Selected() const
    {
        const QModelIndexList rows = m_browser.View()->selectionModel()->selectedRows();
        return rows.isEmpty() ? QString() : rows.first().data().toString();
    }

    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    TDatapointBrowser m_browser{dkEib, nullptr};
};

} // namespace

TEST_F(BrowserFilter, KeepsTheSelectionWhileItsRowIsShown)
{
    Open("Licht", true);
    m_browser.View()->setCurrentIndex(Find("1/1/1"));
    Filter("decke");
    EXPECT_EQ(Selected(), QStringLiteral("1/1/1"));
    Filter("decke l");
    EXPECT_EQ(Selected(), QStringLiteral("1/1/1"));
    Filter("boden");
    EXPECT_EQ(Selected(), QString());
    Filter("");
    EXPECT_EQ(Selected(), QStringLiteral("1/1/1"));
}

TEST_F(BrowserFilter, LetsNothingBeCopiedThatIsHidden)
{
    Open("Licht", true);
    m_browser.View()->setCurrentIndex(Find("1/1/1"));
    Filter("boden");
    for (const QAction* action : m_browser.actions()) {
        if (action->objectName() == QStringLiteral("MenuAction_Copy")) {
            EXPECT_FALSE(action->isEnabled());
        }
    }
}

TEST_F(BrowserFilter, OpensTheGroupsOfFewMatches)
{
    Filter("decke");
    EXPECT_TRUE(IsOpen("Licht"));
    EXPECT_TRUE(IsOpen("Heizung"));
}

TEST_F(BrowserFilter, RestoresTheOpenGroupsWhenItIsTakenAway)
{
    Open("Heizung", true);
    Filter("d");
    Filter("decke");
    EXPECT_TRUE(IsOpen("Licht"));
    Filter("");
    EXPECT_TRUE(IsOpen("Heizung"));
    EXPECT_FALSE(IsOpen("Licht"));
}

TEST_F(BrowserFilter, RestoresGroupsThatItHidMeanwhile)
{
    Open("Heizung", true);
    Filter("licht");
    EXPECT_FALSE(Find("Heizung").isValid());
    Filter("");
    EXPECT_TRUE(IsOpen("Heizung"));
    EXPECT_FALSE(IsOpen("Licht"));
}

TEST_F(BrowserFilter, LeavesAGroupClosedThatTheUserClosed)
{
    Filter("deck");
    Open("Licht", false);
    Filter("decke");
    EXPECT_FALSE(IsOpen("Licht"));
    EXPECT_TRUE(IsOpen("Heizung"));
    Filter("");
    Filter("decke");
    EXPECT_TRUE(IsOpen("Licht"));
}

TEST_F(BrowserFilter, ShowsTheFoundDatapointInItsPlaceAfterwards)
{
    Filter("wand");
    m_browser.View()->setCurrentIndex(Find("1/1/2"));
    Filter("");
    EXPECT_EQ(Selected(), QStringLiteral("1/1/2"));
    EXPECT_TRUE(IsOpen("Licht"));
    EXPECT_FALSE(IsOpen("Heizung"));
}

TEST_F(BrowserFilter, ForgetsRowsThatAreGone)
{
    Open("Licht", true);
    m_browser.View()->setCurrentIndex(Find("1/1/1"));
    m_browser.Store().Import(QStringLiteral("haus.esf"), "Licht.1/1/7\tNeu\tUnbekannt\tLow\t\n", {},
                             QStringLiteral("haus.esf"));
    EXPECT_EQ(Selected(), QString());
    Filter("neu");
    EXPECT_EQ(Selected(), QString());
    EXPECT_TRUE(Find("1/1/7").isValid());
}
