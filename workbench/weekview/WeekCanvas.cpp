#include "WeekCanvas.h"

#include "WeekTexts.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace
{

constexpr double ZoomStep = 1.25;
constexpr double MostZoom = 12;
constexpr qsizetype MostMenuEntries = 40;

} // namespace

TWeekCanvas::TWeekCanvas(QWidget* parent) : QAbstractScrollArea(parent)
{
    setObjectName(QStringLiteral("WeekCanvas"));
    setAccessibleName(QStringLiteral("Woche"));
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMinimumSize(200, 120);
    viewport()->setMouseTracking(true);
}

TWeekGeometry TWeekCanvas::Geometry() const
{
    return TWeekGeometry({.Area = viewport()->rect(),
                          .HasNames = m_picture.HasNames,
                          .HasStrip = std::any_of(m_stops.crbegin(), m_stops.crend(),
                                                  [](const TWeekStop& stop) { return stop.Day == TWeekStop::Dayless; }),
                          .Scrolls = true,
                          .Zoom = m_zoom,
                          .Offset = static_cast<double>(verticalScrollBar()->value())},
                         QFontMetricsF(font(), viewport()));
}

void TWeekCanvas::ShowWeek(const QList<TWeekEntry>& entries, int selected, const QString& hint)
{
    if (m_menu)
        m_menu->close();
    const QDateTime now = m_picture.Now;
    m_picture = MakeWeekPicture(entries);
    m_picture.Selected = selected;
    m_picture.Now = now;
    m_hint = hint;
    m_hasWeek = true;
    m_stops = WeekStops(entries);
    LayOut();
    if (m_stop.Entry == selected && m_stops.contains(m_stop)) {
        SetStop(m_stop);
        return;
    }
    const auto stop = std::find_if(m_stops.cbegin(), m_stops.cend(),
                                   [selected](const TWeekStop& other) { return other.Entry == selected; });
    SetStop(stop == m_stops.cend() ? TWeekStop() : *stop);
    ScrollTo(m_stop);
}

void TWeekCanvas::ShowHint(const QString& hint)
{
    ShowWeek({}, -1, hint);
    m_hasWeek = false;
}

void TWeekCanvas::SetNow(const QDateTime& now)
{
    m_picture.Now = now;
    viewport()->update();
}

void TWeekCanvas::LayOut()
{
    TWeekGeometry geometry = Geometry();
    const double hidden = geometry.ContentHeight() - geometry.Body().height();
    verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(std::ceil(hidden))));
    verticalScrollBar()->setPageStep(static_cast<int>(geometry.Body().height()));
    verticalScrollBar()->setSingleStep(static_cast<int>(geometry.RowHeight()));
    m_picture.Layout = LayOutWeek(m_picture.Entries, Geometry().Room());
    viewport()->update();
}

bool TWeekCanvas::CanZoomIn() const
{
    return m_hasWeek && m_zoom < MostZoom;
}

bool TWeekCanvas::CanZoomOut() const
{
    return m_hasWeek && m_zoom > 1;
}

void TWeekCanvas::ZoomIn()
{
    SetZoom(m_zoom * ZoomStep);
}

void TWeekCanvas::ZoomOut()
{
    SetZoom(m_zoom / ZoomStep);
}

void TWeekCanvas::ResetZoom()
{
    SetZoom(1);
}

// What stands in the middle stays there.
void TWeekCanvas::SetZoom(double zoom)
{
    const TWeekGeometry before = Geometry();
    const double center = before.MinuteAt(before.Body().center().y());
    m_zoom = std::clamp(zoom, 1.0, MostZoom);
    LayOut();
    const TWeekGeometry after = Geometry();
    verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                  static_cast<int>(after.Y(center) - after.Body().center().y()));
    Q_EMIT Zoomed();
}

void TWeekCanvas::SetStop(const TWeekStop& stop)
{
    m_stop = stop;
    m_picture.Focus = hasFocus() ? m_stop : TWeekStop();
    Describe();
    viewport()->update();
}

void TWeekCanvas::Describe()
{
    setAccessibleDescription(m_stop.Entry < 0 ? m_hint : EntryDetails(m_picture.Entries.value(m_stop.Entry)));
}

void TWeekCanvas::Choose(const TWeekStop& stop)
{
    if (!m_stops.contains(stop))
        return;
    SetStop(stop);
    ScrollTo(stop);
    Q_EMIT EntryChosen(stop.Entry);
}

void TWeekCanvas::ScrollTo(const TWeekStop& stop)
{
    if (stop.Entry < 0 || stop.Day == TWeekStop::Dayless)
        return;
    const TWeekGeometry geometry = Geometry();
    const QRectF body = geometry.Body();
    const QRectF spot = geometry.SpotOf(m_picture.Layout, stop).Rect;
    const double above = spot.top() - body.top();
    const double below = spot.bottom() - body.bottom();
    QScrollBar* bar = verticalScrollBar();
    if (above < 0)
        bar->setValue(bar->value() + static_cast<int>(std::floor(above)));
    else if (below > 0)
        bar->setValue(bar->value() + static_cast<int>(std::ceil(below)));
}

TWeekSpot TWeekCanvas::SpotAt(const QPointF& point) const
{
    return Geometry().SpotAt(m_picture.Layout, point);
}

