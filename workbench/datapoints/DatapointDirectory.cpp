#include "DatapointDirectory.h"

#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

namespace
{

QString WhyNotListed(const std::error_code& error)
{
    if (error == std::errc::not_a_directory)
        return QStringLiteral("Dort steht kein Verzeichnis");
    if (error == std::errc::no_such_file_or_directory)
        return QStringLiteral("Die Verknüpfung führt nirgendwohin");
    if (error == std::errc::too_many_symbolic_link_levels)
        return QStringLiteral("Die Verknüpfungen führen im Kreis");
    if (error == std::errc::permission_denied)
        return QStringLiteral("Das Recht zu lesen fehlt");
    return QString::fromLocal8Bit(error.message().c_str());
}

bool IsMissing(const QString& directory, const std::error_code& error)
{
    const bool isLink = QFileInfo(ToPlatformPath(directory)).isSymLink() ||
                        QFileInfo(ToPlatformPath(ExtractFileDir(directory))).isSymLink();
    return error == std::errc::no_such_file_or_directory && !isLink;
}

void Report(TDatapointDirectory& listing, const QString& file, const QString& reason)
{
    listing.Problems.append({.File = file, .Problem = {.Line = 0, .Reason = reason}});
}

void ReportDirectory(TDatapointDirectory& listing, const QString& directory, const std::error_code& error)
{
    Report(listing, ToPlatformPath(directory),
           QStringLiteral("Das Verzeichnis kann nicht gelesen werden (%1); seine Datenpunkte fehlen.")
               .arg(WhyNotListed(error)));
}

void TakeEntry(TDatapointDirectory& listing, const std::filesystem::directory_entry& entry)
{
    const QString name = QFile::decodeName(entry.path().filename().c_str());
    std::error_code error;
    if (name.startsWith(u'.') || entry.is_directory(error))
        return;
    if (name.contains(PathSeparator))
        Report(listing, name,
               QStringLiteral("Ein Backslash im Namen gilt als Pfadtrenner; die Datei ist nicht lesbar."));
    else if (entry.is_regular_file(error))
        listing.Names.append(name);
    else
        Report(listing, name, QStringLiteral("Das ist keine gewöhnliche Datei; sie wird nicht gelesen."));
}

} // namespace

TDatapointDirectory ListDatapointFiles(const QString& directory)
{
    TDatapointDirectory listing;
    std::error_code error;
    std::filesystem::directory_iterator entry(QFile::encodeName(ToPlatformPath(directory)).toStdString(), error);
    if (error && IsMissing(directory, error))
        return listing;
    while (!error && entry != std::filesystem::directory_iterator()) {
        TakeEntry(listing, *entry);
        entry.increment(error);
    }
    if (error)
        ReportDirectory(listing, directory, error);
    listing.Names.sort();
    return listing;
}

QByteArray ReadDatapointFile(const QString& path)
{
    if (QFileInfo(ToPlatformPath(path)).size() > LargestFile) {
        const QString reason =
            QStringLiteral("Die Datei ist größer als %1 MB und damit zu groß").arg(LargestFile >> 20);
        throw TFileError(FileErrorText(path, QStringLiteral("gelesen"), reason));
    }
    return ReadFile(path);
}
