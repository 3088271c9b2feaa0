#include "SceneNodes.h"

#include "FoldersRc.h"
#include "Formatting.h"
#include "TreeImages.h"

#include <algorithm>

namespace
{

std::int32_t lastSceneId = 0;

} // namespace

bool TVlSceneItem::operator==(const TVlSceneItem& other) const
{
    return Id == other.Id && Link.Get() == other.Link.Get() && Name == other.Name && Alias == other.Alias &&
           Value == other.Value && Delay == other.Delay && Source == other.Source && DataType == other.DataType &&
           Enabled == other.Enabled;
}

TSceneNode::TSceneNode(TVlSceneItem item) : m_item(std::make_unique<TVlSceneItem>(std::move(item))) {}

TSceneRole TSceneNode::Role() const
{
    const TSceneNode* above = Parent();
    if (!above)
        return srTop;
    if (!above->Parent()) {
        if (above->Child(TriggerRootIndex) == this)
            return srTriggerRoot;
        return above->Child(ActionRootIndex) == this ? srActionRoot : srScene;
    }
    switch (above->Role()) {
    case srTriggerRoot:
        return srTrigger;
    case srActionRoot:
        return srAction;
    default:
        return srStep;
    }
}

bool TSceneNode::IsDatapoint() const
{
    const TSceneRole role = Role();
    return role == srTrigger || role == srAction;
}

const TVlSceneItem* TSceneNode::LinkedItem() const
{
    const TSceneNode* link = m_item ? m_item->Link.Get() : nullptr;
    return link ? link->Item() : nullptr;
}

void TSceneNode::RebuildCaption()
{
    if (!m_item)
        return;
    const TVlSceneItem* linked = LinkedItem();
    const bool showsLink = linked && !linked->Alias.isEmpty();
    SetCaption(showsLink ? FormatText("%s [%s]", m_item->Alias, linked->Alias) : m_item->Alias);
}

int TSceneNode::ImageOf(TSceneRole role)
{
    switch (role) {
    case srTop:
        return tiDocument;
    case srTriggerRoot:
    case srActionRoot:
        return tiFolder;
    case srScene:
        return tiScene;
    case srTrigger:
        return tiTrigger;
    case srAction:
    case srStep:
        break;
    }
    return tiAction;
}

QString TSceneNode::EditText() const
{
    return m_item ? m_item->Alias : Caption();
}

std::unique_ptr<TSceneNode> MakeSceneTop()
{
    auto top = std::make_unique<TSceneNode>(RcText(_RSTR_SCENES), TSceneNode::ImageOf(srTop));
    for (const TResourceId caption : {_RSTR_TRIGGER_NODES, _RSTR_ACTION_NODES})
        top->addChild(new TSceneNode(RcText(caption), TSceneNode::ImageOf(srTriggerRoot)));
    return top;
}

QStringList SceneSections(const TSceneNode* top)
{
    QStringList sections;
    for (int i = 0; top && i < top->Count(); ++i) {
        const TSceneNode* node = top->Child(i);
        sections.append(node->Item() ? node->Item()->Alias : node->Caption());
    }
    return sections;
}

TSceneCounts CountScenes(const TSceneNode* top)
{
    TSceneCounts counts;
    if (!top)
        return counts;
    counts.Triggers = top->Child(TriggerRootIndex)->Count();
    counts.Actions = top->Child(ActionRootIndex)->Count();
    counts.Scenes = top->Count() - FirstSceneIndex;
    for (int i = FirstSceneIndex; i < top->Count(); ++i)
        counts.Steps += top->Child(i)->Count();
    return counts;
}

std::int32_t LastSceneId()
{
    return lastSceneId;
}

std::int32_t NextSceneId()
{
    lastSceneId = static_cast<std::int32_t>(static_cast<std::uint32_t>(lastSceneId) + 1u);
    return lastSceneId;
}

void ResetSceneIds()
{
    lastSceneId = 0;
}

void RaiseSceneId(std::int32_t id)
{
    lastSceneId = std::max(lastSceneId, id);
}
