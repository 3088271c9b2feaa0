#include "XmlMemory.h"

#include <gtest/gtest.h>
#include <libxml/globals.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace
{

constexpr std::size_t KiB = 1024;
constexpr std::size_t MiB = 1024 * KiB;
constexpr std::size_t Limit = 8 * MiB;
constexpr std::size_t Small = 100;

class XmlMemory : public testing::Test
{
protected:
    XmlMemory()
    {
        m_limit.emplace(Limit);
        m_limit->SetStop([this] { ++m_stops; });
    }
    ~XmlMemory() override
    {
        for (void* block : m_blocks)
            xmlFree(block);
    }

    // False when the libraries would get nothing.
    bool Takes(std::size_t size, xmlMallocFunc allocate = xmlMalloc)
    {
        void* block = allocate(size);
        m_blocks[m_count++ % m_blocks.size()] = block;
        return block != nullptr;
    }

    std::optional<TXmlMemoryLimit> m_limit;
    int m_stops = 0;
    std::array<void*, 16> m_blocks{};
    std::size_t m_count = 0;
};

} // namespace

TEST_F(XmlMemory, IsGivenUpToTheLimit)
{
    for (std::size_t i = 1; i < Limit / MiB; ++i)
        EXPECT_TRUE(Takes(MiB)) << i;
    EXPECT_FALSE(m_limit->IsPassed());
    EXPECT_EQ(m_stops, 0);
}

TEST_F(XmlMemory, IsRefusedInLargeBlocksPastTheLimit)
{
    for (const xmlMallocFunc allocate : {xmlMalloc, xmlMallocAtomic}) {
        EXPECT_FALSE(Takes(Limit + 1, allocate));
        EXPECT_TRUE(Takes(Limit / 4, allocate));
    }
    EXPECT_FALSE(Takes(Limit));
    EXPECT_FALSE(Takes(static_cast<std::size_t>(PTRDIFF_MAX)));
    EXPECT_TRUE(m_limit->IsPassed());
}

TEST_F(XmlMemory, IsRefusedInBlocksWhoseLengthMayOverflow)
{
    m_limit.reset();
    m_limit.emplace(TXmlMemoryLimit::HugeBlock * 4);
    EXPECT_TRUE(Takes(TXmlMemoryLimit::HugeBlock - 1));
    EXPECT_FALSE(m_limit->IsPassed());
    EXPECT_FALSE(Takes(TXmlMemoryLimit::HugeBlock));
    EXPECT_TRUE(m_limit->IsPassed());
}

TEST_F(XmlMemory, IsGivenInSmallBlocksAlsoPastTheLimit)
{
    for (std::size_t i = 0; i <= Limit / MiB; ++i)
        Takes(MiB - KiB);
    ASSERT_FALSE(Takes(MiB));
    EXPECT_TRUE(Takes(Small));
}

TEST_F(XmlMemory, StopsOnlyOnceWhatPassesTheLimit)
{
    EXPECT_FALSE(Takes(2 * Limit));
    EXPECT_FALSE(Takes(2 * Limit));
    EXPECT_EQ(m_stops, 1);
}

TEST_F(XmlMemory, IsGivenAgainWhenItWasFreed)
{
    for (std::size_t i = 0; i < 10 * Limit / MiB; ++i) {
        void* block = xmlMalloc(MiB);
        ASSERT_NE(block, nullptr);
        xmlFree(block);
    }
    EXPECT_FALSE(m_limit->IsPassed());
}

TEST_F(XmlMemory, KeepsTheBlockThatMayNotGrow)
{
    auto* text = static_cast<char*>(xmlMalloc(Small));
    text[0] = 'x';
    EXPECT_EQ(xmlRealloc(text, 2 * Limit), nullptr);
    EXPECT_EQ(text[0], 'x');
    text = static_cast<char*>(xmlRealloc(text, Limit / 2));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text[0], 'x');
    EXPECT_FALSE(Takes(Limit / 2 + KiB));
    text = static_cast<char*>(xmlRealloc(text, Small));
    EXPECT_TRUE(Takes(Limit / 2 + KiB));
    xmlFree(text);
}

TEST_F(XmlMemory, CountsCopiesOfTexts)
{
    const std::string text(Limit - MiB, 'x');
    char* copy = xmlMemStrdup(text.c_str());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy, text);
    EXPECT_EQ(xmlMemStrdup(text.c_str()), nullptr);
    EXPECT_FALSE(Takes(MiB));
    xmlFree(copy);
}

TEST_F(XmlMemory, MakesNoDifferenceBetweenBlocksOfBeforeAndAfter)
{
    m_limit.reset();
    void* before = xmlMalloc(Limit * 2);
    ASSERT_NE(before, nullptr);
    m_limit.emplace(Limit);
    void* within = xmlMalloc(MiB);
    before = xmlRealloc(before, Small);
    EXPECT_TRUE(Takes(MiB));
    xmlFree(before);
    m_limit.reset();
    xmlFree(within);
    EXPECT_TRUE(Takes(Limit * 2));
}
