#pragma once

#include <QIODevice>
#include <QSet>
#include <QString>

#include <functional>

class QObject;

// True when both paths, in whatever form, name the same place.
bool IsSameDocument(const QString& a, const QString& b);

// The files of one editor's document: which of them were read, so that an export never destroys what nobody has seen.
// Every editor has one and writes through it.
class TDocumentFiles
{
public:
    // `owner` is named as the source of notes; it must outlive this object.
    explicit TDocumentFiles(const QObject* owner) : m_owner(owner) {}

    // A load begins: nothing is known any more.
    void Clear() { m_known.clear(); }

    // The content of this file is in memory, or is its last export.
    void MarkRead(const QString& path);

    // Replaces the file as a whole by what `write` makes. A file that was not read before is kept beside itself as
    // NAME.unlesbar (numbered where that exists), and the message pane says so. The host learns of the written
    // document. Throws TFileError.
    void Write(const QString& path, const std::function<void(QIODevice&)>& write);

private:
    void KeepUnread(const QString& path) const;

    const QObject* m_owner;
    QSet<QString> m_known;
};
