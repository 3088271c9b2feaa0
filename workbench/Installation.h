#pragma once

#include <QString>

// Where the workbench finds what is installed with it. Everything is seen from the program's own directory, so that an
// installation can be moved and a build tree works like one.

// Sets NORHOME, the product's home directory that "%NORHOME%" in a command text stands for, unless the caller has set
// it.
void ProvideProductHome();

// The module of the package `folders`: in ../lib, else in ../lib/velmora. VELMORA_PACKAGE names another one.
QString PackageFile();

// Chooses where the toolkit draws; call it before the application object is made. True for a screen. False when neither
// a display nor a platform is given: everything is then drawn into memory.
bool ChoosePlatform();
