#include "SceneTree.h"

#include <QApplication>
#include <QAction>
#include <QContextMenuEvent>
#include <QFile>
#include <QMenu>

#include <array>

namespace
{

enum TStore : quint8
{
    stNothing,
    stCopied, // the step "Licht aus" was copied
    stCut,    // the step "Licht aus" was cut
};

enum TFileState : quint8
{
    fsExists,
    fsMissing,
    fsNotSet,
};

// What the user did, and what the menu then offers. The menu is opened over a node; over none for null.
struct TSituation
{
    const char* Name;
    std::vector<const char*> Selected;
    const char* Over;
    const char* Enabled;
    const char* SelectedAfter = nullptr; // as before when null
    TStore Store = stNothing;
    bool DialogShown = false;
    TFileState File = fsExists;
};

void PrintTo(const TSituation& situation, std::ostream* stream)
{
    *stream << situation.Name;
}

class SceneMenu : public TSceneTree
{
protected:
    void Arrange(const TSituation& situation)
    {
        if (situation.File == fsNotSet) {
            m_frame->LoadScenes({});
            AddHouse();
        }
        if (situation.File == fsMissing) {
            ASSERT_TRUE(QFile::remove(m_project.Scenes(QStringLiteral("scenes.xml"))));
        }
        if (situation.Store != stNothing) {
            Select({"Licht aus"});
            Run(situation.Store == stCut ? "MenuAction_CutExecute" : "MenuAction_CopyExecute");
        }
        if (situation.DialogShown)
            ShowProperties("Licht an");
        Select(situation.Selected);
    }
    // What a frame without a file needs for the rows of the table.
    void AddHouse() const
    {
        m_frame->NewSceneNode(m_frame->TriggerRoot(), naAddChild, QStringLiteral("Taster Flur"), false);
        m_frame->NewSceneNode(Top(), naAddChild, QStringLiteral("Nachts"), false);
    }
};

class SceneMenuSituation : public SceneMenu, public testing::WithParamInterface<TSituation>
{};

const std::array Situations{
    // Nothing selected
    TSituation{.Name = "NothingSelectedOverNothing",
               .Selected = {},
               .Over = nullptr,
               .Enabled = "Neue Szene, Neu laden, Exportieren"},
    TSituation{.Name = "NothingSelectedOverTheTop",
               .Selected = {},
               .Over = "Szenen",
               .Enabled = "Neue Szene, Neu laden, Exportieren"},
    TSituation{.Name = "NothingSelectedOverTheTriggerRoot",
               .Selected = {},
               .Over = "Trigger-Elemente",
               .Enabled = "Elemente hinzufügen..., Neue Szene, Neu laden, Exportieren"},
    TSituation{.Name = "NothingSelectedOverTheActionRoot",
               .Selected = {},
               .Over = "Aktions-Elemente",
               .Enabled = "Elemente hinzufügen..., Neue Szene, Neu laden, Exportieren"},
    TSituation{.Name = "NothingSelectedOverAStep",
               .Selected = {},
               .Over = "Warm",
               .Enabled = "Neue Szene, Neu laden, Exportieren",
               .Store = stCopied},
    // Over no node
    TSituation{.Name = "TriggerSelectedOverNothing",
               .Selected = {"Taster Flur"},
               .Over = nullptr,
               .Enabled = "Neue Szene, Neu laden, Exportieren"},
    TSituation{.Name = "SceneSelectedOverNothingWithACopy",
               .Selected = {"Nachts"},
               .Over = nullptr,
               .Enabled = "Neue Szene, Neue Aktion, Neu laden, Exportieren",
               .Store = stCopied},
    // The fixed nodes
    TSituation{.Name = "Top",
               .Selected = {"Szenen"},
               .Over = "Szenen",
               .Enabled = "Neue Szene, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "TriggerRoot",
               .Selected = {"Trigger-Elemente"},
               .Over = "Trigger-Elemente",
               .Enabled = "Elemente hinzufügen..., Neue Szene, Neue Aktion, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "ActionRoot",
               .Selected = {"Aktions-Elemente"},
               .Over = "Aktions-Elemente",
               .Enabled = "Elemente hinzufügen..., Neue Szene, Neue Aktion, Neu laden, Exportieren",
               .Store = stCut},
    TSituation{.Name = "SceneSelectedOverTheTriggerRoot",
               .Selected = {"Nachts"},
               .Over = "Trigger-Elemente",
               .Enabled = "Elemente hinzufügen..., Neue Szene, Neue Aktion, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "StepSelectedOverTheTop",
               .Selected = {"Warm"},
               .Over = "Szenen",
               .Enabled = "Neue Szene, Neu laden, Exportieren",
               .Store = stCut},
    // Datapoints
    TSituation{.Name = "Trigger",
               .Selected = {"Taster Flur"},
               .Over = "Taster Flur",
               .Enabled = "Eigenschaften, Neue Szene, Kopieren, Löschen, Neu laden, Exportieren"},
    TSituation{.Name = "TriggerWithACopy",
               .Selected = {"Taster Flur"},
               .Over = "Taster Flur",
               .Enabled = "Eigenschaften, Neue Szene, Kopieren, Löschen, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "SeveralTriggers",
               .Selected = {"Taster Flur", "Zeitschalter"},
               .Over = "Taster Flur",
               .Enabled = "Neue Szene, Löschen, Neu laden, Exportieren"},
    TSituation{.Name = "Action",
               .Selected = {"Heizung"},
               .Over = "Heizung",
               .Enabled = "Eigenschaften, Neue Szene, Kopieren, Löschen, Neu laden, Exportieren",
               .Store = stCut},
    TSituation{.Name = "SeveralActions",
               .Selected = {"Heizung", "Licht Flur"},
               .Over = "Heizung",
               .Enabled = "Neue Szene, Kopieren, Löschen, Neu laden, Exportieren",
               .Store = stCopied},
    // Scenes
    TSituation{.Name = "Scene",
               .Selected = {"Nachts"},
               .Over = "Nachts",
               .Enabled = "Eigenschaften, Neue Szene, Neue Aktion, Kopieren, Löschen, Neu laden, Exportieren"},
    TSituation{.Name = "SceneWithACopy",
               .Selected = {"Nachts"},
               .Over = "Nachts",
               .Enabled = "Eigenschaften, Neue Szene, Neue Aktion, Kopieren, Einfügen, Löschen, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "SceneWithACutNode",
               .Selected = {"Nachts"},
               .Over = "Nachts",
               .Enabled = "Eigenschaften, Neue Szene, Neue Aktion, Kopieren, Einfügen, Löschen, Neu laden, Exportieren",
               .Store = stCut},
    TSituation{.Name = "SeveralScenes",
               .Selected = {"Abendlicht", "Nachts"},
               .Over = "Abendlicht",
               .Enabled = "Neue Szene, Neue Aktion, Kopieren, Löschen, Neu laden, Exportieren"},
    // Steps
    TSituation{.Name = "Step",
               .Selected = {"Warm"},
               .Over = "Warm",
               .Enabled = "Eigenschaften, Neue Szene, Kopieren, Ausschneiden, Löschen, Neu laden, Exportieren"},
    TSituation{.Name = "StepWithACopy",
               .Selected = {"Warm"},
               .Over = "Warm",
               .Enabled =
                   "Eigenschaften, Neue Szene, Kopieren, Einfügen, Ausschneiden, Löschen, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "StepWithACutNode",
               .Selected = {"Warm"},
               .Over = "Warm",
               .Enabled =
                   "Eigenschaften, Neue Szene, Kopieren, Einfügen, Ausschneiden, Löschen, Neu laden, Exportieren",
               .Store = stCut},
    TSituation{.Name = "SeveralSteps",
               .Selected = {"Licht an", "Warm", "Licht aus"},
               .Over = "Warm",
               .Enabled = "Neue Szene, Kopieren, Ausschneiden, Löschen, Neu laden, Exportieren"},
    // Mixed
    TSituation{.Name = "MixedOverATrigger",
               .Selected = {"Taster Flur", "Heizung", "Nachts", "Warm"},
               .Over = "Taster Flur",
               .Enabled = "Neue Szene, Löschen, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "MixedOverAScene",
               .Selected = {"Taster Flur", "Heizung", "Nachts", "Warm"},
               .Over = "Nachts",
               .Enabled = "Neue Szene, Neue Aktion, Kopieren, Einfügen, Löschen, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "MixedWithATriggerRootOverAScene",
               .Selected = {"Trigger-Elemente", "Nachts"},
               .Over = "Nachts",
               .Enabled = "Neue Szene, Neue Aktion, Kopieren, Neu laden, Exportieren"},
    TSituation{.Name = "MixedWithAnActionRootOverAStep",
               .Selected = {"Aktions-Elemente", "Warm"},
               .Over = "Warm",
               .Enabled = "Neue Szene, Kopieren, Ausschneiden, Neu laden, Exportieren"},
    TSituation{.Name = "MixedWithTheTopOverAStep",
               .Selected = {"Szenen", "Warm"},
               .Over = "Warm",
               .Enabled = "Neue Szene, Kopieren, Ausschneiden, Löschen, Neu laden, Exportieren"},
    // Another node than the selected one
    TSituation{.Name = "StepSelectedOverAScene",
               .Selected = {"Warm"},
               .Over = "Nachts",
               .Enabled = "Eigenschaften, Neue Szene, Neue Aktion, Kopieren, Löschen, Neu laden, Exportieren",
               .SelectedAfter = "Nachts"},
    TSituation{.Name = "SceneSelectedOverATrigger",
               .Selected = {"Nachts"},
               .Over = "Zeitschalter",
               .Enabled = "Eigenschaften, Neue Szene, Kopieren, Löschen, Neu laden, Exportieren",
               .SelectedAfter = "Zeitschalter",
               .Store = stCopied},
    TSituation{.Name = "SeveralStepsSelectedOverAnother",
               .Selected = {"Licht an", "Warm"},
               .Over = "Licht aus",
               .Enabled = "Eigenschaften, Neue Szene, Kopieren, Ausschneiden, Löschen, Neu laden, Exportieren",
               .SelectedAfter = "Licht aus"},
    TSituation{.Name = "RootSelectedOverAStep",
               .Selected = {"Trigger-Elemente"},
               .Over = "Warm",
               .Enabled = "Eigenschaften, Neue Szene, Kopieren, Ausschneiden, Löschen, Neu laden, Exportieren",
               .SelectedAfter = "Warm"},
    // The dialog
    TSituation{.Name = "StepWithTheDialogShown",
               .Selected = {"Warm"},
               .Over = "Warm",
               .Enabled = "Neue Szene, Kopieren, Ausschneiden, Löschen, Neu laden, Exportieren",
               .DialogShown = true},
    TSituation{.Name = "TriggerWithTheDialogShown",
               .Selected = {"Taster Flur"},
               .Over = "Taster Flur",
               .Enabled = "Neue Szene, Kopieren, Löschen, Neu laden, Exportieren",
               .DialogShown = true},
    // The file
    TSituation{.Name = "SceneWithoutTheFile",
               .Selected = {"Nachts"},
               .Over = "Nachts",
               .Enabled = "Eigenschaften, Neue Szene, Neue Aktion, Kopieren, Löschen, Exportieren",
               .File = fsMissing},
    TSituation{.Name = "SceneWithoutAFileName",
               .Selected = {"Nachts"},
               .Over = "Nachts",
               .Enabled = "Eigenschaften, Neue Szene, Neue Aktion, Kopieren, Löschen",
               .File = fsNotSet},
    TSituation{.Name = "NothingSelectedWithoutAFileName",
               .Selected = {},
               .Over = nullptr,
               .Enabled = "Neue Szene",
               .File = fsNotSet},
};

} // namespace

