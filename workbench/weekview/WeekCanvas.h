#pragma once

#include "WeekPainter.h"

#include <QAbstractScrollArea>
#include <QPointer>

class QMenu;

// The picture of a week on the screen: scrolls, zooms, and lets the user choose entries by mouse and keyboard. It keeps
// copies of what it shows and changes nothing of it.
class TWeekCanvas final : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit TWeekCanvas(QWidget* parent);

    // `selected` is an index into the entries, or -1. A hint stands in the middle of the picture.
    void ShowWeek(const QList<TWeekEntry>& entries, int selected, const QString& hint);
    // Shows a hint and nothing else.
    void ShowHint(const QString& hint);
    // The time to mark.
    void SetNow(const QDateTime& now);

    const QString& Hint() const { return m_hint; }
    const TWeekPicture& Picture() const { return m_picture; }
    TWeekGeometry Geometry() const;

    void ZoomIn();
    void ZoomOut();
    // The whole day at once where it can be read then.
    void ResetZoom();
    bool CanZoomIn() const;
    bool CanZoomOut() const;

Q_SIGNALS:
    // The user has chosen an entry.
    void EntryChosen(int entry);
    void Zoomed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void LayOut();
    void SetZoom(double zoom);
    void SetStop(const TWeekStop& stop);
    void Choose(const TWeekStop& stop);
    void OfferEntries(const TWeekSpot& spot, const QPoint& position);
    TWeekStop StopFor(int key) const;
    TWeekStop StopBeside(int step) const;
    void ScrollTo(const TWeekStop& stop);
    TWeekSpot SpotAt(const QPointF& point) const;
    void Describe();

    TWeekPicture m_picture;
    QList<TWeekStop> m_stops;
    TWeekStop m_stop; // where the keyboard stands, with or without the keyboard
    QString m_hint;
    double m_zoom = 1;
    bool m_hasWeek = false;
    QPointer<QMenu> m_menu;
};
