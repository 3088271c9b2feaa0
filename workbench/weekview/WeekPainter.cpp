#include "WeekPainter.h"

#include "WeekTexts.h"

#include <QHash>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <array>

namespace
{

constexpr double GridShare = 0.16;
constexpr double WeekendShare = 0.04;
constexpr double TodayShare = 0.08;
constexpr double FillShare = 0.26;
constexpr double FadedShare = 0.45;

QFont Bold(QFont font)
{
    font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace

TWeekPicture MakeWeekPicture(const QList<TWeekEntry>& entries)
{
    TWeekPicture picture;
    picture.Entries = entries;
    QHash<QString, int> numbers;
    for (const TWeekEntry& entry : entries) {
        const int number = numbers.value(entry.Datapoint, static_cast<int>(numbers.size()));
        numbers.insert(entry.Datapoint, number);
        picture.Tints.append(number);
    }
    picture.HasNames = numbers.size() > 1;
    return picture;
}

TWeekColors TWeekColors::FromPalette(const QPalette& palette)
{
    return {.Paper = palette.color(QPalette::Base),
            .Ink = palette.color(QPalette::Text),
            .Selection = palette.color(QPalette::Highlight),
            .SelectedInk = palette.color(QPalette::HighlightedText)};
}

TWeekColors TWeekColors::ForPaper()
{
    return {.Paper = Qt::white, .Ink = Qt::black, .Selection = Qt::black, .SelectedInk = Qt::white};
}

QColor TWeekColors::Mixed(const QColor& color, double share) const
{
    const auto mix = [share](float part, float ground) {
        return std::clamp(static_cast<float>(ground + (part - ground) * share), 0.0F, 1.0F);
    };
    return QColor::fromRgbF(mix(color.redF(), Paper.redF()), mix(color.greenF(), Paper.greenF()),
                            mix(color.blueF(), Paper.blueF()));
}

// Red is the present time's.
QColor TWeekColors::Tint(int number) const
{
    constexpr std::array Hues{212, 142, 32, 272, 182, 322, 84, 242};
    const int hue = Hues.at(static_cast<size_t>(number) % Hues.size());
    return QColor::fromHsl(hue, 165, IsDark() ? 150 : 105);
}

QColor TWeekColors::Now() const
{
    return IsDark() ? QColor(255, 110, 100) : QColor(205, 30, 30);
}

TWeekPainter::TWeekPainter(QPainter& painter, const TWeekGeometry& geometry, const TWeekPicture& picture,
                           const TWeekColors& colors)
    : m_painter(painter),
      m_geometry(geometry),
      m_picture(picture),
      m_colors(colors),
      m_font(painter.font()),
      m_boldFont(Bold(painter.font())),
      m_today(picture.Now.isValid() ? picture.Now.date().dayOfWeek() - 1 : -1)
{
}

void TWeekPainter::Paint()
{
    m_painter.save();
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.fillRect(m_geometry.Area(), m_colors.Paper);
    m_painter.save();
    m_painter.setClipRect(m_geometry.Body(), Qt::IntersectClip);
    PaintGrid();
    PaintHours();
    for (int day = 0; day < TWeekEntry::DayCount; ++day)
        PaintBoxes(day);
    PaintNow();
    m_painter.restore();
    PaintHeads();
    PaintStrip();
    PaintLegend();
    m_painter.restore();
}

void TWeekPainter::Line(const QPointF& from, const QPointF& to, const QColor& color, double width)
{
    m_painter.setPen(QPen(color, width * m_geometry.Unit(), Qt::SolidLine, Qt::FlatCap));
    m_painter.drawLine(from, to);
}

void TWeekPainter::PaintHeads()
{
    for (int day = 0; day < TWeekEntry::DayCount; ++day) {
        const QRectF head = m_geometry.Head(day);
        const bool isToday = day == m_today;
        m_painter.setFont(m_boldFont);
        m_painter.setPen(isToday ? m_colors.Now() : m_colors.Ink);
        const QFontMetricsF metrics(m_boldFont, m_painter.device());
        const QString name = WeekDayName(day);
        const bool fits = metrics.horizontalAdvance(name) < head.width() - 4 * m_geometry.Unit();
        m_painter.drawText(head, Qt::AlignCenter, fits ? name : ShortWeekDayName(day));
    }
    const QRectF body = m_geometry.Body();
    Line(body.topLeft(), body.topRight(), m_colors.Mixed(m_colors.Ink, 2 * GridShare));
}

void TWeekPainter::PaintGrid()
{
    for (int day = 0; day < TWeekEntry::DayCount; ++day) {
        const QRectF column = m_geometry.Column(day);
        if (day == m_today)
            m_painter.fillRect(column, m_colors.Mixed(m_colors.Now(), TodayShare));
        else if (day > 4)
            m_painter.fillRect(column, m_colors.Mixed(m_colors.Ink, WeekendShare));
    }
    const double left = m_geometry.Column(0).left();
    for (int hour = 0; hour <= 24; ++hour) {
        const double y = m_geometry.Y(hour * 60.0);
        const double share = hour % 6 == 0 ? 2 * GridShare : GridShare;
        Line({left, y}, {m_geometry.Area().right(), y}, m_colors.Mixed(m_colors.Ink, share));
    }
    for (int day = 0; day < TWeekEntry::DayCount; ++day) {
        const QRectF column = m_geometry.Column(day);
        Line(column.topLeft(), column.bottomLeft(), m_colors.Mixed(m_colors.Ink, GridShare));
    }
}

// As many labels as stand clear of each other.
void TWeekPainter::PaintHours()
{
    const double row = m_geometry.RowHeight();
    const int step = m_geometry.HourHeight() >= row ? 1 : m_geometry.HourHeight() * 2 >= row ? 2 : 6;
    m_painter.setFont(m_font);
    const double width = m_geometry.Column(0).left() - m_geometry.Area().left() - 5 * m_geometry.Unit();
    for (int hour = 0; hour <= 24; hour += step) {
        m_painter.setPen(m_colors.Mixed(m_colors.Ink, 0.7));
        const QRectF rect(m_geometry.Area().left(), m_geometry.Y(hour * 60.0) - row / 2, width, row);
        m_painter.drawText(rect, Qt::AlignRight | Qt::AlignVCenter,
                           QStringLiteral("%1:00").arg(hour, 2, 10, QChar(u'0')));
    }
}

void TWeekPainter::PaintBoxes(int day)
{
    const QList<TWeekBox>& boxes = m_picture.Layout.Days[static_cast<size_t>(day)];
    const auto [first, last] = m_geometry.Visible(boxes);
    for (qsizetype i = first; i < last; ++i)
        PaintSpot({.Day = day, .Rect = m_geometry.Box(day, boxes[i]), .Entries = boxes[i].Entries});
}

bool TWeekPainter::HasFocus(const TWeekSpot& spot) const
{
    return m_picture.Focus.Entry >= 0 && spot.Day == m_picture.Focus.Day &&
           spot.Entries.contains(m_picture.Focus.Entry);
}

void TWeekPainter::PaintSpot(const TWeekSpot& spot)
{
    const auto has = [&](bool TWeekEntry::*flag) {
        return std::any_of(spot.Entries.begin(), spot.Entries.end(),
                           [&](int entry) { return m_picture.Entries[entry].*flag; });
    };
    const bool active = has(&TWeekEntry::Active);
    const bool selected = m_picture.Selected >= 0 && spot.Entries.contains(m_picture.Selected);
    PaintSpotFrame(spot, selected, active);

    const double unit = m_geometry.Unit();
    const QColor ink = selected ? m_colors.SelectedInk : m_colors.Mixed(m_colors.Ink, active ? 1.0 : FadedShare);
    QRectF text = spot.Rect.adjusted(6 * unit, 0, -2 * unit, 0);
    if (spot.Entries.size() == 1 && has(&TWeekEntry::PostProcess)) {
        const double size = m_geometry.RowHeight() - 7 * unit;
        const QRectF mark(text.right() - size, text.top() + 3 * unit, size, size);
        PaintMark(mark, ink);
        if (!HasTwoLines(spot))
            text.setRight(mark.left() - unit);
    }
    PaintSpotText(spot, text, ink);
}

void TWeekPainter::PaintSpotFrame(const TWeekSpot& spot, bool selected, bool active)
{
    const double unit = m_geometry.Unit();
    const bool isShared = spot.Entries.size() > 1;
    const QColor tint =
        isShared ? m_colors.Mixed(m_colors.Ink, 0.5) : m_colors.Tint(m_picture.Tints[spot.Entries.first()]);
    const QColor accent = active ? tint : m_colors.Mixed(tint, FadedShare);
    QPen pen(selected ? m_colors.Selection : accent, unit);
    if (!active)
        pen.setStyle(Qt::DashLine);
    m_painter.setPen(pen);
    m_painter.setBrush(selected ? m_colors.Selection : m_colors.Mixed(tint, active ? FillShare : FillShare / 4));
    const QRectF frame = spot.Rect.adjusted(unit / 2, unit / 2, -unit / 2, -unit / 2);
    m_painter.drawRoundedRect(frame, 3 * unit, 3 * unit);
    m_painter.fillRect(QRectF(frame.left(), frame.top() + 2 * unit, 3 * unit, frame.height() - 4 * unit), accent);
    if (HasFocus(spot)) {
        m_painter.setBrush(Qt::NoBrush);
        m_painter.setPen(QPen(m_colors.Ink, 2 * unit));
        m_painter.drawRoundedRect(frame, 3 * unit, 3 * unit);
    }
}

TWeekPainter::TSpotText TWeekPainter::TextOf(const TWeekSpot& spot) const
{
    const TWeekEntry& entry = m_picture.Entries[spot.Entries.first()];
    const QString time = TimeText(entry);
    if (spot.Entries.size() > 1) {
        const bool isOneTime = m_picture.Entries[spot.Entries.last()].Time == entry.Time;
        return {.Head = QStringLiteral("%1 Einträge").arg(spot.Entries.size()),
                .Below = (isOneTime ? QStringLiteral("um ") : QStringLiteral("ab ")) + time};
    }
    const QString value = EntryText(entry, false).mid(time.size());
    return {.Head = time, .Rest = value, .Below = m_picture.HasNames ? entry.Datapoint.simplified() : QString()};
}

void TWeekPainter::PaintSpotText(const TWeekSpot& spot, const QRectF& rect, const QColor& ink)
{
    const auto paint = [&](const QFont& font, const QRectF& place, const QString& text) {
        const QFontMetricsF metrics(font, m_painter.device());
        m_painter.setFont(font);
        if (place.width() > 0)
            m_painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                               metrics.elidedText(text, Qt::ElideRight, place.width()));
        return metrics.horizontalAdvance(text);
    };
    TSpotText text = TextOf(spot);
    QRectF line = rect;
    m_painter.setPen(ink);
    if (HasTwoLines(spot)) {
        line.setHeight(m_geometry.RowHeight());
        QRectF below = line;
        below.moveBottom(rect.bottom());
        paint(m_font, below, text.Below);
    } else if (!text.Below.isEmpty()) {
        text.Rest += (text.Rest.isEmpty() ? QStringLiteral(" ") : QStringLiteral(" · ")) + text.Below;
    }
    const double width = paint(m_boldFont, line, text.Head);
    paint(m_font, line.adjusted(width, 0, 0, 0), text.Rest);
}

bool TWeekPainter::HasTwoLines(const TWeekSpot& spot) const
{
    return spot.Rect.height() > 1.5 * m_geometry.RowHeight();
}

// A time that was missed is made up for: an arrow that comes back.
void TWeekPainter::PaintMark(const QRectF& rect, const QColor& color)
{
    const double unit = m_geometry.Unit();
    const QRectF ring = rect.adjusted(unit, unit, -unit, -unit);
    m_painter.setPen(QPen(color, 1.5 * unit, Qt::SolidLine, Qt::FlatCap));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawArc(ring, 60 * 16, 300 * 16);
    const QPointF tip(ring.center().x() + ring.width() / 4, ring.top() + ring.height() / 15);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(color);
    m_painter.drawPolygon(QPolygonF({tip + QPointF(-3 * unit, -2.5 * unit), tip + QPointF(2.5 * unit, 0.5 * unit),
                                     tip + QPointF(-3 * unit, 3.5 * unit)}));
}

void TWeekPainter::PaintNow()
{
    if (m_today < 0)
        return;
    const double unit = m_geometry.Unit();
    const QRectF column = m_geometry.Column(m_today);
    const double y = m_geometry.Y(m_picture.Now.time().msecsSinceStartOfDay() / 60000.0);
    Line({column.left(), y}, {column.right(), y}, m_colors.Now(), 2);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(m_colors.Now());
    m_painter.drawEllipse(QPointF(column.left(), y), 4 * unit, 4 * unit);
}

void TWeekPainter::PaintStrip()
{
    if (m_picture.Layout.Dayless.isEmpty())
        return;
    const QRectF label = m_geometry.StripLabel();
    Line(label.topLeft(), {m_geometry.Area().right(), label.top()}, m_colors.Mixed(m_colors.Ink, 2 * GridShare));
    m_painter.setFont(m_boldFont);
    m_painter.setPen(m_colors.Ink);
    m_painter.drawText(label.adjusted(6 * m_geometry.Unit(), 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                       QStringLiteral("Ohne Tag"));
    const QList<TWeekSpot> spots = m_geometry.StripSpots(m_picture.Layout.Dayless);
    for (const TWeekSpot& spot : spots)
        PaintSpot(spot);
}

double TWeekPainter::PaintLegendText(double x, const QString& text)
{
    const QRectF legend = m_geometry.Legend();
    m_painter.setFont(m_font);
    m_painter.setPen(m_colors.Mixed(m_colors.Ink, 0.7));
    m_painter.drawText(QRectF(x, legend.top(), legend.right() - x, legend.height()), Qt::AlignLeft | Qt::AlignVCenter,
                       text);
    return x + QFontMetricsF(m_font, m_painter.device()).horizontalAdvance(text) + 18 * m_geometry.Unit();
}

void TWeekPainter::PaintLegend()
{
    const double unit = m_geometry.Unit();
    const QRectF legend = m_geometry.Legend();
    const QColor ink = m_colors.Mixed(m_colors.Ink, 0.7);
    Line(legend.topLeft(), legend.topRight(), m_colors.Mixed(m_colors.Ink, 2 * GridShare));
    double x = legend.left() + 6 * unit;
    const double size = 12 * unit;
    const double top = legend.center().y() - size / 2;
    PaintMark({x, top, size, size}, ink);
    x = PaintLegendText(x + size + 4 * unit, QStringLiteral("Nachfahren"));
    m_painter.setPen(QPen(ink, unit, Qt::DashLine));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRoundedRect(QRectF(x, top, 1.5 * size, size), 3 * unit, 3 * unit);
    x = PaintLegendText(x + 1.5 * size + 4 * unit, QStringLiteral("inaktiv"));
    if (m_today < 0)
        return;
    Line({x, legend.center().y()}, {x + 1.5 * size, legend.center().y()}, m_colors.Now(), 2);
    PaintLegendText(x + 1.5 * size + 4 * unit, QStringLiteral("jetzt"));
}
