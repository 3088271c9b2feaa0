#pragma once

#include <QStringView>

class TImportCollector;

// The engineering tool's OPC export: a line with the project's name, then one line for each address, its fields divided
// by tabs: "main group.middle group.1/2/3", name, type in words, priority, listening addresses. Nothing is quoted.

// Whether `text` is such an export: one of its first lines has an address behind the last dot of its first field.
bool IsEsf(QStringView text);

void ReadEsf(QStringView text, TImportCollector& collector);