TEST_P(SceneMenuSituation, EnablesWhatItsRulesSay)
{
    const TSituation& situation = GetParam();
    Arrange(situation);
    const std::string before = Selected();
    OpenMenu(situation.Over);
    EXPECT_TRUE(Menu()->isVisible());
    EXPECT_EQ(EnabledEntries(), situation.Enabled);
    EXPECT_EQ(Selected(), situation.SelectedAfter ? situation.SelectedAfter : before);
    CloseMenu();
}

INSTANTIATE_TEST_SUITE_P(Menu, SceneMenuSituation, testing::ValuesIn(Situations),
                         [](const auto& situation) { return std::string(situation.param.Name); });

TEST_F(SceneMenu, HasItsThirteenPositions)
{
    struct TExpected
    {
        const char* Caption;
        const char* Shortcut;
        const char* Name;
    };
    constexpr std::array<TExpected, 13> Rows{{
        {"Eigenschaften", "", "MenuAction_AttributesExecute"},
        {nullptr, nullptr, nullptr},
        {"Elemente hinzufügen...", "", "MenuAction_AutoAppend"},
        {"Neue Szene", "", "MenuAction_CreateSceneExecute"},
        {"Neue Aktion", "", "MenuAction_CreateBeforeExecute"},
        {nullptr, nullptr, nullptr},
        {"Kopieren", "Ctrl+C", "MenuAction_CopyExecute"},
        {"Einfügen", "Ctrl+V", "MenuAction_PasteBeforeExecute"},
        {"Ausschneiden", "", "MenuAction_CutExecute"},
        {"Löschen", "Del", "MenuAction_DeleteExecute"},
        {nullptr, nullptr, nullptr},
        {"Neu laden", "", "MenuAction_Reload"},
        {"Exportieren", "", "MenuAction_Export"},
    }};
    const QList<QAction*> actions = Menu()->actions();
    ASSERT_EQ(actions.size(), 13);
    for (std::size_t i = 0; i < Rows.size(); ++i) {
        const QAction* action = actions[static_cast<qsizetype>(i)];
        EXPECT_EQ(action->isSeparator(), !Rows[i].Caption) << i;
        EXPECT_TRUE(action->isVisible()) << i;
        if (action->isSeparator())
            continue;
        EXPECT_EQ(action->text().toStdString(), Rows[i].Caption);
        EXPECT_EQ(action->shortcut(), QKeySequence(QString::fromLatin1(Rows[i].Shortcut))) << i;
        EXPECT_EQ(action->objectName().toStdString(), Rows[i].Name);
    }
}

