#pragma once

#include <QString>

#include <optional>

// The EIS type for the size of a register as lists write it: "uint16be", "s32", "8 bit", "bool". Floating point
// numbers, texts and whatever else has no size are undetermined.
int EisOfRegisterType(QStringView type);

// The same for a size that is given by the number of a variable type, 1 to 6: s8, s16, s32, u8, u16, u32. Lists write
// such numbers and words in one column.
int EisOfVariableSize(QStringView size);

// What a kind of register is called here: "Holding-Register" for "MODBUS_HOLDING_REGISTER". Unknown kinds keep their
// text.
QString RegisterKindName(QStringView kind);

// Whether registers of that name hold one bit each.
bool IsBitKind(QStringView kindName);

// The number of a register, decimal or with "0x"; also in the reference notation, whose largest number is 465536.
std::optional<int> ParseRegisterNumber(QStringView text);
