#include "TreeImages.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

namespace
{

// Everything is drawn on a square of 16 units.
constexpr qreal Units = 16.0;

void DrawDocument(QPainter& painter)
{
    painter.setBrush(QColor(0xFA, 0xFA, 0xFA));
    painter.drawPolygon(QPolygonF({{3, 1.5}, {10, 1.5}, {13, 4.5}, {13, 14.5}, {3, 14.5}}));
    for (const int line : {6, 9, 12})
        painter.drawLine(QPointF(5, line), QPointF(11, line));
}

void DrawScene(QPainter& painter)
{
    painter.setBrush(QColor(0xF7, 0xC9, 0x48));
    painter.drawEllipse(QRectF(4, 1.5, 8, 8));
    painter.setBrush(QColor(0xB0, 0xB7, 0xBF));
    painter.drawRoundedRect(QRectF(6, 10, 4, 4.5), 1, 1);
}

void DrawFolder(QPainter& painter)
{
    painter.setBrush(QColor(0xE8, 0xB5, 0x5A));
    painter.drawPolygon(QPolygonF({{1.5, 3}, {6, 3}, {7.5, 5}, {14.5, 5}, {14.5, 13.5}, {1.5, 13.5}}));
}

void DrawAction(QPainter& painter)
{
    painter.setBrush(QColor(0x5B, 0xA8, 0x6C));
    painter.drawPolygon(QPolygonF({{3, 2}, {13.5, 8}, {3, 14}}));
}

void DrawTrigger(QPainter& painter)
{
    painter.setBrush(QColor(0x4A, 0x86, 0xC5));
    painter.drawPolygon(QPolygonF({{9.5, 1.5}, {3, 9}, {7.5, 9}, {6, 14.5}, {13, 6.5}, {8.5, 6.5}}));
}

void DrawDatapoint(QPainter& painter)
{
    painter.setBrush(QColor(0x4A, 0x86, 0xC5));
    painter.drawRoundedRect(QRectF(2.5, 4, 11, 8), 2, 2);
    painter.setBrush(QColor(0xFA, 0xFA, 0xFA));
    painter.drawEllipse(QRectF(8, 5.5, 5, 5));
}

void DrawClock(QPainter& painter)
{
    painter.setBrush(QColor(0xFA, 0xFA, 0xFA));
    painter.drawEllipse(QRectF(1.75, 1.75, 12.5, 12.5));
    painter.drawPolyline(QPolygonF({{8, 4}, {8, 8}, {11, 9.75}}));
}

void DrawMenu(QPainter& painter)
{
    painter.setBrush(QColor(0xFA, 0xFA, 0xFA));
    painter.drawRoundedRect(QRectF(1.5, 2.5, 13, 11), 1.5, 1.5);
    for (const int line : {6, 8, 10})
        painter.drawLine(QPointF(4, line), QPointF(12, line));
}

void DrawMainItem(QPainter& painter)
{
    painter.setBrush(QColor(0x4A, 0x86, 0xC5));
    painter.drawRoundedRect(QRectF(1.5, 5, 13, 6), 1.5, 1.5);
}

void DrawSubItem(QPainter& painter)
{
    painter.drawPolyline(QPolygonF({{3, 2.5}, {3, 8}, {6, 8}}));
    painter.setBrush(QColor(0x9C, 0xC3, 0xE6));
    painter.drawRoundedRect(QRectF(6, 5.5, 8.5, 5), 1.5, 1.5);
}

class TTreeImageEngine final : public QIconEngine
{
public:
    explicit TTreeImageEngine(void (*draw)(QPainter&)) : m_draw(draw) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setOpacity(mode == QIcon::Disabled ? 0.4 : 1.0);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / Units, rect.height() / Units);
        painter->setPen(QPen(QColor(0x40, 0x46, 0x4D), 0.9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        m_draw(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new TTreeImageEngine(m_draw); }

private:
    void (*m_draw)(QPainter&);
};

} // namespace

QIcon TreeImage(TTreeImage image)
{
    constexpr std::array Drawings{DrawDocument,  DrawScene, DrawFolder, DrawAction,   DrawTrigger,
                                  DrawDatapoint, DrawClock, DrawMenu,   DrawMainItem, DrawSubItem};
    return QIcon(new TTreeImageEngine(Drawings[image]));
}
