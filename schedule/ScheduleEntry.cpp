#include "ScheduleEntry.h"

#include "FoldersRc.h"
#include "Formatting.h"
#include "Vltext.h"

namespace
{

constexpr double MillisecondsOfDay = 24.0 * 60 * 60 * 1000;

QTime TimeOf(const QString& text)
{
    return QTime::fromMSecsSinceStartOfDay(qRound(ConvertTime(text) * MillisecondsOfDay));
}

QString Property(const QString& text, const char* name)
{
    return GetPropertyValue(text, QString::fromLatin1(name));
}

} // namespace

std::optional<TScheduleEntry> ReadScheduleEntry(const QString& text)
{
    if (!text.startsWith(u"<schedule ", Qt::CaseInsensitive))
        return std::nullopt;
    TScheduleEntry entry;
    const QString days = Property(text, "dow");
    for (std::size_t day = 0; day < entry.Days.size(); ++day)
        entry.Days[day] = days.size() > static_cast<qsizetype>(day) && days[static_cast<qsizetype>(day)] == u'1';
    entry.Time = TimeOf(Property(text, "time"));
    entry.Value = Property(text, "value");
    // The shorter key also finds "enabled"; older documents have it as it stands.
    entry.Enabled = StrToIntDef(Property(text, "enable"), 1) != 0;
    entry.PostProcess = StrToIntDef(Property(text, "postprocess"), 0) != 0;
    return entry;
}

QString ScheduleEntryText(const TScheduleEntry& entry)
{
    QString days;
    for (const bool day : entry.Days)
        days += day ? u'1' : u'0';
    return FormatText("<schedule time=\"%s\" dow=\"%s\" value=\"%s\" enabled=\"%d\" postprocess=\"%d\" />",
                      entry.Time.toString(QStringLiteral("HH:mm")), days, entry.Value, entry.Enabled ? 1 : 0,
                      entry.PostProcess ? 1 : 0);
}
