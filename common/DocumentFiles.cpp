#include "DocumentFiles.h"

#include "Vlapputils.h"
#include "Vldocuments.h"
#include "Vlfilereplacer.h"
#include "Vlmessages.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace
{

QString Key(const QString& path)
{
    return QDir::cleanPath(QFileInfo(ToPlatformPath(path)).absoluteFilePath());
}

// A link that leads nowhere takes its name too.
bool IsTaken(const QString& path)
{
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

QString FreeName(const QString& path)
{
    const QString first = path + QStringLiteral(".unlesbar");
    QString name = first;
    for (int number = 2; IsTaken(name); ++number)
        name = first + QString::number(number);
    return name;
}

// A second name for the old file costs nothing and needs no right to read it; the replacement takes only its first. Not
// so behind a link into a directory that lets no file be made: there the replacement is written over the old content.
bool GiveSecondName(const QFileInfo& file, const QString& name)
{
    if (file.isSymLink())
        return false;
    std::error_code failed;
    std::filesystem::create_hard_link(QFile::encodeName(file.absoluteFilePath()).constData(),
                                      QFile::encodeName(name).constData(), failed);
    return !failed;
}

} // namespace

bool IsSameDocument(const QString& a, const QString& b)
{
    return Key(a) == Key(b);
}

void TDocumentFiles::MarkRead(const QString& path)
{
    m_known.insert(Key(path));
}

void TDocumentFiles::Write(const QString& path, const std::function<void(QIODevice&)>& write)
{
    TFileReplacer replacer(path);
    write(replacer.Device());
    if (!m_known.contains(Key(path)))
        KeepUnread(path);
    // What was kept once is safe, also when this export fails and the next one begins.
    MarkRead(path);
    replacer.Commit();
    ReportDocument(m_owner, path);
}

void TDocumentFiles::KeepUnread(const QString& path) const
{
    const QFileInfo file(ToPlatformPath(path));
    if (!file.isFile())
        return;
    const QString kept = FreeName(file.absoluteFilePath());
    if (!GiveSecondName(file, kept))
        CopyFileTo(path, kept, false);
    Note(m_owner, QStringLiteral("\"%1\" war nicht gelesen worden und bleibt als \"%2\" erhalten")
                      .arg(file.fileName(), QFileInfo(kept).fileName()));
}