TEST_F(SceneMenu, FocusesTheNodeUnderTheMouseAndKeepsASelectionAroundIt)
{
    Select({"Licht an", "Nachts", "Warm"});
    OpenMenu("Nachts");
    EXPECT_EQ(m_frame->SelectedNode(), Node("Nachts"));
    EXPECT_EQ(Selected(), "Licht an|Nachts|Warm");
    CloseMenu();
}

TEST_F(SceneMenu, LeavesTheSelectionAloneOverAFixedNode)
{
    Select({"Warm"});
    for (const char* over : {"Szenen", "Trigger-Elemente", "Aktions-Elemente"}) {
        OpenMenu(over);
        EXPECT_EQ(Selected(), "Warm") << over;
        CloseMenu();
    }
}

TEST_F(SceneMenu, GoesBackToTheSelectedNodeWhenItCloses)
{
    Select({"Warm"});
    OpenMenu("Trigger-Elemente");
    EXPECT_FALSE(Action("MenuAction_DeleteExecute")->isEnabled());
    CloseMenu();
    EXPECT_TRUE(Action("MenuAction_DeleteExecute")->isEnabled());
    EXPECT_FALSE(Action("MenuAction_AutoAppend")->isEnabled());
}

TEST_F(SceneMenu, KeepsItsNodeWhenItIsOpenedAgainAtOnce)
{
    Select({"Warm"});
    OpenMenu("Warm");
    Menu()->hide();
    OpenMenu("Trigger-Elemente");
    QCoreApplication::processEvents();
    EXPECT_EQ(EnabledEntries(), "Elemente hinzufügen..., Neue Szene, Neu laden, Exportieren");
    CloseMenu();
    EXPECT_TRUE(Action("MenuAction_DeleteExecute")->isEnabled());
}

