#include "GroupAddressColumns.h"

#include "ColumnNames.h"
#include "EisTypes.h"
#include "GroupAddress.h"

#include <QSet>

#include <algorithm>
#include <functional>
#include <utility>

namespace
{

const TColumnNames GroupNameWords{u"groupname", u"gruppenname", u"name", u"bezeichnung"};
const TColumnNames MainWords{u"main", u"maingroup", u"haupt", u"hauptgruppe"};
const TColumnNames MiddleWords{u"middle", u"middlegroup", u"mittel", u"mittelgruppe"};
const TColumnNames SubWords{u"sub", u"subgroup", u"unter", u"untergruppe"};
const TColumnNames GroupAddressWords{u"address", u"groupaddress", u"adresse", u"gruppenadresse"};
const TColumnNames DatapointTypeWords{u"datapointtype", u"datenpunkttyp", u"dpt"};

constexpr qsizetype Levels = 3;

QList<qsizetype> ColumnsOfLevels(const QStringList& header, qsizetype from)
{
    QList<qsizetype> columns;
    for (const TColumnNames* words : {&MainWords, &MiddleWords, &SubWords}) {
        const qsizetype column = FindColumn(header, *words, from);
        if (column >= 0)
            columns.append(column);
    }
    return columns;
}

// The words for the levels head the names or the addresses, or first the one and then the other.
TGroupAddressColumns ColumnsOfHeader(const QStringList& header)
{
    TGroupAddressColumns columns;
    columns.HasHeader = true;
    columns.Type = FindColumn(header, DatapointTypeWords);
    const qsizetype name = FindColumn(header, GroupNameWords);
    const qsizetype address = FindColumn(header, GroupAddressWords);
    const QList<qsizetype> levels = ColumnsOfLevels(header, 0);
    columns.Names = name >= 0 ? QList{name} : levels;
    if (address >= 0)
        columns.Addresses = {address};
    else if (name >= 0)
        columns.Addresses = levels;
    else if (!levels.isEmpty())
        columns.Addresses = ColumnsOfLevels(header, levels.last() + 1);
    return columns;
}

// The first rows, by which the rest is judged.
class TSample
{
public:
    explicit TSample(const QList<TCsvRow>& rows) : m_rows(rows.first(qMin(rows.size(), LongestSample)))
    {
        for (const TCsvRow& row : m_rows)
            m_width = qMin(qMax(m_width, row.Cells.size()), WidestSample);
    }

    const QList<TCsvRow>& Rows() const { return m_rows; }
    qsizetype Width() const { return m_width; }

    using TRule = std::function<bool(const QString&)>;

    qsizetype Count(qsizetype column, const TRule& rule) const
    {
        return std::count_if(m_rows.begin(), m_rows.end(), [&](const TCsvRow& row) { return rule(row.Cell(column)); });
    }

    bool Mostly(qsizetype column, const TRule& rule) const { return 2 * Count(column, rule) > m_rows.size(); }

    // The column in which most cells follow the rule, the first of equals; -1 when none does.
    qsizetype Best(const TRule& rule) const
    {
        qsizetype best = -1;
        qsizetype most = 0;
        for (qsizetype column = 0; column < m_width; ++column) {
            const qsizetype count = Count(column, rule);
            if (count > most)
                best = column;
            most = qMax(most, count);
        }
        return best;
    }

private:
    static constexpr qsizetype LongestSample = 200;
    static constexpr qsizetype WidestSample = 64;

