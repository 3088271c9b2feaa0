#pragma once

#include "WeekGeometry.h"

#include <QColor>
#include <QDateTime>
#include <QFont>

class QPainter;
class QPalette;

// What the picture of a week shows.
struct TWeekPicture
{
    QList<TWeekEntry> Entries;
    QList<int> Tints; // the number of each entry's datapoint, which decides its colour
    TWeekLayout Layout;
    bool HasNames = false; // entries of several datapoints
    int Selected = -1;     // an entry
    TWeekStop Focus;       // where the keyboard stands; without an entry it does not
    QDateTime Now;         // the time to mark; invalid for none
};

// A picture of these entries that is laid out nowhere yet.
TWeekPicture MakeWeekPicture(const QList<TWeekEntry>& entries);

struct TWeekColors
{
    QColor Paper;
    QColor Ink;
    QColor Selection;
    QColor SelectedInk;

    static TWeekColors FromPalette(const QPalette& palette);
    // Black on white, for paper.
    static TWeekColors ForPaper();

    bool IsDark() const { return Paper.lightness() < Ink.lightness(); }
    // `share` (0 to 1) of `color` on the paper.
    QColor Mixed(const QColor& color, double share) const;
    QColor Tint(int number) const;
    QColor Now() const;
};

// Paints the picture of a week onto a screen, a printer or an image, with the painter's font.
class TWeekPainter
{
public:
    // All of them must outlive this.
    TWeekPainter(QPainter& painter, const TWeekGeometry& geometry, const TWeekPicture& picture,
                 const TWeekColors& colors);

    void Paint();

private:
    struct TSpotText
    {
        QString Head;       // set off
        QString Rest = {};  // behind it
        QString Below = {}; // in a second line where there is one, else last
    };

    void PaintHeads();
    void PaintGrid();
    void PaintHours();
    void PaintBoxes(int day);
    void PaintSpot(const TWeekSpot& spot);
    void PaintSpotFrame(const TWeekSpot& spot, bool selected, bool active);
    void PaintSpotText(const TWeekSpot& spot, const QRectF& rect, const QColor& ink);
    void PaintMark(const QRectF& rect, const QColor& color);
    void PaintNow();
    void PaintStrip();
    void PaintLegend();
    double PaintLegendText(double x, const QString& text);
    void Line(const QPointF& from, const QPointF& to, const QColor& color, double width = 1);
    bool HasFocus(const TWeekSpot& spot) const;
    bool HasTwoLines(const TWeekSpot& spot) const;
    TSpotText TextOf(const TWeekSpot& spot) const;

    QPainter& m_painter;
    const TWeekGeometry& m_geometry;
    const TWeekPicture& m_picture;
    const TWeekColors& m_colors;
    QFont m_font;
    QFont m_boldFont;
    int m_today; // -1 for none
};
