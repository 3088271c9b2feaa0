#include "Vlfilereplacer.h"

#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QFileInfo>

#include <cerrno>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace
{

// QSaveFile follows one link only and would replace the second one of a chain.
QString FollowLinks(const QString& path)
{
    constexpr int MostLinks = 40;
    QString target = ToPlatformPath(path);
    for (int i = 0; i < MostLinks; ++i) {
        const QFileInfo file(target);
        if (!file.isSymLink())
            break;
        target = file.symLinkTarget();
    }
    return target;
}

bool LetsNoFileBeMadeBeside(const QFileInfo& file)
{
    return !QFileInfo(file.absolutePath()).isWritable();
}

// Some file systems tell only now that they are full.
QString FlushToDisk([[maybe_unused]] QFileDevice& file)
{
#ifdef Q_OS_UNIX
    if (fsync(file.handle()) != 0 && (errno == ENOSPC || errno == EDQUOT || errno == EIO))
        return qt_error_string(errno);
#endif
    return {};
}

// Writes `content` to the unbuffered `file` and through to the disk. Returns why that failed; empty when it did not.
QString WriteThrough(QFileDevice& file, QByteArrayView content)
{
    while (!content.isEmpty()) {
        // A full disk first takes less than it was given, which QSaveFile does not call an error; the next write is
        // one.
        const qint64 count = file.write(content.data(), content.size());
        if (count <= 0)
            return file.errorString();
        content = content.sliced(count);
    }
    return FlushToDisk(file);
}

QString Overwrite(QFile& file, const QByteArray& content)
{
    if (!file.seek(0))
        return file.errorString();
    const QString failure = WriteThrough(file, content);
    if (failure.isEmpty() && !file.resize(content.size()))
        return file.errorString();
    return failure;
}

} // namespace

TFileReplacer::TFileReplacer(const QString& path) : m_path(path), m_target(FollowLinks(path)), m_file(m_target)
{
    m_content.open(QIODevice::WriteOnly);
    const QFileInfo target(m_target);
    if (target.isDir())
        Fail(QStringLiteral("Dort steht ein Verzeichnis"));
    if (target.exists() && !target.isFile())
        Fail(QStringLiteral("Dort steht keine gewöhnliche Datei"));
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return;
    if (!target.isWritable() || !LetsNoFileBeMadeBeside(target))
        Fail(m_file.errorString());
}

void TFileReplacer::Write(QByteArrayView content)
{
    m_content.write(content.data(), content.size());
}

void TFileReplacer::Commit()
{
    if (!m_file.isOpen()) {
        WriteOver();
        return;
    }
    const QString failure = WriteThrough(m_file, m_content.data());
    if (!failure.isEmpty()) {
        m_file.cancelWriting();
        Fail(failure);
    }
    if (!m_file.commit())
        Fail(m_file.errorString());
}

void TFileReplacer::WriteOver()
{
    const QByteArray old = ReadFile(m_target);
    QFile file(m_target);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        Fail(file.errorString());
    const QString failure = Overwrite(file, m_content.data());
    if (failure.isEmpty())
        return;
    Overwrite(file, old);
    Fail(failure);
}

void TFileReplacer::Fail(const QString& reason) const
{
    throw TFileError(FileErrorText(m_path, QStringLiteral("geschrieben"), reason));
}
