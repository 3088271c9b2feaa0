#pragma once

#include <QStringView>

class TImportCollector;

// Virtual variables: one a line, by its name and, behind tabs or semicolons, its label and the number of its EIS type.
// Blank lines and those that begin with "#" are none. Says why and recognises nothing when the text is of another
// format.
void ReadVirtualVariables(QStringView text, TImportCollector& collector);