    QList<TCsvRow> m_rows;
    qsizetype m_width = 0;
};

bool HasLevels(const QString& cell)
{
    const auto address = ParseGroupAddress(cell);
    return address && address->Levels > 1;
}

bool IsNumber(const QString& cell)
{
    const auto address = ParseGroupAddress(cell);
    return address && address->Levels == 1;
}

bool IsNumberOrEmpty(const QString& cell)
{
    return cell.isEmpty() || IsNumber(cell);
}

// Which rows give what when three columns, from `first` on, hold the addresses.
struct TAssignment
{
    qsizetype First = 0;
    bool FitsAll = false;
    qsizetype Addresses = 0; // different ones
};

TAssignment AssignmentAt(const TSample& sample, qsizetype first)
{
    TAssignment assignment{.First = first, .FitsAll = true};
    const TGroupAddressColumns columns{.Names = {}, .Addresses = {first, first + 1, first + 2}};
    QSet<int> found;
    bool isFirst = true;
    for (const TCsvRow& row : sample.Rows()) {
        const auto address = ParseGroupAddress(columns.AddressOf(row));
        const bool fits = address && IsOnBus(*address);
        const bool mayBeHeader = std::exchange(isFirst, false);
        assignment.FitsAll = assignment.FitsAll && (fits || mayBeHeader);
        if (fits && !address->IsRange())
            found.insert(BusValue(*address));
    }
    assignment.Addresses = found.size();
    return assignment;
}

// Where three columns that give addresses in all rows begin; of several places the one with the most addresses. Names
// may be numbers, too: of equals it is the last then, else the first. -1 for none.
qsizetype FirstOfThreeLevels(const TSample& sample)
{
    const bool numberedNames = sample.Mostly(0, IsNumber);
    TAssignment best{.First = -1};
    for (qsizetype first = 1; first + Levels <= sample.Width() && first <= Levels; ++first) {
        const TAssignment assignment = AssignmentAt(sample, first);
        const bool isBetter =
            assignment.Addresses > best.Addresses || (numberedNames && assignment.Addresses == best.Addresses);
        if (assignment.FitsAll && assignment.Addresses > 0 && isBetter)
            best = assignment;
    }
    return best.First;
}

// Numbers that stand side by side; what stands before them are the names.
QList<qsizetype> NumberColumns(const TSample& sample)
{
    const qsizetype first = FirstOfThreeLevels(sample);
    if (first >= 0)
        return {first, first + 1, first + 2};
    QList<qsizetype> columns;
    for (qsizetype column = 1; column < sample.Width() && columns.size() < Levels; ++column) {
        const bool fits = columns.isEmpty()
                              ? sample.Mostly(column, IsNumber)
                              : sample.Mostly(column, IsNumberOrEmpty) && sample.Count(column, IsNumber) > 0;
        if (fits)
            columns.append(column);
        else if (!columns.isEmpty())
            break;
    }
    return columns;
}

QList<qsizetype> NameColumnsBefore(qsizetype address)
{
    if (address == 0)
        return {1};
    QList<qsizetype> columns;
    for (qsizetype column = 0; column < qMin(address, Levels); ++column)
        columns.append(column);
    return columns;
}

TGroupAddressColumns ColumnsOfContent(const QList<TCsvRow>& rows)
{
    TGroupAddressColumns columns;
    const TSample sample(rows);
    const qsizetype address = sample.Best(HasLevels);
    columns.Addresses = address >= 0 ? QList{address} : NumberColumns(sample);
    if (columns.Addresses.isEmpty())
        return columns;
    columns.Names = NameColumnsBefore(columns.Addresses.first());
    columns.Type = sample.Best([](const QString& cell) { return IsDatapointType(cell); });
    // A header in a language that is not known here.
    columns.HasHeader = std::none_of(rows.first().Cells.begin(), rows.first().Cells.end(), [](const QString& cell) {
        return std::any_of(cell.begin(), cell.end(), [](QChar c) { return c.isDigit(); });
    });
    columns.HasUnknownHeader = columns.HasHeader;
    return columns;
}

} // namespace

QString TGroupAddressColumns::AddressOf(const TCsvRow& row) const
{
    QStringList parts;
    for (const qsizetype column : Addresses)
        parts.append(row.Cell(column));
    if (parts.size() == 1)
        return parts.first();
    if (std::all_of(parts.begin(), parts.end(), [](const QString& part) { return part.isEmpty(); }))
        return {};
    for (QString& part : parts)
        part = part.isEmpty() ? QStringLiteral("-") : part;
    return parts.join(u'/');
}

std::optional<TGroupAddressColumns> FindGroupAddressColumns(const QList<TCsvRow>& rows)
{
    if (rows.isEmpty())
        return std::nullopt;
    TGroupAddressColumns columns = ColumnsOfHeader(rows.first().Cells);
    if (columns.Names.isEmpty() || columns.Addresses.isEmpty())
        columns = ColumnsOfContent(rows);
    return columns.Addresses.isEmpty() ? std::nullopt : std::optional(columns);
}

bool IsGroupAddressTable(const QList<TCsvRow>& rows)
{
    if (rows.isEmpty())
        return false;
    const TGroupAddressColumns columns = ColumnsOfHeader(rows.first().Cells);
    if (!columns.Names.isEmpty() && !columns.Addresses.isEmpty())
        return true;
    const TSample sample(rows);
    const qsizetype address = sample.Best(HasLevels);
    return address >= 0 && sample.Mostly(address, HasLevels);
}
