#include "Vlshellicons.h"

#include <QFile>

namespace
{

// Extensions that number their files must not fill the memory.
constexpr qsizetype MaxExtensions = 1000;

} // namespace

TShellIcons::TShellIcons()
    : m_folder(m_provider.icon(QFileIconProvider::Folder)), m_file(m_provider.icon(QFileIconProvider::File))
{
}

QIcon TShellIcons::IconOf(const TShellEntry& entry)
{
    switch (entry.Kind) {
    case skFolder:
        return m_folder;
    case skFile:
        return OfExtension(entry.Name);
    case skLink:
        return QIcon::fromTheme(QStringLiteral("emblem-symbolic-link"), m_file);
    case skSpecial:
        return m_file;
    }
    return m_file;
}

QIcon TShellIcons::OfExtension(const QByteArray& name)
{
    if (m_theme != QIcon::themeName() || m_extensions.size() > MaxExtensions) {
        m_theme = QIcon::themeName();
        m_extensions.clear();
    }
    const qsizetype dot = name.lastIndexOf('.');
    const QByteArray extension = dot < 0 ? QByteArray() : name.mid(dot).toLower();
    const auto known = m_extensions.constFind(extension);
    if (known != m_extensions.constEnd())
        return *known;
    const QMimeType type = m_types.mimeTypeForFile(QFile::decodeName("x" + extension), QMimeDatabase::MatchExtension);
    const QIcon generic = QIcon::fromTheme(type.genericIconName(), m_file);
    return *m_extensions.insert(extension, QIcon::fromTheme(type.iconName(), generic));
}
