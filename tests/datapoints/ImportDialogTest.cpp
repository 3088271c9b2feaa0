#include "DatapointBrowser.h"
#include "ImportDialog.h"
#include "StoreFixture.h"
#include "Userman.h"
#include "Vlerrors.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <sys/stat.h>

#include <functional>
#include <new>

namespace
{

constexpr int Many = 5000;

// "2/0/0" and on.
QByteArray ManyLines(const char* name)
{
    QByteArray content = "Haus\r\n";
    for (int value = 4096; value < 4096 + Many; ++value) {
        const QByteArray address = QByteArray::number(value >> 11) + '/' + QByteArray::number((value >> 8) & 7) + '/' +
                                   QByteArray::number(value & 255);
        content += EsfLine(address.constData(), name);
    }
    return content;
}

// A project that holds haus.esf, shown by a browser.
class ImportDialog : public ::testing::Test
{
protected:
    ImportDialog()
    {
        QDir(m_project.Root()).mkpath(m_folder);
        m_project.Write(m_folder + QStringLiteral("/haus.esf"), EsfLine("1/1/1", "Eins") + EsfLine("1/1/2", "Zwei"));
        bool handled = false;
        m_browser.ExecuteCmd(BrowserCommand, handled);
    }

    QString Source(const QString& name, const QByteArray& content) const
    {
        WriteAll(m_project.Path(name), content);
        return m_project.Path(name);
    }

    QStringList Held(const QString& folder = {}) const
    {
        return QDir(folder.isEmpty() ? m_project.Path(m_folder) : folder)
            .entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    // Runs the dialog, and `steps` as soon as it waits for its user; gives it up at the end.
    bool Run(const QString& path, const std::function<void(TImportDialog&)>& steps, int patience = 60'000)
    {
        TImportDialog dialog(m_browser.Store(), path, nullptr);
        dialog.SetPatience(patience);
        QTimer::singleShot(0, &dialog, [&] {
            steps(dialog);
            if (dialog.isVisible())
                dialog.reject();
        });
        return dialog.Execute();
    }

    static QStringList Column(const TImportDialog& dialog, int column)
    {
        const QAbstractItemModel& model = *dialog.findChild<QTreeView*>(QStringLiteral("TreePreview"))->model();
        QStringList texts;
        for (int row = 0; row < model.rowCount(); ++row)
            texts.append(model.index(row, column).data().toString());
        return texts;
    }

    static QComboBox& Encodings(const TImportDialog& dialog)
    {
        return *dialog.findChild<QComboBox*>(QStringLiteral("CBoxEncoding"));
    }

    static void Press(const TImportDialog& dialog)
    {
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("BtnImport")), Qt::LeftButton);
    }

    const QString m_folder = QStringLiteral("_config/data/datapoints/eib");
    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    TDatapointBrowser m_browser{dkEib, nullptr};
};

// Clicks the button of every progress dialog that is shown while it lives.
class TImpatientUser
{
public:
    TImpatientUser()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                auto* progress = qobject_cast<QProgressDialog*>(window);
                if (progress && progress->isVisible())
                    Click(*progress);
            }
        });
        m_timer.start(0);
    }

    int Clicks() const { return m_clicks; }

private:
    void Click(const QProgressDialog& progress)
    {
        auto* button = progress.findChild<QPushButton*>();
        EXPECT_EQ(button->text(), QStringLiteral("Abbrechen"));
        ++m_clicks;
        QTest::mouseClick(button, Qt::LeftButton);
    }

    QTimer m_timer;
    int m_clicks = 0;
};

} // namespace

