#pragma once

#include "Layout.h"

class QMainWindow;

// What a main window looked like when it was used last: its geometry, and for each set of panes where they stood. Kept
// in the user's settings.
void SaveArrangement(const QMainWindow& window, const TLayout& layout);
void RestoreGeometry(QMainWindow& window);
// Nothing happens when these panes were never saved.
void RestoreArrangement(QMainWindow& window, const TLayout& layout);
