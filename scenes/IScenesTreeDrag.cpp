#include "IScenesTree.h"

#include "NodeDrags.h"

bool TConfigTreeFrame::PrepareDrag(TTreeNode* node, Qt::KeyboardModifiers shiftState)
{
    if (!SelectedNode() || static_cast<TSceneNode*>(node)->IsFixed())
        return false;
    m_dragShiftState = shiftState;
    return true;
}

std::unique_ptr<QMimeData> TConfigTreeFrame::StartDrag()
{
    const QList<TSceneNode*> selected = SelectedSceneNodes();
    if (selected.size() > 1) {
        m_dragNode.Set(SelectedSceneNode());
        return MakeObjectsDrag(SelectedNodes());
    }
    if (selected.isEmpty() || selected.first()->IsFixed())
        return nullptr;
    if (selected.first()->Role() == srScene)
        return DragOf(selected.first());
    m_dragNode.Set(selected.first());
    return MakeNodeDrag();
}

std::unique_ptr<QMimeData> TConfigTreeFrame::DragOf(const TSceneNode* scene) const
{
    const TVlSceneItem& item = *scene->Item();
    const TVlSceneItem* linked = scene->LinkedItem();
    return MakeDatapointDrag({.Name = linked ? linked->Name : item.Name,
                              .Alias = item.Alias,
                              .FixedValue = item.Value,
                              .EisNumber = dt2Eis(item.DataType),
                              .Source = QString::fromLatin1(SourceText(item.Source)),
                              .ShiftState = m_dragShiftState});
}

void TConfigTreeFrame::EndDrag()
{
    m_dragNode.Set(nullptr);
}

bool TConfigTreeFrame::CanDrop(const QMimeData* content, TTreeNode* target) const
{
    if (!m_dragNode || !target)
        return false;
    const TSceneRole dragged = m_dragNode->Role();
    const TSceneRole place = static_cast<TSceneNode*>(target)->Role();
    if (TObjectsDragObject::FromMimeData(content))
        return (place == srTop && dragged == srTrigger) || (place == srScene && dragged == srAction);
    return place == srScene || (place == srStep && dragged == srStep);
}

void TConfigTreeFrame::Drop(const QMimeData* content, TTreeNode* target)
{
    auto* place = static_cast<TSceneNode*>(target);
    if (const auto objects = TObjectsDragObject::FromMimeData(content)) {
        // The top node and the roots may be among them; there is nothing in them to bind to.
        QList<TSceneNode*> nodes;
        for (TTreeNode* object : objects->Objects()) {
            auto* node = static_cast<TSceneNode*>(object);
            if (node->Item())
                nodes.append(node);
        }
        DropObjects(nodes, place);
        SelectNode(nullptr);
    } else {
        DropNode(m_dragNode.Get(), place);
        SelectNode(place);
    }
    m_dragNode.Set(nullptr);
}

void TConfigTreeFrame::DropObjects(const QList<TSceneNode*>& nodes, TSceneNode* target)
{
    const TRepaintPause pause(this);
    if (target->Role() == srScene) {
        AppendStepsFor(target, nodes);
        return;
    }
    AppendScenesFor(nodes);
    SendSections();
}

void TConfigTreeFrame::DropNode(TSceneNode* dragged, TSceneNode* target)
{
    const TSceneRole role = dragged->Role();
    if (target->Role() == srScene) {
        if (role == srTrigger)
            BindScene(target, dragged);
        else if (role == srAction)
            CopyBinding(dragged, NewSceneNode(target, naAddChild, {}, true));
        return;
    }
    if (dragged == target)
        return;
    if (role == srStep && (m_dragShiftState & Qt::ControlModifier))
        MoveBranch(dragged, target, naInsert);
    else
        CopyBinding(dragged, target);
}
