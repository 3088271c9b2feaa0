#include "XmlMemory.h"

#include <QtGlobal>

#include <libxml/xmlmemory.h>

#include <cstring>
#include <utility>

#include <malloc.h>

namespace
{

// Texts and tables that grow are larger sooner or later; what is allocated for one node never is.
constexpr std::size_t LargeBlock = 0x10000;

thread_local TXmlMemoryLimit* g_limit = nullptr;

// What the libraries used before, and use still while no limit lives.
xmlFreeFunc g_free = nullptr;
xmlMallocFunc g_malloc = nullptr;
xmlMallocFunc g_mallocAtomic = nullptr;
xmlReallocFunc g_realloc = nullptr;

} // namespace

class TXmlMemoryLimit::TAllocator
{
public:
    // For the rest of the process: every block comes from the functions that were there before, and goes there, so it
    // does not matter when a block was made.
    static bool Install()
    {
        xmlStrdupFunc copy = nullptr; // takes its blocks from the others
        xmlGcMemGet(&g_free, &g_malloc, &g_mallocAtomic, &g_realloc, &copy);
        return xmlGcMemSetup(Free, Malloc, MallocAtomic, Realloc, Strdup) == 0;
    }

private:
    static std::ptrdiff_t SizeOf(void* block) { return static_cast<std::ptrdiff_t>(malloc_usable_size(block)); }

    static void Free(void* block)
    {
        if (g_limit)
            g_limit->m_held -= SizeOf(block);
        g_free(block);
    }

    static void* Malloc(std::size_t size) { return Take(g_malloc, size); }

    static void* MallocAtomic(std::size_t size) { return Take(g_mallocAtomic, size); }

    static void* Take(xmlMallocFunc allocate, std::size_t size)
    {
        if (g_limit && !g_limit->MayTake(size))
            return nullptr;
        void* block = allocate(size);
        if (g_limit)
            g_limit->m_held += SizeOf(block);
        return block;
    }

    static void* Realloc(void* block, std::size_t size)
    {
        if (!g_limit)
            return g_realloc(block, size);
        if (!g_limit->MayTake(size))
            return nullptr;
        const std::ptrdiff_t before = SizeOf(block);
        void* moved = g_realloc(block, size);
        if (moved)
            g_limit->m_held += SizeOf(moved) - before;
        return moved;
    }

    static char* Strdup(const char* text)
    {
        const std::size_t size = std::strlen(text) + 1;
        void* copy = MallocAtomic(size);
        return static_cast<char*>(copy ? std::memcpy(copy, text, size) : nullptr);
    }
};

TXmlMemoryLimit::TXmlMemoryLimit(std::size_t bytes) : m_limit(static_cast<std::ptrdiff_t>(bytes))
{
    static const bool isInstalled = TAllocator::Install();
    Q_ASSERT(isInstalled && !g_limit);
    g_limit = this;
}

TXmlMemoryLimit::~TXmlMemoryLimit()
{
    g_limit = nullptr;
}

bool TXmlMemoryLimit::MayTake(std::size_t size)
{
    if (std::cmp_less_equal(size, m_limit - m_held))
        return true;
    if (!std::exchange(m_isPassed, true) && m_stop)
        m_stop();
    return size < LargeBlock;
}
