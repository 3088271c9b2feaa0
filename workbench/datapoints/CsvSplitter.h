#pragma once

#include <QStringList>

#include <memory>

struct csv_parser;

// Splits lines into cells by libcsv. Fed line by line, so that its user knows where in the file a row begins, and may
// give up a row.
class TCsvSplitter
{
public:
    explicit TCsvSplitter(char separator);
    ~TCsvSplitter();

    // False when the row goes on in the next line, in a quoted cell.
    bool Feed(QStringView line);

    // The cells that are complete so far.
    qsizetype CellCount() const { return m_cells.size(); }

    // The row that Feed completed.
    QStringList TakeCells();

    // Forgets the row that was begun.
    void Reset();

    // The cells of a line in which quotation marks mean nothing; independent of what was fed.
    QStringList SplitPlainly(QStringView line) const;

private:
    static void TakeCell(void* bytes, size_t size, void* splitter);
    static void TakeRowEnd(int lineEnd, void* splitter);

    std::unique_ptr<csv_parser> m_parser;
    QStringList m_cells;
    char m_separator;
    bool m_complete = false;
};
