#pragma once

#include <QStringView>

// Walks the lines of a text, which must outlive it. A line ends with LF, CR LF or a CR alone; the last one needs no
// end. Copies are bookmarks.
class TTextLines
{
public:
    explicit TTextLines(QStringView text) : m_text(text) {}

    // False at the end of the text.
    bool Next();

    QStringView Line() const { return m_line; }

    // Counted from 1; 0 before the first call of Next.
    qsizetype Number() const { return m_number; }

    // The share of the text that is behind this line, 0 to 1.
    double Done() const;

private:
    QStringView m_text;
    QStringView m_line;
    qsizetype m_next = 0;
    qsizetype m_number = 0;
};
