#include "CsvSplitter.h"

#include <csv.h>

#include <new>
#include <utility>

namespace
{

// By how much the buffer for a cell grows; libcsv's own step is so small that a megabyte takes thousands of copies.
constexpr size_t BufferStep = 65536;

int IsBlank(unsigned char c)
{
    return c == ' ' ? 1 : 0;
}

} // namespace

TCsvSplitter::TCsvSplitter(char separator) : m_parser(std::make_unique<csv_parser>()), m_separator(separator)
{
    if (csv_init(m_parser.get(), 0) != 0)
        throw std::bad_alloc();
    csv_set_delim(m_parser.get(), static_cast<unsigned char>(separator));
    csv_set_blk_size(m_parser.get(), BufferStep);
    csv_set_space_func(m_parser.get(), IsBlank);
}

TCsvSplitter::~TCsvSplitter()
{
    csv_free(m_parser.get());
}

bool TCsvSplitter::Feed(QStringView line)
{
    QByteArray bytes = line.toUtf8();
    bytes.append('\n');
    const auto size = static_cast<size_t>(bytes.size());
    if (csv_parse(m_parser.get(), bytes.constData(), size, TakeCell, TakeRowEnd, this) != size)
        throw std::bad_alloc();
    return m_complete;
}

QStringList TCsvSplitter::TakeCells()
{
    m_complete = false;
    return std::exchange(m_cells, {});
}

void TCsvSplitter::Reset()
{
    csv_fini(m_parser.get(), nullptr, nullptr, nullptr);
    m_cells.clear();
    m_complete = false;
}

QStringList TCsvSplitter::SplitPlainly(QStringView line) const
{
    QStringList cells;
    for (const QStringView cell : line.split(QLatin1Char(m_separator)))
        cells.append(cell.trimmed().toString());
    return cells;
}

void TCsvSplitter::TakeCell(void* bytes, size_t size, void* splitter)
{
    const auto* const text = static_cast<const char*>(bytes);
    static_cast<TCsvSplitter*>(splitter)->m_cells.append(QString::fromUtf8(text, static_cast<qsizetype>(size)));
}

void TCsvSplitter::TakeRowEnd(int /*lineEnd*/, void* splitter)
{
    static_cast<TCsvSplitter*>(splitter)->m_complete = true;
}
