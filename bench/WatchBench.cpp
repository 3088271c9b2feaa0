#include "ICmdShellTree.h"
#include "Measures.h"
#include "StormRun.h"
#include "Userman.h"
#include "Vlfilewatch.h"
#include "Vlprojects.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace
{

constexpr int Operations = 20'000;
constexpr int OuterFolders = 100;
constexpr int InnerFolders = 100;

const auto Watcher = QStringLiteral("inotifywait");

// The same program for everybody: follows a folder and writes what it hears to a file.
class TWatcher
{
public:
    explicit TWatcher(const QString& root)
    {
        m_process.setStandardOutputFile(m_output.filePath(QStringLiteral("events")));
        m_process.setReadChannel(QProcess::StandardError);
        m_process.start(Watcher, {QStringLiteral("-m"), QStringLiteral("-r"), root});
        while (m_process.waitForReadyRead(60'000) || m_process.state() == QProcess::Running) {
            m_said += m_process.readAllStandardError();
            if (m_said.contains("Watches established"))
                return;
        }
    }
    ~TWatcher()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY(TWatcher)

    bool IsRunning() const { return m_process.state() == QProcess::Running; }

private:
    QTemporaryDir m_output;
    QProcess m_process;
    QByteArray m_said;
};

void StormWithLog(benchmark::State& state)
{
    SetupUserManager();
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const QTemporaryDir directory;
        const QString root = directory.filePath(QStringLiteral("projekt"));
        TProject::Create(root, QStringLiteral("Sturm"));
        UserManager()->OpenProject(root);
        auto tree = std::make_unique<TICmdShellTreeView>();
        bool handled = false;
        tree->ExecuteCmd("shelltree://%PRJPATH%?project=1&files=all&log=yes", handled);
        state.ResumeTiming();
        if (!WaitForAll(StartStorm(root, Operations)))
            state.SkipWithError("the storm failed");
        tree->ShellTree()->DrainChanges();
        state.PauseTiming();
        if (QFile(root + QStringLiteral("/actions.log")).size() < Operations)
            state.SkipWithError("the log holds too little");
        tree.reset();
        UserManager()->CloseProject();
        state.ResumeTiming();
    }
    DisposeUserManager();
}

void StormWithWatcher(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const QTemporaryDir directory;
        auto watcher = std::make_unique<TWatcher>(directory.path());
        if (!watcher->IsRunning())
            state.SkipWithError("inotifywait does not run");
        state.ResumeTiming();
        if (!WaitForAll(StartStorm(directory.path(), Operations)))
            state.SkipWithError("the storm failed");
        state.PauseTiming();
        watcher.reset();
        state.ResumeTiming();
    }
}

// A tree of ten thousand folders, made once.
const QString& ManyFolders()
{
    static const QTemporaryDir directory;
    static const QString path = [] {
        for (int outer = 0; outer < OuterFolders; ++outer) {
            for (int inner = 0; inner < InnerFolders; ++inner)
                QDir(directory.path()).mkpath(QStringLiteral("%1/%2").arg(outer).arg(inner));
        }
        return directory.path();
    }();
    return path;
}

void StartWatch(benchmark::State& state)
{
    const QByteArray root = QFile::encodeName(ManyFolders());
    for ([[maybe_unused]] auto _ : state) {
        TFileWatch watch;
        watch.SetRoot(root);
        if (watch.IsScanning())
            state.SkipWithError("the system has too few watches");
        state.PauseTiming();
        watch.SetRoot({});
        state.ResumeTiming();
    }
}

void StartWatcher(benchmark::State& state)
{
    const QString root = ManyFolders();
    for ([[maybe_unused]] auto _ : state) {
        auto watcher = std::make_unique<TWatcher>(root);
        if (!watcher->IsRunning())
            state.SkipWithError("inotifywait does not run");
        state.PauseTiming();
        watcher.reset();
        state.ResumeTiming();
    }
}

} // namespace

void AddWatchMeasures()
{
    // At least 0.8 of the other's operations in a second.
    AddRatio("20,000 operations with the log : with inotifywait", 1.25, StormWithLog, StormWithWatcher);
    AddRatio("watch 10,000 folders : inotifywait", 1.2, StartWatch, StartWatcher);
}
