#include "WatchFixture.h"

#include <QEventLoop>
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

FileWatchTest::FileWatchTest() : Root(fs::canonical(Directory.path().toStdString()).string() + "/projekt")
{
    fs::create_directory(Root);
    QObject::connect(&Watch, &TFileWatch::Changed, &Watch,
                     [this](const TShellChange& change) { Changes.push_back(change); });
}

std::string FileWatchTest::Path(const std::string& relative) const
{
    return Root + "/" + relative;
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
    CopyTree(Root, Root + "-kopie");
    Watch.SetRoot(QByteArray::fromStdString(Root));
}

QStringList FileWatchTest::Told()
{
    Watch.Drain();
    const auto relative = [this](const QByteArray& path) {
        return QString::fromUtf8(path.mid(static_cast<qsizetype>(Root.size()) + 1));
    };
    QStringList lines;
    for (; m_told < Changes.size(); ++m_told) {
        const TShellChange& change = Changes[m_told];
        lines.append(WordOf(change.Kind) + u' ' + relative(change.Path));
        if (!change.NewPath.isEmpty())
            lines.last() += u' ' + relative(change.NewPath);
    }
    return lines;
}

bool FileWatchTest::IsTold(size_t count) const
{
    return QTest::qWaitFor([this, count] { return Changes.size() >= count; }, 10'000);
}

std::string FileWatchTest::Differences()
{
    Watch.Drain();
    TReplayer replayer(Root, Root + "-kopie");
    for (const TShellChange& change : Changes)
        replayer.Apply(change);
    replayer.Finish();
    return replayer.Mistakes().empty() ? std::string() : replayer.Summary();
}

void FileWatchTest::Run(const QString& program, const QStringList& arguments)
{
    std::vector<std::unique_ptr<QProcess>> programs;
    programs.push_back(std::make_unique<QProcess>());
    programs.back()->setProgram(program);
    programs.back()->setArguments(arguments);
    RunAll(programs);
}

void FileWatchTest::RunAll(std::vector<std::unique_ptr<QProcess>>& programs)
{
    for (const auto& program : programs) {
        program->setWorkingDirectory(QString::fromStdString(Root));
        program->start();
    }
    for (const auto& program : programs) {
        QEventLoop loop;
        QObject::connect(program.get(), &QProcess::finished, &loop, &QEventLoop::quit);
        QObject::connect(program.get(), &QProcess::errorOccurred, &loop, &QEventLoop::quit);
        if (program->state() != QProcess::NotRunning)
            loop.exec();
        ASSERT_EQ(program->exitStatus(), QProcess::NormalExit) << program->errorString().toStdString();
        ASSERT_EQ(program->exitCode(), 0) << program->readAllStandardError().toStdString();
    }
}
