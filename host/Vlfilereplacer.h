#pragma once

#include "Vlexport.h"

#include <QBuffer>
#include <QSaveFile>
#include <QString>

class QIODevice;

// Replaces a file as a whole. What is written is collected; Commit puts it beside the target, flushes it to the disk
// and lets it take the target's place, with the target's permissions; links are followed. Whatever happens before, the
// disk holds the old file. Where the directory lets no new file be made but the file itself can be written, Commit
// writes over the old content, and puts it back when that fails.
class VLHOST_API TFileReplacer
{
public:
    // Throws TFileError when nothing can be written there. What is no file (a directory, a device) is never replaced.
    explicit TFileReplacer(const QString& path);

    // For writers; belongs to the replacer. What the disk does not take shows in Commit.
    QIODevice& Device() { return m_content; }

    void Write(QByteArrayView content);

    // Throws TFileError; the old file is then still there. Without Commit nothing changes.
    void Commit();

private:
    void WriteOver();
    [[noreturn]] void Fail(const QString& reason) const;

    QString m_path;
    QString m_target; // where the links lead to
    QBuffer m_content;
    QSaveFile m_file; // not open where no file can be made beside the target
};
