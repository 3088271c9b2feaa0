#include "Measures.h"

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace
{

constexpr int Milliseconds = 60'000;

void Start(benchmark::State& state, const QString& program, const QStringList& arguments)
{
    const QTemporaryDir settings;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), settings.path());
    environment.insert(QStringLiteral("NORHOME"), QStringLiteral(VELMORA_EXAMPLES "/home"));
    for ([[maybe_unused]] auto _ : state) {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        if (!process.waitForFinished(Milliseconds) || process.exitCode() != 0)
            state.SkipWithError("the program did not start or did not end");
    }
}

void StartWorkbench(benchmark::State& state)
{
    Start(state, QStringLiteral(VELMORA_WORKBENCH),
          {QStringLiteral("--project"), QStringLiteral(VELMORA_EXAMPLES "/musterhaus"),
           QStringLiteral("--quit-after-paint")});
}

void StartBareWindow(benchmark::State& state)
{
    Start(state, QStringLiteral(VELMORA_BARE_WINDOW), {});
}

} // namespace

void AddStartMeasures()
{
    AddRatio("start to first paint : bare window", 2.5, StartWorkbench, StartBareWindow);
}
