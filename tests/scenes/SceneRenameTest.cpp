#include "SceneTree.h"

#include "SceneFiles.h"
#include "Vlerrors.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

namespace
{

class SceneRename : public TSceneTree
{};

// A frame without content, and files of captions to fill it from.
class SceneCaptions : public testing::Test
{
protected:
    int Read(const QByteArray& content)
    {
        m_files.Write(QStringLiteral("captions.txt"), content);
        return m_frame.InitializeMenu(m_files.Path(QStringLiteral("captions.txt")));
    }
    // The text of the error that reading ends with.
    std::string ErrorOf(const QByteArray& content)
    {
        try {
            Read(content);
        } catch (const TUserError& error) {
            return error.Message().remove(m_files.Directory()).toStdString();
        }
        return "none";
    }
    std::string Outline() const { return OutlineOf(m_frame.Top()).join(u'\n').toStdString(); }

    TSceneFiles m_files;
    TConfigTreeFrame m_frame;
};

} // namespace

TEST_F(SceneRename, OffersTheAliasInsteadOfTheCaption)
{
    const QLineEdit* editor = OpenEditor("Licht an");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), QStringLiteral("Licht an"));
    EXPECT_EQ(Node("Licht an")->Caption(), QStringLiteral("Licht an [Licht Flur]"));
}

TEST_F(SceneRename, WithEnterAndNoChangeChangesNothing)
{
    QLineEdit* editor = OpenEditor("Licht an");
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneRename, ToAnEmptyTextKeepsTheOldCaption)
{
    Rename("Licht an", "");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_EQ(Node("Licht an")->Item()->Alias, QStringLiteral("Licht an"));
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneRename, OfAStepKeepsTheNameOfItsDatapointInTheCaption)
{
    Rename("Licht an", "Hell");
    EXPECT_EQ(Below("Abendlicht"), "Hell [Licht Flur]|Warm [Heizung]");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(SceneRename, OfADatapointRebuildsTheCaptionsOfWhatIsBoundToIt)
{
    Rename("Licht Flur", "Lampe");
    EXPECT_EQ(Below("Aktions-Elemente"), "Lampe|Heizung");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Lampe]|Warm [Heizung]");
    EXPECT_EQ(Below("Nachts"), "Licht aus [Lampe]");
    Rename("Taster Flur", "Taster");
    EXPECT_EQ(Node("Abendlicht")->Caption(), QStringLiteral("Abendlicht [Taster]"));
    EXPECT_EQ(Node("Nachts")->Caption(), QStringLiteral("Nachts [Zeitschalter]"));
}

TEST_F(SceneRename, OfASceneReplacesItsSectionAlsoInTheDialog)
{
    ShowProperties("Warm");
    Rename("Nachts", "Nachtruhe");
    EXPECT_EQ(m_frame->GetSections()[3], QStringLiteral("Nachtruhe"));
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->itemText(3), QStringLiteral("Nachtruhe"));
}

TEST_F(SceneRename, ShowsTheNodeInTheDialogAfterwards)
{
    ShowProperties("Warm");
    Rename("Nachts", "Nachtruhe");
    EXPECT_EQ(TextOf("EditAlias"), "Nachtruhe");
    EXPECT_EQ(Dialog()->GetSection(), 3);
    EXPECT_FALSE(Dialog()->GetChanged());
}

