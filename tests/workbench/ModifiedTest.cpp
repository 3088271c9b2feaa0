#include "ModifiedBox.h"
#include "Pane.h"
#include "WorkbenchSupport.h"

#include <QAbstractButton>
#include <QAction>

namespace
{

// What would lose the changes of a pane, done while the pane "scenes" of project "Haus" is modified.
class ModifiedTest : public TWorkbenchTest
{
protected:
    ModifiedTest() { OpenAndEdit(); }

    bool OpenOther() { return Window().OpenProject(MakeProject(QStringLiteral("Anderes"))); }

    QString OpenProjectName() const
    {
        const TProject* project = UserManager()->GetActiveProject();
        return project ? project->GetName() : QString();
    }
};

TEST_F(ModifiedTest, NothingIsAskedWhileNothingIsModified)
{
    Component(Scenes).setWindowModified(false);
    EXPECT_TRUE(OpenOther());
    EXPECT_TRUE(Window().CloseProject());
    EXPECT_TRUE(Window().close());
    EXPECT_TRUE(m_asker.Asked.isEmpty());
}

TEST_F(ModifiedTest, TheQuestionNamesTheModifiedPanes)
{
    OpenOther();
    EXPECT_EQ(m_asker.Asked, QList<QStringList>{QStringList{QStringLiteral("Szenen")}});
}

TEST_F(ModifiedTest, CancelledOpeningKeepsProjectAndChanges)
{
    EXPECT_FALSE(OpenOther());
    EXPECT_EQ(OpenProjectName(), QStringLiteral("Haus"));
    EXPECT_TRUE(Pane(Scenes).IsModified());
}

TEST_F(ModifiedTest, DiscardedChangesDoNotStopOpening)
{
    m_asker.Answer = TModifiedAnswer::Discard;
    EXPECT_TRUE(OpenOther());
    EXPECT_EQ(OpenProjectName(), QStringLiteral("Anderes"));
    EXPECT_EQ(Component(Scenes).Exports, 0);
}

TEST_F(ModifiedTest, ExportComesBeforeOpening)
{
    m_asker.Answer = TModifiedAnswer::Export;
    EXPECT_TRUE(OpenOther());
    EXPECT_EQ(Component(Scenes).Exports, 1);
    EXPECT_EQ(OpenProjectName(), QStringLiteral("Anderes"));
}

TEST_F(ModifiedTest, FailedExportStopsOpening)
{
    m_asker.Answer = TModifiedAnswer::Export;
    Component(Scenes).ExportFails = true;
    EXPECT_FALSE(OpenOther());
    EXPECT_EQ(OpenProjectName(), QStringLiteral("Haus"));
    EXPECT_EQ(m_messages.Errors, QStringList{QStringLiteral("Export misslungen")});
}

TEST_F(ModifiedTest, ExportThatLeavesChangesStopsOpening)
{
    m_asker.Answer = TModifiedAnswer::Export;
    Component(Scenes).ExportKeepsModified = true;
    EXPECT_FALSE(OpenOther());
    EXPECT_EQ(OpenProjectName(), QStringLiteral("Haus"));
}

TEST_F(ModifiedTest, DisabledExportStopsOpeningWithAMessage)
{
    m_asker.Answer = TModifiedAnswer::Export;
    Component(Scenes).ExportAction->setEnabled(false);
    EXPECT_FALSE(OpenOther());
    EXPECT_EQ(m_messages.Errors.size(), 1);
}

TEST_F(ModifiedTest, DirectoryWithoutProjectIsRefusedBeforeAnythingIsAsked)
{
    EXPECT_FALSE(Window().OpenProject(m_directory.path()));
    EXPECT_TRUE(m_asker.Asked.isEmpty());
    EXPECT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(Pane(Scenes).IsModified());
}

TEST_F(ModifiedTest, ClosingTheProjectAsks)
{
    EXPECT_FALSE(Window().CloseProject());
    EXPECT_EQ(OpenProjectName(), QStringLiteral("Haus"));
    m_asker.Answer = TModifiedAnswer::Discard;
    EXPECT_TRUE(Window().CloseProject());
    EXPECT_TRUE(OpenProjectName().isEmpty());
}

TEST_F(ModifiedTest, ClosingTheProjectExports)
{
    m_asker.Answer = TModifiedAnswer::Export;
    EXPECT_TRUE(Window().CloseProject());
    EXPECT_EQ(Component(Scenes).Exports, 1);
}

TEST_F(ModifiedTest, NewProjectAsks)
{
    EXPECT_FALSE(Window().CreateProject(m_directory.filePath(QStringLiteral("Neu")), QStringLiteral("Neu")));
    EXPECT_EQ(m_asker.Asked.size(), 1);
    EXPECT_FALSE(QFile::exists(m_directory.filePath(QStringLiteral("Neu"))));
}

TEST_F(ModifiedTest, QuittingAsks)
{
    EXPECT_FALSE(Window().close());
    EXPECT_TRUE(Window().isVisible());
    m_asker.Answer = TModifiedAnswer::Discard;
    EXPECT_TRUE(Window().close());
}

TEST_F(ModifiedTest, QuittingExportsOrStays)
{
    m_asker.Answer = TModifiedAnswer::Export;
    Component(Scenes).ExportFails = true;
    EXPECT_FALSE(Window().close());
    Component(Scenes).ExportFails = false;
    EXPECT_TRUE(Window().close());
}

TEST_F(ModifiedTest, ClosingAPaneAsksAboutThisPane)
{
    EXPECT_FALSE(Pane(Scenes).close());
    EXPECT_TRUE(Pane(Scenes).IsModified());
    EXPECT_TRUE(Pane(Scenes).isVisible());
    m_asker.Answer = TModifiedAnswer::Discard;
    EXPECT_TRUE(Pane(Scenes).close());
    EXPECT_EQ(Pane(Scenes).Component(), nullptr);
}

TEST_F(ModifiedTest, ClosingAPaneExports)
{
    m_asker.Answer = TModifiedAnswer::Export;
    const QPointer<TTestComponent> component = &Component(Scenes);
    EXPECT_TRUE(Pane(Scenes).close());
    ASSERT_FALSE(component.isNull());
    EXPECT_EQ(component->Exports, 1);
}

TEST_F(ModifiedTest, RefusedCloseKeepsTheCheckMarkInTheViewMenu)
{
    Pane(Scenes).toggleViewAction()->trigger();
    EXPECT_TRUE(Pane(Scenes).isVisible());
    EXPECT_TRUE(Pane(Scenes).toggleViewAction()->isChecked());
}

TEST(ModifiedBox, AnswersByItsButtons)
{
    const struct
    {
        const char* Caption;
        TModifiedAnswer Answer;
    } cases[] = {
        {"&Exportieren", TModifiedAnswer::Export},
        {"&Verwerfen", TModifiedAnswer::Discard},
        {"&Abbrechen", TModifiedAnswer::Cancel},
    };
    for (const auto& [caption, answer] : cases) {
        TModifiedBox box({QStringLiteral("Szenen")});
        for (QAbstractButton* button : box.buttons()) {
            if (button->text() == QString::fromUtf8(caption))
                button->click();
        }
        EXPECT_EQ(box.Answer(), answer) << caption;
        EXPECT_NE(box.clickedButton(), nullptr) << caption;
    }
}

TEST(ModifiedBox, NamesEveryPane)
{
    EXPECT_TRUE(TModifiedBox({QStringLiteral("Szenen")}).text().contains(QStringLiteral("\"Szenen\"")));
    EXPECT_TRUE(TModifiedBox({QStringLiteral("Szenen"), QStringLiteral("Menü")})
                    .text()
                    .contains(QStringLiteral("Szenen, Menü")));
}

TEST(ModifiedBox, ClosedWithoutAButtonItCancels)
{
    EXPECT_EQ(TModifiedBox({QStringLiteral("Szenen")}).Answer(), TModifiedAnswer::Cancel);
}

} // namespace
