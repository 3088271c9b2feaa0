#pragma once

#include "Vlfilestate.h"
#include "Vlinotify.h"
#include "Vlshellchange.h"

#include <chrono>
#include <deque>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include <dirent.h>

// Keeps the last known state of the tree below a root and turns the system's notifications, and comparisons with the
// disk, into changes that lead from one state to the next. Belongs to a TFileWatch, which calls it and tells the
// changes; it knows no timers and no event loop.
//
// The last known state is at every moment what a follower of the told changes has. A notification that does not fit it
// (late, lost, about a folder that was read meanwhile) is not guessed at: its folder is compared with the disk when the
// notifications pause. So every burst ends with both being equal.
class TChangeTracker
{
public:
    struct TSettings
    {
        std::string Root;
        std::string IgnoredFile;
        int MaxWatches = 0;
        bool IsScanOnly = false;
    };
    using TClock = std::chrono::steady_clock;

    // Reads the tree, which is the state that all changes start from.
    explicit TChangeTracker(const TSettings& settings);

    const std::string& Root() const { return m_root.Name; }
    // Readable when there are notifications; -1 where there never are any.
    int Descriptor() const { return m_inotify.Descriptor(); }

    // Works on what the system has told, for about that long. False when all of it is done.
    bool Process(std::chrono::milliseconds budget);
    // True while items wait to be told or a comparison is due.
    bool IsOutstanding() const;
    // Does what waited for a pause: comparisons, halves of renames whose other half lies outside, items that were
    // written. `isFinal` does it all now, else only what has waited long enough.
    void Settle(bool isFinal);
    // Compares with the disk what the system does not tell of; to be called from time to time.
    void Housekeep();

    bool IsScanning() const { return m_isScanOnly || m_isLimited; }
    // Why, as a German sentence; empty while all is watched.
    std::string_view LimitReason() const { return m_limitReason; }

    std::deque<TShellChange>& Changes() { return m_changes; }

private:
    struct TWaiting
    {
        TFileNode* Node = nullptr; // null when the item has gone
        TClock::time_point Since;
    };
    struct TMove
    {
        TFileNode* Node = nullptr;
        TClock::time_point Since;
        bool IsDoubtful = false; // it may be what has the name by now, not what was renamed
    };
    struct TDue
    {
        TFileNode* Folder = nullptr;
        bool IsDeep = false; // with all that is below it
    };
    struct TPlace
    {
        const TFileNode* Folder = nullptr;
        std::string Name;
    };
    struct TListed
    {
        std::string Name;
        TFileStamp Stamp;
        TFileKind Kind = TFileKind::Item;
        TFileNode* Node = nullptr; // the known child of that name and kind
    };

    // Notifications.
    void ReadMore();
    void HandleEvent(const TInotifyEvent& event);
    void HandleNamed(TFileNode& folder, const TInotifyEvent& event);
    void HandleArrival(TFileNode& folder, const TInotifyEvent& event);
    void HandleDelete(TFileNode& folder, const TInotifyEvent& event);
    void HandleMovedFrom(TFileNode& folder, const TInotifyEvent& event);
    void HandleMovedTo(TFileNode& folder, const TInotifyEvent& event);
    void HandleWrite(TFileNode& folder, const TInotifyEvent& event);
    void HandleIgnoredFile(const TInotifyEvent& event);
    void FolderArrived(TFileNode& folder, std::string_view name);
    void ItemArrived(TFileNode& folder, std::string_view name, bool isClosed);
    static bool Fits(const TFileNode& source, const TFileNode& folder, const TFileNode* target);
    static bool IsSameFolder(const TFileNode& first, const TFileNode& second);
    static bool LooksChanged(const TFileNode& item);
    void Move(TFileNode& source, TFileNode& folder, std::string_view name);
    void NoteExchange(const TFileNode& source, TFileNode& folder, std::string_view name, bool replaces);
    TMove TakeMove(uint32_t cookie);
    bool IsIgnored(const TFileNode& folder, std::string_view name) const;
    void LoseWatch(int watch);
    void BeginResync();

    // Comparisons with the disk.
    void Compare(TFileNode& folder, bool isDeep);
    void CompareOne(const TDue& due, int root, std::vector<TDue>& more);
    int Open(const TFileNode& folder, int root) const;
    void Bind(TFileNode& folder, int descriptor);
    bool TakeWatch(TFileNode& folder, const struct stat& status);
    void CannotRead(const TDue& due, int error);
    void Limit(std::string_view reason);
    bool List(const TFileNode& folder, DIR* directory, std::vector<TListed>& entries);
    void RemoveUnseen(TFileNode& folder);
    void CompareEntry(TFileNode& folder, const TListed& entry, bool isDeep, std::vector<TDue>& more);
    void AddListed(TFileNode& folder, const TListed& entry, std::vector<TDue>& more);
    void CompareUnsure();
    void CheckRoot();
    void Unbind(TFileNode& branch);

    // The state and what is told of it.
    void MarkUnsure(TFileNode* folder, bool isDeep = false);
    void Await(TFileNode& item, bool isClosed);
    void TellWaiting(bool isFinal);
    bool TellItem(TFileNode& item, bool isFinal);
    void StopWaiting(TFileNode& item);
    void StopLeaving(TFileNode& node);
    void ResolveMoves(bool isFinal);
    void RemoveBranch(TFileNode& node);
    void Forget(TFileNode& node);
    void Tell(TShellChangeKind kind, const std::string& path, const std::string& newPath = {});

    TFileNode m_root;
    TInotify m_inotify;
    std::string m_ignoredFolder;
    std::string m_ignoredName;
    std::string m_buffer; // notifications that were read and not yet handled
    size_t m_position = 0;

    std::unordered_map<int, TFileNode*> m_watched;
    // Folders to be compared, and those that could not be; true where all below them is meant too.
    std::unordered_map<TFileNode*, bool> m_unsure;
    std::unordered_map<TFileNode*, bool> m_refused;
    std::map<uint32_t, TMove> m_moves;
    std::vector<TWaiting> m_waiting;
    std::deque<TShellChange> m_changes;

    // Where nodes came from that were renamed over an existing name: going right back is the second half of an
    // exchange.
    std::unordered_map<const TFileNode*, TPlace> m_replacing;

    TClock::time_point m_lastEvent;
    TClock::time_point m_outstandingSince;
    unsigned m_round = 1; // counts how often nothing was left to be read
    unsigned m_comparison = 0;
    std::string_view m_limitReason;
    bool m_isScanOnly;
    bool m_isLimited = false;
    bool m_isBaseline = false; // reading the state that all starts from: nothing is told
    bool m_mustResync = false; // notifications were lost; those until the next comparison are useless
    bool m_mustCheckRoot = false;
    bool m_isRootGone = false;
};
