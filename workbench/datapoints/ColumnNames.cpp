#include "ColumnNames.h"

QString ColumnWord(QStringView heading)
{
    QString word;
    for (const QChar c : heading) {
        if (c.isLetterOrNumber())
            word += c.toLower();
    }
    return word;
}

qsizetype FindColumn(const QStringList& header, const TColumnNames& names, qsizetype from)
{
    for (const QStringView name : names) {
        for (qsizetype column = from; column < header.size(); ++column) {
            if (ColumnWord(header[column]) == name)
                return column;
        }
    }
    return -1;
}
