#include "WeekOutput.h"

#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlfilereplacer.h"
#include "WeekPainter.h"
#include "WeekTexts.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>

#include <algorithm>
#include <cstdlib>

namespace
{

// Everything on paper is measured in these, whatever the device.
constexpr int DotsPerInch = 288;
constexpr double MillimetersPerInch = 25.4;
constexpr int Margin = 12; // in millimeters
constexpr QSize PaperSize(297, 210);
constexpr int FontDots = 30;
constexpr int TitleDots = 60;
constexpr int ListColumns = 3;

double Dots(double millimeters)
{
    return millimeters * DotsPerInch / MillimetersPerInch;
}

QRectF PageRect()
{
    return {0, 0, Dots(PaperSize.width() - 2 * Margin), Dots(PaperSize.height() - 2 * Margin)};
}

QPageLayout PageLayout()
{
    return {QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(Margin, Margin, Margin, Margin),
            QPageLayout::Millimeter};
}

QFont PageFont(int dots, bool bold = false)
{
    QFont font = QApplication::font();
    font.setPixelSize(dots);
    font.setBold(bold);
    return font;
}

bool HidesEntries(const TWeekLayout& layout, const TWeekGeometry& geometry)
{
    const auto isShared = [](const auto& box) { return box.Entries.size() > 1; };
    const QList<TWeekSpot> strip = geometry.StripSpots(layout.Dayless);
    return std::any_of(strip.begin(), strip.end(), isShared) ||
           std::any_of(layout.Days.begin(), layout.Days.end(),
                       [&](const QList<TWeekBox>& boxes) { return std::any_of(boxes.begin(), boxes.end(), isShared); });
}

// Paints pages in dots, beginning at the upper left corner inside the margins.
class TPagePainter
{
public:
    TPagePainter(QPainter& painter, const TWeekPage& page) : m_painter(painter), m_page(page) {}

    // True when boxes hold more entries than they show.
    bool PaintPicture()
    {
        PaintTitle();
        m_painter.setFont(PageFont(FontDots));
        TWeekPicture picture = MakeWeekPicture(m_page.Entries);
        const bool hasDayless = !LayOutWeek(m_page.Entries, {}).Dayless.isEmpty();
        const TWeekGeometry geometry({.Area = Content(), .HasNames = picture.HasNames, .HasStrip = hasDayless},
                                     QFontMetricsF(m_painter.font()));
        picture.Layout = LayOutWeek(m_page.Entries, geometry.Room());
        TWeekPainter(m_painter, geometry, picture, TWeekColors::ForPaper()).Paint();
        return HidesEntries(picture.Layout, geometry);
    }

    // Lists entries from `first` on; returns the one that the next page begins with.
    qsizetype PaintList(qsizetype first)
    {
        PaintTitle();
        m_painter.setFont(PageFont(FontDots));
        m_painter.setPen(Qt::black);
        const QFontMetricsF metrics(m_painter.font());
        const QRectF content = Content();
        const double row = metrics.height() * 1.2;
        const double width = content.width() / ListColumns;
        const auto rows = static_cast<qsizetype>(content.height() / row);
        const qsizetype last = std::min(first + rows * ListColumns, m_page.Entries.size());
        for (qsizetype i = first; i < last; ++i) {
            const auto [column, line] = std::div(static_cast<long>(i - first), static_cast<long>(rows));
            const QPointF place(content.left() + static_cast<double>(column) * width,
                                content.top() + static_cast<double>(line) * row);
            m_painter.drawText(QRectF(place, QSizeF(width - row, row)), Qt::AlignLeft | Qt::AlignVCenter,
                               metrics.elidedText(ListLine(m_page.Entries[i]), Qt::ElideRight, width - row));
        }
        return last;
    }

private:
    static QRectF Content() { return PageRect().adjusted(0, 2.0 * TitleDots, 0, 0); }

    static QString ListLine(const TWeekEntry& entry)
    {
        QString line = EntryText(entry, true) + QStringLiteral(" · ") + DaysText(entry);
        if (!entry.Active)
            line += QStringLiteral(" · inaktiv");
        if (entry.PostProcess)
            line += QStringLiteral(" · Nachfahren");
        return line;
    }

    void PaintTitle()
    {
        const QRectF line(0, 0, PageRect().width(), 1.5 * TitleDots);
        QString about = m_page.Date.toString(QStringLiteral("dd.MM.yyyy"));
        if (!m_page.Project.isEmpty())
            about = QStringLiteral("%1, %2").arg(m_page.Project, about);
        m_painter.setPen(Qt::black);
        m_painter.setFont(PageFont(FontDots + 4));
        const double aboutWidth = std::min(QFontMetricsF(m_painter.font()).horizontalAdvance(about), line.width() / 2);
        m_painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter,
                           QFontMetricsF(m_painter.font()).elidedText(about, Qt::ElideMiddle, aboutWidth));
        m_painter.setFont(PageFont(TitleDots, true));
        const double room = line.width() - aboutWidth - TitleDots;
        m_painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                           QFontMetricsF(m_painter.font()).elidedText(m_page.Title.simplified(), Qt::ElideRight, room));
    }

    QPainter& m_painter;
    const TWeekPage& m_page;
};

// The picture, and the list where it is needed.
void PaintDocument(const TWeekPage& page, QPagedPaintDevice& device, double dotsPerInch)
{
    QPainter painter;
    if (!painter.begin(&device))
        throw TUserError(QStringLiteral("Die Wochenansicht lässt sich nicht ausgeben."));
    painter.scale(dotsPerInch / DotsPerInch, dotsPerInch / DotsPerInch);
    TPagePainter pages(painter, page);
    qsizetype next = pages.PaintPicture() ? 0 : page.Entries.size();
    while (next < page.Entries.size()) {
        device.newPage();
        next = pages.PaintList(next);
    }
    if (!painter.end())
        throw TUserError(QStringLiteral("Die Wochenansicht lässt sich nicht ausgeben."));
}

} // namespace

void SaveWeekPdf(const TWeekPage& page, const QString& path)
{
    TFileReplacer file(path);
    {
        QPdfWriter writer(&file.Device());
        writer.setTitle(page.Title);
        writer.setCreator(QStringLiteral("Velmora Folders"));
        writer.setResolution(DotsPerInch);
        writer.setPageLayout(PageLayout());
        PaintDocument(page, writer, DotsPerInch);
    }
    file.Commit();
}

void SaveWeekPng(const TWeekPage& page, const QString& path)
{
    TFileReplacer file(path);
    QImage image((QSizeF(PaperSize) * DotsPerInch / MillimetersPerInch).toSize(), QImage::Format_RGB32);
    image.setDotsPerMeterX(static_cast<int>(DotsPerInch / MillimetersPerInch * 1000));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(Dots(Margin), Dots(Margin));
    TPagePainter(painter, page).PaintPicture();
    painter.end();
    if (!image.save(&file.Device(), "PNG"))
        throw TFileError(FileErrorText(path, QStringLiteral("geschrieben"), QStringLiteral("kein Bild")));
    file.Commit();
}

void PrepareWeekPrinter(const TWeekPage& page, QPrinter& printer)
{
    printer.setDocName(page.Title);
    printer.setPageLayout(PageLayout());
}

void PrintWeek(const TWeekPage& page, QPrinter& printer)
{
    PaintDocument(page, printer, printer.resolution());
}
