#include "IScenesTree.h"

#include "Formatting.h"
#include "Vlmessages.h"
#include "Vlpromptnumber.h"

#include <QSet>

#include <algorithm>

namespace
{

QString Numbered(TResourceId label, int number)
{
    return FormatText("%s-%d", RcText(label), number);
}

QStringList NumberedFrom(TResourceId label, int first, qsizetype count)
{
    QStringList captions;
    for (int i = 0; i < count; ++i)
        captions.append(Numbered(label, first + i));
    return captions;
}

// Calls `visit` for every scene and every step of the tree.
template <class TVisit> void ForEachBound(TSceneNode* top, TVisit visit)
{
    for (int i = FirstSceneIndex; i < top->Count(); ++i) {
        TSceneNode* scene = top->Child(i);
        visit(scene);
        for (int k = 0; k < scene->Count(); ++k)
            visit(scene->Child(k));
    }
}

QList<TSceneNode*> ChildrenOf(const TSceneNode* parent, const QList<TSceneNode*>& nodes)
{
    QList<TSceneNode*> children;
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(children),
                 [parent](const TSceneNode* node) { return node->Parent() == parent; });
    return children;
}

// What a scene takes over from the datapoint that starts it.
void BindToTrigger(TVlSceneItem& item, TSceneNode* trigger)
{
    item.Source = trigger->Item()->Source;
    item.DataType = trigger->Item()->DataType;
    item.Link.Set(trigger);
}

// What a node takes over from the node that it is bound to; from a step, also what that is bound to.
void BindTo(TVlSceneItem& item, const TSceneNode* source)
{
    item.Source = source->Item()->Source;
    item.DataType = source->Item()->DataType;
    item.Value = source->Item()->Value;
    item.Delay = source->Item()->Delay;
    item.Link.Set(source->Role() == srStep ? source->Item()->Link.Get() : const_cast<TSceneNode*>(source));
}

} // namespace

TSceneNode* TConfigTreeFrame::NewSceneNode(TSceneNode* node, TNodeAttachMode mode, const QString& caption, bool select)
{
    TSceneNode* parent = node && mode == naAdd ? node->Parent() : node;
    if (!parent || (mode != naAdd && mode != naAddChild && mode != naAddChildFirst))
        return nullptr;
    const TRepaintPause pause(this);
    const int index = mode == naAddChildFirst ? 0 : parent->Count();
    auto* inserted = static_cast<TSceneNode*>(InsertBranch(MakeNode(parent, index, caption), node, mode));
    if (select)
        SelectNode(inserted);
    return inserted;
}

std::unique_ptr<TSceneNode> TConfigTreeFrame::MakeNode(const TSceneNode* parent, int index,
                                                       const QString& caption) const
{
    const bool isScene = parent == Top();
    TVlSceneItem item;
    item.Alias = caption.isEmpty() ? RcText(_STR_NEW_ENTRY) : caption;
    if (isScene)
        item.Id = NextSceneId();
    auto node = std::make_unique<TSceneNode>(std::move(item));
    const TSceneRole listed = parent == TriggerRoot() ? srTrigger : srStep;
    const TSceneRole top = index < FirstSceneIndex ? srTriggerRoot : srScene;
    node->SetImageIndex(TSceneNode::ImageOf(isScene ? top : listed));
    node->RebuildCaption();
    return node;
}

void TConfigTreeFrame::AppendBound(TSceneNode* parent, int index, const QStringList& captions,
                                   const QList<TSceneNode*>& sources)
{
    std::vector<std::unique_ptr<TTreeNode>> nodes;
    for (qsizetype i = 0; i < captions.size(); ++i) {
        auto node = MakeNode(parent, index, captions[i]);
        if (i < sources.size())
            BindTo(*node->Item(), sources[i]);
        node->RebuildCaption();
        nodes.push_back(std::move(node));
    }
    InsertBranches(std::move(nodes), parent, index);
}

void TConfigTreeFrame::ChangeItem(TSceneNode* node, const std::function<void(TVlSceneItem&)>& change)
{
    ChangeRecord(node, [&] {
        const TVlSceneItem before = *node->Item();
        change(*node->Item());
        node->RebuildCaption();
        return !(before == *node->Item());
    });
    RefreshDialog(node);
}

void TConfigTreeFrame::CopyBinding(const TSceneNode* source, TSceneNode* target)
{
    ChangeItem(target, [source](TVlSceneItem& item) { BindTo(item, source); });
}

void TConfigTreeFrame::BindScene(TSceneNode* scene, TSceneNode* trigger)
{
    ChangeItem(scene, [trigger](TVlSceneItem& item) { BindToTrigger(item, trigger); });
}

