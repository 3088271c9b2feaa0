#include "Datapoints.h"

#include "EsfReader.h"
#include "GroupAddressCsvReader.h"
#include "GroupAddressXmlReader.h"
#include "ImportCollector.h"
#include "ModbusReader.h"
#include "TextDecoding.h"
#include "TextLines.h"
#include "VirtualReader.h"

#include <QLocale>

namespace
{

constexpr qsizetype LongestLine = 65'536;

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

void ReportDamage(QStringView text, const QString& encoding, TImportCollector& collector)
{
    if (!text.contains(QChar::ReplacementCharacter))
        return;
    const QString reason = QStringLiteral("Hier stehen Zeichen, die es im Zeichensatz %1 nicht gibt. Möglicherweise "
                                          "ist es ein anderer.")
                               .arg(encoding);
    for (TTextLines lines(text); lines.Next() && collector.Advance(0);) {
        if (lines.Line().contains(QChar::ReplacementCharacter))
            collector.Report(lines.Number(), reason);
    }
}

qsizetype LineAt(QStringView text)
{
    TTextLines lines(text);
    while (lines.Next()) {
    }
    return qMax<qsizetype>(lines.Number(), 1);
}

// What speaks against the encoding, at the line of the byte in question.
void ReportDoubt(const QByteArray& content, const TDecodedText& decoded, TImportCollector& collector)
{
    if (!decoded.Doubt.isEmpty())
        collector.Report(LineAt(QString::fromLatin1(content.first(decoded.DoubtAt + 1))), decoded.Doubt);
}

// Lines that no program writes are reported and left blank.
QString WithoutLongLines(const QString& text, TImportCollector& collector)
{
    QString bearable;
    qsizetype kept = 0;
    for (TTextLines lines(text); lines.Next() && collector.Advance(0);) {
        if (lines.Line().size() <= LongestLine)
            continue;
        collector.Report(lines.Number(), QStringLiteral("Die Zeile ist länger als %1 Zeichen und wird nicht gelesen.")
                                             .arg(QLocale(QLocale::German).toString(LongestLine)));
        const qsizetype begin = lines.Line().begin() - QStringView(text).begin();
        bearable += QStringView(text).sliced(kept, begin - kept);
        kept = begin + lines.Line().size();
    }
    bearable += QStringView(text).sliced(kept);
    return bearable;
}

} // namespace

TImportResult ReadDatapoints(TDatapointKind kind, const QByteArray& content, const TImportOptions& options)
{
    TImportResult result;
    TImportCollector collector(kind, result, options);
    const auto progress = [&](double done) { return !options.Progress || options.Progress(DecodingShare * done); };
    const TDecodedText decoded = DecodeText(content, options.Encoding, progress);
    result.Encoding = decoded.Encoding;
    result.Cancelled = decoded.Cancelled;
    if (result.Cancelled)
        return result;
    if (QStringView(decoded.Text).trimmed().isEmpty()) {
        collector.Report(0, QStringLiteral("Die Datei ist leer."));
        return result;
    }
    ReportDoubt(content, decoded, collector);
    ReportDamage(decoded.Text, decoded.Encoding, collector);
    // A document may well be one long line.
    ReadText(kind, IsXml(decoded.Text) ? decoded.Text : WithoutLongLines(decoded.Text, collector), collector);
    if (result.Recognised && !result.Cancelled && result.Datapoints.isEmpty())
        collector.Report(0, QStringLiteral("Die Datei enthält keinen Datenpunkt."));
    collector.Finish();
    return result;
}

QStringList ImportEncodings()
{
    return EncodingNames();
}
