#include "CaptionFile.h"

#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QStringList>

namespace
{

int LevelOf(const QString& line)
{
    int level = 0;
    while (level < line.size() && (line[level] == u'\t' || line[level] == u' '))
        ++level;
    return level;
}

} // namespace

void ThrowMalformedCaptions(const QString& fileName, qsizetype line, const QString& expected)
{
    throw TUserError(
        QStringLiteral("\"%1\", Zeile %2: Die Einrückung ergibt keinen %3.").arg(fileName).arg(line).arg(expected));
}

std::vector<TCaptionLine> ReadCaptionFile(const QString& fileName)
{
    QStringList texts = QString::fromUtf8(ReadFile(fileName)).remove(u'\r').split(u'\n');
    if (texts.last().isEmpty())
        texts.removeLast();
    if (texts.isEmpty())
        ThrowMalformedCaptions(fileName, 1);

    std::vector<TCaptionLine> lines;
    for (const QString& text : std::as_const(texts)) {
        const int level = LevelOf(text);
        const bool fits = lines.empty() ? level == 0 : level > 0 && level <= lines.back().Level + 1;
        if (!fits)
            ThrowMalformedCaptions(fileName, static_cast<qsizetype>(lines.size()) + 1);
        lines.push_back({.Level = level, .Caption = text.mid(level)});
    }
    return lines;
}
