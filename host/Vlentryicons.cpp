#include "Vlentryicons.h"

#include "Vlapputils.h"

#include <QFile>
#include <QImageReader>
#include <QPixmap>
#include <QPixmapCache>
#include <QStringBuilder>

#include <sys/stat.h>

namespace
{

constexpr int LargestScale = 4;

bool IsVector(const QByteArray& format)
{
    return format.startsWith("svg");
}

QPixmap ReadPicture(const QString& path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize whole = reader.size();
    const QSize largest(EntryIconSize * LargestScale, EntryIconSize * LargestScale);
    // A photograph is made small while it is read; a drawing has no size of its own.
    const bool isLarge = whole.width() > largest.width() || whole.height() > largest.height();
    if (whole.isValid() && (isLarge || IsVector(reader.format())))
        reader.setScaledSize(whole.scaled(largest, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return QPixmap::fromImage(reader.read());
}

// The same for all paths of a file, another one as soon as the file has changed.
QString CacheKey(const struct stat& status)
{
    const auto number = [](auto value) { return QString::number(static_cast<qint64>(value)); };
    return u"entry-icon " % number(status.st_dev) % u' ' % number(status.st_ino) % u' ' % number(status.st_size) %
           u' ' % number(status.st_mtim.tv_sec) % u' ' % number(status.st_mtim.tv_nsec);
}

} // namespace

// Many entries have the same icon: it is read again only when the file has changed.
std::optional<QIcon> LoadEntryIcon(const QString& path)
{
    const QString file = ToPlatformPath(path);
    struct stat status
    {};
    if (stat(QFile::encodeName(file).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const QString key = CacheKey(status);
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = ReadPicture(file);
        if (picture.isNull())
            return std::nullopt;
        QPixmapCache::insert(key, picture);
    }
    return QIcon(picture);
}
