#include "ActionLog.h"

#include "ActionLine.h"
#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlshellops.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr auto LineEnd = "\r\n";
// Longer than any of our lines, which hold two paths at most.
constexpr off_t LongestLine = 0x10000;

} // namespace

// The open log. Everything throws nothing and leaves the reason in errno.
class TActionLog::TFile
{
public:
    // A link is refused: it could lead to any file of the user's, or back into the tree that is logged.
    explicit TFile(const QByteArray& path)
        : m_descriptor(open(path.constData(),
                            O_RDWR | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC | O_NOCTTY | O_NOFOLLOW, 0666))
    {
    }
    ~TFile() { Close(); }
    TFile(const TFile&) = delete;
    TFile& operator=(const TFile&) = delete;

    bool IsOpen() const { return m_descriptor >= 0; }
    bool State(struct stat& state) const { return fstat(m_descriptor, &state) == 0; }
    bool Cut(off_t size) const { return ftruncate(m_descriptor, size) == 0; }
    bool Close() { return m_descriptor < 0 || close(std::exchange(m_descriptor, -1)) == 0; }
    // What can be read there.
    QByteArray Read(off_t from, off_t size) const
    {
        QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
        const ssize_t got = pread(m_descriptor, bytes.data(), static_cast<std::size_t>(size), from);
        bytes.truncate(std::max<ssize_t>(got, 0));
        return bytes;
    }
    bool Write(QByteArrayView bytes) const
    {
        while (!bytes.isEmpty()) {
            const ssize_t written = write(m_descriptor, bytes.data(), static_cast<std::size_t>(bytes.size()));
            if (written < 0 && errno != EINTR)
                return false;
            if (written > 0)
                bytes = bytes.sliced(written);
        }
        return true;
    }

private:
    int m_descriptor;
};

TActionLog::TActionLog(const QString& path) : m_path(path) {}

void TActionLog::Append(const QByteArray& line)
{
    TFile file(QFile::encodeName(ToPlatformPath(m_path)));
    if (!file.IsOpen())
        Fail(errno == ELOOP ? QStringLiteral("Dort steht eine Verknüpfung") : SystemErrorText(errno));
    struct stat state
    {};
    if (!file.State(state))
        Fail(SystemErrorText(errno));
    if (!S_ISREG(state.st_mode))
        Fail(QStringLiteral("Dort steht keine gewöhnliche Datei"));
    TPlace place{.Device = state.st_dev, .Inode = state.st_ino, .Size = state.st_size};
    const QByteArray repair = place == m_end ? QByteArray() : RepairEnd(file, place);
    const QByteArray bytes = repair + line + LineEnd;
    if (!file.Write(bytes)) {
        const QString reason = SystemErrorText(errno);
        // When not even this can be done, the next line finds what is left of this one.
        m_halfLine = file.Cut(place.Size) ? QByteArray() : bytes;
        m_end = m_halfLine.isEmpty() && !repair.isEmpty() ? TPlace() : place;
        Fail(reason);
    }
    place.Size += bytes.size();
    m_end = place;
    m_halfLine.clear();
    if (!file.Close())
        Fail(SystemErrorText(errno));
}

// Cuts an unfinished line of ours off; returns what has to be written before the next line, so that it begins one.
QByteArray TActionLog::RepairEnd(TFile& file, TPlace& place) const
{
    if (IsOwnHalfLine(file, place))
        Cut(file, place, m_end.Size);
    if (place.Size == 0)
        return {};
    const off_t begin = std::max<off_t>(place.Size - LongestLine, 0);
    const QByteArray tail = file.Read(begin, place.Size - begin);
    if (tail.endsWith('\n'))
        return {};
    const QByteArray last = tail.mid(tail.lastIndexOf('\n') + 1);
    const bool isWhole = begin == 0 || last.size() < tail.size();
    if (isWhole && ClassifyLastLine(last) == TLineRemains::Unfinished) {
        Cut(file, place, place.Size - last.size());
        return {};
    }
    return last.endsWith('\r') ? "\n" : LineEnd;
}

void TActionLog::Cut(TFile& file, TPlace& place, off_t size) const
{
    if (!file.Cut(size))
        Fail(SystemErrorText(errno));
    place.Size = size;
}

bool TActionLog::IsOwnHalfLine(TFile& file, const TPlace& place) const
{
    const off_t size = place.Size - m_end.Size;
    if (m_halfLine.isEmpty() || place.Device != m_end.Device || place.Inode != m_end.Inode || size <= 0 ||
        size > m_halfLine.size())
        return false;
    return file.Read(m_end.Size, size) == m_halfLine.first(static_cast<qsizetype>(size));
}

void TActionLog::Fail(const QString& reason) const
{
    throw TFileError(FileErrorText(m_path, QStringLiteral("fortgeschrieben"), reason));
}
