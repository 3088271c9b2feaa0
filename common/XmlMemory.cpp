#include "XmlMemory.h"

#include <QtGlobal>

#include <libxml/xmlmemory.h>

#include <algorithm>
#include <cstring>
#include <utility>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VELMORA_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define VELMORA_ADDRESS_SANITIZER
#endif

#ifdef VELMORA_ADDRESS_SANITIZER
#include <sanitizer/allocator_interface.h>
#else
#include <malloc.h>
#endif

namespace
{

// Texts and tables that grow are larger sooner or later; what is allocated for one node never is.
constexpr std::size_t LargeBlock = 0x10000;
// So close to the limit, as a part of it, that asking more often is not worth its time.
constexpr std::size_t SmallestShare = 64;

// Asked for with every block, of which an export makes millions; the usual way to a variable of a loaded module is a
// call.
[[gnu::tls_model("initial-exec")]] thread_local TXmlMemoryLimit* g_limit = nullptr;

// What the libraries used before, and use still while no limit lives.
xmlMallocFunc g_malloc = nullptr;
xmlMallocFunc g_mallocAtomic = nullptr;
xmlReallocFunc g_realloc = nullptr;

// Takes milliseconds, so nobody asks with every block.
std::size_t HeldBytes()
{
#ifdef VELMORA_ADDRESS_SANITIZER
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

} // namespace

class TXmlMemoryLimit::TAllocator
{
public:
    // For the rest of the process: every block comes from the functions that were there before, and is freed by theirs,
    // so it does not matter when a block was made.
    static bool Install()
    {
        xmlFreeFunc free = nullptr;
        xmlStrdupFunc copy = nullptr; // takes its blocks from the others
        xmlGcMemGet(&free, &g_malloc, &g_mallocAtomic, &g_realloc, &copy);
        return xmlGcMemSetup(free, Malloc, MallocAtomic, Realloc, Strdup) == 0;
    }

private:
    static void* Malloc(std::size_t size) { return !g_limit || g_limit->MayTake(size) ? g_malloc(size) : nullptr; }

    static void* MallocAtomic(std::size_t size)
    {
        return !g_limit || g_limit->MayTake(size) ? g_mallocAtomic(size) : nullptr;
    }

    // A block that grows counts whole until the process is asked.
    static void* Realloc(void* block, std::size_t size)
    {
        return !g_limit || g_limit->MayTake(size) ? g_realloc(block, size) : nullptr;
    }

    static char* Strdup(const char* text)
    {
        const std::size_t size = std::strlen(text) + 1;
        void* copy = MallocAtomic(size);
        return static_cast<char*>(copy ? std::memcpy(copy, text, size) : nullptr);
    }
};

TXmlMemoryLimit::TXmlMemoryLimit(std::size_t bytes) : m_limit(bytes), m_before(HeldBytes()), m_unasked(bytes)
{
    static const bool isInstalled = TAllocator::Install();
    Q_ASSERT(isInstalled && !g_limit);
    g_limit = this;
}

TXmlMemoryLimit::~TXmlMemoryLimit()
{
    g_limit = nullptr;
}

bool TXmlMemoryLimit::Ask(std::size_t size)
{
    const std::size_t now = HeldBytes();
    const std::size_t held = now - std::min(now, m_before);
    const std::size_t left = m_limit - std::min(m_limit, held);
    const bool fits = size < HugeBlock && size <= left;
    m_taken = 0;
    m_unasked = std::max(fits ? left - size : left, m_limit / SmallestShare);
    if (fits)
        return true;
    if (!std::exchange(m_isPassed, true) && m_stop)
        m_stop();
    return size < LargeBlock;
}
