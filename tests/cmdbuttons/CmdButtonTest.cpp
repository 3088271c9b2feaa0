#include "CmdButtonsBar.h"

#include <QImage>
#include <QStyleOptionToolButton>

namespace
{

class CmdButtonTest : public TBarTest
{
protected:
    void MakePicture(const QSize& size) const
    {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(Qt::red);
        EXPECT_TRUE(image.save(m_project.Path(QStringLiteral("_buttons/a.png"))));
    }
    TCmdButton* Load(const QByteArray& text)
    {
        WriteEntry(A, text);
        Execute();
        return Bar().Buttons().first();
    }
    // Whether the middle of the button's picture holds the icon's colour.
    static int RedPixels(const QImage& image)
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
        }
        return count;
    }
};

} // namespace

TEST_F(CmdButtonTest, IsFlatWithTheGlyphAboveTheCaption)
{
    const TCmdButton* button = Load("Caption=Szenen\nCommand=pane://scenes\n");
    EXPECT_TRUE(button->autoRaise());
    EXPECT_EQ(button->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    EXPECT_EQ(button->height(), 75);
    EXPECT_EQ(button->text(), QStringLiteral("Szenen"));
}

TEST_F(CmdButtonTest, HasAToolTipAndANameForAssistiveTechnology)
{
    const TCmdButton* button = Load("Caption=Szenen & mehr\nCommand=pane://scenes\n");
    EXPECT_EQ(button->toolTip(), QStringLiteral("Szenen & mehr\npane://scenes"));
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Szenen & mehr"));
}

TEST_F(CmdButtonTest, GlyphIsPaintedAtTheResolutionOfTheScreen)
{
    MakePicture({96, 96});
    TCmdButton* button = Load("Command=pane://a\nIcon=_buttons/a.png\n");
    constexpr int Scale = 3;
    QImage image(button->size() * Scale, QImage::Format_ARGB32);
    image.fill(Qt::white);
    image.setDevicePixelRatio(Scale);
    button->render(&image);
    EXPECT_EQ(RedPixels(image), 96 * 96);
}

TEST_F(CmdButtonTest, FollowsThePalette)
{
    const TCmdButton* button = Load("Command=pane://a\n");
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::ButtonText, Qt::green);
    QApplication::setPalette(dark);
    QApplication::processEvents();
    EXPECT_EQ(button->palette().color(QPalette::ButtonText), QColor(Qt::green));
    EXPECT_EQ(Bar().grab().toImage().pixelColor(Bar().width() / 2, Bar().height() - 10), QColor(Qt::black));
    QApplication::setPalette(before);
}

TEST_F(CmdButtonTest, MissingIconFileLeavesTheGlyphUnchanged)
{
    MakePicture({32, 32});
    TCmdButton* button = Load("Command=pane://a\nIcon=_buttons/a.png\n");
    const qint64 before = button->icon().cacheKey();
    TEntryRecord record = button->Action()->GetRecord();
    record.Icon = QStringLiteral("_buttons/fehlt.png");
    button->Action()->SetRecord(record);
    Bar().HandleButtonChange(button->Action());
    EXPECT_EQ(button->icon().cacheKey(), before);
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}

TEST_F(CmdButtonTest, LongCaptionIsCutAndTheTipShowsItWhole)
{
    const QByteArray caption = "Die Übersicht aller Räume im Erdgeschoss und im Keller öffnen";
    const TCmdButton* button = Load("Caption=" + caption + "\nCommand=pane://a\n");
    EXPECT_LT(button->width(), button->fontMetrics().horizontalAdvance(QString::fromUtf8(caption)));
    EXPECT_TRUE(button->toolTip().startsWith(QString::fromUtf8(caption)));
    EXPECT_FALSE(const_cast<TCmdButton*>(button)->grab().isNull());
}
