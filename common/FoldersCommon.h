#pragma once

#include <QObject>
#include <QString>

#include <array>
#include <functional>

// Where a datapoint comes from: an EIB group address, a Modbus register, a virtual (internal) variable.
enum TNodeSource : quint8
{
    nsEIB,
    nsMODBUS,
    nsVIRTUAL,
};

// The data type of a datapoint as its EIS type. The order is part of the design: EIS14 comes before EIS10 and EIS11.
enum TDataTypeMap : quint8
{
    dtmEIS1,  // switching, 1 bit
    dtmEIS6,  // relative value, 8 bit
    dtmEIS14, // counter, 8 bit
    dtmEIS10, // counter, 16 bit
    dtmEIS11, // counter, 32 bit
};

// A request to move; the tree editors act on dirUp and dirDown only.
enum TDirection : quint8
{
    dirNone,
    dirTop,
    dirLeft,
    dirRight,
    dirBottom,
    dirUp,
    dirDown,
};

// Raised by a properties dialog when the user asks for the previous or next tree node while it stays open.
using TMoveNotify = std::function<void(QObject* sender, TDirection theDirection)>;

// The text form of a source wherever one is written, by ordinal.
inline constexpr std::array DSRC_ITEMS{"eib", "modbus", "virtual"};

// The source that a text names, without regard to case; nsEIB for every other text.
TNodeSource Str2NS(QStringView text);
const char* SourceText(TNodeSource source);

// The data type of an EIS number, dtmEIS1 for one that has none of its own, and back (1 for an unknown ordinal).
TDataTypeMap eis2dt(int eisNumber);
int dt2Eis(TDataTypeMap dataType);

// The URL by which the web visualisation reaches a file that was dropped on an editor: relative to `base`, or to the
// project (PRJPATH) when that is empty, with forward slashes. `withPrefix` puts the way up to the common folder before
// it; without, the result begins with a slash. What holds "://" is a URL already and comes back unchanged.
QString GetResourceUrl(const QString& path, const QString& base, bool withPrefix);
