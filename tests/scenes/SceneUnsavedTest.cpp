#include "SceneTree.h"

#include "Userman.h"

#include <QDir>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

// What was typed and not confirmed yet is never lost in silence.
using SceneUnsaved = TSceneTree;

TEST_F(SceneUnsaved, ExportsWhatWaitsInTheDialog)
{
    ShowProperties("Warm");
    Type("EditValue", "25");
    Run("MenuAction_Export");
    EXPECT_EQ(Node("Warm")->Item()->Value, QStringLiteral("25"));
    EXPECT_FALSE(Frame().IsModified());
    Frame().MenuAction_Reload();
    EXPECT_EQ(Node("Warm")->Item()->Value, QStringLiteral("25"));
}

TEST_F(SceneUnsaved, ExportsWhatIsBeingEditedInPlace)
{
    QLineEdit* editor = OpenEditor("Warm");
    editor->setText(QStringLiteral("Kuschelig"));
    Frame().MenuAction_Export();
    ASSERT_NE(Node("Kuschelig"), nullptr);
    Frame().MenuAction_Reload();
    EXPECT_NE(Node("Kuschelig"), nullptr);
}

TEST_F(SceneUnsaved, IsModifiedOnceTheHostAskedForIt)
{
    ShowProperties("Warm");
    Type("EditValue", "25");
    EXPECT_FALSE(Frame().IsModified());
    QMetaObject::invokeMethod(&Frame(), "CommitEdits", Qt::DirectConnection);
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(SceneUnsaved, IsModifiedByAChangeAfterTheEndOfTheListWithoutAutomaticAcceptance)
{
    ShowProperties("Warm");
    Dialog()->SetAutoAccept(false);
    Type("EditValue", "25");
    Press("SBtnDown");
    Press("BtnApply");
    EXPECT_EQ(Node("Warm")->Item()->Value, QStringLiteral("25"));
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(SceneUnsaved, ShowsAChangeOfTheShownNodeInTheDialog)
{
    ShowProperties("Nachts");
    Select({"Taster Flur"});
    Run("MenuAction_CopyExecute");
    Select({"Nachts"});
    const std::string before = TextOf("EditName");
    Run("MenuAction_PasteBeforeExecute");
    EXPECT_EQ(LinkOf("Nachts"), "Taster Flur");
    EXPECT_NE(TextOf("EditName"), before);
    EXPECT_EQ(TextOf("EditName"), Node("Taster Flur")->Item()->Name.toStdString());
}

TEST_F(SceneUnsaved, IsNotModifiedByAMoveToTheSamePlace)
{
    Select({"Licht an"});
    Run("MenuAction_CutExecute");
    Select({"Warm"});
    Run("MenuAction_PasteBeforeExecute");
    EXPECT_EQ(Node("Licht an")->Index(), 0);
    EXPECT_FALSE(Frame().IsModified());
}

TEST_F(SceneUnsaved, KeepsTheSelectionWhenTheRightButtonIsPressedOverAFixedNode)
{
    Select({"Taster Flur", "Zeitschalter"});
    QTest::mouseClick(Frame().viewport(), Qt::RightButton, {}, Frame().visualItemRect(Top()).center());
    EXPECT_EQ(Selected(), "Taster Flur|Zeitschalter");
}

TEST_F(SceneUnsaved, CopiesAStepWithoutANameAsANewEntry)
{
    Node("Warm")->Item()->Alias.clear();
    TSceneNode* step = Top()->Child(FirstSceneIndex)->Child(1);
    Frame().SelectNode(step);
    Run("MenuAction_CopyExecute");
    Select({"Nachts"});
    Run("MenuAction_PasteBeforeExecute");
    EXPECT_EQ(Node("Nachts")->Child(0)->Item()->Alias, QStringLiteral("Neuer Eintrag"));
}

TEST_F(SceneUnsaved, LeavesThePointerAloneWhenTheProjectIsClosed)
{
    const QString extension = QStringLiteral("home/Parvex Studio Web/_ext");
    QDir(m_project.Root()).mkpath(extension);
    qputenv("KOLT_HOME", m_project.Path(QStringLiteral("home")).toLocal8Bit());
    const QString pointer = extension + QStringLiteral("/scene_SCENE.env");
    m_project.Write(pointer, "project=Anderes\r\n");
    UserManager()->CloseProject();
    Frame().MenuAction_Export();
    EXPECT_EQ(m_project.Read(pointer), "project=Anderes\r\n");
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}
