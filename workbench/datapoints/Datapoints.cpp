#include "Datapoints.h"

#include "EsfReader.h"
#include "GroupAddressCsvReader.h"
#include "GroupAddressXmlReader.h"
#include "ImportCollector.h"
#include "ModbusReader.h"
#include "TextDecoding.h"
#include "VirtualReader.h"

namespace
{

void ReadGroupAddresses(QStringView text, TImportCollector& collector)
{
    if (IsXml(text))
        ReadGroupAddressXml(text, collector);
    else if (IsEsf(text))
        ReadEsf(text, collector);
    else
        ReadGroupAddressCsv(text, collector);
}

void ReadText(TDatapointKind kind, QStringView text, TImportCollector& collector)
{
    switch (kind) {
    case dkEib:
        ReadGroupAddresses(text, collector);
        break;
    case dkModbus:
        ReadModbusRegisters(text, collector);
        break;
    case dkVirtual:
        ReadVirtualVariables(text, collector);
        break;
    }
}

void ReportDamage(const TDecodedText& decoded, TImportCollector& collector)
{
    const qsizetype damage = decoded.Text.indexOf(QChar::ReplacementCharacter);
    if (damage < 0)
        return;
    const QString reason = QStringLiteral("Hier und vielleicht weiter unten stehen Zeichen, die es in der Kodierung %1 "
                                          "nicht gibt. Möglicherweise ist es eine andere.");
    const qsizetype line = QStringView(decoded.Text).first(damage).count(u'\n') + 1;
    collector.Report(line, reason.arg(decoded.Encoding));
}

} // namespace

TImportResult ReadDatapoints(TDatapointKind kind, const QByteArray& content, const TImportOptions& options)
{
    TImportResult result;
    TImportCollector collector(kind, result, options);
    const TDecodedText decoded = DecodeText(content, options.Encoding);
    result.Encoding = decoded.Encoding;
    if (QStringView(decoded.Text).trimmed().isEmpty()) {
        collector.Report(0, QStringLiteral("Die Datei ist leer."));
        return result;
    }
    ReportDamage(decoded, collector);
    ReadText(kind, decoded.Text, collector);
    if (result.Recognised && !result.Cancelled && result.Datapoints.isEmpty())
        collector.Report(0, QStringLiteral("Die Datei enthält keinen Datenpunkt."));
    collector.Finish();
    return result;
}

QStringList ImportEncodings()
{
    return EncodingNames();
}
