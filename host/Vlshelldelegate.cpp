#include "Vlshelldelegate.h"

#include "Vlerrors.h"
#include "Vlshellctrls.h"

#include <QLineEdit>
#include <QTimer>

TShellDelegate::TShellDelegate(TCustomShellTreeView* view, TRename rename)
    : QStyledItemDelegate(view), m_view(view), m_rename(std::move(rename))
{
}

void TShellDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    QStyledItemDelegate::setEditorData(editor, index);
    auto* field = qobject_cast<QLineEdit*>(editor);
    if (!field)
        return;
    // The view selects everything after this; the extension mostly stays.
    QTimer::singleShot(0, field, [field] {
        const auto dot = static_cast<int>(field->text().lastIndexOf(u'.'));
        if (dot > 0)
            field->setSelection(0, dot);
    });
}

void TShellDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const
{
    const auto* field = qobject_cast<QLineEdit*>(editor);
    if (!field)
        return;
    // Not now: an error message would take the keyboard from a field that is being closed.
    QTimer::singleShot(0, m_view, [rename = m_rename, item = QPersistentModelIndex(index), name = field->text()] {
        Guarded([&] {
            if (item.isValid())
                rename(item, name);
        });
    });
}

void TShellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (m_view->GetHotTracking() && (option->state & QStyle::State_MouseOver))
        option->font.setUnderline(true);
}
