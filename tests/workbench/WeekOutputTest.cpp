#include "TestSchedule.h"
#include "TestSupport.h"
#include "Vlerrors.h"
#include "WeekOutput.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPalette>
#include <QPrinter>
#include <gtest/gtest.h>

namespace
{

TWeekPage Page(const QList<TWeekEntry>& entries = {WeekEntry("06:00", "1111100"), WeekEntry("22:00", "1111111")})
{
    return {.Title = QStringLiteral("Küche"),
            .Project = QStringLiteral("Musterhaus"),
            .Date = QDate(2024, 5, 1),
            .Entries = entries};
}

// As many as no page shows one by one.
TWeekPage FullPage()
{
    return Page(QList<TWeekEntry>(500, WeekEntry("06:00", "1000000")));
}

class WeekOutput : public ::testing::Test
{
protected:
    QString File(const char* name) const { return m_directory.filePath(QString::fromLatin1(name)); }

    static qsizetype PageCount(const QByteArray& pdf) { return pdf.count("/Type /Page\n"); }

    // Pixels of a colour other than white in a part of the picture.
    static int InkIn(const QImage& image, const QRect& part)
    {
        int count = 0;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x)
                count += image.pixelColor(x, y) != QColor(Qt::white) ? 1 : 0;
        }
        return count;
    }

    QTemporaryDir m_directory;
};

TEST_F(WeekOutput, PdfIsOnePageInLandscape)
{
    SaveWeekPdf(Page(), File("woche.pdf"));
    const QByteArray pdf = ReadAll(File("woche.pdf"));
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    EXPECT_TRUE(pdf.trimmed().endsWith("%%EOF"));
    EXPECT_EQ(PageCount(pdf), 1);
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 842 595]") || pdf.contains("/MediaBox [0 0 842.0"))
        << pdf.indexOf("/MediaBox");
}

TEST_F(WeekOutput, EntriesThatShareABoxAreListedOnFurtherPages)
{
    SaveWeekPdf(FullPage(), File("woche.pdf"));
    EXPECT_GT(PageCount(ReadAll(File("woche.pdf"))), 2);
}

TEST_F(WeekOutput, PngIsAnA4PageWithMarginsAndATitle)
{
    SaveWeekPng(Page(), File("woche.png"));
    const QImage image(File("woche.png"));
    ASSERT_FALSE(image.isNull());
    EXPECT_NEAR(image.width() * 210.0 / 297, image.height(), 1);
    EXPECT_NEAR(image.width() * 1000.0 / image.dotsPerMeterX(), 297, 1);
    const int margin = image.width() / 30;
    EXPECT_EQ(InkIn(image, QRect(0, 0, image.width(), margin)), 0);
    EXPECT_EQ(InkIn(image, QRect(0, 0, margin, image.height())), 0);
    EXPECT_GT(InkIn(image, QRect(margin, margin, image.width() / 4, margin * 2)), 100);
    EXPECT_GT(InkIn(image, QRect(image.width() * 3 / 4, margin, image.width() / 4, margin * 2)), 100);
}

TEST_F(WeekOutput, PaperIsWhiteWhateverThePalette)
{
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    for (const QPalette::ColorRole role : {QPalette::Base, QPalette::Window})
        dark.setColor(role, QColor(20, 20, 20));
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText})
        dark.setColor(role, Qt::white);
    SaveWeekPng(Page(), File("hell.png"));
    QApplication::setPalette(dark);
    SaveWeekPng(Page(), File("dunkel.png"));
    QApplication::setPalette(before);
    EXPECT_EQ(ReadAll(File("hell.png")), ReadAll(File("dunkel.png")));
    EXPECT_EQ(QImage(File("dunkel.png")).pixelColor(1, 1), QColor(Qt::white));
}

TEST_F(WeekOutput, PictureShowsTheEntries)
{
    SaveWeekPng(Page({}), File("leer.png"));
    SaveWeekPng(Page(), File("voll.png"));
    EXPECT_NE(ReadAll(File("leer.png")), ReadAll(File("voll.png")));
}

TEST_F(WeekOutput, FileIsReplacedAsAWhole)
{
    for (const char* name : {"woche.pdf", "woche.png"}) {
        WriteAll(File(name), "alt");
        ASSERT_TRUE(QFile::link(File(name), File("link")));
        (QByteArray(name).endsWith("pdf") ? SaveWeekPdf : SaveWeekPng)(Page(), File("link"));
        EXPECT_TRUE(QFileInfo(File("link")).isSymLink());
        EXPECT_GT(QFileInfo(File(name)).size(), 1000);
        QFile::remove(File("link"));
    }
    EXPECT_EQ(QDir(m_directory.path()).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST_F(WeekOutput, WhatCannotBeWrittenIsNamedAndNothingIsLeft)
{
    for (const auto& save : {&SaveWeekPdf, &SaveWeekPng}) {
        try {
            save(Page(), File("fehlt/woche"));
            FAIL();
        } catch (const TFileError& error) {
            EXPECT_TRUE(error.Message().contains(QStringLiteral("fehlt/woche"))) << error.Message().toStdString();
        }
        EXPECT_THROW(save(Page(), m_directory.path()), TFileError);
    }
    EXPECT_TRUE(QDir(m_directory.path()).isEmpty());
}

TEST_F(WeekOutput, PrinterGetsTheSamePages)
{
    for (const TWeekPage& page : {Page(), FullPage()}) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(File("druck.pdf"));
        PrepareWeekPrinter(page, printer);
        EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);
        EXPECT_EQ(printer.pageLayout().pageSize().id(), QPageSize::A4);
        EXPECT_EQ(printer.docName(), QStringLiteral("Küche"));
        PrintWeek(page, printer);
        SaveWeekPdf(page, File("woche.pdf"));
        EXPECT_EQ(PageCount(ReadAll(File("druck.pdf"))), PageCount(ReadAll(File("woche.pdf"))));
    }
}

} // namespace
