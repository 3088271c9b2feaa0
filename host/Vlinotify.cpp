#include "Vlinotify.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <sys/inotify.h>
#include <unistd.h>

namespace
{

constexpr size_t ChunkSize = 0x40000;
// One call takes no more than this, so that a flood cannot keep its reader from working on it.
constexpr size_t MaxRead = 0x800000;

} // namespace

TInotify::TInotify(int maxWatches) : m_descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), m_maxWatches(maxWatches) {}

TInotify::~TInotify()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

int TInotify::Add(int folder, uint32_t mask, bool isWatched)
{
    // Through the descriptor, so that the folder that is watched is the one that is read, whatever its name says now.
    const std::string path = "/proc/self/fd/" + std::to_string(folder);
    if (!isWatched && m_maxWatches > 0 && m_count >= m_maxWatches) {
        errno = ENOSPC;
        return -1;
    }
    const int watch = inotify_add_watch(m_descriptor, path.c_str(), mask | IN_ONLYDIR);
    if (watch > m_highest) {
        m_highest = watch;
        ++m_count;
    }
    return watch;
}

void TInotify::Remove(int watch)
{
    inotify_rm_watch(m_descriptor, watch);
}

bool TInotify::Read(std::string& buffer) const
{
    const size_t before = buffer.size();
    while (buffer.size() - before < MaxRead) {
        const size_t end = buffer.size();
        buffer.resize(end + ChunkSize);
        const ssize_t count = read(m_descriptor, buffer.data() + end, ChunkSize);
        buffer.resize(end + (count > 0 ? static_cast<size_t>(count) : 0));
        if (count <= 0)
            break;
    }
    return buffer.size() > before;
}

TInotifyEvent TInotify::Next(const std::string& buffer, size_t& position)
{
    inotify_event raw{};
    std::memcpy(&raw, buffer.data() + position, sizeof raw);
    const char* name = buffer.data() + position + sizeof raw;
    position += sizeof raw + raw.len;
    return {.Watch = raw.wd,
            .Mask = raw.mask,
            .Cookie = raw.cookie,
            .Name = raw.len > 0 ? std::string_view(name, strnlen(name, raw.len)) : std::string_view()};
}
