#include "StormRun.h"

#include <QEventLoop>
#include <QProcess>

#include <algorithm>

namespace
{

constexpr int Processes = 4;

} // namespace

bool AreStormsLong()
{
    return qEnvironmentVariableIsSet("VELMORA_LONG_TESTS");
}

std::vector<std::unique_ptr<QProcess>> StartStorm(const QString& root, int operations)
{
    std::vector<std::unique_ptr<QProcess>> programs;
    for (int number = 1; number <= Processes; ++number) {
        programs.push_back(std::make_unique<QProcess>());
        programs.back()->start(QStringLiteral(VELMORA_STORM),
                               {root, QString::number(number), QString::number(operations / Processes)});
    }
    return programs;
}

bool WaitForAll(const std::vector<std::unique_ptr<QProcess>>& programs)
{
    for (const auto& program : programs) {
        QEventLoop loop;
        QObject::connect(program.get(), &QProcess::finished, &loop, &QEventLoop::quit);
        QObject::connect(program.get(), &QProcess::errorOccurred, &loop, &QEventLoop::quit);
        if (program->state() != QProcess::NotRunning)
            loop.exec();
    }
    return std::all_of(programs.begin(), programs.end(), [](const auto& program) {
        return program->exitStatus() == QProcess::NormalExit && program->exitCode() == 0;
    });
}
