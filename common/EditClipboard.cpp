#include "EditClipboard.h"

#include <QHash>

void TEditClipboard::Copy(const TTreeNode* top, const QList<TTreeNode*>& nodes)
{
    // One walk for all of them.
    QHash<const TTreeNode*, int> positions;
    positions.reserve(nodes.size());
    for (const TTreeNode* node : nodes)
        positions.insert(node, -1);
    int index = 0;
    for (const TTreeNode* node = top; node; node = node->Next(), ++index) {
        const auto found = positions.find(node);
        if (found != positions.end())
            *found = index;
    }
    m_copied.clear();
    for (const TTreeNode* node : nodes)
        m_copied.append(positions.value(node));
}

QList<TTreeNode*> TEditClipboard::Copied(TTreeNode* top) const
{
    QList<TTreeNode*> all;
    for (TTreeNode* node = top; node; node = node->Next())
        all.append(node);
    QList<TTreeNode*> nodes;
    for (const int index : m_copied) {
        if (TTreeNode* node = all.value(index))
            nodes.append(node);
    }
    return nodes;
}

void TEditClipboard::Cut(TTreeNode* node)
{
    Clear();
    m_cutNode.Set(node);
    if (node)
        node->SetCut(true);
}

void TEditClipboard::ForgetCut()
{
    if (m_cutNode)
        m_cutNode.Get()->SetCut(false);
    m_cutNode.Set(nullptr);
}

void TEditClipboard::Clear()
{
    m_copied.clear();
    ForgetCut();
}
