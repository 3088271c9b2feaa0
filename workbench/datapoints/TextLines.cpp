#include "TextLines.h"

#include <algorithm>

bool TTextLines::Next()
{
    if (m_next >= m_text.size())
        return false;
    const auto isEnd = [](QChar c) { return c == u'\n' || c == u'\r'; };
    const auto* const end = std::find_if(m_text.begin() + m_next, m_text.end(), isEnd);
    const qsizetype at = end - m_text.begin();
    m_line = m_text.sliced(m_next, at - m_next);
    const bool pair = at + 1 < m_text.size() && m_text[at] == u'\r' && m_text[at + 1] == u'\n';
    m_next = at + (pair ? 2 : 1);
    ++m_number;
    return true;
}

double TTextLines::Done() const
{
    return m_text.isEmpty() ? 1 : std::min(1.0, static_cast<double>(m_next) / static_cast<double>(m_text.size()));
}
