#include "WeekTexts.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace
{

constexpr qsizetype MostToolTipLines = 20;

const std::array<QString, TWeekEntry::DayCount>& DayNames()
{
    static const std::array<QString, TWeekEntry::DayCount> names{
        QStringLiteral("Montag"),  QStringLiteral("Dienstag"), QStringLiteral("Mittwoch"), QStringLiteral("Donnerstag"),
        QStringLiteral("Freitag"), QStringLiteral("Samstag"),  QStringLiteral("Sonntag")};
    return names;
}

QString ToolTipLine(const TWeekEntry& entry)
{
    QString line = EntryText(entry, true).toHtmlEscaped();
    if (!entry.Active)
        line += QStringLiteral(" · inaktiv");
    if (entry.PostProcess)
        line += QStringLiteral(" · Nachfahren");
    return line;
}

} // namespace

QString WeekDayName(int day)
{
    return DayNames().at(static_cast<size_t>(day));
}

QString ShortWeekDayName(int day)
{
    return WeekDayName(day).left(2);
}

QString DaysText(const TWeekEntry& entry)
{
    QStringList days;
    for (int day = 0; day < TWeekEntry::DayCount; ++day) {
        if (entry.Days[static_cast<size_t>(day)])
            days.append(ShortWeekDayName(day));
    }
    if (days.size() == TWeekEntry::DayCount)
        return QStringLiteral("täglich");
    return days.isEmpty() ? QStringLiteral("ohne Tag") : days.join(QStringLiteral(", "));
}

QString TimeText(const TWeekEntry& entry)
{
    return entry.Time.toString(entry.Time.second() == 0 ? QStringLiteral("HH:mm") : QStringLiteral("HH:mm:ss"));
}

QString EntryText(const TWeekEntry& entry, bool withName)
{
    QString text = TimeText(entry) + u' ' + entry.Value.simplified();
    if (withName)
        text += QStringLiteral(" · ") + entry.Datapoint.simplified();
    return text;
}

QString EntryDetails(const TWeekEntry& entry)
{
    QStringList lines{entry.Datapoint, QStringLiteral("%1, %2").arg(TimeText(entry), DaysText(entry)),
                      QStringLiteral("Wert: %1").arg(entry.Value),
                      entry.Active ? QStringLiteral("Aktiv") : QStringLiteral("Inaktiv")};
    if (entry.PostProcess)
        lines.append(QStringLiteral("Nachfahren"));
    return lines.join(u'\n');
}

QString ToolTipText(const QList<TWeekEntry>& entries, const QList<int>& indices)
{
    const QString frame = QStringLiteral("<p style='white-space:pre'>%1</p>");
    if (indices.size() == 1)
        return frame.arg(EntryDetails(entries.value(indices.first())).toHtmlEscaped());
    QStringList lines;
    const qsizetype shown = std::min(indices.size(), MostToolTipLines);
    for (qsizetype i = 0; i < shown; ++i)
        lines.append(ToolTipLine(entries.value(indices[i])));
    if (indices.size() > shown)
        lines.append(QStringLiteral("und %1 weitere").arg(indices.size() - shown));
    return frame.arg(lines.join(u'\n'));
}