TEST_F(SceneRename, DoesNotOpenTheDialog)
{
    Rename("Nachts", "Nachtruhe");
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(SceneRename, StaysBesideAChangeThatWaitsInTheDialog)
{
    ShowProperties("Warm");
    Type("EditValue", "25");
    ASSERT_TRUE(Dialog()->GetChanged());
    m_frame->FinishEditing(Node("Warm"), QStringLiteral("Heiss"));
    EXPECT_EQ(Record("Heiss"), "id=-1 name=heizung alias=Heiss value=25 delay=5 source=2 type=2 enabled=0");
    EXPECT_EQ(TextOf("EditAlias"), "Heiss");
    EXPECT_FALSE(Dialog()->GetChanged());
}

TEST_F(SceneRename, WithEnterAndNoChangeKeepsAnAliasThatWaitsInTheDialog)
{
    ShowProperties("Warm");
    QLineEdit* editor = OpenEditor("Warm");
    ASSERT_NE(editor, nullptr);
    Field<QLineEdit>("EditAlias")->setText(QStringLiteral("Heiss"));
    Dialog()->SetChanged(true);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Heiss [Heizung]");
}

TEST_F(SceneRename, IsNotOfferedForTheTopAndTheRoots)
{
    for (const char* fixed : {"Szenen", "Trigger-Elemente", "Aktions-Elemente"})
        EXPECT_EQ(OpenEditor(fixed), nullptr) << fixed;
    m_frame->FinishEditing(m_frame->TriggerRoot(), QStringLiteral("Neu"));
    EXPECT_EQ(m_frame->TriggerRoot()->Caption(), QStringLiteral("Trigger-Elemente"));
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneRename, TakesBracketsAsTheyAre)
{
    Rename("Licht an", "Neu [x]");
    EXPECT_EQ(Below("Abendlicht"), "Neu [x] [Licht Flur]|Warm [Heizung]");
}

// A tree from captions

TEST_F(SceneCaptions, FillAnEmptyTree)
{
    EXPECT_EQ(Read("Szenen\r\n\tTrigger\r\n\t\tTaster\r\n\tAktionen\r\n\tAbend\r\n\t\tLicht für alle\r\n"), 6);
    EXPECT_EQ(Outline(), "Szenen\n  Trigger\n    Taster\n  Aktionen\n  Abend\n    Licht für alle");
    EXPECT_EQ(m_frame.Top()->Child(0)->Child(0)->ImageIndex(), 4);
    EXPECT_EQ(m_frame.Top()->Child(1)->Item(), nullptr);
    EXPECT_EQ(m_frame.Top()->Child(2)->Item()->Id, LastSceneId());
    EXPECT_FALSE(m_frame.IsModified());
}

TEST_F(SceneCaptions, LeaveATreeAloneThatHasContent)
{
    EXPECT_EQ(Read("Szenen\n\tTrigger\n\tAktionen\n"), 3);
    EXPECT_EQ(Read("Andere\n\tA\n\tB\n\tC\n"), 3);
    EXPECT_EQ(Outline(), "Szenen\n  Trigger\n  Aktionen");
}

TEST_F(SceneCaptions, OfNoFileCountTheNodes)
{
    EXPECT_EQ(m_frame.InitializeMenu({}), 0);
    EXPECT_EQ(m_frame.Top(), nullptr);
    Read("Szenen\n\tTrigger\n\tAktionen\n");
    EXPECT_EQ(m_frame.InitializeMenu({}), 3);
}

TEST_F(SceneCaptions, ThatMakeNoTreeAreRefusedWithTheLine)
{
    const auto error = [](int line, const char* expected = "Baum") {
        return "\"/captions.txt\", Zeile " + std::to_string(line) + ": Die Einrückung ergibt keinen " + expected + ".";
    };
    EXPECT_EQ(ErrorOf(""), error(1));
    EXPECT_EQ(ErrorOf("\tA\n"), error(1));
    EXPECT_EQ(ErrorOf("A\n\tB\nC\n"), error(3));
    EXPECT_EQ(ErrorOf("A\n\t\tB\n"), error(2));
    EXPECT_EQ(ErrorOf("A\n\tB\n"), error(2, "Baum mit zwei festen Zweigen"));
    EXPECT_EQ(m_frame.Top(), nullptr);
}

TEST_F(SceneCaptions, OfAFileThatIsMissingAreAnError)
{
    EXPECT_THROW(m_frame.InitializeMenu(m_files.Path(QStringLiteral("none.txt"))), TUserError);
}

TEST_F(SceneCaptions, MakeNodesThatCanBeEdited)
{
    Read("Szenen\n\tTrigger\n\t\tTaster\n\tAktionen\n");
    m_frame.SelectNode(m_frame.TriggerRoot()->Child(0));
    m_frame.MenuAction_CreateSceneExecute();
    EXPECT_EQ(m_frame.Top()->Count(), 3);
    EXPECT_TRUE(m_frame.Top()->Child(2)->Caption().endsWith(QStringLiteral(" [Taster]")));
}
