#include "DatapointKey.h"

#include "ColumnNames.h"
#include "GroupAddress.h"
#include "RegisterTypes.h"

namespace
{

constexpr QChar KeySeparator = u'|';

QString NumberOrText(const QString& text)
{
    const auto number = ParseRegisterNumber(text);
    return number ? QString::number(*number) : text.trimmed().toCaseFolded().replace(KeySeparator, u' ');
}

QString GroupAddressKey(const QString& text)
{
    const auto address = ParseGroupAddress(text);
    return address ? QString::number(BusValue(*address)) : text;
}

QString RegisterKey(const QString& device, const QString& kind, const QString& number)
{
    return NumberOrText(device) + KeySeparator + ColumnWord(kind) + KeySeparator + NumberOrText(number);
}

// "Holding-Register/0x10", or the number alone.
QString KeyOfOldRegister(const QString& text)
{
    const qsizetype slash = text.lastIndexOf(u'/');
    return RegisterKey({}, text.left(qMax<qsizetype>(slash, 0)), text.mid(slash + 1));
}

} // namespace

QString DatapointKey(TDatapointKind kind, const TDatapoint& datapoint)
{
    switch (kind) {
    case dkEib:
        return GroupAddressKey(datapoint.Address);
    case dkModbus:
        return RegisterKey(datapoint.Device, datapoint.RegisterKind, datapoint.Address);
    case dkVirtual:
        break;
    }
    return datapoint.Address;
}

TStoredKey ReadStoredKey(TDatapointKind kind, const QString& text)
{
    if (kind == dkEib)
        return {.Key = GroupAddressKey(text), .IsOld = false};
    const bool isOld = kind == dkModbus && text.count(KeySeparator) != 2;
    return {.Key = isOld ? KeyOfOldRegister(text) : text, .IsOld = isOld};
}

QString KeyWithoutDevice(TDatapointKind kind, TDatapoint datapoint)
{
    datapoint.Device.clear();
    return DatapointKey(kind, datapoint);
}

QString DatapointIdentifier(const TDatapoint& datapoint)
{
    QString identifier;
    for (const QString& part : {datapoint.Device, datapoint.RegisterKind}) {
        if (!part.isEmpty())
            identifier += part + u'/';
    }
    return identifier + datapoint.Address;
}
