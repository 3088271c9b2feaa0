#pragma once

#include <QStringView>

class TImportCollector;

// The engineering tool's OPC export: a line with the project's name, then one line for each address, its fields divided
// by tabs: "main group.middle group.1/2/3", name, type in words, priority, listening addresses. Nothing is quoted.

// Whether `text` is such an export: of its first lines one has an address behind the last dot of its first
// field and a type in words, or most have such an address.
bool IsEsf(QStringView text);

void ReadEsf(QStringView text, TImportCollector& collector);
