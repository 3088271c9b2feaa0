#pragma once

#include <cstddef>
#include <functional>
#include <utility>

// Bounds what libxml2 and libxslt hold on this thread while it lives, counted from its beginning. Past the limit large
// blocks are refused, and small ones are given all the same, because the libraries do not stand the refusal of every
// one: whoever sets a limit also says how what is running comes to its end. One lives at a time.
class TXmlMemoryLimit
{
public:
    explicit TXmlMemoryLimit(std::size_t bytes);
    ~TXmlMemoryLimit();
    TXmlMemoryLimit(const TXmlMemoryLimit&) = delete;
    TXmlMemoryLimit& operator=(const TXmlMemoryLimit&) = delete;

    // Called once, inside of the library, when the limit is passed. None when empty.
    void SetStop(std::function<void()> stop) { m_stop = std::move(stop); }
    bool IsPassed() const { return m_isPassed; }

private:
    // What the libraries are given in the place of the system's functions.
    class TAllocator;

    bool MayTake(std::size_t size);

    std::ptrdiff_t m_limit;
    std::ptrdiff_t m_held = 0; // below zero when more of older blocks has gone
    bool m_isPassed = false;
    std::function<void()> m_stop;
};
