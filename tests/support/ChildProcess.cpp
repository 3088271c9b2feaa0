#include "ChildProcess.h"

#include "Vlerrors.h"

#include <gtest/gtest.h>

#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

namespace
{

constexpr unsigned NobodyId = 65534;

void WriteText(int pipe, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    if (write(pipe, bytes.constData(), static_cast<std::size_t>(bytes.size())) != bytes.size())
        std::abort();
}

QString ReadText(int pipe)
{
    QByteArray bytes;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = read(pipe, buffer.data(), buffer.size())) > 0;)
        bytes.append(buffer.data(), count);
    return QString::fromUtf8(bytes);
}

} // namespace

QString RunInChild(const std::function<QString()>& body)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return QStringLiteral("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        WriteText(ends[1], body());
        _exit(0);
    }
    close(ends[1]);
    const QString text = ReadText(ends[0]);
    close(ends[0]);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
        return QStringLiteral("no child");
    return WIFSIGNALED(status) ? QStringLiteral("signal %1").arg(WTERMSIG(status)) : text;
}

void GiveUpRights()
{
    if (geteuid() != 0)
        return;
    if (setgroups(0, nullptr) != 0 || setgid(NobodyId) != 0 || setuid(NobodyId) != 0)
        std::abort();
}

void LimitFileSize(unsigned long bytes)
{
    const rlimit limit{.rlim_cur = bytes, .rlim_max = bytes};
    if (std::signal(SIGXFSZ, SIG_IGN) == SIG_ERR || setrlimit(RLIMIT_FSIZE, &limit) != 0)
        std::abort();
}

QString OutcomeOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (...) {
        return ErrorText(std::current_exception());
    }
    return QStringLiteral("ok");
}
