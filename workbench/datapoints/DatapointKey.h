#pragma once

#include "Datapoints.h"

// What tells the datapoints of one kind apart, however a file writes them: equal for "1/2/3", "1/515" and "2563", and
// for the registers "0x10" and "16" of one device and one kind. Two datapoints of the same key are one and the same.
QString DatapointKey(TDatapointKind kind, const TDatapoint& datapoint);

// The key that stands in a file of decisions. Older ones name an address as it was shown; `IsOld` then says that the
// device of a register is not part of it.
struct TStoredKey
{
    QString Key;
    bool IsOld = false;
};
TStoredKey ReadStoredKey(TDatapointKind kind, const QString& text);

// The key as it would be if the datapoint belonged to no device.
QString KeyWithoutDevice(TDatapointKind kind, TDatapoint datapoint);

// What people and editors call a datapoint: its address, behind the device and the kind of register where there are
// such. Unique among the datapoints of a kind.
QString DatapointIdentifier(const TDatapoint& datapoint);
