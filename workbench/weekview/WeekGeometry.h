#pragma once

#include "WeekLayout.h"

#include <QFontMetricsF>
#include <QRectF>

#include <utility>

// What a point of the picture shows, and where it stands.
struct TWeekSpot
{
    int Day = TWeekStop::Dayless;
    QRectF Rect;
    QList<int> Entries; // one, or several in one box
};

struct TWeekFrame
{
    QRectF Area;           // all of the picture
    bool HasNames = false; // the boxes name their datapoints
    bool HasStrip = false; // there are entries without a day
    bool Scrolls = false;  // the day may be higher than the area
    double Zoom = 1;       // of the height of the day
    double Offset = 0;     // how far it is scrolled
};

// Where everything in the picture of a week stands: a head with the days, the hours down the left side, a column for
// each day, and below them the strip of the entries without a day and the legend. All measures follow the font.
class TWeekGeometry
{
public:
    TWeekGeometry(const TWeekFrame& frame, const QFontMetricsF& metrics);

    // The thickness of a fine line and of everything small.
    double Unit() const { return m_unit; }
    double RowHeight() const { return m_rowHeight; }
    const QRectF& Area() const { return m_frame.Area; }
    QRectF Head(int day) const;
    // The part that scrolls: hours and columns, as much of it as can be seen.
    QRectF Body() const;
    // How high the body would be if all of it was seen.
    double ContentHeight() const { return m_contentHeight; }
    double HourHeight() const;
    QRectF Column(int day) const;
    double Y(double minute) const;
    double MinuteAt(double y) const;
    QRectF StripLabel() const;
    QRectF Legend() const;

    TWeekRoom Room() const;
    QRectF Box(int day, const TWeekBox& box) const;
    // The boxes of a day that can be seen, as a range of indices.
    std::pair<qsizetype, qsizetype> Visible(const QList<TWeekBox>& boxes) const;
    // The entries without a day, as many as find room; the last spot holds the rest.
    QList<TWeekSpot> StripSpots(const QList<int>& dayless) const;
    // Without entries where nothing is.
    TWeekSpot SpotAt(const TWeekLayout& layout, const QPointF& point) const;
    // The spot that holds an entry on a day; without entries when there is none.
    TWeekSpot SpotOf(const TWeekLayout& layout, const TWeekStop& stop) const;

private:
    double ColumnWidth() const;
    double BoxHeight() const;
    double StripHeight() const;
    TWeekSpot StripSpotAt(const QList<int>& dayless, const QPointF& point) const;

    TWeekFrame m_frame;
    double m_unit;
    double m_rowHeight;
    double m_headHeight;
    double m_axisWidth;
    double m_laneWidth; // at least
    double m_labelWidth;
    double m_contentHeight;
};