TEST_F(ImportDialog, MarksWhatTheImportChanges)
{
    const QString path = Source(QStringLiteral("neu.esf"), EsfLine("1/1/1", "Erstes") + EsfLine("1/1/3", "Drei"));
    Run(path, [](TImportDialog& dialog) {
        EXPECT_EQ(Column(dialog, 1), QStringList({QStringLiteral("Drei"), QStringLiteral("Erstes")}));
        EXPECT_EQ(Column(dialog, 3),
                  QStringList({QStringLiteral("neu"), QStringLiteral("gilt aus einer anderen Datei")}));
        auto* replaced = dialog.findChild<QComboBox*>(QStringLiteral("CBoxReplaced"));
        replaced->setCurrentIndex(replaced->findData(QStringLiteral("haus.esf")));
        EXPECT_EQ(Column(dialog, 1),
                  QStringList({QStringLiteral("Zwei"), QStringLiteral("Drei"), QStringLiteral("Erstes")}));
        EXPECT_EQ(Column(dialog, 3),
                  QStringList({QStringLiteral("entfällt"), QStringLiteral("neu"), QStringLiteral("umbenannt")}));
        EXPECT_TRUE(dialog.findChild<QLabel*>(QStringLiteral("LabelSummary"))
                        ->text()
                        .contains(QStringLiteral("1 neu und 1 umbenannt; 1 entfallen")));
    });
}

TEST_F(ImportDialog, TellsOfAddressesInOtherFiles)
{
    Run(Source(QStringLiteral("neu.esf"), EsfLine("1/1/1", "Erstes")), [](TImportDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QPlainTextEdit*>(QStringLiteral("EditProblems"))->toPlainText(),
                  QStringLiteral("Zeile 1: Die Adresse „1/1/1“ steht schon in haus.esf, Zeile 1; diese hier wird nicht "
                                 "übernommen."));
    });
}

TEST_F(ImportDialog, ShowsEveryProblemAndEveryRow)
{
    const QByteArray bad = QByteArray("A.B.99/1/1\tx\t\tLow\t\r\n").repeated(Many);
    Run(Source(QStringLiteral("neu.esf"), ManyLines("x") + bad), [](TImportDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QPlainTextEdit*>(QStringLiteral("EditProblems"))->blockCount(), Many);
        EXPECT_EQ(Column(dialog, 0).size(), Many);
        EXPECT_TRUE(dialog.findChild<QLabel*>(QStringLiteral("LabelSummary"))
                        ->text()
                        .contains(QStringLiteral("5.000 Meldungen")));
    });
}

TEST_F(ImportDialog, BeginsWithTheEncodingThatTheFileHas)
{
    m_browser.Store().Import(QStringLiteral("dos.esf"),
                             EsfLine("1/1/4", "K\x81"
                                              "che"),
                             QStringLiteral("IBM850"), {});
    Run(Source(QStringLiteral("dos.esf"), EsfLine("1/1/4", "K\x81"
                                                           "che")),
        [](TImportDialog& dialog) {
            EXPECT_EQ(Encodings(dialog).currentText(), QStringLiteral("IBM850"));
            EXPECT_TRUE(Column(dialog, 1).contains(QStringLiteral("Küche")));
        });
}

TEST_F(ImportDialog, IsGoneWhenTheFirstReadingIsCancelled)
{
    const QString path = Source(QStringLiteral("neu.esf"), ManyLines("x"));
    const TImpatientUser user;
    bool shown = false;
    EXPECT_FALSE(Run(
        path, [&](TImportDialog& dialog) { shown = dialog.isVisible(); }, 0));
    EXPECT_EQ(user.Clicks(), 1);
    EXPECT_FALSE(shown);
    EXPECT_EQ(Held(), QStringList(QStringLiteral("haus.esf")));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(ImportDialog, StaysAsItWasWhenAnotherReadingIsCancelled)
{
    const QString path = Source(QStringLiteral("neu.esf"), ManyLines("K\xFC"
                                                                     "che"));
    EXPECT_TRUE(Run(path, [&](TImportDialog& dialog) {
        const QStringList names = Column(dialog, 1);
        EXPECT_TRUE(names.contains(QStringLiteral("Küche")));
        dialog.SetPatience(0);
        {
            const TImpatientUser user;
            Encodings(dialog).setCurrentText(QStringLiteral("IBM850"));
            EXPECT_EQ(user.Clicks(), 1);
        }
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(Encodings(dialog).currentText(), QStringLiteral("automatisch"));
        EXPECT_EQ(Column(dialog, 1), names);
        EXPECT_EQ(Held(), QStringList(QStringLiteral("haus.esf")));
        Press(dialog);
    }));
    TDatapointStore other(dkEib);
    other.Load(m_project.Path(QStringLiteral("_config/data/datapoints")));
    EXPECT_TRUE(Names(other.Datapoints()).contains(QStringLiteral("Küche")));
}

TEST_F(ImportDialog, RefusesToImportIntoAnotherProject)
{
    const QTemporaryDir other;
    TProject::Create(other.filePath(QStringLiteral("Anderes")), QStringLiteral("Anderes"));
    Run(Source(QStringLiteral("neu.esf"), EsfLine("1/1/3", "Drei")), [&](TImportDialog& dialog) {
        UserManager()->OpenProject(other.filePath(QStringLiteral("Anderes")));
        Press(dialog);
        EXPECT_TRUE(dialog.isVisible());
    });
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.first().contains(QStringLiteral("anderes Projekt")));
    EXPECT_TRUE(m_messages.Errors.first().contains(m_project.Root()));
    EXPECT_EQ(Held(), QStringList(QStringLiteral("haus.esf")));
    EXPECT_TRUE(Held(other.filePath(QStringLiteral("Anderes/") + m_folder)).isEmpty());
}

