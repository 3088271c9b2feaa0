#include "Vlfiledropedit.h"

#include "NestedLoop.h"
#include "TestSupport.h"
#include "Vlerrors.h"

#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

namespace
{

const auto File = QStringLiteral("/home/haus/Bilder/Küche 1.png");
const auto PackageForm = QStringLiteral("\\home\\haus\\Bilder\\Küche 1.png");
const auto Before = QStringLiteral("vorher");

class FileDropEdit : public testing::Test
{
protected:
    FileDropEdit()
    {
        m_edit.setText(Before);
        m_edit.resize(300, 30);
        m_edit.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_edit));
    }

    bool Drop(const QList<QUrl>& urls, const QString& text = {})
    {
        QMimeData content;
        if (!urls.isEmpty())
            content.setUrls(urls);
        if (!text.isNull())
            content.setText(text);
        return TDraggedOver(&m_edit, &content).EnterAndDrop(QPoint(5, 10));
    }
    bool DropFile(const QString& path = File) { return Drop({QUrl::fromLocalFile(path)}); }

    TVlFileDropEdit m_edit;
    QSignalSpy m_dropped{&m_edit, &TVlFileDropEdit::FileDropped};
    QSignalSpy m_edited{&m_edit, &QLineEdit::textEdited};
};

} // namespace

TEST_F(FileDropEdit, TakesThePathOfADroppedFile)
{
    EXPECT_TRUE(DropFile());
    EXPECT_EQ(m_edit.text(), PackageForm);
    ASSERT_EQ(m_dropped.size(), 1);
    EXPECT_EQ(m_dropped.first().first().toString(), PackageForm);
}

TEST_F(FileDropEdit, PrefersTheFileToItsText)
{
    EXPECT_TRUE(Drop({QUrl::fromLocalFile(File)}, QStringLiteral("file:///home/haus/Bilder/K%C3%BCche%201.png")));
    EXPECT_EQ(m_edit.text(), PackageForm);
}

TEST_F(FileDropEdit, ShowsThatItTakesAFileBeforeItIsDropped)
{
    QMimeData content;
    content.setUrls({QUrl::fromLocalFile(File)});
    const TDraggedOver dragged(&m_edit, &content);
    EXPECT_TRUE(dragged.Enter(QPoint(5, 10)));
    EXPECT_TRUE(dragged.Move(QPoint(20, 10)));
    dragged.Leave();
    EXPECT_EQ(m_edit.text(), Before);
    EXPECT_TRUE(m_dropped.isEmpty());
}

TEST_F(FileDropEdit, RefusesSeveralFiles)
{
    EXPECT_FALSE(Drop({QUrl::fromLocalFile(File), QUrl::fromLocalFile(QStringLiteral("/tmp/b.png"))}));
    EXPECT_EQ(m_edit.text(), Before);
    EXPECT_TRUE(m_dropped.isEmpty());
}

TEST_F(FileDropEdit, RefusesWhatIsNoFile)
{
    EXPECT_FALSE(Drop({QUrl(QStringLiteral("https://example.com/a.png"))}));
    QMimeData content;
    content.setData(QStringLiteral("application/x-other"), "x");
    EXPECT_FALSE(TDraggedOver(&m_edit, &content).EnterAndDrop(QPoint(5, 10)));
    EXPECT_EQ(m_edit.text(), Before);
}

TEST_F(FileDropEdit, TakesPlainTextAsEveryEditDoes)
{
    m_edit.clear();
    EXPECT_TRUE(Drop({}, QStringLiteral("1/2/3")));
    EXPECT_EQ(m_edit.text(), QStringLiteral("1/2/3"));
    EXPECT_TRUE(m_dropped.isEmpty());
    EXPECT_EQ(m_edited.size(), 1);
}

TEST_F(FileDropEdit, CanBeTypedIn)
{
    m_edit.clear();
    QTest::keyClicks(&m_edit, QStringLiteral("21,5"));
    EXPECT_EQ(m_edit.text(), QStringLiteral("21,5"));
    EXPECT_EQ(m_edited.size(), 4);
    EXPECT_TRUE(m_dropped.isEmpty());
}

TEST_F(FileDropEdit, TakesWhatTheValidationMakesOfThePath)
{
    QObject* asked = nullptr;
    m_edit.SetValidateFileEvent([&](QObject* sender, QString& fileName) {
        asked = sender;
        EXPECT_EQ(fileName, PackageForm);
        fileName = QStringLiteral("bild://1");
        return true;
    });
    EXPECT_TRUE(DropFile());
    EXPECT_EQ(asked, &m_edit);
    EXPECT_EQ(m_edit.text(), QStringLiteral("bild://1"));
    EXPECT_EQ(m_dropped.first().first().toString(), QStringLiteral("bild://1"));
}

TEST_F(FileDropEdit, KeepsItsTextWhenTheValidationRefuses)
{
    m_edit.SetValidateFileEvent([](QObject*, QString& fileName) {
        fileName = QStringLiteral("other");
        return false;
    });
    EXPECT_FALSE(DropFile());
    EXPECT_EQ(m_edit.text(), Before);
    EXPECT_TRUE(m_dropped.isEmpty());
}

TEST_F(FileDropEdit, AsksForNoValidationOfOtherContent)
{
    int asked = 0;
    m_edit.SetValidateFileEvent([&](QObject*, QString&) { return ++asked > 0; });
    Drop({}, QStringLiteral("text"));
    Drop({QUrl::fromLocalFile(File), QUrl::fromLocalFile(File)});
    EXPECT_EQ(asked, 0);
    DropFile();
    EXPECT_EQ(asked, 1);
}

TEST_F(FileDropEdit, ReportsAFailureOfTheValidation)
{
    TRecordedMessages messages;
    m_edit.SetValidateFileEvent([](QObject*, QString&) -> bool { throw TUserError(QStringLiteral("validation")); });
    EXPECT_FALSE(DropFile());
    EXPECT_EQ(messages.Errors, QStringList{QStringLiteral("validation")});
    EXPECT_EQ(m_edit.text(), Before);
}

TEST_F(FileDropEdit, TakesNothingWhileItIsReadOnlyOrDisabled)
{
    m_edit.setReadOnly(true);
    EXPECT_FALSE(DropFile());
    m_edit.setReadOnly(false);
    m_edit.setEnabled(false);
    EXPECT_FALSE(DropFile());
    EXPECT_EQ(m_edit.text(), Before);
    EXPECT_TRUE(m_dropped.isEmpty());
}
