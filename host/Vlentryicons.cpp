#include "Vlentryicons.h"

#include "Vlapputils.h"

#include <QImageReader>
#include <QPixmap>

namespace
{

constexpr int LargestScale = 4;

bool IsVector(const QByteArray& format)
{
    return format.startsWith("svg");
}

} // namespace

std::optional<QIcon> LoadEntryIcon(const QString& path)
{
    if (!FileExists(path))
        return std::nullopt;
    QImageReader reader(ToPlatformPath(path));
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize whole = reader.size();
    const QSize largest(EntryIconSize * LargestScale, EntryIconSize * LargestScale);
    // A photograph is made small while it is read; a drawing has no size of its own.
    const bool isLarge = whole.width() > largest.width() || whole.height() > largest.height();
    if (whole.isValid() && (isLarge || IsVector(reader.format())))
        reader.setScaledSize(whole.scaled(largest, Qt::KeepAspectRatio).expandedTo({1, 1}));
    const QImage image = reader.read();
    if (image.isNull())
        return std::nullopt;
    return QIcon(QPixmap::fromImage(image));
}
