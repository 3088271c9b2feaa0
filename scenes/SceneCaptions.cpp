#include "SceneCaptions.h"

#include "CaptionFile.h"

namespace
{

TSceneNode* AppendCaption(TSceneNode* parent, const QString& caption)
{
    const bool isRoot = !parent->Parent() && parent->Count() < FirstSceneIndex;
    TVlSceneItem item;
    item.Alias = caption;
    if (!isRoot && !parent->Parent())
        item.Id = NextSceneId();
    auto* node = isRoot ? new TSceneNode(caption, TSceneNode::ImageOf(srTriggerRoot)) : new TSceneNode(std::move(item));
    parent->addChild(node);
    node->SetImageIndex(TSceneNode::ImageOf(node->Role()));
    node->RebuildCaption();
    return node;
}

} // namespace

std::unique_ptr<TSceneNode> ReadSceneCaptions(const QString& fileName)
{
    const std::vector<TCaptionLine> lines = ReadCaptionFile(fileName);
    auto top = std::make_unique<TSceneNode>(lines.front().Caption, TSceneNode::ImageOf(srTop));
    BuildFromCaptions(lines, top.get(), AppendCaption);
    if (top->Count() < FirstSceneIndex)
        ThrowMalformedCaptions(fileName, static_cast<qsizetype>(lines.size()),
                               QStringLiteral("Baum mit zwei festen Zweigen"));
    return top;
}