void TConfigTreeFrame::MenuAction_AutoAppend()
{
    TSceneNode* root = MenuSceneNode();
    if (!CanAutoAppend())
        return;
    const bool triggers = root->Role() == srTriggerRoot;
    if (!m_prompt)
        m_prompt = new TPromptNumberDialog(this);
    const TNodeRefTo<TSceneNode> asked(root);
    if (!m_prompt->Execute(RcText(triggers ? _INFO_NUM_TRIGGER : _INFO_NUM_ACTION)) || !asked)
        return;
    const TResourceId label = triggers ? _RSTR_TRIGGER_LBL : _RSTR_ACTION_LBL;
    AppendBound(root, root->Count(), NumberedFrom(label, root->Count() + 1, m_prompt->GetNumber()), {});
    root->setExpanded(true);
}

void TConfigTreeFrame::MenuAction_CreateSceneExecute()
{
    if (!Top())
        return;
    const TSceneNode* selected = SelectedSceneNode();
    if (!selected || selected->Level() < 2) {
        NewSceneNode(Top(), naAddChild, RcText(_RSTR_NEW_SCENE), true);
        return;
    }
    const TRepaintPause pause(this);
    if (selected->Parent() == TriggerRoot())
        AppendScenesFor(ChildrenOf(TriggerRoot(), SelectedSceneNodes()));
    else if (selected->Parent() == ActionRoot())
        AppendSceneWith(ChildrenOf(ActionRoot(), SelectedSceneNodes()));
    SendSections();
    SelectNode(nullptr);
}

void TConfigTreeFrame::AppendScenesFor(const QList<TSceneNode*>& triggers)
{
    std::vector<std::unique_ptr<TTreeNode>> scenes;
    for (TSceneNode* trigger : triggers) {
        auto scene = MakeNode(Top(), Top()->Count(), {});
        // Numbered after its file, which the numbers of several new scenes follow one by one.
        scene->Item()->Alias = Numbered(_RSTR_SCENE_LBL, scene->Item()->Id);
        BindToTrigger(*scene->Item(), trigger);
        scene->RebuildCaption();
        scenes.push_back(std::move(scene));
    }
    InsertBranches(std::move(scenes), Top(), Top()->Count());
}

void TConfigTreeFrame::AppendSceneWith(const QList<TSceneNode*>& actions)
{
    AppendStepsFor(NewSceneNode(Top(), naAddChild, RcText(_RSTR_NEW_SCENE), false), actions);
}

void TConfigTreeFrame::AppendStepsFor(TSceneNode* scene, const QList<TSceneNode*>& actions)
{
    const int count = scene->Count();
    AppendBound(scene, count, NumberedFrom(_RSTR_ACTION_LBL, count + 1, actions.size()), actions);
}

void TConfigTreeFrame::MenuAction_CreateBeforeExecute()
{
    TSceneNode* selected = SelectedSceneNode();
    if (!selected || selected->Level() < 1)
        return;
    NewSceneNode(selected, selected->Level() == 1 ? naAddChild : naAdd, RcText(_RSTR_NEW_ACTION), true);
}

void TConfigTreeFrame::MenuAction_CopyExecute()
{
    // Deliberate: the mark of a node that was cut stays.
    Clipboard().ForgetCutOnly();
    TSceneNode* selected = SelectedSceneNode();
    if (!selected || selected->IsFixed())
        return;
    if (selected->Role() == srScene)
        CopyScene(selected);
    else
        Clipboard().Copy(Top(), SelectedNodes());
}

void TConfigTreeFrame::CopyScene(TSceneNode* scene)
{
    const TRepaintPause pause(this);
    const auto number = static_cast<std::int32_t>(static_cast<std::uint32_t>(LastSceneId()) + 1u);
    const QString caption = FormatText("%s-%d=%s", RcText(_RSTR_SCENE_LBL), number, scene->Item()->Alias);
    TSceneNode* copy = NewSceneNode(Top(), naAddChild, caption, false);
    ChangeItem(copy, [&](TVlSceneItem& item) {
        item.Source = scene->Item()->Source;
        item.DataType = scene->Item()->DataType;
        item.Link = scene->Item()->Link;
    });
    QStringList aliases;
    QList<TSceneNode*> steps;
    for (int i = 0; i < scene->Count(); ++i) {
        steps.append(scene->Child(i));
        aliases.append(steps.last()->Item()->Alias);
    }
    AppendBound(copy, 0, aliases, steps);
    SendSections();
}

void TConfigTreeFrame::MenuAction_CutExecute()
{
    TSceneNode* selected = SelectedSceneNode();
    Clipboard().Cut(selected && selected->Role() == srStep ? selected : nullptr);
}

void TConfigTreeFrame::MenuAction_PasteBeforeExecute()
{
    TSceneNode* selected = SelectedSceneNode();
    if (!selected || selected->IsFixed())
        return;
    const TRepaintPause pause(this);
    if (Clipboard().HasCopied())
        PasteCopied(selected);
    else if (Clipboard().CutNode())
        PasteCut(selected);
    Clipboard().Clear();
}

