#pragma once

#include "Vltreenode.h"

#include <QList>

// What "Kopieren" and "Ausschneiden" remember until "Einfügen": the positions of copied nodes, or the one node that was
// cut. Belongs to a frame.
class TEditClipboard
{
public:
    // Remembers where the nodes stand, as absolute indexes counted from `top`: edits made before the paste shift what
    // they mean.
    void Copy(const TTreeNode* top, const QList<TTreeNode*>& nodes);
    bool HasCopied() const { return !m_copied.isEmpty(); }
    // The nodes that stand at those positions now, in the order in which they were copied.
    QList<TTreeNode*> Copied(TTreeNode* top) const;
    void ClearCopied() { m_copied.clear(); }

    // Forgets what was copied and marks the node as cut, instead of the one before; null marks none.
    void Cut(TTreeNode* node);
    // Null without one, also when it has been deleted since.
    TTreeNode* CutNode() const { return m_cutNode.Get(); }
    void ForgetCut();
    // The same, but the node keeps its mark.
    void ForgetCutOnly() { m_cutNode.Set(nullptr); }

    bool IsEmpty() const { return m_copied.isEmpty() && !m_cutNode; }
    void Clear();

private:
    QList<int> m_copied;
    TNodeRef m_cutNode;
};
