#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

#include <sys/stat.h>

enum class TFileKind : uint8_t
{
    Item,    // a file or a symbolic link
    Special, // a FIFO, a socket, a device: known, never told
    Folder,
};

// By what a later look tells whether an item's content may have changed.
struct TFileStamp
{
    ino_t Inode = 0;
    int64_t Modified = 0; // nanoseconds since 1970, as ChangeTime; 0 when unknown
    int64_t ChangeTime = 0;
    off_t Size = -1;

    // What a stat structure says; the times stay unknown when the file changed so lately that a further change could
    // carry the same time.
    static TFileStamp Of(const struct stat& status);
    static bool IsFresh(const struct stat& status);
};

TFileKind KindOf(const struct stat& status);

struct TFileNode;

struct TFileNodeHash
{
    using is_transparent = void; // NOLINT(readability-identifier-naming): the name the library asks for
    size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
    size_t operator()(const std::unique_ptr<TFileNode>& node) const;
};

struct TFileNodeEqual
{
    using is_transparent = void; // NOLINT(readability-identifier-naming): the name the library asks for
    static std::string_view NameOf(std::string_view name) { return name; }
    static std::string_view NameOf(const std::unique_ptr<TFileNode>& node);

    template <class A, class B> bool operator()(const A& a, const B& b) const { return NameOf(a) == NameOf(b); }
};

// What only a folder has.
struct TFolderState
{
    std::unordered_set<std::unique_ptr<TFileNode>, TFileNodeHash, TFileNodeEqual> Children;
    dev_t Device = 0;
    int Watch = -1;        // the number of its watch, or -1
    unsigned Round = 0;    // when it was last read from the disk, in rounds of the tracker
    bool IsRemote = false; // on a file system that others write to without this machine being told
};

// One name of the last known state. A node belongs to its parent's folder, the root's node to the tracker.
struct TFileNode
{
    std::string Name; // the root's: its path
    TFileNode* Parent = nullptr;
    std::unique_ptr<TFolderState> Folder; // of a folder, else null
    TFileStamp Stamp;
    int64_t Waiting = -1; // the place among the items that wait to be told, or -1
    unsigned Seen = 0;    // the comparison that last saw it
    TFileKind Kind = TFileKind::Item;
    bool IsTold = false;     // a follower of the changes has it
    bool IsClosed = false;   // waiting, and nobody was writing when last heard of
    bool IsLeaving = false;  // the first half of its rename was told
    bool WasRenamed = false; // since its stamp: the change time says nothing then

    TFileNode* Find(std::string_view name) const;
    // A new child; the name must be free.
    TFileNode* Add(std::string_view name, TFileKind kind);
    // Takes the node out of its parent.
    std::unique_ptr<TFileNode> Take();
    // Puts a taken node under `parent` with a name that is free there.
    static void Put(std::unique_ptr<TFileNode> node, TFileNode& parent, std::string_view name);

    std::string Path() const;
    bool IsBelow(const TFileNode& ancestor) const;
    // Whether the item's content may differ from what was told, `now` being its stamp on the disk.
    bool MayDiffer(const TFileStamp& now) const;
};
