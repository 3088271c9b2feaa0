#include "GermanLetters.h"

namespace
{

constexpr QStringView SmallLetters = u"äöüß";
constexpr QStringView CapitalLetters = u"ÄÖÜ";

bool IsLatinLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool IsWordLetter(QChar c)
{
    return IsLatinLetter(c) || SmallLetters.contains(c) || CapitalLetters.contains(c);
}

// A closing quotation mark of Windows-1252 is an "ö" in IBM850, and stands behind a letter as well: only a letter that
// goes on inside the word, or the sharp s at its end, proves anything.
bool IsInPlace(QChar letter, QChar before, QChar behind)
{
    if (letter == u'ß')
        return IsWordLetter(before);
    if (SmallLetters.contains(letter))
        return IsWordLetter(before) && IsWordLetter(behind);
    return CapitalLetters.contains(letter) && IsWordLetter(behind) && (!IsWordLetter(before) || before.isUpper());
}

} // namespace

qsizetype CountGermanLetters(QStringView text)
{
    qsizetype count = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].unicode() < 0x80)
            continue;
        const QChar before = i > 0 ? text[i - 1] : QChar(u' ');
        const QChar behind = i + 1 < text.size() ? text[i + 1] : QChar(u' ');
        count += IsInPlace(text[i], before, behind) ? 1 : 0;
    }
    return count;
}
