#include "IScenesTree.h"
#include "Measures.h"
#include "SceneFiles.h"
#include "Vlapputils.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstring>

namespace
{

constexpr auto ChildOption = "--weigh";
constexpr int Datapoints = 100'000;

// The resident memory of this process in KiB.
double ResidentMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble();
    }
    return 0;
}

// Weighed in a process of its own, so that nothing that ran before counts.
void MemoryPerDatapoint(benchmark::State& state)
{
    const QTemporaryDir directory;
    const QString scenesFile = MakeSceneDirectory(directory.path(), 0, 0);
    WriteFile(directory.filePath(QStringLiteral("actions_allowed.xml")), DatapointFile("actions", Datapoints));
    for ([[maybe_unused]] auto _ : state) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(ChildOption), scenesFile});
        if (!child.waitForFinished() || child.exitCode() != 0)
            state.SkipWithError("the process to be weighed failed");
        state.counters["value"] = child.readAllStandardOutput().toDouble() / Datapoints;
    }
}

} // namespace

void AddMemoryMeasures()
{
    AddValue("memory per datapoint, 100000 loaded", 1.0, "KiB", MemoryPerDatapoint);
}

bool RunAsMemoryChild(int argc, char** argv)
{
    if (argc != 3 || std::strcmp(argv[1], ChildOption) != 0)
        return false;
    TConfigTreeFrame frame;
    frame.show();
    QApplication::processEvents();
    const double before = ResidentMemory();
    frame.LoadScenes(QString::fromLocal8Bit(argv[2]));
    QApplication::processEvents();
    std::printf("%f\n", ResidentMemory() - before);
    return true;
}
