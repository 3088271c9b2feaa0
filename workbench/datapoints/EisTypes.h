#pragma once

#include <QString>

#include <optional>

// The EIS types by which the system knows what a datapoint holds, 1 to 15; 0 is an undetermined one.
constexpr int UndeterminedEis = 0;
constexpr int LastEis = 15;

// The type of a word in the OPC export ("EIS 1 'Schalten' (1 Bit)", "Uncertain (1 Byte)"); nothing for any other text.
std::optional<int> EisOfTypeWord(QStringView word);

// The type for the datapoint types of an address ("DPST-1-1", "DPT-9"; of several the last counts); undetermined when
// there is none, nothing for text that is no datapoint type.
std::optional<int> EisOfDatapointTypes(QStringView ids);

// Whether `text` is, or begins with, the identifier of a datapoint type.
bool IsDatapointType(QStringView text);
