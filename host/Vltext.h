#pragma once

#include "Vlexport.h"

#include <QString>

#include <cstdint>
#include <optional>

// Equality of two texts without regard to case, the same under every locale.
VLHOST_API bool SameText(QStringView a, QStringView b);

// The number that `text` stands for: optional leading blanks, an optional sign, then decimal digits, or "$" and up to
// eight hexadecimal digits (32 bits; "$80000005" is negative). Nothing may follow. Nothing else is a number, decimal
// values outside the signed 32-bit range included.
VLHOST_API std::optional<std::int32_t> StrToInt(QStringView text);

// StrToInt, or `defaultValue` for text that is not a number.
VLHOST_API std::int32_t StrToIntDef(QStringView text, std::int32_t defaultValue);
