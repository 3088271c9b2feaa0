#pragma once

#include "Vlexport.h"

#include <QIcon>
#include <QString>

#include <optional>

// The size of a glyph in device-independent pixels.
inline constexpr int EntryIconSize = 32;

// The icon in a picture file, sharp on screens of up to four times the resolution. Nothing for a file that is missing
// or no picture.
VLHOST_API std::optional<QIcon> LoadEntryIcon(const QString& path);
