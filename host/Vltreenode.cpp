#include "Vltreenode.h"

#include "Vldragscrolltree.h"

#include <QBrush>
#include <QFont>
#include <QIcon>

#include <utility>

void TNodeRef::Set(TTreeNode* node)
{
    if (node == m_node)
        return;
    Detach();
    Attach(node);
}

void TNodeRef::Attach(TTreeNode* node)
{
    m_node = node;
    if (!node)
        return;
    m_next = std::exchange(node->m_firstReference, this);
    if (m_next)
        m_next->m_previous = this;
}

void TNodeRef::Detach()
{
    if (!m_node)
        return;
    if (m_next)
        m_next->m_previous = m_previous;
    if (m_previous)
        m_previous->m_next = m_next;
    else
        m_node->m_firstReference = m_next;
    m_node = nullptr;
    m_previous = nullptr;
    m_next = nullptr;
}

TTreeNode::TTreeNode(const QString& caption, int imageIndex)
    : QTreeWidgetItem(UserType), m_caption(caption), m_imageIndex(static_cast<qint16>(imageIndex))
{
    setFlags(flags() | Qt::ItemIsEditable);
}

TTreeNode::~TTreeNode()
{
    while (m_firstReference)
        m_firstReference->Detach();
}

int TTreeNode::Level() const
{
    int level = 0;
    for (const QTreeWidgetItem* above = parent(); above; above = above->parent())
        ++level;
    return level;
}

TTreeNode* TTreeNode::Sibling(int index) const
{
    if (const QTreeWidgetItem* above = parent())
        return static_cast<TTreeNode*>(above->child(index));
    if (const QTreeWidget* tree = treeWidget())
        return static_cast<TTreeNode*>(tree->topLevelItem(index));
    return nullptr;
}

int TTreeNode::Index() const
{
    // Neighbours move by little, so the last known place is mostly right.
    if (Sibling(m_indexGuess) == this)
        return m_indexGuess;
    if (const QTreeWidgetItem* above = parent())
        m_indexGuess = above->indexOfChild(const_cast<TTreeNode*>(this));
    else if (const QTreeWidget* tree = treeWidget())
        m_indexGuess = tree->indexOfTopLevelItem(const_cast<TTreeNode*>(this));
    else
        m_indexGuess = 0;
    return m_indexGuess;
}

int TTreeNode::AbsoluteIndex() const
{
    const TTreeNode* first = this;
    while (first->Parent())
        first = first->Parent();
    if (const TTreeNode* top = first->Sibling(0))
        first = top;
    int index = 0;
    for (; first && first != this; first = first->Next())
        ++index;
    return index;
}

TTreeNode* TTreeNode::NextSibling() const
{
    return Sibling(Index() + 1);
}

TTreeNode* TTreeNode::PreviousSibling() const
{
    const int index = Index();
    return index > 0 ? Sibling(index - 1) : nullptr;
}

bool TTreeNode::IsWithin(const TTreeNode* ancestor) const
{
    const TTreeNode* node = this;
    while (node && node != ancestor)
        node = node->Parent();
    return node != nullptr;
}

TTreeNode* TTreeNode::Next() const
{
    if (Count() > 0)
        return Child(0);
    for (const TTreeNode* node = this; node; node = node->Parent()) {
        if (TTreeNode* sibling = node->NextSibling())
            return sibling;
    }
    return nullptr;
}

TTreeNode* TTreeNode::Previous() const
{
    TTreeNode* node = PreviousSibling();
    if (!node)
        return Parent();
    while (node->Count() > 0)
        node = node->Child(node->Count() - 1);
    return node;
}

void TTreeNode::SetCaption(const QString& caption)
{
    if (caption == m_caption)
        return;
    m_caption = caption;
    emitDataChanged();
}

void TTreeNode::SetImageIndex(int index)
{
    m_imageIndex = static_cast<qint16>(index);
    emitDataChanged();
}

void TTreeNode::SetCut(bool cut)
{
    if (cut == m_cut)
        return;
    m_cut = cut;
    emitDataChanged();
}

bool TTreeNode::MoveTo(TTreeNode* node, TNodeAttachMode mode)
{
    Q_ASSERT(node);
    if (!node)
        return false;
    const bool asChild = mode == naAddChild || mode == naAddChildFirst;
    TTreeNode* target = asChild ? node : node->Parent();
    QTreeWidget* tree = node->treeWidget();
    if (node->IsWithin(this) || (!target && !tree))
        return false;

    if (QTreeWidgetItem* above = parent())
        above->takeChild(Index());
    else if (treeWidget())
        treeWidget()->takeTopLevelItem(Index());

    const bool first = mode == naAddFirst || mode == naAddChildFirst;
    const int count = target ? target->childCount() : tree->topLevelItemCount();
    const int last = first ? 0 : count;
    const int at = mode == naInsert ? node->Index() : last;
    m_indexGuess = at;
    if (target)
        target->insertChild(at, this);
    else
        tree->insertTopLevelItem(at, this);
    return true;
}

TDragScrollTree* TTreeNode::Tree() const
{
    return qobject_cast<TDragScrollTree*>(treeWidget());
}

QVariant TTreeNode::data(int column, int role) const
{
    if (column != 0)
        return QTreeWidgetItem::data(column, role);
    switch (role) {
    case Qt::DisplayRole:
        return m_caption;
    case Qt::EditRole:
        return EditText();
    case Qt::DecorationRole: {
        const TDragScrollTree* tree = Tree();
        return tree ? QVariant(tree->Image(m_imageIndex)) : QVariant();
    }
    case Qt::FontRole: {
        const TDragScrollTree* tree = Tree();
        if (!tree || !tree->IsHot(this))
            return QTreeWidgetItem::data(column, role);
        QFont font = tree->font();
        font.setUnderline(true);
        return font;
    }
    case Qt::ForegroundRole: {
        const TDragScrollTree* tree = Tree();
        return m_cut && tree ? QVariant(tree->palette().brush(QPalette::PlaceholderText)) : QVariant();
    }
    default:
        return QTreeWidgetItem::data(column, role);
    }
}

void TTreeNode::setData(int column, int role, const QVariant& value)
{
    if (column == 0 && (role == Qt::EditRole || role == Qt::DisplayRole)) {
        if (TDragScrollTree* tree = Tree())
            tree->FinishEditing(this, value.toString());
        return;
    }
    QTreeWidgetItem::setData(column, role, value);
}
