#include "Vlchangetracker.h"

#include <sys/inotify.h>
#include <sys/stat.h>

namespace
{

// The clock is asked, and the system's queue emptied, once in so many events.
constexpr int EventsPerLook = 512;

} // namespace

bool TChangeTracker::Process(std::chrono::milliseconds budget)
{
    const auto end = TClock::now() + budget;
    for (;;) {
        if (m_position == m_buffer.size()) {
            m_buffer.clear();
            m_position = 0;
        }
        ReadMore();
        if (m_position == m_buffer.size()) {
            // What comes from now on happened after everything that was read from the disk.
            ++m_round;
            return false;
        }
        for (int count = 0; count < EventsPerLook && m_position < m_buffer.size(); ++count)
            HandleEvent(TInotify::Next(m_buffer, m_position));
        if (TClock::now() >= end)
            return true;
    }
}

void TChangeTracker::ReadMore()
{
    const bool wasOutstanding = IsOutstanding();
    if (Descriptor() < 0 || !m_inotify.Read(m_buffer))
        return;
    m_lastEvent = TClock::now();
    if (!wasOutstanding)
        m_outstandingSince = m_lastEvent;
}

void TChangeTracker::HandleEvent(const TInotifyEvent& event)
{
    if ((event.Mask & IN_Q_OVERFLOW) != 0) {
        BeginResync();
        return;
    }
    if ((event.Mask & IN_IGNORED) != 0) {
        LoseWatch(event.Watch);
        return;
    }
    const auto watched = m_watched.find(event.Watch);
    if (watched == m_watched.end())
        return;
    TFileNode& folder = *watched->second;
    if (event.Name.empty())
        m_mustCheckRoot = m_mustCheckRoot || &folder == &m_root;
    else if (!m_mustResync)
        HandleNamed(folder, event);
}

void TChangeTracker::HandleNamed(TFileNode& folder, const TInotifyEvent& event)
{
    if (IsIgnored(folder, event.Name)) {
        HandleIgnoredFile(event);
        return;
    }
    // The folder was read after this notification or before it, nobody knows.
    if (folder.Folder->Round == m_round)
        MarkUnsure(&folder);
    if ((event.Mask & IN_CREATE) != 0)
        HandleArrival(folder, event);
    else if ((event.Mask & IN_DELETE) != 0)
        HandleDelete(folder, event);
    else if ((event.Mask & IN_MOVED_FROM) != 0)
        HandleMovedFrom(folder, event);
    else if ((event.Mask & IN_MOVED_TO) != 0)
        HandleMovedTo(folder, event);
    else if ((event.Mask & (IN_MODIFY | IN_CLOSE_WRITE)) != 0)
        HandleWrite(folder, event);
}

void TChangeTracker::HandleArrival(TFileNode& folder, const TInotifyEvent& event)
{
    if ((event.Mask & IN_ISDIR) != 0)
        FolderArrived(folder, event.Name);
    else
        ItemArrived(folder, event.Name, (event.Mask & IN_MOVED_TO) != 0);
}

void TChangeTracker::FolderArrived(TFileNode& folder, std::string_view name)
{
    TFileNode* known = folder.Find(name);
    if (known && known->IsLeaving) {
        RemoveBranch(*known);
        known = nullptr;
    }
    if (known) {
        MarkUnsure(&folder);
        return;
    }
    TFileNode* added = folder.Add(name, TFileKind::Folder);
    Tell(scFolderCreated, added->Path());
    Compare(*added, false);
}

void TChangeTracker::ItemArrived(TFileNode& folder, std::string_view name, bool isClosed)
{
    TFileNode* known = folder.Find(name);
    if (known && known->IsLeaving) {
        RemoveBranch(*known);
        known = nullptr;
    }
    // What leaves the name again, in an exchange with a place that is not watched, is not what arrived.
    if (known)
        MarkUnsure(&folder);
    if (!known || !known->Folder)
        Await(known ? *known : *folder.Add(name, TFileKind::Item), isClosed);
}

void TChangeTracker::HandleDelete(TFileNode& folder, const TInotifyEvent& event)
{
    TFileNode* known = folder.Find(event.Name);
    if (!known)
        return;
    const bool isFolder = (event.Mask & IN_ISDIR) != 0;
    if (isFolder == (known->Folder != nullptr))
        RemoveBranch(*known);
    else
        MarkUnsure(&folder);
}

void TChangeTracker::HandleMovedFrom(TFileNode& folder, const TInotifyEvent& event)
{
    TFileNode* known = folder.Find(event.Name);
    if (!known)
        return;
    const bool isFolder = (event.Mask & IN_ISDIR) != 0;
    if (isFolder != (known->Folder != nullptr)) {
        MarkUnsure(&folder);
        return;
    }
    StopLeaving(*known);
    known->IsLeaving = true;
    m_moves[event.Cookie] = {.Node = known, .Since = TClock::now(), .IsDoubtful = folder.Folder->Round == m_round};
}

TChangeTracker::TMove TChangeTracker::TakeMove(uint32_t cookie)
{
    const auto found = m_moves.find(cookie);
    if (found == m_moves.end())
        return {};
    const TMove move = found->second;
    move.Node->IsLeaving = false;
    m_moves.erase(found);
    return move;
}

