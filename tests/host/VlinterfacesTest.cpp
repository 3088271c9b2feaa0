#include "Vlinterfaces.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

constexpr TGuid IID_ITest{0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}};
constexpr TGuid IID_IAlmostTest{0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 9}};

class TObject final : public IInterface
{
public:
    bool QueryInterface(const TGuid&, void** result) override
    {
        *result = nullptr;
        return false;
    }
    int AddRef() override { return 1; }
    int Release() override { return 1; }
};

IInterface* Found(const TGuid& iid)
{
    TObject leftover;
    IInterface* result = &leftover;
    FindApplicationInterface(iid, &result);
    return result;
}

class ApplicationInterfaces : public testing::Test
{
protected:
    ~ApplicationInterfaces() override
    {
        SetApplicationInterface(IID_ITest, nullptr);
        SetApplicationInterface(IID_IAlmostTest, nullptr);
    }
};

} // namespace

// The slots of derived interfaces follow the three of the base directly.
static_assert(!std::has_virtual_destructor_v<IInterface>);

TEST(Guid, IsEqualInAllItsPartsOnly)
{
    EXPECT_EQ(IID_ITest, (TGuid{0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}}));
    EXPECT_NE(IID_ITest, IID_IAlmostTest);
    EXPECT_NE(IID_ITest, (TGuid{0x12345679, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}}));
    EXPECT_NE(IID_ITest, (TGuid{0x12345678, 0x9ABD, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}}));
    EXPECT_NE(IID_ITest, (TGuid{0x12345678, 0x9ABC, 0xDEF1, {1, 2, 3, 4, 5, 6, 7, 8}}));
}

TEST_F(ApplicationInterfaces, AreFoundByTheirId)
{
    TObject object;
    EXPECT_EQ(SetApplicationInterface(IID_ITest, &object), nullptr);
    EXPECT_EQ(Found(IID_ITest), &object);
    EXPECT_EQ(Found(IID_IAlmostTest), nullptr);
}

TEST_F(ApplicationInterfaces, ThatAreNotOfferedClearTheResult)
{
    EXPECT_EQ(Found(IID_ITest), nullptr);
}

TEST_F(ApplicationInterfaces, ReplaceEachOther)
{
    TObject first;
    TObject second;
    SetApplicationInterface(IID_ITest, &first);
    EXPECT_EQ(SetApplicationInterface(IID_ITest, &second), &first);
    EXPECT_EQ(Found(IID_ITest), &second);
}

TEST_F(ApplicationInterfaces, AreForgottenOneByOne)
{
    TObject first;
    TObject second;
    SetApplicationInterface(IID_ITest, &first);
    SetApplicationInterface(IID_IAlmostTest, &second);
    EXPECT_EQ(SetApplicationInterface(IID_ITest, nullptr), &first);
    EXPECT_EQ(SetApplicationInterface(IID_ITest, nullptr), nullptr);
    EXPECT_EQ(Found(IID_ITest), nullptr);
    EXPECT_EQ(Found(IID_IAlmostTest), &second);
}
