#include "Vlentryicons.h"

#include "Vlapputils.h"

#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>
#include <QPixmap>
#include <QPixmapCache>

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

} // namespace

// Many entries have the same icon: it is read again only when the file has changed.
std::optional<QIcon> LoadEntryIcon(const QString& path)
{
    const QFileInfo file(ToPlatformPath(path));
    if (path.isEmpty() || !file.isFile())
        return std::nullopt;
    const QString key = QStringLiteral("entry-icon %1 %2 %3")
                            .arg(file.lastModified().toMSecsSinceEpoch())
                            .arg(file.size())
                            .arg(file.absoluteFilePath());
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = ReadPicture(file.filePath());
        if (picture.isNull())
            return std::nullopt;
        QPixmapCache::insert(key, picture);
    }
    return QIcon(picture);
}
