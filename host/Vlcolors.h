#pragma once

#include "Vlexport.h"

#include <QColor>
#include <QPalette>

#include <cstdint>
#include <optional>

class QWidget;

// A colour as command texts carry it: 0x00BBGGRR fixed, 0x80000000 plus an index a system colour, 0x20000000 the
// control's own default.
using TColor = std::uint32_t;

inline constexpr TColor DefaultColor = 0x20000000;
inline constexpr TColor WindowColor = 0x80000005;       // the background of editable areas
inline constexpr TColor AppWorkspaceColor = 0x8000000C; // behind document windows

// The colour written in `text`: decimal (also above the signed range), negative decimal, or "$" and hexadecimal digits.
// Text that is not a number gives `defaultColor`.
VLHOST_API TColor StrToColorDef(QStringView text, TColor defaultColor);

// The colour to paint with under `palette`; nothing for the control's default colour.
VLHOST_API std::optional<QColor> ToQColor(TColor color, const QPalette& palette);

// Gives `widget` the colour for `role` (QPalette::Text and QPalette::Base for trees), or its default one back.
VLHOST_API void ApplyColor(QWidget* widget, QPalette::ColorRole role, TColor color);
