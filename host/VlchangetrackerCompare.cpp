#include "Vlchangetracker.h"

#include <array>
#include <algorithm>
#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace
{

constexpr uint32_t FolderMask =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY | IN_CLOSE_WRITE | IN_EXCL_UNLINK;
constexpr uint32_t RootMask = FolderMask | IN_DELETE_SELF | IN_MOVE_SELF;

constexpr std::string_view NetworkReason =
    "Der Ordner liegt auf einem Netzlaufwerk. Seine Dateien werden regelmäßig verglichen statt überwacht.";
constexpr std::string_view WatchesReason = "Das System lässt nicht alle Ordner überwachen. "
                                           "Die Dateien werden zusätzlich regelmäßig verglichen.";

// File systems that others write to without this machine being told, as statfs names them.
constexpr std::array<uint32_t, 9> NetworkFileSystems = {
    0x6969,     // NFS
    0x517B,     // SMB
    0xFF534D42, // CIFS
    0xFE534D42, // SMB 2
    0x65735546, // FUSE
    0x01021997, // 9P
    0x00C36400, // Ceph
    0x5346414F, // AFS
    0x73757245, // Coda
};

bool IsNetwork(const struct statfs& status)
{
    const auto type = static_cast<uint32_t>(status.f_type);
    return std::find(NetworkFileSystems.begin(), NetworkFileSystems.end(), type) != NetworkFileSystems.end();
}

bool IsOnNetwork(int folder)
{
    struct statfs status
    {};
    return fstatfs(folder, &status) == 0 && IsNetwork(status);
}

bool IsOnNetwork(const std::string& path)
{
    struct statfs status
    {};
    return statfs(path.c_str(), &status) == 0 && IsNetwork(status);
}

class TDescriptor
{
public:
    explicit TDescriptor(int descriptor) : m_descriptor(descriptor) {}
    ~TDescriptor()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    TDescriptor(const TDescriptor&) = delete;
    TDescriptor& operator=(const TDescriptor&) = delete;

    int Get() const { return m_descriptor; }

private:
    int m_descriptor;
};

struct TCloseDirectory
{
    void operator()(DIR* directory) const { closedir(directory); }
};

} // namespace

TChangeTracker::TChangeTracker(const TSettings& settings)
    : m_inotify(settings.MaxWatches), m_isScanOnly(settings.IsScanOnly)
{
    const size_t slash = settings.IgnoredFile.rfind('/');
    if (slash != std::string::npos) {
        m_ignoredFolder = settings.IgnoredFile.substr(0, std::max<size_t>(slash, 1));
        m_ignoredName = settings.IgnoredFile.substr(slash + 1);
    }
    m_root.Name = settings.Root;
    m_root.Kind = TFileKind::Folder;
    m_root.Folder = std::make_unique<TFolderState>();
    if (!m_isScanOnly && IsOnNetwork(m_root.Name)) {
        m_isScanOnly = true;
        m_limitReason = NetworkReason;
    }
    m_isBaseline = true;
    Compare(m_root, true);
    m_isBaseline = false;
    m_outstandingSince = TClock::now();
}