TEST_F(SceneMenu, OpensForTheSelectedNodeByTheKeyboard)
{
    Select({"Nachts"});
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), m_frame->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(m_frame->viewport(), &event);
    EXPECT_EQ(EnabledEntries(), "Eigenschaften, Neue Szene, Neue Aktion, Kopieren, Löschen, Neu laden, Exportieren");
    CloseMenu();
}

TEST_F(SceneMenu, EnablesTheWayAFileThatAppearsAllows)
{
    const QString file = m_project.Scenes(QStringLiteral("scenes.xml"));
    ASSERT_TRUE(QFile::rename(file, file + QStringLiteral(".away")));
    OpenMenu(nullptr);
    EXPECT_EQ(EnabledEntries(), "Neue Szene, Exportieren");
    CloseMenu();
    ASSERT_TRUE(QFile::rename(file + QStringLiteral(".away"), file));
    OpenMenu(nullptr);
    EXPECT_EQ(EnabledEntries(), "Neue Szene, Neu laden, Exportieren");
    CloseMenu();
}

TEST_F(SceneMenu, ShowsOnlyNeueSzeneBeforeAnythingIsLoaded)
{
    m_frame = std::make_unique<TConfigTreeFrame>();
    m_frame->show();
    OpenMenu(nullptr);
    EXPECT_EQ(EnabledEntries(), "Neue Szene");
    Run("MenuAction_CreateSceneExecute");
    EXPECT_EQ(m_frame->Top(), nullptr);
    CloseMenu();
}