TEST_F(ImportDialog, RefusesToImportWhenTheProjectWasClosed)
{
    Run(Source(QStringLiteral("neu.esf"), EsfLine("1/1/3", "Drei")), [&](TImportDialog& dialog) {
        UserManager()->CloseProject();
        Press(dialog);
    });
    EXPECT_EQ(m_messages.Errors.size(), 1);
    EXPECT_EQ(Held(), QStringList(QStringLiteral("haus.esf")));
}

TEST_F(ImportDialog, HandsEveryFailureToTheGeneralHandlerAndStays)
{
    QDir(m_project.Root()).mkpath(QStringLiteral("_config/data/datapoints/eib.json"));
    int handled = 0;
    const TErrorHandler previous = SetErrorHandler([&](const std::exception_ptr& error) {
        ++handled;
        ShowError(ErrorText(error));
    });
    Run(Source(QStringLiteral("neu.esf"), EsfLine("1/1/3", "Drei")), [&](TImportDialog& dialog) {
        Encodings(dialog).setCurrentText(QStringLiteral("Windows-1252"));
        Press(dialog);
        EXPECT_TRUE(dialog.isVisible());
    });
    SetErrorHandler(previous);
    EXPECT_EQ(handled, 1);
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.first().contains(QStringLiteral("eib.json")));
    EXPECT_EQ(Held(), QStringList(QStringLiteral("haus.esf")));
}

TEST_F(ImportDialog, ShowsAFailureBehindAnImportThatTookPlace)
{
    TDatapointStore store(dkEib);
    store.Load(m_project.Path(QStringLiteral("_config/data/datapoints")));
    store.SetWatcher([] { throw std::bad_alloc(); }, {});
    TImportDialog dialog(store, Source(QStringLiteral("neu.esf"), EsfLine("1/1/3", "Drei")), nullptr);
    QTimer::singleShot(0, &dialog, [&dialog] {
        Press(dialog);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(dialog.Execute());
    EXPECT_EQ(m_messages.Errors, QStringList(QStringLiteral("Der Arbeitsspeicher reicht nicht aus.")));
    EXPECT_TRUE(Held().contains(QStringLiteral("neu.esf")));
    EXPECT_EQ(store.Files().size(), Held().size());
}

TEST_F(ImportDialog, RefusesWhatIsNoFileWithoutWaitingForIt)
{
    const QString pipe = m_project.Path(QStringLiteral("pipe.esf"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& path : {pipe, QStringLiteral("/dev/zero"), m_project.Path(m_folder)}) {
        m_messages.Errors.clear();
        TImportDialog dialog(m_browser.Store(), path, nullptr);
        EXPECT_FALSE(dialog.Execute());
        ASSERT_EQ(m_messages.Errors.size(), 1);
        EXPECT_TRUE(m_messages.Errors.first().contains(path));
    }
}

TEST_F(ImportDialog, RefusesANameWithABackslash)
{
    TImportDialog dialog(m_browser.Store(), Source(QStringLiteral("a\\b.esf"), EsfLine("1/1/3", "Drei")), nullptr);
    EXPECT_FALSE(dialog.Execute());
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.first().contains(QStringLiteral("Backslash")));
}