void TChangeTracker::HandleMovedTo(TFileNode& folder, const TInotifyEvent& event)
{
    const TMove move = TakeMove(event.Cookie);
    TFileNode* source = move.Node;
    if (!source) {
        HandleArrival(folder, event);
        return;
    }
    if (move.IsDoubtful)
        MarkUnsure(&folder);
    TFileNode* target = folder.Find(event.Name);
    if (target == source)
        return;
    NoteExchange(*source, folder, event.Name, target != nullptr);
    if (!Fits(*source, folder, target)) {
        MarkUnsure(source->Parent);
        MarkUnsure(&folder);
        return;
    }
    if (target && IsSameFolder(*source, *target)) {
        // Found there by a comparison before its rename was told.
        MarkUnsure(&folder);
        RemoveBranch(*source);
        return;
    }
    Move(*source, folder, event.Name);
}

// Whether the state allows this rename; if not, it comes from a time that the state has left behind.
bool TChangeTracker::Fits(const TFileNode& source, const TFileNode& folder, const TFileNode* target)
{
    if (folder.IsBelow(source))
        return false;
    return !target || (!source.IsBelow(*target) && !target->Folder == !source.Folder);
}

bool TChangeTracker::IsSameFolder(const TFileNode& first, const TFileNode& second)
{
    return first.Folder && second.Folder && first.Stamp.Inode == second.Stamp.Inode &&
           first.Folder->Device == second.Folder->Device;
}

// A follower's rename replaces an item of that name. An item that it does not have yet cannot be renamed there; it
// updates what it replaces when its time to be told comes.
void TChangeTracker::Move(TFileNode& source, TFileNode& folder, std::string_view name)
{
    const bool wasTold = source.IsTold;
    bool replacesTold = false;
    if (TFileNode* target = folder.Find(name)) {
        replacesTold = target->IsTold;
        target->IsTold = false;
        RemoveBranch(*target);
    }
    const std::string from = source.Path();
    TFileNode::Put(source.Take(), folder, name);
    source.WasRenamed = true;
    if (source.Folder)
        Tell(scFolderRenamed, from, source.Path());
    else if (source.IsTold)
        Tell(scItemRenamed, from, source.Path());
    else if (replacesTold && source.Kind == TFileKind::Special)
        Tell(scItemDeleted, source.Path());
    else
        source.IsTold = replacesTold;
    // What is not told yet may be another thing than it was when it was last looked at. What replaces is told as an
    // update.
    if (!source.Folder && (!source.IsTold || (!wasTold && source.Waiting < 0)))
        Await(source, true);
}

// An exchange of two names is told as two renames, each onto the other's name. The first one seems to replace, so the
// second one, whenever it comes, brings up what has to be looked at.
void TChangeTracker::NoteExchange(const TFileNode& source, TFileNode& folder, std::string_view name, bool replaces)
{
    const auto replacing = m_replacing.find(&source);
    if (replacing != m_replacing.end() && replacing->second.Folder == &folder && replacing->second.Name == name) {
        MarkUnsure(source.Parent);
        MarkUnsure(&folder);
    }
    if (replaces)
        m_replacing[&source] = {.Folder = source.Parent, .Name = source.Name};
    else
        m_replacing.erase(&source);
}

void TChangeTracker::HandleWrite(TFileNode& folder, const TInotifyEvent& event)
{
    TFileNode* known = folder.Find(event.Name);
    if (!known || known->Folder) {
        MarkUnsure(&folder);
        return;
    }
    if ((event.Mask & IN_MODIFY) != 0)
        Await(*known, false);
    else if (known->Waiting >= 0)
        known->IsClosed = true;
    else if (LooksChanged(*known))
        Await(*known, true);
}

// Closed by a writer that was never heard of to write: it did nothing, or wrote through a memory map.
bool TChangeTracker::LooksChanged(const TFileNode& item)
{
    struct stat status
    {};
    return lstat(item.Path().c_str(), &status) != 0 || item.MayDiffer(TFileStamp::Of(status));
}

bool TChangeTracker::IsIgnored(const TFileNode& folder, std::string_view name) const
{
    return name == m_ignoredName && folder.Path() == m_ignoredFolder;
}

void TChangeTracker::HandleIgnoredFile(const TInotifyEvent& event)
{
    // What becomes the ignored file is gone for everybody else, unless both have exchanged their names.
    TFileNode* source = (event.Mask & IN_MOVED_TO) != 0 ? TakeMove(event.Cookie).Node : nullptr;
    if (!source)
        return;
    if (source->Waiting >= 0)
        MarkUnsure(source->Parent);
    RemoveBranch(*source);
}

void TChangeTracker::LoseWatch(int watch)
{
    m_inotify.Ended();
    const auto watched = m_watched.find(watch);
    if (watched == m_watched.end())
        return;
    TFileNode* folder = watched->second;
    folder->Folder->Watch = -1;
    m_watched.erase(watched);
    if (folder == &m_root)
        m_mustCheckRoot = true;
    else
        MarkUnsure(folder);
}

void TChangeTracker::BeginResync()
{
    m_mustResync = true;
    for (auto& [cookie, move] : m_moves)
        move.Node->IsLeaving = false;
    m_moves.clear();
}
