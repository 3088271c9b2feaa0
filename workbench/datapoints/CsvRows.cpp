#include "CsvRows.h"

#include "CsvSplitter.h"
#include "TextLines.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

// A quoted cell of more lines than this is a quotation mark that was never closed.
constexpr qsizetype LongestCell = 32;

// Reads row by row. Keeps a bookmark at the first line of a row, to come back when its quotes turn out to be none.
class TRowReader
{
public:
    TRowReader(QStringView text, char separator) : m_lines(text), m_splitter(separator) {}

    // False at the end.
    bool Next(TCsvRow& row)
    {
        do {
            if (!m_lines.Next())
                return false;
        } while (m_lines.Line().trimmed().isEmpty());
        row.Line = m_lines.Number();
        row.Cells = ReadCells();
        m_columns = row.Cells.size();
        return true;
    }

    double Done() const { return m_lines.Done(); }

private:
    QStringList ReadCells()
    {
        if (m_splitter.Feed(m_lines.Line()))
            return m_splitter.TakeCells();
        const TTextLines first = m_lines;
        if (!IsSwallowed(first.Line()) && ReadToClosingQuote())
            return m_splitter.TakeCells();
        m_splitter.Reset();
        m_lines = first;
        return m_splitter.SplitPlainly(first.Line());
    }

    // Whether the open quote took cells along that the line needs to be as wide as the row before. A cell that is open
    // at the end of the line may well go on in the next.
    bool IsSwallowed(QStringView line) const
    {
        const qsizetype plain = m_splitter.SplitPlainly(line).size();
        return m_columns > 1 && plain == m_columns && m_splitter.CellCount() + 1 < plain;
    }

    bool ReadToClosingQuote()
    {
        for (qsizetype i = 1; i < LongestCell && m_lines.Next(); ++i) {
            if (m_splitter.Feed(m_lines.Line()))
                return true;
        }
        return false;
    }

    TTextLines m_lines;
    TCsvSplitter m_splitter;
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
