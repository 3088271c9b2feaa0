#include "Vlchangetracker.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>

namespace
{

using namespace std::chrono_literals;

// Where the notifications pause for that long, what happened is complete.
constexpr auto Pause = 30ms;
// Without a pause nothing waits for longer than this.
constexpr auto Patience = 1000ms;
// Both halves of a rename are told by one call of the system: what comes later belongs to no pair.
constexpr auto PairGap = 100ms;

} // namespace

void TChangeTracker::Tell(TShellChangeKind kind, const std::string& path, const std::string& newPath)
{
    if (!m_isBaseline) {
        m_changes.push_back(
            {.Kind = kind, .Path = QByteArray::fromStdString(path), .NewPath = QByteArray::fromStdString(newPath)});
    }
}

bool TChangeTracker::IsOutstanding() const
{
    // Without the root there is nothing to look at.
    if (m_isRootGone)
        return m_mustResync || m_mustCheckRoot;
    return m_mustResync || m_mustCheckRoot || !m_unsure.empty() || !m_moves.empty() || !m_waiting.empty();
}

void TChangeTracker::Settle(bool isFinal)
{
    const auto now = TClock::now();
    const bool isPause = m_position == m_buffer.size() && now - m_lastEvent >= Pause;
    if (!isFinal && !isPause && now - m_outstandingSince < Patience)
        return;
    m_outstandingSince = now;
    ResolveMoves(isFinal);
    if (m_mustCheckRoot || m_mustResync)
        CheckRoot();
    if (m_mustResync && !m_isRootGone) {
        m_mustResync = false;
        Compare(m_root, true);
    }
    CompareUnsure();
    TellWaiting(isFinal);
}

void TChangeTracker::MarkUnsure(TFileNode* folder, bool isDeep)
{
    if (folder)
        m_unsure[folder] |= isDeep;
}

void TChangeTracker::ResolveMoves(bool isFinal)
{
    const auto now = TClock::now();
    std::vector<uint32_t> gone;
    for (const auto& [cookie, move] : m_moves) {
        if (isFinal || now - move.Since >= PairGap)
            gone.push_back(cookie);
    }
    // Removing one may remove another one below it, which then has left m_moves too.
    for (const uint32_t cookie : gone) {
        if (TFileNode* node = TakeMove(cookie).Node)
            RemoveBranch(*node);
    }
}

void TChangeTracker::Await(TFileNode& item, bool isClosed)
{
    if (item.Waiting < 0) {
        item.Waiting = static_cast<int64_t>(m_waiting.size());
        item.IsClosed = false;
        m_waiting.push_back({.Node = &item, .Since = TClock::now()});
    }
    item.IsClosed = item.IsClosed || isClosed;
}

void TChangeTracker::StopWaiting(TFileNode& item)
{
    if (item.Waiting >= 0)
        m_waiting[static_cast<size_t>(item.Waiting)].Node = nullptr;
    item.Waiting = -1;
}

void TChangeTracker::StopLeaving(TFileNode& node)
{
    if (node.IsLeaving)
        std::erase_if(m_moves, [&node](const auto& entry) { return entry.second.Node == &node; });
    node.IsLeaving = false;
}

void TChangeTracker::TellWaiting(bool isFinal)
{
    std::vector<TWaiting> waiting;
    waiting.swap(m_waiting);
    const auto now = TClock::now();
    for (const TWaiting& entry : waiting) {
        if (!entry.Node)
            continue;
        TFileNode& item = *entry.Node;
        const bool isDue = isFinal || item.IsClosed || now - entry.Since >= Patience;
        item.Waiting = -1;
        if (!isDue || !TellItem(item, isFinal || now - entry.Since >= Patience)) {
            item.Waiting = static_cast<int64_t>(m_waiting.size());
            m_waiting.push_back(entry);
        }
    }
}

// False when the item shall be asked for again: it changed so lately that a further change could look the same, or it
// is not where it should be, which notifications on their way will explain.
bool TChangeTracker::TellItem(TFileNode& item, bool isLast)
{
    const std::string path = item.Path();
    struct stat status
    {};
    if (lstat(path.c_str(), &status) != 0) {
        if (isLast)
            MarkUnsure(item.Parent);
        return false;
    }
    if (!isLast && TFileStamp::IsFresh(status))
        return false;
    if (S_ISDIR(status.st_mode)) {
        MarkUnsure(item.Parent);
        return true;
    }
    item.Stamp = TFileStamp::Of(status);
    item.WasRenamed = false;
    item.Kind = KindOf(status);
    if (item.Kind == TFileKind::Item)
        Tell(item.IsTold ? scItemUpdated : scItemCreated, path);
    else if (item.IsTold)
        Tell(scItemDeleted, path);
    item.IsTold = item.Kind == TFileKind::Item;
    return true;
}

void TChangeTracker::RemoveBranch(TFileNode& node)
{
    if (node.Folder) {
        while (!node.Folder->Children.empty())
            RemoveBranch(**node.Folder->Children.begin());
        Tell(scFolderRemoved, node.Path());
    } else if (node.IsTold) {
        Tell(scItemDeleted, node.Path());
    }
    Forget(node);
    node.Take();
}

// Whatever is removed in whatever order, nothing keeps pointing to it.
void TChangeTracker::Forget(TFileNode& node)
{
    StopWaiting(node);
    StopLeaving(node);
    m_replacing.erase(&node);
    if (!node.Folder)
        return;
    m_unsure.erase(&node);
    m_refused.erase(&node);
    if (node.Folder->Watch >= 0) {
        m_watched.erase(node.Folder->Watch);
        m_inotify.Remove(node.Folder->Watch);
    }
}
