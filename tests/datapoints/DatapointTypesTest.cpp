#include "EisTypes.h"
#include "RegisterTypes.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <utility>

namespace
{

struct TTypeRow
{
    const char* Text;
    int Eis;
};

void PrintTo(const TTypeRow& row, std::ostream* stream)
{
    *stream << row.Text;
}

class DatapointType : public testing::TestWithParam<TTypeRow>
{};

class RegisterType : public testing::TestWithParam<TTypeRow>
{};

} // namespace

TEST_P(DatapointType, HasItsEisType)
{
    EXPECT_EQ(EisOfDatapointTypes(QString::fromLatin1(GetParam().Text)), GetParam().Eis);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DatapointType,
    testing::Values(TTypeRow{"DPST-1-1", 1}, TTypeRow{"DPST-1-7", 7}, TTypeRow{"DPST-1-8", 7}, TTypeRow{"DPST-1-9", 1},
                    TTypeRow{"DPT-1", 1}, TTypeRow{"DPST-2-1", 8}, TTypeRow{"DPST-3-7", 2}, TTypeRow{"DPST-4-1", 13},
                    TTypeRow{"DPST-5-1", 6}, TTypeRow{"DPST-5-3", 6}, TTypeRow{"DPST-5-4", 14}, TTypeRow{"DPT-5", 14},
                    TTypeRow{"DPST-6-1", 14}, TTypeRow{"DPST-7-1", 10}, TTypeRow{"DPST-8-1", 10},
                    TTypeRow{"DPST-9-1", 5}, TTypeRow{"DPST-10-1", 3}, TTypeRow{"DPST-11-1", 4},
                    TTypeRow{"DPST-12-1", 11}, TTypeRow{"DPST-13-13", 11}, TTypeRow{"DPST-14-56", 9},
                    TTypeRow{"DPST-15-0", 12}, TTypeRow{"DPST-16-1", 15}, TTypeRow{"DPST-17-1", 0},
                    TTypeRow{"DPST-232-600", 0}, TTypeRow{"", 0}, TTypeRow{" ", 0}, TTypeRow{"DPST-1-1 DPST-9-1", 5},
                    TTypeRow{"DPST-1-1, DPT-9 ", 5}, TTypeRow{"dpst-1-1", 1}));

TEST(DatapointTypes, RefuseOtherText)
{
    for (const char* text : {"9.001", "DPT", "DPT-", "DPST-1", "DPST-1-", "DPST-1-x", "DPT-1-1", "DPT-99999999999999"})
        EXPECT_FALSE(EisOfDatapointTypes(QString::fromLatin1(text))) << text;
}

TEST(TypeWords, AreGermanAndEnglish)
{
    EXPECT_EQ(EisOfTypeWord(u"EIS 1 'Schalten' (1 Bit)"), 1);
    EXPECT_EQ(EisOfTypeWord(u"EIS 2 'Dimming - control' (4 Bit)"), 2);
    EXPECT_EQ(EisOfTypeWord(u"EIS 8 'Skalieren – Steuerung' (2 Bit)"), 8);
    EXPECT_EQ(EisOfTypeWord(u" EIS 15 'Zeichenkette' (14 Byte)"), 15);
    for (const QStringView text : {u"Unbestimmt (1 Byte)", u"Uncertain (4 Byte)"})
        EXPECT_EQ(EisOfTypeWord(text), UndeterminedEis);
    for (const QStringView text : {u"Unbekannt", u"Unknown"})
        EXPECT_EQ(EisOfTypeWord(text), UndeterminedEis);
}

TEST(TypeWords, RefuseOtherText)
{
    for (const char* text : {"", "Low", "EIS", "EIS 0 'x'", "EIS 16 'x'", "EIS 1x", "EIS x"})
        EXPECT_FALSE(EisOfTypeWord(QString::fromLatin1(text))) << text;
}

TEST_P(RegisterType, GivesTheEisTypeOfItsSize)
{
    EXPECT_EQ(EisOfRegisterType(QString::fromLatin1(GetParam().Text)), GetParam().Eis);
}

INSTANTIATE_TEST_SUITE_P(Table, RegisterType,
                         testing::Values(TTypeRow{"bool", 1}, TTypeRow{"Bit", 1}, TTypeRow{"1 bit", 1},
                                         TTypeRow{"u8", 14}, TTypeRow{"s8", 14}, TTypeRow{"uint8be", 14},
                                         TTypeRow{"8", 14}, TTypeRow{"int16be", 10}, TTypeRow{"UINT16", 10},
                                         TTypeRow{"s16", 10}, TTypeRow{"16 Bit", 10}, TTypeRow{"uint32le", 11},
                                         TTypeRow{"int32sw", 11}, TTypeRow{"u32", 11}, TTypeRow{"floatbe", 0},
                                         TTypeRow{"float32", 0}, TTypeRow{"uint64be", 0}, TTypeRow{"string", 0},
                                         TTypeRow{"rawhex", 0}, TTypeRow{"-", 0}, TTypeRow{"", 0}, TTypeRow{"2", 0}));

TEST(RegisterTypes, KnowNumberedSizes)
{
    const std::array<int, 8> types{0, 14, 10, 11, 14, 10, 11, 0};
    for (size_t i = 0; i < types.size(); ++i)
        EXPECT_EQ(EisOfVariableSize(QString::number(i)), types[i]) << i;
    EXPECT_EQ(EisOfVariableSize(u"u32"), 11);
    EXPECT_EQ(EisOfVariableSize(u"-"), 0);
}

TEST(RegisterTypes, NameTheKindsOfRegisters)
{
    EXPECT_EQ(RegisterKindName(u"MODBUS_INPUT_REGISTER"), QStringLiteral("Input-Register"));
    EXPECT_EQ(RegisterKindName(u"Holding register"), QStringLiteral("Holding-Register"));
    EXPECT_EQ(RegisterKindName(u"Discrete Input"), QStringLiteral("Discrete Input"));
    EXPECT_EQ(RegisterKindName(u"COILS"), QStringLiteral("Coil"));
    EXPECT_EQ(RegisterKindName(u" FIFO "), QStringLiteral("FIFO"));
    EXPECT_TRUE(IsBitKind(RegisterKindName(u"coil")));
    EXPECT_FALSE(IsBitKind(RegisterKindName(u"holding")));
}

TEST(RegisterTypes, ReadDecimalAndHexadecimalNumbers)
{
    EXPECT_EQ(ParseRegisterNumber(u"0"), 0);
    EXPECT_EQ(ParseRegisterNumber(u" 40001 "), 40001);
    EXPECT_EQ(ParseRegisterNumber(u"0x1F"), 31);
    EXPECT_EQ(ParseRegisterNumber(u"0000000016"), 16);
    EXPECT_EQ(ParseRegisterNumber(u"465536"), 465536);
    for (const char* text : {"", "-1", "+1", "465537", "0x", "1F", "1.5", "99999999999", "00000000016"})
        EXPECT_FALSE(ParseRegisterNumber(QString::fromLatin1(text))) << text;
}
