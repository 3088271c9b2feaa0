#include "Vlfiledropedit.h"

#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include <optional>

namespace
{

// The one local file that is dropped; nothing for several, for other URLs, for plain text, and where nothing may be
// written.
std::optional<QString> DroppedFile(const QLineEdit& edit, const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    if (edit.isReadOnly() || urls.size() != 1 || !urls.first().isLocalFile())
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
    if (DroppedFile(*this, event->mimeData()))
        event->acceptProposedAction();
    else
        QLineEdit::dragEnterEvent(event);
}

void TVlFileDropEdit::dragMoveEvent(QDragMoveEvent* event)
{
    if (DroppedFile(*this, event->mimeData()))
        event->acceptProposedAction();
    else
        QLineEdit::dragMoveEvent(event);
}

void TVlFileDropEdit::dropEvent(QDropEvent* event)
{
    std::optional<QString> file = DroppedFile(*this, event->mimeData());
    if (!file) {
        QLineEdit::dropEvent(event);
        return;
    }
    if (!Validates(*file)) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    setText(*file);
    Q_EMIT FileDropped(*file);
}

bool TVlFileDropEdit::Validates(QString& fileName)
{
    bool valid = !m_validateFile;
    if (m_validateFile)
        Guarded([&] { valid = m_validateFile(this, fileName); });
    return valid;
}