// A box of several entries asks which one.
void TWeekCanvas::OfferEntries(const TWeekSpot& spot, const QPoint& position)
{
    m_menu = new QMenu(this);
    m_menu->setObjectName(QStringLiteral("EntriesMenu"));
    m_menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const int entry : spot.Entries.first(std::min(spot.Entries.size(), MostMenuEntries))) {
        QString text = EntryText(m_picture.Entries[entry], m_picture.HasNames);
        QAction* action = m_menu->addAction(text.replace(u'&', QStringLiteral("&&")));
        connect(action, &QAction::triggered, this,
                [this, stop = TWeekStop{.Day = spot.Day, .Entry = entry}] { Choose(stop); });
    }
    if (spot.Entries.size() > MostMenuEntries) {
        const qsizetype rest = spot.Entries.size() - MostMenuEntries;
        m_menu->addAction(QStringLiteral("und %1 weitere").arg(rest))->setEnabled(false);
    }
    m_menu->popup(position);
}

// The stop of the neighbouring days that is nearest in time.
TWeekStop TWeekCanvas::StopBeside(int step) const
{
    const auto distance = [this](const TWeekStop& stop) {
        return std::abs(m_picture.Entries[stop.Entry].Time.msecsTo(m_picture.Entries[m_stop.Entry].Time));
    };
    for (int day = m_stop.Day + step; day >= 0 && day <= TWeekStop::Dayless; day += step) {
        const TWeekStop* nearest = nullptr;
        for (const TWeekStop& stop : m_stops) {
            if (stop.Day == day && (!nearest || distance(stop) < distance(*nearest)))
                nearest = &stop;
        }
        if (nearest)
            return *nearest;
    }
    return m_stop;
}

// Where a key leads; without an entry when it leads nowhere.
TWeekStop TWeekCanvas::StopFor(int key) const
{
    const qsizetype last = m_stops.size() - 1;
    const qsizetype current = m_stops.indexOf(m_stop);
    switch (key) {
    case Qt::Key_Home:
        return m_stops.value(0);
    case Qt::Key_End:
        return m_stops.value(last);
    case Qt::Key_Down:
        return m_stops.value(std::min(current + 1, last));
    case Qt::Key_Up:
        return m_stops.value(current < 0 ? last : std::max<qsizetype>(current - 1, 0));
    case Qt::Key_Left:
    case Qt::Key_Right:
        return current < 0 ? m_stops.value(0) : StopBeside(key == Qt::Key_Left ? -1 : 1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return m_stops.value(current);
    default:
        return {};
    }
}

void TWeekCanvas::keyPressEvent(QKeyEvent* event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const TWeekStop stop = plain ? StopFor(event->key()) : TWeekStop();
    if (stop.Entry >= 0)
        Choose(stop);
    else
        QAbstractScrollArea::keyPressEvent(event);
}

void TWeekCanvas::mousePressEvent(QMouseEvent* event)
{
    const TWeekSpot spot = event->button() == Qt::LeftButton ? SpotAt(event->position()) : TWeekSpot();
    if (spot.Entries.size() == 1)
        Choose({.Day = spot.Day, .Entry = spot.Entries.first()});
    else if (!spot.Entries.isEmpty())
        OfferEntries(spot, event->globalPosition().toPoint());
}

void TWeekCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (SpotAt(event->position()).Entries.isEmpty())
        viewport()->unsetCursor();
    else
        viewport()->setCursor(Qt::PointingHandCursor);
}

void TWeekCanvas::wheelEvent(QWheelEvent* event)
{
    if (!(event->modifiers() & Qt::ControlModifier) || event->angleDelta().y() == 0) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    if (event->angleDelta().y() > 0)
        ZoomIn();
    else
        ZoomOut();
    event->accept();
}

bool TWeekCanvas::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const TWeekSpot spot = SpotAt(help->pos());
    if (spot.Entries.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), ToolTipText(m_picture.Entries, spot.Entries), viewport(),
                           spot.Rect.toAlignedRect());
    return true;
}

void TWeekCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.setFont(font());
    const TWeekColors colors = TWeekColors::FromPalette(palette());
    const TWeekGeometry geometry = Geometry();
    if (m_hasWeek)
        TWeekPainter(painter, geometry, m_picture, colors).Paint();
    else
        painter.fillRect(viewport()->rect(), colors.Paper);
    if (m_hint.isEmpty())
        return;
    const QRectF room = QRectF(viewport()->rect()).adjusted(20, 20, -20, -20);
    const int flags = Qt::AlignCenter | Qt::TextWordWrap;
    const double margin = geometry.RowHeight() / 2;
    painter.fillRect(painter.boundingRect(room, flags, m_hint).adjusted(-margin, -margin, margin, margin),
                     colors.Paper);
    painter.setPen(colors.Mixed(colors.Ink, 0.75));
    painter.drawText(room, flags, m_hint);
}

void TWeekCanvas::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    LayOut();
}

void TWeekCanvas::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        LayOut();
}

// The heads stay where they are: nothing of the picture is moved, all of it is painted.
void TWeekCanvas::scrollContentsBy(int, int)
{
    viewport()->update();
}

void TWeekCanvas::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    SetStop(m_stop);
}

void TWeekCanvas::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    SetStop(m_stop);
}
