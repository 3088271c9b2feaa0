#pragma once

#include "Vlexport.h"

#include <QString>
#include <QTreeWidgetItem>

class TDragScrollTree;
class TTreeNode;

// A reference to a tree node that outlives operations (a cut node, the node in a dialog, a link between two records).
// It is forgotten when the node is deleted, so it never dangles. Costs three pointers and constant time.
class VLHOST_API TNodeRef
{
public:
    TNodeRef() = default;
    explicit TNodeRef(TTreeNode* node) { Attach(node); }
    TNodeRef(const TNodeRef& other) { Attach(other.m_node); }
    TNodeRef& operator=(const TNodeRef& other)
    {
        if (this != &other)
            Set(other.m_node);
        return *this;
    }
    ~TNodeRef() { Detach(); }

    TTreeNode* Get() const { return m_node; }
    void Set(TTreeNode* node);
    explicit operator bool() const { return m_node != nullptr; }

private:
    friend class TTreeNode;

    void Attach(TTreeNode* node);
    void Detach();

    TTreeNode* m_node = nullptr;
    TNodeRef* m_previous = nullptr;
    TNodeRef* m_next = nullptr;
};

// TNodeRef to one family's nodes.
template <class TNode> class TNodeRefTo
{
public:
    TNodeRefTo() = default;
    explicit TNodeRefTo(TNode* node) : m_reference(node) {}

    TNode* Get() const { return static_cast<TNode*>(m_reference.Get()); }
    void Set(TNode* node) { m_reference.Set(node); }
    TNode* operator->() const { return Get(); }
    explicit operator bool() const { return static_cast<bool>(m_reference); }

private:
    TNodeRef m_reference;
};

// Where a node goes, seen from another node.
enum TNodeAttachMode : quint8
{
    naAdd,           // as its last sibling
    naAddFirst,      // as its first sibling
    naAddChild,      // as its last child
    naAddChildFirst, // as its first child
    naInsert,        // just before it
};

// A node of an editor's tree. Nodes exist with and without a view: a reader builds a detached branch and the tree takes
// it in one step. A node belongs to its parent or, as a top node, to its tree; detached it belongs to whoever made it.
// Every item of a TDragScrollTree is one.
class VLHOST_API TTreeNode : public QTreeWidgetItem
{
public:
    explicit TTreeNode(const QString& caption = {}, int imageIndex = -1);
    ~TTreeNode() override;
    TTreeNode(const TTreeNode&) = delete;
    TTreeNode& operator=(const TTreeNode&) = delete;

    // The number of nodes above it: 0 for a top node, also of a detached branch.
    int Level() const;
    // The position among its siblings, 0 for a detached top node.
    int Index() const;
    // The position in the whole tree, counted from the top in reading order. Takes time linear in the tree.
    int AbsoluteIndex() const;
    int Count() const { return childCount(); }

    TTreeNode* Parent() const { return static_cast<TTreeNode*>(parent()); }
    // Null where there is none.
    TTreeNode* Child(int index) const { return static_cast<TTreeNode*>(child(index)); }
    TTreeNode* NextSibling() const;
    TTreeNode* PreviousSibling() const;
    // True for the node itself and everything above it.
    bool IsWithin(const TTreeNode* ancestor) const;
    // The node after this one in reading order, over all levels; null at the end.
    TTreeNode* Next() const;
    // The node before this one in reading order; null at the top.
    TTreeNode* Previous() const;

    const QString& Caption() const { return m_caption; }
    void SetCaption(const QString& caption);

    // Index into the tree's images; the selected node shows the same one. -1 for none.
    int ImageIndex() const { return m_imageIndex; }
    int SelectedIndex() const { return m_imageIndex; }
    void SetImageIndex(int index);

    // Marked by a cut command: shown faded until the mark goes.
    bool Cut() const { return m_cut; }
    void SetCut(bool cut);

    // What in-place editing offers; the caption where a family does not say otherwise.
    virtual QString EditText() const { return m_caption; }

    // Moves the branch to where `mode` says, seen from `node`. False, and nothing moved, when that lies inside the
    // branch itself or when the mode asks for siblings of a detached top node.
    bool MoveTo(TTreeNode* node, TNodeAttachMode mode);

    // The tree it stands in, or null.
    TDragScrollTree* Tree() const;

    // Tells the node its place, where somebody has just counted it, so that Index need not search.
    void NoteIndex(int index) const { m_indexGuess = index; }

    // The serial number of its selection, for the order in which nodes were selected.
    quint32 SelectionSerial() const { return m_selectionSerial; }
    void SetSelectionSerial(quint32 serial) { m_selectionSerial = serial; }

    QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant& value) override;

private:
    friend class TNodeRef;

    TTreeNode* Sibling(int index) const;

    QString m_caption;
    TNodeRef* m_firstReference = nullptr;
    mutable int m_indexGuess = 0;
    quint32 m_selectionSerial = 0;
    qint16 m_imageIndex;
    bool m_cut = false;
};
