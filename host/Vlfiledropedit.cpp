#include "Vlfiledropedit.h"

#include "Vlapputils.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include <optional>

namespace
{

// The one local file that is dropped; nothing for several, for other URLs and for plain text.
std::optional<QString> DroppedFile(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return std::nullopt;
    return ToPackagePath(urls.first().toLocalFile());
}

} // namespace

TVlFileDropEdit::TVlFileDropEdit(QWidget* parent) : QLineEdit(parent)
{
    setAcceptDrops(true);
}

TVlFileDropEdit::~TVlFileDropEdit() = default;

void TVlFileDropEdit::dragEnterEvent(QDragEnterEvent* event)
{
    if (DroppedFile(event->mimeData()))
        event->acceptProposedAction();
    else
        QLineEdit::dragEnterEvent(event);
}

void TVlFileDropEdit::dragMoveEvent(QDragMoveEvent* event)
{
    if (DroppedFile(event->mimeData()))
        event->acceptProposedAction();
    else
        QLineEdit::dragMoveEvent(event);
}

void TVlFileDropEdit::dropEvent(QDropEvent* event)
{
    std::optional<QString> file = DroppedFile(event->mimeData());
    if (!file) {
        QLineEdit::dropEvent(event);
        return;
    }
    if (m_validateFile && !m_validateFile(this, *file)) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    setText(*file);
    Q_EMIT FileDropped(*file);
}