void TConfigTreeFrame::PasteCopied(TSceneNode* selected)
{
    const bool intoScene = selected->Role() == srScene;
    QStringList aliases;
    QList<TSceneNode*> copied;
    const QList<TTreeNode*> found = Clipboard().Copied(Top());
    for (TTreeNode* node : found) {
        auto* source = static_cast<TSceneNode*>(node);
        if (!source->Item())
            continue;
        if (intoScene && source->Role() == srTrigger) {
            BindScene(selected, source);
            continue;
        }
        copied.append(source);
        aliases.append(source->Item()->Alias);
    }
    if (!intoScene) {
        AppendBound(selected->Parent(), selected->Parent()->Count(), aliases, copied);
        return;
    }
    // Each would become the first child in its turn, so they end up in reverse order.
    std::reverse(aliases.begin(), aliases.end());
    std::reverse(copied.begin(), copied.end());
    AppendBound(selected, 0, aliases, copied);
}

void TConfigTreeFrame::PasteCut(TSceneNode* selected)
{
    TTreeNode* cut = Clipboard().CutNode();
    const bool sameLevel = selected->Level() == cut->Level();
    MoveBranch(cut, selected, sameLevel ? naInsert : naAddChildFirst);
}

void TConfigTreeFrame::MenuAction_DeleteExecute()
{
    Clipboard().Clear();
    const TSceneNode* selected = SelectedSceneNode();
    if (!selected || selected->IsFixed())
        return;
    const TSceneRole role = selected->Role();
    const TResourceId sceneOrAction = role == srAction ? _CONFIRM_ACTION_DEL : _CONFIRM_SCENE_DEL;
    if (!Confirm(RcText(role == srTrigger ? _CONFIRM_TRIGGER_DEL : sceneOrAction)))
        return;

    const TRepaintPause pause(this);
    const QList<TSceneNode*> nodes = SelectedSceneNodes();
    if (role == srTrigger)
        DeleteTriggers(nodes);
    else if (role == srAction)
        DeleteActions(nodes);
    else
        RemoveNodes(nodes);
}

void TConfigTreeFrame::DeleteTriggers(const QList<TSceneNode*>& nodes)
{
    const QSet<const TSceneNode*> deleted(nodes.begin(), nodes.end());
    for (int i = FirstSceneIndex; i < Top()->Count(); ++i) {
        TSceneNode* scene = Top()->Child(i);
        if (!deleted.contains(scene->Item()->Link.Get()))
            continue;
        ChangeItem(scene, [](TVlSceneItem& item) {
            item.Name.clear();
            item.Link.Set(nullptr);
            item.Enabled = false;
        });
    }
    RemoveNodes(nodes);
}

void TConfigTreeFrame::DeleteActions(const QList<TSceneNode*>& nodes)
{
    const QSet<const TSceneNode*> deleted(nodes.begin(), nodes.end());
    QList<TSceneNode*> all = nodes;
    ForEachBound(Top(), [&](TSceneNode* node) {
        if (node->Role() == srStep && deleted.contains(node->Item()->Link.Get()))
            all.append(node);
    });
    RemoveNodes(all);
}

void TConfigTreeFrame::RemoveNodes(QList<TSceneNode*> nodes)
{
    nodes.removeIf([](const TSceneNode* node) { return node->IsFixed(); });
    // What stays and was bound to a node that goes, loses its link and shows its own alias again.
    const QSet<const TSceneNode*> removed(nodes.begin(), nodes.end());
    ForEachBound(Top(), [&](TSceneNode* node) {
        if (removed.contains(node->Item()->Link.Get()))
            ChangeItem(node, [](TVlSceneItem& item) { item.Link.Set(nullptr); });
    });
    RemoveBranches(QList<TTreeNode*>(nodes.begin(), nodes.end()));
}

void TConfigTreeFrame::RebuildCaptionsOf(const TSceneNode* datapoint)
{
    ForEachBound(Top(), [datapoint](TSceneNode* node) {
        if (node->Item()->Link.Get() == datapoint)
            node->RebuildCaption();
    });
}

void TConfigTreeFrame::HandleEdited(TTreeNode* node, const QString& text)
{
    auto* edited = static_cast<TSceneNode*>(node);
    if (text.isEmpty() || !edited->Item())
        return;
    // What waits in the dialog comes before a new text, not over it; the old text, offered and left alone, is none.
    const bool renamed = text != edited->Item()->Alias;
    ApplyPending();
    if (renamed)
        ChangeItem(edited, [&](TVlSceneItem& item) { item.Alias = text; });
    RebuildCaptionsOf(edited);
    if (edited->Role() == srScene)
        SendSections();
    if (IsDialogShown())
        FollowInDialog(edited);
}

bool TConfigTreeFrame::CanEdit(const TTreeNode* node) const
{
    return !static_cast<const TSceneNode*>(node)->IsFixed();
}
