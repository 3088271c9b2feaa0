#include "SceneCaptions.h"

#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QStringList>

namespace
{

int LevelOf(const QString& line)
{
    int level = 0;
    while (level < line.size() && line[level] == u'\t')
        ++level;
    return level;
}

[[noreturn]] void ThrowMalformed(const QString& fileName, qsizetype line)
{
    throw TUserError(QStringLiteral("\"%1\", Zeile %2: Die Einrückung ergibt keinen Baum mit zwei festen Zweigen.")
                         .arg(fileName)
                         .arg(line));
}

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
    QStringList lines = QString::fromUtf8(ReadFile(fileName)).remove(u'\r').split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    if (lines.isEmpty() || LevelOf(lines.first()) != 0)
        ThrowMalformed(fileName, 1);

    auto top = std::make_unique<TSceneNode>(lines.first(), TSceneNode::ImageOf(srTop));
    TSceneNode* last = top.get();
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const int level = LevelOf(lines[i]);
        if (level == 0 || level > last->Level() + 1)
            ThrowMalformed(fileName, i + 1);
        while (last->Level() >= level)
            last = last->Parent();
        last = AppendCaption(last, lines[i].mid(level));
    }
    if (top->Count() < FirstSceneIndex)
        ThrowMalformed(fileName, lines.size());
    return top;
}
