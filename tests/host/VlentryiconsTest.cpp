#include "Vlentryicons.h"

#include "TestSupport.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{

class EntryIcons : public testing::Test
{
protected:
    QString Path(const char* name) const { return m_directory.filePath(QString::fromLatin1(name)); }

    QString MakePicture(const QSize& size) const
    {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(Qt::red);
        EXPECT_TRUE(image.save(Path("a.png")));
        return Path("a.png");
    }

    QTemporaryDir m_directory;
};

} // namespace

TEST_F(EntryIcons, PictureIsAnIcon)
{
    const auto icon = LoadEntryIcon(MakePicture({48, 48}));
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->availableSizes(), QList<QSize>{QSize(48, 48)});
}

TEST_F(EntryIcons, LargePictureIsMadeSmallAndKeepsItsShape)
{
    const auto icon = LoadEntryIcon(MakePicture({1024, 256}));
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->availableSizes(), QList<QSize>{QSize(128, 32)});
}

TEST_F(EntryIcons, PictureIsSharpAtHighResolution)
{
    const auto icon = LoadEntryIcon(MakePicture({256, 256}));
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->pixmap(QSize(EntryIconSize, EntryIconSize), 3.0).size(),
              QSize(3 * EntryIconSize, 3 * EntryIconSize));
}

TEST_F(EntryIcons, WhatIsNoPictureIsNoIcon)
{
    WriteAll(Path("text.png"), "Das ist kein Bild.");
    WriteAll(Path("cut.png"), ReadAll(MakePicture({48, 48})).first(40));
    WriteAll(Path("empty.png"), "");
    ASSERT_EQ(mkfifo(QFile::encodeName(Path("pipe.png")).constData(), 0600), 0);
    for (const char* name : {"text.png", "cut.png", "empty.png", "pipe.png", "fehlt.png"})
        EXPECT_FALSE(LoadEntryIcon(Path(name))) << name;
    EXPECT_FALSE(LoadEntryIcon(m_directory.path()));
    EXPECT_FALSE(LoadEntryIcon({}));
}

TEST_F(EntryIcons, ChangedPictureIsReadAgain)
{
    ASSERT_TRUE(LoadEntryIcon(MakePicture({48, 48})));
    const auto icon = LoadEntryIcon(MakePicture({16, 16}));
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->availableSizes(), QList<QSize>{QSize(16, 16)});
}

TEST_F(EntryIcons, PictureWithTheWrongNameIsStillOne)
{
    QFile::rename(MakePicture({16, 16}), Path("a.txt"));
    EXPECT_TRUE(LoadEntryIcon(Path("a.txt")));
}
