#pragma once

#include <QStyledItemDelegate>

#include <functional>

class TCustomShellTreeView;

// Draws the items of a shell tree and lets the user write a new name in the place of an old one. Belongs to the view.
class TShellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using TRename = std::function<void(const QModelIndex& index, const QString& name)>;

    // `rename` is called from the event loop when the user has confirmed a name and the field is gone.
    TShellDelegate(TCustomShellTreeView* view, TRename rename);

    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    TCustomShellTreeView* m_view;
    TRename m_rename;
};
