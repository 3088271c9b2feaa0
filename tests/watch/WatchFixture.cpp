#include "WatchFixture.h"

#include <QTest>

#include <filesystem>

namespace fs = std::filesystem;

namespace
{

QString WordOf(TShellChangeKind kind)
{
    switch (kind) {
    case scItemRenamed:
        return QStringLiteral("REN");
    case scFolderRenamed:
        return QStringLiteral("RENDIR");
    case scItemCreated:
        return QStringLiteral("NEW");
    case scItemUpdated:
        return QStringLiteral("PUT");
    case scItemDeleted:
        return QStringLiteral("DEL");
    case scFolderCreated:
        return QStringLiteral("MKDIR");
    case scFolderRemoved:
        return QStringLiteral("RMDIR");
    }
    return {};
}

} // namespace

QStringList Lines(std::initializer_list<const char*> lines)
{
    QStringList list;
    for (const char* line : lines)
        list.append(QString::fromUtf8(line));
    return list;
}

FileWatchTest::FileWatchTest() : m_root(fs::canonical(m_directory.path().toStdString()).string() + "/projekt")
{
    fs::create_directory(m_root);
    QObject::connect(&m_watch, &TFileWatch::Changed, &m_watch,
                     [this](const TShellChange& change) { m_changes.push_back(change); });
}

std::string FileWatchTest::Path(const std::string& relative) const
{
    return m_root + "/" + relative;
}

void FileWatchTest::Write(const std::string& relative, const std::string& content) const
{
    WriteAll(QString::fromStdString(Path(relative)), QByteArray::fromStdString(content));
}

void FileWatchTest::MakeFolder(const std::string& relative) const
{
    fs::create_directories(Path(relative));
}

void FileWatchTest::Rename(const std::string& from, const std::string& to) const
{
    fs::rename(Path(from), Path(to));
}

void FileWatchTest::Remove(const std::string& relative) const
{
    fs::remove_all(Path(relative));
}

void FileWatchTest::Start()
{
    CopyTree(m_root, m_root + "-kopie");
    m_watch.SetRoot(QByteArray::fromStdString(m_root));
}

QStringList FileWatchTest::Told()
{
    m_watch.Drain();
    const auto relative = [this](const QByteArray& path) {
        return QString::fromUtf8(path.mid(static_cast<qsizetype>(m_root.size()) + 1));
    };
    QStringList lines;
    for (; m_told < m_changes.size(); ++m_told) {
        const TShellChange& change = m_changes[m_told];
        lines.append(WordOf(change.Kind) + u' ' + relative(change.Path));
        if (!change.NewPath.isEmpty())
            lines.last() += u' ' + relative(change.NewPath);
    }
    return lines;
}

bool FileWatchTest::IsTold(size_t count) const
{
    return QTest::qWaitFor([this, count] { return m_changes.size() >= count; }, 10'000);
}

std::string FileWatchTest::Differences()
{
    m_watch.Drain();
    TReplayer replayer(m_root, m_root + "-kopie");
    for (const TShellChange& change : m_changes)
        replayer.Apply(change);
    replayer.Finish();
    return replayer.Mistakes().empty() ? std::string() : replayer.Summary();
}
