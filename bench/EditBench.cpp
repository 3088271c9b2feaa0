#include "FoldersRc.h"
#include "IScenesTree.h"
#include "Measures.h"
#include "SayYes.h"

#include <QApplication>
#include <QTemporaryDir>

#include <memory>

namespace
{

constexpr int Few = 1'000;
constexpr int Many = 10'000;
constexpr double LimitSeconds = 1.5;
constexpr double LimitGrowth = 12.0;

// A shown tree with one action, and two scenes of which the first has `steps` steps bound to that action.
class TEditedTree
{
public:
    explicit TEditedTree(int steps)
    {
        Frame.LoadScenes(m_directory.filePath(QStringLiteral("scenes.xml")));
        Action = Frame.NewSceneNode(Frame.ActionRoot(), naAddChild, QStringLiteral("Licht"), false);
        First = Frame.NewSceneNode(Frame.Top(), naAddChild, QStringLiteral("Abend"), false);
        Second = Frame.NewSceneNode(Frame.Top(), naAddChild, QStringLiteral("Morgen"), false);
        for (int i = 0; i < steps; ++i)
            Frame.NewSceneNode(First, naAddChild, QStringLiteral("Schritt"), false)->Item()->Link.Set(Action);
        Frame.setWindowTitle(QStringLiteral("Szenen[*]"));
        Frame.resize(400, 800);
        Frame.Top()->setExpanded(true);
        First->setExpanded(true);
        Frame.show();
        QApplication::processEvents();
    }

    void SelectSteps()
    {
        Frame.SelectNode(First->Child(0));
        const QModelIndex scene = Frame.indexAt(Frame.visualItemRect(First).center());
        const QAbstractItemModel* model = Frame.model();
        Frame.selectionModel()->select(
            QItemSelection(model->index(0, 0, scene), model->index(First->Count() - 1, 0, scene)),
            QItemSelectionModel::ClearAndSelect);
    }

    TSayYes Yes;
    TConfigTreeFrame Frame;
    TSceneNode* Action = nullptr;
    TSceneNode* First = nullptr;
    TSceneNode* Second = nullptr;

private:
    QTemporaryDir m_directory;
};

template <class TPrepare, class TEdit> void Measure(benchmark::State& state, int steps, TPrepare prepare, TEdit edit)
{
    TEditedTree tree(steps);
    prepare(tree);
    for ([[maybe_unused]] auto _ : state) {
        edit(tree.Frame);
        QApplication::processEvents();
    }
}

template <int Steps> void DeleteUsedAction(benchmark::State& state)
{
    Measure(
        state, Steps, [](TEditedTree& tree) { tree.Frame.SelectNode(tree.Action); },
        [](TConfigTreeFrame& frame) { frame.MenuAction_DeleteExecute(); });
}

template <int Steps> void DeleteSelected(benchmark::State& state)
{
    Measure(
        state, Steps, [](TEditedTree& tree) { tree.SelectSteps(); },
        [](TConfigTreeFrame& frame) { frame.MenuAction_DeleteExecute(); });
}

template <int Steps> void DeleteEveryOther(benchmark::State& state)
{
    Measure(
        state, 2 * Steps,
        [](TEditedTree& tree) {
            tree.SelectSteps();
            QItemSelection others;
            const QModelIndex scene = tree.Frame.indexAt(tree.Frame.visualItemRect(tree.First).center());
            for (int i = 0; i < tree.First->Count(); i += 2) {
                const QModelIndex step = tree.Frame.model()->index(i, 0, scene);
                others.append(QItemSelectionRange(step));
            }
            tree.Frame.selectionModel()->select(others, QItemSelectionModel::ClearAndSelect);
        },
        [](TConfigTreeFrame& frame) { frame.MenuAction_DeleteExecute(); });
}

template <int Steps> void PasteSteps(benchmark::State& state)
{
    Measure(
        state, Steps,
        [](TEditedTree& tree) {
            tree.SelectSteps();
            tree.Frame.MenuAction_CopyExecute();
            tree.Frame.SelectNode(tree.Second);
        },
        [](TConfigTreeFrame& frame) { frame.MenuAction_PasteBeforeExecute(); });
}

void Add(const std::string& name, void (*many)(benchmark::State&), void (*few)(benchmark::State&))
{
    AddMilliseconds(name + ", 10000", LimitSeconds * 1000, many);
    AddRatio(name + ", 10000 : 1000", LimitGrowth, many, few);
}

} // namespace

void AddEditMeasures()
{
    Add("delete an action used by steps", DeleteUsedAction<Many>, DeleteUsedAction<Few>);
    Add("delete selected steps", DeleteSelected<Many>, DeleteSelected<Few>);
    Add("delete every other step", DeleteEveryOther<Many>, DeleteEveryOther<Few>);
    Add("paste steps", PasteSteps<Many>, PasteSteps<Few>);
}
