#include "ImportCollector.h"

#include "DatapointKey.h"
#include "EisTypes.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr qsizetype LongestPiece = 60;
constexpr int LinesPerProgress = 512;

bool BreaksLine(QChar c)
{
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

bool IsOneLine(QStringView text)
{
    return std::none_of(text.begin(), text.end(), BreaksLine);
}

// Each run of breaks becomes one blank; blanks that the text has of its own stay.
QString OneLine(QStringView text)
{
    QString line;
    line.reserve(text.size());
    bool broken = false;
    for (const QChar c : text) {
        const bool breaks = BreaksLine(c);
        if (!breaks)
            line += c;
        else if (!broken)
            line += u' ';
        broken = breaks;
    }
    return line.trimmed();
}

QStringView Shortened(QStringView text, qsizetype longest)
{
    if (text.size() <= longest)
        return text;
    const bool splitsPair = text[longest - 1].isHighSurrogate();
    return text.first(splitsPair ? longest - 1 : longest);
}

QString OneShortLine(const QString& text)
{
    return text.isEmpty() ? text : Shortened(OneLine(text), LongestName).toString();
}

} // namespace

QString QuotedPiece(QStringView text)
{
    const QStringView piece = Shortened(text.trimmed(), LongestPiece);
    const QString dots = piece.size() < text.trimmed().size() ? QStringLiteral("…") : QString();
    return QStringLiteral("„") + OneLine(piece) + dots + QStringLiteral("“");
}

TImportCollector::TImportCollector(TDatapointKind kind, TImportResult& result, const TImportOptions& options)
    : m_kind(kind), m_result(result), m_options(options)
{
}

void TImportCollector::Add(TDatapoint datapoint, qsizetype line)
{
    const QString address = OneLine(datapoint.Address);
    if (address.isEmpty()) {
        Report(line, QStringLiteral("Die Adresse %1 hat kein lesbares Zeichen.").arg(QuotedPiece(datapoint.Address)));
        return;
    }
    if (!IsOneLine(datapoint.Address.trimmed())) {
        Report(line, QStringLiteral("Zeilenumbrüche und Steuerzeichen in der Adresse %1 wurden durch Leerzeichen "
                                    "ersetzt.")
                         .arg(QuotedPiece(datapoint.Address)));
    }
    datapoint.Address = address;
    datapoint.Device = OneShortLine(datapoint.Device);
    datapoint.RegisterKind = OneShortLine(datapoint.RegisterKind);
    const QString key = DatapointKey(m_kind, datapoint);
    const auto first = m_firsts.find(key);
    if (first != m_firsts.end()) {
        ReportDoubled(DatapointIdentifier(datapoint), *first, line);
        return;
    }
    m_firsts.insert(key, {.Line = line});
    datapoint.Line = line;
    datapoint.Name = DisplayName(datapoint.Name, line);
    for (QString& name : datapoint.Group)
        name = DisplayName(name, line);
    m_result.Datapoints.append(std::move(datapoint));
}

void TImportCollector::ReportDoubled(const QString& address, TFirst& first, qsizetype line)
{
    const QString piece = QuotedPiece(address);
    if (!std::exchange(first.Reported, true)) {
        Report(first.Line, QStringLiteral("Die Adresse %1 steht noch einmal in Zeile %2; diese hier gilt.")
                               .arg(piece, QString::number(line)));
    }
    Report(line, QStringLiteral("Die Adresse %1 steht schon in Zeile %2; diese hier wird nicht übernommen.")
                     .arg(piece, QString::number(first.Line)));
}

void TImportCollector::Report(qsizetype line, const QString& reason)
{
    m_result.Problems.append({.Line = line, .Reason = reason});
}

QString TImportCollector::DisplayName(const QString& name, qsizetype line)
{
    if (name.size() <= LongestName && IsOneLine(name))
        return name.trimmed();
    const QString oneLine = OneLine(name);
    if (!IsOneLine(name.trimmed())) {
        Report(line, QStringLiteral("Zeilenumbrüche und Tabulatoren im Namen %1 wurden durch Leerzeichen ersetzt.")
                         .arg(QuotedPiece(name)));
    }
    if (oneLine.size() <= LongestName)
        return oneLine;
    Report(line, QStringLiteral("Der Name %1 ist länger als %2 Zeichen und wurde gekürzt.")
                     .arg(QuotedPiece(name), QString::number(LongestName)));
    return Shortened(oneLine, LongestName).toString();
}

int TImportCollector::KnownType(std::optional<int> eis, QStringView text, qsizetype line)
{
    if (!eis && !text.trimmed().isEmpty())
        Report(line, QStringLiteral("Der Typ %1 ist unbekannt und bleibt offen.").arg(QuotedPiece(text)));
    return eis.value_or(UndeterminedEis);
}

bool TImportCollector::Advance(double done)
{
    if (m_result.Cancelled || !m_options.Progress)
        return !m_result.Cancelled;
    if (m_untilProgress > 0) {
        --m_untilProgress;
        return true;
    }
    m_untilProgress = LinesPerProgress;
    m_result.Cancelled = !m_options.Progress(DecodingShare + (1 - DecodingShare) * done);
    return !m_result.Cancelled;
}

void TImportCollector::SetFormat(const QString& format)
{
    m_result.Format = format;
    m_result.Recognised = true;
}

void TImportCollector::SetTitle(const QString& title)
{
    m_result.Title = DisplayName(title, 1);
}

void TImportCollector::Finish()
{
    if (m_result.Cancelled)
        m_result.Datapoints.clear();
    std::stable_sort(m_result.Problems.begin(), m_result.Problems.end(),
                     [](const TImportProblem& a, const TImportProblem& b) { return a.Line < b.Line; });
}
