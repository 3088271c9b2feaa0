#pragma once

#include <cstddef>
#include <functional>
#include <utility>

// Bounds what libxml2 and libxslt make the process hold on this thread while it lives, beyond what it held at the
// beginning. Past the limit large blocks are refused, and small ones are given all the same, because the libraries do
// not stand the refusal of every one: whoever sets a limit also says how what is running comes to its end. One lives at
// a time.
//
// What is taken is added up; what the process really holds is asked only when that would pass the limit, because to
// count every block that is freed would slow an export down. The limit is kept to a sixty-fourth.
class TXmlMemoryLimit
{
public:
    // A block of this size passes every limit: the libraries count the length of texts in 32 bits, also of two of them
    // together.
    static constexpr std::size_t HugeBlock = std::size_t{1} << 29;

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

    bool MayTake(std::size_t size)
    {
        m_taken += size + Overhead;
        return (size < HugeBlock && m_taken <= m_unasked) || Ask(size);
    }
    bool Ask(std::size_t size);

    // What the system's functions need at most for keeping a block themselves.
    static constexpr std::size_t Overhead = 32;

    std::size_t m_limit;
    std::size_t m_before;    // what the process held at the beginning
    std::size_t m_taken = 0; // since the process was asked, freed or not
    std::size_t m_unasked;   // so much may be taken before it is asked again
    bool m_isPassed = false;
    std::function<void()> m_stop;
};
