#include "DocumentCheck.h"

#include "MessagePane.h"
#include "Pane.h"
#include "WorkbenchSupport.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTextBlock>

namespace
{

class DocumentCheck : public TWorkbenchTest
{
protected:
    QString Document(const QByteArray& content) const
    {
        QString path = m_directory.filePath(QStringLiteral("menu.xml"));
        WriteAll(path, content);
        return path;
    }
    // By Enter on the last line.
    void Activate()
    {
        Window().Messages().FocusText();
        Lines().setTextCursor(QTextCursor(Lines().document()->lastBlock()));
        QTest::keyClick(&Lines(), Qt::Key_Return);
    }
    QPlainTextEdit& Lines() { return *Window().Messages().findChild<QPlainTextEdit*>(); }
};

} // namespace

TEST_F(DocumentCheck, FindsNothingInAWellFormedDocument)
{
    EXPECT_FALSE(FindFault(Document("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<menu a=\"K\xFC\"/>\r\n")));
    EXPECT_FALSE(FindFault(m_directory.filePath(QStringLiteral("none.xml"))));
}

TEST_F(DocumentCheck, NamesLineReasonAndText)
{
    const auto fault = FindFault(Document("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<menu>\r\n"
                                          "<menuitem caption=\"K\xFC"
                                          "che \"Nord\"\" />\r\n</menu>\r\n"));
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->Line, 3);
    EXPECT_FALSE(fault->Reason.isEmpty());
    EXPECT_EQ(fault->Text, QStringLiteral("<menuitem caption=\"Küche \"Nord\"\" />"));
}

TEST_F(DocumentCheck, NamesTheFirstFaultOfSeveral)
{
    const auto fault =
        FindFault(Document("<menu>\r\n<menuitem caption=\"a \"b\" c\" >\r\n<menuitem caption=\"d\" />\r\n"
                           "</menuitem>\r\n<menuitem caption=\"e\" >\r\n</menuitem>\r\n</menu>\r\n"));
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->Line, 2);
    EXPECT_EQ(fault->Text, QStringLiteral("<menuitem caption=\"a \"b\" c\" >"));
}

TEST_F(DocumentCheck, CutsALongLineAroundTheFault)
{
    const auto fault =
        FindFault(Document("<menu " + QByteArray(5000, ' ') + "a=\"1\" <b=\"2\"" + QByteArray(5000, ' ') + "/>"));
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->Text.size(), 120);
    EXPECT_TRUE(fault->Text.contains(QStringLiteral("a=\"1\"")));
}

TEST_F(DocumentCheck, FetchesNothing)
{
    EXPECT_FALSE(FindFault(Document("<!DOCTYPE menu SYSTEM \"http://127.0.0.1:9/x.dtd\"><menu/>")));
}

TEST_F(DocumentCheck, ListsADocumentThatItsReaderWouldRefuse)
{
    Window().OpenProject(MakeProject(QStringLiteral("Haus")));
    Window().Panes().LoadAll();
    ReportDocument(&Component(QStringLiteral("scenes")), Document("<menu a=\"1\"/>"));
    EXPECT_FALSE(Window().Messages().Text().contains(QStringLiteral("nicht lesbar")));
    ReportDocument(&Component(QStringLiteral("scenes")), Document("<menu a=\"1\"b\"/>"));
    EXPECT_TRUE(Window().Messages().Text().contains(QStringLiteral("scenes: \"menu.xml\", Zeile 1: ")));
    EXPECT_EQ(m_messages.Errors, QStringList());
}

TEST_F(DocumentCheck, LeadsToTheEditorByMouseAndKeyboard)
{
    Window().OpenProject(MakeProject(QStringLiteral("Haus")));
    Window().show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    Window().Panes().LoadAll();
    ReportDocument(&Component(QStringLiteral("scenes")), Document("<menu"));
    const QTextCursor last(Lines().document()->lastBlock());
    const QPoint place = Lines().cursorRect(last).center() + QPoint(5, 0);

    Window().Messages().FocusText();
    QTest::mouseDClick(Lines().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(Window().Panes().PaneOf(QApplication::focusWidget()), &Pane(QStringLiteral("scenes")));

    Window().Messages().FocusText();
    Lines().setTextCursor(last);
    QTest::keyClick(&Lines(), Qt::Key_Return);
    EXPECT_EQ(Window().Panes().PaneOf(QApplication::focusWidget()), &Pane(QStringLiteral("scenes")));
}

TEST_F(DocumentCheck, LeadsToWhatStandsInTheLine)
{
    Window().OpenProject(MakeProject(QStringLiteral("Haus")));
    Window().show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    Window().Panes().LoadAll();
    TTestComponent& component = Component(QStringLiteral("scenes"));
    ReportDocument(&component, Document("<menu>\r\n<menuitem a=\"b\"/>\r\n</menu>\r\n"));
    EXPECT_EQ(component.AskedPlaces, QStringList());
    ReportDocument(component.Field, Document("<menu>\r\n<menuitem a=\"b\"c\"/>\r\n</menu>\r\n"));
    EXPECT_EQ(component.AskedPlaces, QStringList{QStringLiteral("menu.xml:2")});
    EXPECT_EQ(component.ShownPlaces, QStringList());

    Activate();
    EXPECT_EQ(component.ShownPlaces, QStringList{QStringLiteral("menu.xml:2")});
    EXPECT_EQ(Window().Panes().PaneOf(QApplication::focusWidget()), &Pane(QStringLiteral("scenes")));
}

TEST_F(DocumentCheck, LeadsToTheEditorAloneWhereThePlaceIsGone)
{
    Window().OpenProject(MakeProject(QStringLiteral("Haus")));
    Window().show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    Window().Panes().LoadAll();
    TTestComponent& component = Component(QStringLiteral("scenes"));
    ReportDocument(&component, Document("<menu"));
    component.HasPlaces = false;
    Activate();
    EXPECT_EQ(component.ShownPlaces, QStringList());
    EXPECT_EQ(Window().Panes().PaneOf(QApplication::focusWidget()), &Pane(QStringLiteral("scenes")));
    EXPECT_EQ(m_messages.Errors, QStringList());
}

TEST_F(DocumentCheck, LeavesOtherLinesAlone)
{
    Window().show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    Window().Messages().AddNote(QStringLiteral("etwas"));
    Window().Messages().FocusText();
    Lines().setTextCursor(QTextCursor(Lines().document()->lastBlock()));
    QTest::keyClick(&Lines(), Qt::Key_Return);
    EXPECT_TRUE(Lines().hasFocus());
}
