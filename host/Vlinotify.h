#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// One notification of the system. `Name` points into the buffer that it was read from.
struct TInotifyEvent
{
    int Watch = -1;
    uint32_t Mask = 0;
    uint32_t Cookie = 0; // pairs the two halves of a rename
    std::string_view Name;
};

// The system's change notification: a descriptor, and a number for each watched folder. Belongs to the tracker of one
// root; closing it ends every watch.
class TInotify
{
public:
    // `maxWatches` limits the watches beside the system's own limit; 0 sets no limit.
    explicit TInotify(int maxWatches);
    ~TInotify();
    TInotify(const TInotify&) = delete;
    TInotify& operator=(const TInotify&) = delete;

    // -1 where the system gives none.
    int Descriptor() const { return m_descriptor; }

    // Watches the folder behind an open descriptor. The number of the watch, the same one for a folder that is watched
    // already, as `isWatched` says it may be; -1 with errno set (ENOSPC: no more watches) on failure.
    int Add(int folder, uint32_t mask, bool isWatched);
    void Remove(int watch);
    // To be called for each watch that the system has ended by itself.
    void Ended() { --m_count; }

    // Appends to `buffer` what has been told since the last call. False when that was nothing.
    bool Read(std::string& buffer) const;

    // Takes the event at `position` of a buffer and moves on to the next one.
    static TInotifyEvent Next(const std::string& buffer, size_t& position);

private:
    int m_descriptor;
    int m_maxWatches;
    int m_count = 0;
    int m_highest = 0; // numbers are given in rising order: a higher one is a new watch
};