void TChangeTracker::Compare(TFileNode& folder, bool isDeep)
{
    const TDescriptor root(open(m_root.Name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    std::vector<TDue> more{{.Folder = &folder, .IsDeep = isDeep}};
    while (!more.empty()) {
        TDue next = more.back();
        more.pop_back();
        const auto marked = m_unsure.find(next.Folder);
        if (marked != m_unsure.end()) {
            next.IsDeep = next.IsDeep || marked->second;
            m_unsure.erase(marked);
        }
        CompareOne(next, root.Get(), more);
    }
}

// The watch is set before the folder is read: what happens in between is told as well as seen.
void TChangeTracker::CompareOne(const TDue& due, int root, std::vector<TDue>& more)
{
    TFileNode& folder = *due.Folder;
    const int descriptor = Open(folder, root);
    const std::unique_ptr<DIR, TCloseDirectory> directory(descriptor < 0 ? nullptr : fdopendir(descriptor));
    if (!directory) {
        CannotRead(due, errno);
        return;
    }
    m_refused.erase(&folder);
    Bind(folder, descriptor);
    folder.Folder->Round = m_round;
    std::vector<TListed> entries;
    if (!List(folder, directory.get(), entries)) {
        CannotRead(due, EACCES);
        return;
    }
    RemoveUnseen(folder);
    for (const TListed& entry : entries)
        CompareEntry(folder, entry, due.IsDeep, more);
}

// A path below the root is never followed through a symbolic link: a folder that was known a moment ago may be one now.
int TChangeTracker::Open(const TFileNode& folder, int root) const
{
    constexpr uint64_t Flags = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;
    const std::string path = folder.Path();
    if (&folder == &m_root)
        return open(path.c_str(), Flags);
    open_how how{};
    how.flags = Flags | O_NOFOLLOW;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
    const char* relative = path.c_str() + m_root.Name.size() + (m_root.Name.back() == '/' ? 0 : 1);
    const auto descriptor = static_cast<int>(syscall(SYS_openat2, root, relative, &how, sizeof how));
    if (descriptor >= 0 || (errno != ENOSYS && errno != EPERM))
        return descriptor;
    return open(path.c_str(), Flags | O_NOFOLLOW);
}

// What is not where it should be has moved, which a notification will tell; wherever it is by then, it is compared.
void TChangeTracker::CannotRead(const TDue& due, int error)
{
    const bool isGone = error == ENOENT || error == ENOTDIR || error == ELOOP || error == EXDEV || error == EAGAIN;
    if (!isGone) {
        m_refused[due.Folder] |= due.IsDeep;
        return;
    }
    MarkUnsure(due.Folder, due.IsDeep);
    if (due.Folder == &m_root)
        m_mustCheckRoot = true;
    else
        MarkUnsure(due.Folder->Parent);
}

// Makes sure that the node has the watch of the folder that is open.
void TChangeTracker::Bind(TFileNode& folder, int descriptor)
{
    struct stat status
    {};
    fstat(descriptor, &status);
    TFolderState& state = *folder.Folder;
    const bool isSame = folder.Stamp.Inode == status.st_ino && state.Device == status.st_dev;
    folder.Stamp.Inode = status.st_ino;
    state.Device = status.st_dev;
    if (folder.Parent && !isSame) {
        const TFolderState& parent = *folder.Parent->Folder;
        state.IsRemote = parent.Device == state.Device ? parent.IsRemote : IsOnNetwork(descriptor);
    }
    if (m_isScanOnly)
        return;
    // Notifications that are older than this reading may move the node to where another folder is.
    if (!isSame && !m_isBaseline)
        MarkUnsure(&folder);
    if (state.Watch >= 0 && !isSame) {
        m_watched.erase(state.Watch);
        m_inotify.Remove(state.Watch);
        state.Watch = -1;
    }
    if (state.IsRemote) {
        Limit(NetworkReason);
        return;
    }
    // Asked for also where there is one: a new folder can have the inode number of a removed one, and that its watch
    // has ended may be among the notifications that were lost.
    const int former = state.Watch;
    state.Watch = m_inotify.Add(descriptor, &folder == &m_root ? RootMask : FolderMask, former >= 0);
    if (former >= 0 && former != state.Watch)
        m_watched.erase(former);
    if (state.Watch < 0)
        Limit(WatchesReason);
    else if (!TakeWatch(folder, status))
        state.Watch = -1;
}

// A watch that another node has: the folder has been moved here, which is not told yet. False when that node has it
// still, because one folder is mounted at both places; this one is then looked at from time to time.
bool TChangeTracker::TakeWatch(TFileNode& folder, const struct stat& status)
{
    TFileNode*& owner = m_watched[folder.Folder->Watch];
    if (owner && owner != &folder) {
        struct stat other
        {};
        if (lstat(owner->Path().c_str(), &other) == 0 && other.st_ino == status.st_ino &&
            other.st_dev == status.st_dev) {
            m_refused[&folder] = false;
            return false;
        }
        owner->Folder->Watch = -1;
        MarkUnsure(owner); // wherever it is by then
        MarkUnsure(owner->Parent);
    }
    owner = &folder;
    return true;
}

void TChangeTracker::Limit(std::string_view reason)
{
    m_isLimited = true;
    if (m_limitReason.empty())
        m_limitReason = reason;
}

// False when the folder could not be read to its end; nothing is known to be gone then.
bool TChangeTracker::List(const TFileNode& folder, DIR* directory, std::vector<TListed>& entries)
{
    ++m_comparison;
    for (;;) {
        errno = 0;
        const dirent* raw = readdir(directory);
        if (!raw)
            return errno == 0;
        const std::string_view name = raw->d_name;
        struct stat status
        {};
        if (name == "." || name == ".." || IsIgnored(folder, name))
            continue;
        // A folder is asked when it is read itself; until then its inode number does.
        const bool isFolder = raw->d_type == DT_DIR;
        if (!isFolder && fstatat(dirfd(directory), raw->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
            if (errno == ENOENT)
                continue;
            return false;
        }
        TListed entry{.Name = std::string(name),
                      .Stamp = isFolder ? TFileStamp{.Inode = raw->d_ino} : TFileStamp::Of(status),
                      .Kind = isFolder ? TFileKind::Folder : KindOf(status),
                      .Node = folder.Find(name)};
        if (entry.Node && (entry.Kind == TFileKind::Folder) != (entry.Node->Folder != nullptr))
            entry.Node = nullptr;
        if (entry.Node)
            entry.Node->Seen = m_comparison;
        entries.push_back(std::move(entry));
    }
}

void TChangeTracker::RemoveUnseen(TFileNode& folder)
{
    std::vector<TFileNode*> gone;
    for (const auto& child : folder.Folder->Children) {
        if (child->Seen != m_comparison)
            gone.push_back(child.get());
    }
    for (TFileNode* child : gone)
        RemoveBranch(*child);
}

void TChangeTracker::CompareEntry(TFileNode& folder, const TListed& entry, bool isDeep, std::vector<TDue>& more)
{
    TFileNode* node = entry.Node;
    if (!node) {
        AddListed(folder, entry, more);
        return;
    }
    // There again, or another one by now; what was renamed turns up as new.
    StopLeaving(*node);
    if (node->Folder) {
        if (isDeep || node->Folder->Watch < 0 || node->Stamp.Inode != entry.Stamp.Inode)
            more.push_back({.Folder = node, .IsDeep = isDeep});
    } else {
        const bool isSpecial = node->Kind == TFileKind::Special && entry.Kind == TFileKind::Special;
        if (!isSpecial && (!node->IsTold || node->MayDiffer(entry.Stamp)))
            Await(*node, true);
    }
}

void TChangeTracker::AddListed(TFileNode& folder, const TListed& entry, std::vector<TDue>& more)
{
    // A folder that changes while it is read may give a name twice.
    if (folder.Find(entry.Name))
        return;
    TFileNode& added = *folder.Add(entry.Name, entry.Kind);
    if (added.Folder) {
        Tell(scFolderCreated, added.Path());
        more.push_back({.Folder = &added, .IsDeep = true});
    } else if (m_isBaseline) {
        added.Stamp = entry.Stamp;
        added.IsTold = entry.Kind == TFileKind::Item;
    } else if (entry.Kind == TFileKind::Item) {
        Await(added, true);
    }
}

// Each folder once: those that are marked meanwhile wait for the next time, so that a tree in motion keeps nobody here,
// and one that is not where it should be keeps no other from its turn.
void TChangeTracker::CompareUnsure()
{
    if (m_isRootGone)
        m_unsure.clear();
    std::vector<TFileNode*> due;
    due.reserve(m_unsure.size());
    for (const auto& [folder, isDeep] : m_unsure)
        due.push_back(folder);
    for (TFileNode* folder : due) {
        if (m_unsure.count(folder) > 0)
            Compare(*folder, false);
    }
}

void TChangeTracker::Housekeep()
{
    CheckRoot();
    if (m_isRootGone)
        return;
    const std::unordered_map<TFileNode*, bool> refused = m_refused;
    for (const auto& [folder, isDeep] : refused) {
        if (m_refused.count(folder) > 0)
            Compare(*folder, isDeep);
    }
    if (IsScanning()) {
        m_isLimited = false; // until a watch is refused again
        Compare(m_root, true);
    }
}

// A root that vanished keeps its last known state; when it comes back, the difference is told.
void TChangeTracker::CheckRoot()
{
    m_mustCheckRoot = false;
    struct stat status
    {};
    const bool exists = stat(m_root.Name.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    const bool isSame = exists && status.st_ino == m_root.Stamp.Inode && status.st_dev == m_root.Folder->Device;
    if (isSame && !m_isRootGone && (m_isScanOnly || m_root.Folder->Watch >= 0))
        return;
    if (!m_isRootGone)
        Unbind(m_root);
    m_isRootGone = !exists;
    m_mustResync = exists;
}

void TChangeTracker::Unbind(TFileNode& branch)
{
    if (branch.Folder->Watch >= 0) {
        m_watched.erase(branch.Folder->Watch);
        m_inotify.Remove(branch.Folder->Watch);
        branch.Folder->Watch = -1;
    }
    for (const auto& child : branch.Folder->Children) {
        if (child->Folder)
            Unbind(*child);
    }
}
