#include "Vlfilestate.h"

#include <ctime>
#include <utility>

namespace
{

constexpr int64_t NanosecondsPerSecond = 1'000'000'000;
// Longer than the tick by which a file system counts.
constexpr int64_t Granularity = 20'000'000;

int64_t Nanoseconds(const timespec& time)
{
    return time.tv_sec * NanosecondsPerSecond + time.tv_nsec;
}

} // namespace

bool TFileStamp::IsFresh(const struct stat& status)
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const int64_t age = Nanoseconds(now) - Nanoseconds(status.st_ctim);
    // A time in the future is another machine's clock, of which nothing is known.
    return age >= 0 && age < Granularity;
}

TFileStamp TFileStamp::Of(const struct stat& status)
{
    const bool isFresh = IsFresh(status);
    return {.Inode = status.st_ino,
            .Modified = isFresh ? 0 : Nanoseconds(status.st_mtim),
            .ChangeTime = isFresh ? 0 : Nanoseconds(status.st_ctim),
            .Size = status.st_size};
}

TFileKind KindOf(const struct stat& status)
{
    if (S_ISDIR(status.st_mode))
        return TFileKind::Folder;
    return S_ISREG(status.st_mode) || S_ISLNK(status.st_mode) ? TFileKind::Item : TFileKind::Special;
}

size_t TFileNodeHash::operator()(const std::unique_ptr<TFileNode>& node) const
{
    return (*this)(std::string_view(node->Name));
}

std::string_view TFileNodeEqual::NameOf(const std::unique_ptr<TFileNode>& node)
{
    return node->Name;
}

TFileNode* TFileNode::Find(std::string_view name) const
{
    const auto child = Folder->Children.find(name);
    return child == Folder->Children.end() ? nullptr : child->get();
}

TFileNode* TFileNode::Add(std::string_view name, TFileKind kind)
{
    auto node = std::make_unique<TFileNode>();
    node->Kind = kind;
    if (kind == TFileKind::Folder)
        node->Folder = std::make_unique<TFolderState>();
    TFileNode* added = node.get();
    Put(std::move(node), *this, name);
    return added;
}

std::unique_ptr<TFileNode> TFileNode::Take()
{
    auto& siblings = Parent->Folder->Children;
    auto handle = siblings.extract(siblings.find(std::string_view(Name)));
    Parent = nullptr;
    return std::move(handle.value());
}

void TFileNode::Put(std::unique_ptr<TFileNode> node, TFileNode& parent, std::string_view name)
{
    node->Name = name;
    node->Parent = &parent;
    parent.Folder->Children.insert(std::move(node));
}

std::string TFileNode::Path() const
{
    if (!Parent)
        return Name;
    std::string path = Parent->Path();
    if (path.back() != '/')
        path += '/';
    return path += Name;
}

bool TFileNode::IsBelow(const TFileNode& ancestor) const
{
    const TFileNode* node = this;
    while (node && node != &ancestor)
        node = node->Parent;
    return node != nullptr;
}

bool TFileNode::MayDiffer(const TFileStamp& now) const
{
    if (Stamp.Inode != now.Inode || Stamp.Size != now.Size || Stamp.Modified == 0 || Stamp.Modified != now.Modified)
        return true;
    return !WasRenamed && Stamp.ChangeTime != now.ChangeTime;
}
