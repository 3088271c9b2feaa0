#include "CsvRows.h"

#include "CsvSplitter.h"
#include "ImportCollector.h"
#include "TextLines.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

// A quoted cell of more lines than this is a quotation mark that was never closed.
constexpr qsizetype LongestCell = 32;

// Follows the quotation marks of one row, line by line.
class TQuoteScan
{
public:
    explicit TQuoteScan(char separator) : m_separator(QLatin1Char(separator)) {}

    // False when a quoted cell goes on behind its closing quotation mark.
    bool Take(QStringView line)
    {
        bool begun = m_quoted; // whether the cell has more than blanks
        qsizetype separators = 0;
        for (qsizetype i = 0; i < line.size(); ++i) {
            if (m_quoted) {
                separators += line[i] == m_separator ? 1 : 0;
                if (line[i] != u'"')
                    continue;
                if (i + 1 < line.size() && line[i + 1] == u'"')
                    ++i;
                else if (EndsCell(line.sliced(i + 1)))
                    m_quoted = false;
                else
                    return false;
            } else if (line[i] == m_separator) {
                begun = false;
            } else if (line[i] == u'"' && !begun) {
                m_quoted = begun = true;
                separators = 0;
            } else if (line[i] != u' ') {
                begun = true;
            }
            m_mostInside = std::max(m_mostInside, separators);
        }
        return true;
    }

    // The most separators that one line has inside of one quoted cell.
    qsizetype MostInside() const { return m_mostInside; }

private:
    bool EndsCell(QStringView behind) const
    {
        const auto* const next = std::find_if(behind.begin(), behind.end(), [](QChar c) { return c != u' '; });
        return next == behind.end() || *next == m_separator;
    }

    QChar m_separator;
    qsizetype m_mostInside = 0;
    bool m_quoted = false;
};

// Reads row by row. Keeps a bookmark at the first line of a row, to come back when its quotes turn out to be none.
class TRowReader
{
public:
    TRowReader(QStringView text, char separator) : m_lines(text), m_splitter(separator), m_separator(separator) {}

    // False at the end.
    bool Next(TCsvRow& row)
    {
        do {
            if (!m_lines.Next())
                return false;
        } while (m_lines.Line().trimmed().isEmpty());
        row.Line = m_lines.Number();
        ReadCells(row);
        m_columns = row.Cells.size();
        return true;
    }

    double Done() const { return m_lines.Done(); }

private:
    void ReadCells(TCsvRow& row)
    {
        const TTextLines first = m_lines;
        TQuoteScan quotes(m_separator);
        if (ReadToRowEnd(quotes)) {
            row.Cells = m_splitter.TakeCells();
            const qsizetype columns = m_columns > 0 ? m_columns : row.Cells.size();
            const bool holdsRow = columns > 1 && quotes.MostInside() + 1 >= columns;
            row.Quotes = holdsRow && m_lines.Number() > row.Line ? rqDoubtful : rqProper;
            return;
        }
        m_splitter.Reset();
        m_lines = first;
        row.Cells = m_splitter.SplitPlainly(first.Line());
        row.Quotes = rqCharacters;
    }

    // Whether the open quote took cells along that the line needs to be as wide as the row before. A cell that is open
    // at the end of the line may well go on in the next.
    bool IsSwallowed(QStringView line) const
    {
        const qsizetype plain = m_splitter.SplitPlainly(line).size();
        return m_columns > 1 && plain == m_columns && m_splitter.CellCount() + 1 < plain;
    }

    bool ReadToRowEnd(TQuoteScan& quotes)
    {
        qsizetype lines = 0;
        do {
            if (!quotes.Take(m_lines.Line()))
                return false;
            if (m_splitter.Feed(m_lines.Line()))
                return true;
        } while ((lines > 0 || !IsSwallowed(m_lines.Line())) && ++lines < LongestCell && m_lines.Next());
        return false;
    }

    TTextLines m_lines;
    TCsvSplitter m_splitter;
    char m_separator;
    qsizetype m_columns = 0; // of the row before
};

constexpr std::array<char, 3> Separators{'\t', ';', ','};

qsizetype CountUnquoted(QStringView line, char16_t separator)
{
    qsizetype count = 0;
    bool quoted = false;
    for (const QChar c : line) {
        quoted ^= c == u'"';
        count += !quoted && c == separator ? 1 : 0;
    }
    return count;
}

// How many of the lines have the same number of that separator, zero excepted.
qsizetype CountAlike(const QList<QStringView>& lines, char separator)
{
    QHash<qsizetype, qsizetype> linesOf;
    qsizetype most = 0;
    for (const QStringView line : lines) {
        const qsizetype count = CountUnquoted(line, static_cast<char16_t>(separator));
        if (count > 0)
            most = std::max(most, ++linesOf[count]);
    }
    return most;
}

} // namespace

char FindSeparator(QStringView text)
{
    constexpr qsizetype sampleSize = 100;
    QList<QStringView> sample;
    for (TTextLines lines(text); sample.size() < sampleSize && lines.Next();)
        sample.append(lines.Line());
    std::array<std::pair<qsizetype, char>, Separators.size()> counts;
    std::transform(Separators.begin(), Separators.end(), counts.begin(),
                   [&](char c) { return std::pair(CountAlike(sample, c), c); });
    // Of equals the first, as a comma and a semicolon are found in names and a tab is not.
    return std::max_element(counts.begin(), counts.end(), [](auto a, auto b) { return a.first < b.first; })->second;
}

QString SeparatorName(char separator)
{
    switch (separator) {
    case '\t':
        return QStringLiteral("Tabulator");
    case ';':
        return QStringLiteral("Semikolon");
    default:
        return QStringLiteral("Komma");
    }
}

QList<TCsvRow> ReadCsvRows(QStringView text, char separator, const std::function<bool(double done)>& progress)
{
    QList<TCsvRow> rows;
    TRowReader reader(text, separator);
    for (TCsvRow row; reader.Next(row);) {
        rows.append(row);
        if (!progress(reader.Done()))
            break;
    }
    return rows;
}

void ReportQuotes(const QList<TCsvRow>& rows, TImportCollector& collector)
{
    for (const TCsvRow& row : rows) {
        if (row.Quotes == rqCharacters) {
            collector.Report(row.Line, QStringLiteral("Die Anführungszeichen dieser Zeile umschließen keine Felder; "
                                                      "sie gelten als gewöhnliche Zeichen."));
        } else if (row.Quotes == rqDoubtful) {
            collector.Report(row.Line, QStringLiteral("Ein Feld in Anführungszeichen geht hier über mehrere Zeilen und "
                                                      "sieht aus wie eigene Zeilen der Tabelle. Möglicherweise fehlt "
                                                      "ein Anführungszeichen."));
        }
    }
}
