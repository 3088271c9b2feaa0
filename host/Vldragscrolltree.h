#pragma once

#include "Vlexport.h"
#include "Vltreenode.h"

#include <QBasicTimer>
#include <QIcon>
#include <QList>
#include <QTreeWidget>

#include <functional>
#include <memory>
#include <vector>
#include <optional>

// The tree view of every editor: it knows the order of selection, edits in place with a veto, and keeps the modified
// state, which it shows as the widget's windowModified property. The tree is the model: every edit passes through the
// operations InsertBranch, InsertBranches, RemoveBranches, MoveBranch and ChangeRecord. Loading goes past them, through
// ReplaceContent.
class VLHOST_API TDragScrollTree : public QTreeWidget
{
    Q_OBJECT

public:
    explicit TDragScrollTree(QWidget* parent = nullptr);
    ~TDragScrollTree() override;

    // The images that nodes choose by index. An index that leads nowhere shows none.
    void SetImages(const QList<QIcon>& images) { m_images = images; }
    QIcon Image(int index) const { return m_images.value(index); }

    TTreeNode* TopNode() const { return static_cast<TTreeNode*>(topLevelItem(0)); }
    // The node at a place in the viewport, or null.
    TTreeNode* NodeAt(const QPoint& position) const;
    // The focused node when it is selected, else the one selected last; null without a selection.
    TTreeNode* SelectedNode() const;
    // In the order in which they were selected; a range comes in the order away from where it was begun.
    QList<TTreeNode*> SelectedNodes() const;
    // Selects and focuses this node alone; null clears the selection.
    void SelectNode(TTreeNode* node);

    // The node under the mouse is underlined, as a link is.
    void SetHotTracking(bool hotTracking);
    bool GetHotTracking() const { return m_hotTracking; }
    bool IsHot(const TTreeNode* node) const { return m_hotNode.Get() == node; }

    // Editable: nodes are edited in place. The editors hook more to it in HandleEditable.
    void SetEditable(bool editable);
    bool GetEditable() const { return m_editable; }

    // Changed since the last load or export.
    bool IsModified() const { return isWindowModified(); }
    void SetModified(bool modified);

    // The whole content, exchanged in one step for a detached branch, which the tree takes over (null leaves it empty).
    // Not an edit: the modified state is left to the caller.
    void ReplaceContent(std::unique_ptr<TTreeNode> top);

    // The same with several top nodes.
    void ReplaceContent(std::vector<std::unique_ptr<TTreeNode>> tops);
    // The same for what stands below one node.
    void ReplaceChildren(TTreeNode* parent, std::vector<std::unique_ptr<TTreeNode>> children);

    // Puts a detached branch into the tree, which takes it over, and returns it; null, and the branch gone, where it
    // cannot go (TTreeNode::MoveTo).
    TTreeNode* InsertBranch(std::unique_ptr<TTreeNode> branch, TTreeNode* node, TNodeAttachMode mode);
    // Puts detached branches below `parent`, beginning at `index`, in one step; the tree takes them over.
    void InsertBranches(std::vector<std::unique_ptr<TTreeNode>> branches, TTreeNode* parent, int index);
    // Deletes branches with all below them, in time linear in their number. Nodes inside other branches of the list and
    // nodes named twice are deleted once. Clears the selection.
    void RemoveBranches(const QList<TTreeNode*>& nodes);
    // Moves a branch and keeps its expansion and selection. False, and nothing changed, where it cannot go (TTreeNode).
    bool MoveBranch(TTreeNode* branch, TTreeNode* node, TNodeAttachMode mode);
    // Runs `change` on the node's record or caption and notes the tree as modified when it returns true.
    bool ChangeRecord(TTreeNode* node, const std::function<bool()>& change);

    // How far the mouse moves with its button held, in pixels, before a drag begins.
    static constexpr int DragThreshold = 20;

    // Ends in-place editing, if it is going on, as Enter does.
    void CommitEditor();

    // Called with what in-place editing made of a node.
    void FinishEditing(TTreeNode* node, const QString& text);

protected:
    // The hooks of the frames. Each runs inside the entry guard.
    // A node was edited in place; an empty implementation refuses every text.
    virtual void HandleEdited(TTreeNode* node, const QString& text);
    virtual bool CanEdit(const TTreeNode* node) const;
    virtual void HandleSelectionChange();
    virtual void HandleEditable(bool editable);
    // One of the operations has changed something, or the whole content was exchanged.
    virtual void HandleChange();
    // About to be deleted, the node and all below it; not called when the whole content is exchanged.
    virtual void HandleDeletion(TTreeNode* node);

    // The course of a drag out of this tree. PrepareDrag is asked when the mouse begins to move with the left button
    // held on a node, and again for each node that it comes to, until it agrees: whether a drag of what is selected may
    // begin there, with the keys held at that moment. StartDrag gives what is dragged, when the threshold is passed;
    // null drags nothing. EndDrag always follows. A press begins one drag at most.
    virtual bool PrepareDrag(TTreeNode* node, Qt::KeyboardModifiers shiftState);
    virtual std::unique_ptr<QMimeData> StartDrag();
    virtual void EndDrag();
    // Whether `data` may be dropped on `target` (null beside all nodes), and the drop itself.
    virtual bool CanDrop(const QMimeData* data, TTreeNode* target) const;
    virtual void Drop(const QMimeData* data, TTreeNode* target);

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    // What the left button was pressed on, and what became of it.
    enum class TPress : quint8
    {
        Beside,    // no node
        OnNode,    // no drag may begin yet
        Draggable, // a drag begins when the threshold is passed
        Spent,     // a drag has run
    };

    void NoteChange();
    void SetHotNode(TTreeNode* node);
    void RemoveChildren(TTreeNode* parent, const QList<int>& indexes);
    void RemoveByRebuilding(TTreeNode* parent, const QList<int>& indexes);
    void AskForDrag(const QPoint& position, Qt::KeyboardModifiers modifiers);
    void RunDrag();
    void ScrollNearEdge(const QPoint& position);
    bool AcceptsDrop(const QMimeData* content, TTreeNode* target) const;

    QList<QIcon> m_images;
    QPoint m_pressedAt;
    TNodeRef m_hotNode; // under the mouse, while that is tracked
    TNodeRef m_pressedNode;
    TNodeRef m_askedNode; // the last one for which a drag was asked for
    quint32 m_lastSerial = 0;
    TPress m_press = TPress::Beside;
    QBasicTimer m_scrollTimer; // runs while something is dragged near the upper or the lower edge
    int m_scrollStep = 0;
    bool m_editable = false;
    bool m_hotTracking = false;
};

// Suspends repainting of a widget while it lives.
class TRepaintPause
{
public:
    explicit TRepaintPause(QWidget* widget) : m_widget(widget), m_wasEnabled(widget->updatesEnabled())
    {
        m_widget->setUpdatesEnabled(false);
    }
    ~TRepaintPause() { m_widget->setUpdatesEnabled(m_wasEnabled); }
    TRepaintPause(const TRepaintPause&) = delete;
    TRepaintPause& operator=(const TRepaintPause&) = delete;

private:
    QWidget* m_widget;
    bool m_wasEnabled;
};
