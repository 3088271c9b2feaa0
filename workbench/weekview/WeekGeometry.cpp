#include "WeekGeometry.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr double FontUnits = 16;      // fine lines in the height of the font
constexpr double LeastHour = 0.85;    // in heights of the font
constexpr int NamedChars = 17;        // that a box with a name shows at least
constexpr int UnnamedChars = 11;      // and one without
constexpr int MostShiftMinutes = 240; // that a box may stand below its time

} // namespace

TWeekGeometry::TWeekGeometry(const TWeekFrame& frame, const QFontMetricsF& metrics)
    : m_frame(frame),
      m_unit(metrics.height() / FontUnits),
      m_rowHeight(metrics.height() + 4 * m_unit),
      m_headHeight(m_rowHeight + 8 * m_unit),
      m_axisWidth(metrics.horizontalAdvance(QStringLiteral("00:00")) + 12 * m_unit),
      m_laneWidth(metrics.averageCharWidth() * (frame.HasNames ? NamedChars : UnnamedChars) + 10 * m_unit),
      m_labelWidth(1.2 * metrics.horizontalAdvance(QStringLiteral("Ohne Tag")) + 16 * m_unit),
      m_contentHeight(Body().height() * frame.Zoom)
{
    // Several datapoints switch at about the same time more often than one does.
    const double leastHour = frame.HasNames ? BoxHeight() : LeastHour * metrics.height();
    if (frame.Scrolls)
        m_contentHeight = std::max(m_contentHeight, 24 * leastHour * frame.Zoom);
}

double TWeekGeometry::StripHeight() const
{
    return m_frame.HasStrip ? m_rowHeight + 8 * m_unit : 0;
}

QRectF TWeekGeometry::Body() const
{
    return m_frame.Area.adjusted(0, m_headHeight, 0, -(StripHeight() + Legend().height()));
}

double TWeekGeometry::ColumnWidth() const
{
    return std::max(0.0, m_frame.Area.width() - m_axisWidth) / TWeekEntry::DayCount;
}

QRectF TWeekGeometry::Column(int day) const
{
    const QRectF body = Body();
    return {body.left() + m_axisWidth + day * ColumnWidth(), body.top(), ColumnWidth(), body.height()};
}

QRectF TWeekGeometry::Head(int day) const
{
    return {Column(day).left(), m_frame.Area.top(), ColumnWidth(), m_headHeight};
}

QRectF TWeekGeometry::Legend() const
{
    const double height = m_rowHeight + 6 * m_unit;
    return {m_frame.Area.left(), m_frame.Area.bottom() - height, m_frame.Area.width(), height};
}

QRectF TWeekGeometry::StripLabel() const
{
    return {m_frame.Area.left(), Legend().top() - StripHeight(), m_labelWidth, StripHeight()};
}

// The labels of the first and the last hour stand half beyond their lines.
double TWeekGeometry::HourHeight() const
{
    return std::max(m_unit, (m_contentHeight - m_rowHeight) / 24);
}

double TWeekGeometry::Y(double minute) const
{
    return Body().top() + m_rowHeight / 2 + minute * HourHeight() / 60 - m_frame.Offset;
}

double TWeekGeometry::MinuteAt(double y) const
{
    return (y - Y(0)) * 60 / HourHeight();
}

// A narrow box holds the name in a line of its own.
double TWeekGeometry::BoxHeight() const
{
    return m_frame.HasNames && ColumnWidth() < m_laneWidth ? 1.8 * m_rowHeight : m_rowHeight;
}

TWeekRoom TWeekGeometry::Room() const
{
    const int minutes = std::clamp(static_cast<int>(std::ceil(BoxHeight() * 60 / HourHeight())), 1, MinutesPerDay);
    return {.BoxMinutes = minutes,
            .Lanes = std::max(1, static_cast<int>(ColumnWidth() / m_laneWidth)),
            .MostRows = std::max(2, 1 + MostShiftMinutes / minutes)};
}

QRectF TWeekGeometry::Box(int day, const TWeekBox& box) const
{
    const QRectF column = Column(day).adjusted(2 * m_unit, 0, -2 * m_unit, 0);
    const double width = column.width() / box.LaneCount;
    return {column.left() + box.Lane * width, Y(box.Top), width - m_unit, BoxHeight() - m_unit};
}

std::pair<qsizetype, qsizetype> TWeekGeometry::Visible(const QList<TWeekBox>& boxes) const
{
    const auto standsBefore = [](const TWeekBox& box, double minute) { return box.Top < minute; };
    const QRectF body = Body();
    const auto first = std::lower_bound(boxes.begin(), boxes.end(), MinuteAt(body.top() - BoxHeight()), standsBefore);
    const auto last = std::lower_bound(first, boxes.end(), MinuteAt(body.bottom()), standsBefore);
    return {first - boxes.begin(), last - boxes.begin()};
}

QList<TWeekSpot> TWeekGeometry::StripSpots(const QList<int>& dayless) const
{
    const QRectF label = StripLabel();
    const double width = m_laneWidth * 1.3;
    const auto most = std::max<qsizetype>(1, static_cast<qsizetype>((m_frame.Area.right() - label.right()) / width));
    QList<TWeekSpot> spots;
    for (qsizetype i = 0; i < std::min(most, dayless.size()); ++i) {
        const bool takesRest = i == most - 1;
        spots.append({.Rect = {label.right() + static_cast<double>(i) * width, label.top() + 4 * m_unit,
                               width - 2 * m_unit, m_rowHeight},
                      .Entries = takesRest ? dayless.mid(i) : QList<int>{dayless[i]}});
    }
    return spots;
}

TWeekSpot TWeekGeometry::StripSpotAt(const QList<int>& dayless, const QPointF& point) const
{
    const QList<TWeekSpot> spots = StripSpots(dayless);
    const auto found =
        std::find_if(spots.begin(), spots.end(), [&](const TWeekSpot& spot) { return spot.Rect.contains(point); });
    return found == spots.end() ? TWeekSpot() : *found;
}

TWeekSpot TWeekGeometry::SpotAt(const TWeekLayout& layout, const QPointF& point) const
{
    if (!Body().contains(point))
        return StripSpotAt(layout.Dayless, point);
    for (int day = 0; day < TWeekEntry::DayCount; ++day) {
        const QList<TWeekBox>& boxes = layout.Days[static_cast<size_t>(day)];
        const auto [first, last] = Column(day).contains(point) ? Visible(boxes) : std::pair<qsizetype, qsizetype>();
        for (qsizetype i = first; i < last; ++i) {
            if (Box(day, boxes[i]).contains(point))
                return {.Day = day, .Rect = Box(day, boxes[i]), .Entries = boxes[i].Entries};
        }
    }
    return {};
}

TWeekSpot TWeekGeometry::SpotOf(const TWeekLayout& layout, const TWeekStop& stop) const
{
    if (stop.Day == TWeekStop::Dayless) {
        const QList<TWeekSpot> spots = StripSpots(layout.Dayless);
        const auto found = std::find_if(spots.begin(), spots.end(),
                                        [&](const TWeekSpot& spot) { return spot.Entries.contains(stop.Entry); });
        return found == spots.end() ? TWeekSpot() : *found;
    }
    const QList<TWeekBox>& boxes = layout.Days[static_cast<size_t>(stop.Day)];
    const auto found =
        std::find_if(boxes.begin(), boxes.end(), [&](const TWeekBox& box) { return box.Entries.contains(stop.Entry); });
    if (found == boxes.end())
        return {};
    return {.Day = stop.Day, .Rect = Box(stop.Day, *found), .Entries = found->Entries};
}
