#include "StoreFixture.h"
#include "Vlerrors.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace
{

using TContents = QMap<QString, QByteArray>;

TContents ContentsBelow(const QString& directory)
{
    TContents contents;
    for (QDirIterator entries(directory, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                              QDirIterator::Subdirectories);
         entries.hasNext();) {
        const QString path = entries.next();
        contents.insert(path, entries.fileInfo().isFile() ? ReadAll(path) : QByteArray("no file"));
    }
    return contents;
}

// A project with the files a, b and c, which overlap, and a type that was chosen by hand.
class DatapointImport : public TStoreFixture
{
protected:
    DatapointImport()
    {
        Import(QStringLiteral("a.esf"), EsfLine("1/1/1", "Eins") + EsfLine("1/1/2", "Zwei"));
        Import(QStringLiteral("b.esf"), EsfLine("1/1/2", "Zwei von b") + EsfLine("1/1/3", "Drei"));
        Import(QStringLiteral("c.esf"), EsfLine("1/1/3", "Drei von c") + EsfLine("1/1/4", "Vier"));
        m_store.SetEisNumber(m_store.Datapoints()[0], 5);
    }

    // Tries an import that has to fail with a message that contains `part`, and has to leave everything as it was.
    void ExpectRefused(const TDatapointImport& import, const QString& part)
    {
        const TContents files = ContentsBelow(m_project.Root());
        const QStringList names = Names(m_store.Datapoints());
        const QStringList problems = Texts();
        const QString encoding = m_store.ChosenEncoding(import.FileName);
        try {
            m_store.Import(import);
            ADD_FAILURE() << "the import was not refused";
        } catch (const TUserError& error) {
            EXPECT_TRUE(error.Message().contains(part)) << error.Message().toStdString();
        }
        EXPECT_EQ(ContentsBelow(m_project.Root()), files);
        EXPECT_EQ(Names(m_store.Datapoints()), names);
        EXPECT_EQ(Texts(), problems);
        EXPECT_EQ(m_store.ChosenEncoding(import.FileName), encoding);
    }

    static void PutDirectoryInPlaceOf(const QString& path)
    {
        ASSERT_TRUE(!QFile::exists(path) || QFile::remove(path));
        ASSERT_TRUE(QDir().mkpath(path));
        WriteAll(path + QStringLiteral("/inhalt"), "bleibt");
    }
};

struct TRow
{
    QString Name;
    QString Identifier;
};

QMap<QString, TRow> RowsOf(const TDatapointStore& store)
{
    QMap<QString, TRow> rows;
    for (const TDatapoint& datapoint : store.Datapoints())
        rows.insert(DatapointKey(store.Kind(), datapoint), {datapoint.Name, DatapointIdentifier(datapoint)});
    return rows;
}

QStringList Sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

} // namespace

TEST_F(DatapointImport, ChangesWhatTheComparisonSaid)
{
    struct TCase
    {
        const char* File;
        const char* Replaced;
        QByteArray Content;
    };
    const QList<TCase> cases{
        {"d.esf", "", EsfLine("1/1/4", "Vier von d") + EsfLine("1/1/5", "Fünf")},  // after the others: theirs count
        {"0.esf", "", EsfLine("1/1/1", "Eins von 0") + EsfLine("1/1/6", "Sechs")}, // before the others: this counts
        {"a.esf", "a.esf", EsfLine("1/1/1", "Eins neu")},                          // 1/1/2 comes out of b
        {"z.esf", "a.esf", EsfLine("1/1/2", "Zwei von z")},
        {"b.esf", "b.esf", "Haus\r\n" + EsfLine("1/1/9", "Neun")},
        {"y.csv", "c.esf", "Name;Adresse\nVier;1/260\nDrei von b;2307\n"},
        {"0.csv", "0.esf", "Name;Adresse\nEins;1/257\n"},
    };
    for (const TCase& row : cases) {
        SCOPED_TRACE(row.File);
        const TDatapointImport import =
            Requested(QString::fromLatin1(row.File), row.Content, QString::fromLatin1(row.Replaced));
        const TImportChanges said = m_store.Compare(import);
        const QMap<QString, TRow> before = RowsOf(m_store);
        m_store.Import(import);
        const QMap<QString, TRow> after = RowsOf(m_store);

        QStringList added;
        QStringList renamed;
        QStringList gone;
        for (auto entry = after.begin(); entry != after.end(); ++entry) {
            const auto known = before.constFind(entry.key());
            if (known == before.constEnd())
                added.append(entry->Name);
            else if (known->Name != entry->Name || known->Identifier != entry->Identifier)
                renamed.append(entry->Name);
        }
        for (auto entry = before.begin(); entry != before.end(); ++entry) {
            if (!after.contains(entry.key()))
                gone.append(entry->Name);
        }
        EXPECT_EQ(Sorted(Names(said.Added)), Sorted(added));
        EXPECT_EQ(Sorted(Names(said.Renamed)), Sorted(renamed));
        EXPECT_EQ(Sorted(Names(said.Gone)), Sorted(gone));
        QStringList problems;
        for (const TImportProblem& problem : said.Problems)
            problems.append(TFileProblem{.File = import.FileName, .Problem = problem}.Text());
        const QRegularExpression aboutTheFile(u'^' + QRegularExpression::escape(import.FileName));
        EXPECT_EQ(problems, Texts().filter(aboutTheFile));
    }
}

TEST_F(DatapointImport, ComparisonTellsWhatAnotherFileHasAlready)
{
    const TImportChanges changes =
        m_store.Compare(Requested(QStringLiteral("d.esf"), EsfLine("1/1/4", "Vier von d") + EsfLine("1/1/5", "Fünf")));
    EXPECT_EQ(Names(changes.Ignored), QStringList(QStringLiteral("Vier von d")));
    EXPECT_EQ(changes.Problems.size(), 1);
}

TEST_F(DatapointImport, HoldsWhatALoadWouldRead)
{
    m_store.Import(Requested(QStringLiteral("0.esf"),
                             EsfLine("1/1/1", "K\x81"
                                              "che"),
                             QStringLiteral("b.esf"), QStringLiteral("IBM850")));
    TDatapointStore other(dkEib);
    other.Load(Directory());
    EXPECT_EQ(Names(m_store.Datapoints()), Names(other.Datapoints()));
    EXPECT_EQ(Names(m_store.Datapoints()).first(), QStringLiteral("Küche"));
    QStringList problems;
    for (const TFileProblem& problem : other.Problems())
        problems.append(problem.Text());
    EXPECT_EQ(Texts(), problems);
}

TEST_F(DatapointImport, LeavesEverythingWhenTheDecisionsCannotBeWritten)
{
    PutDirectoryInPlaceOf(DecisionsFile());
    for (const char* replaced : {"", "a.esf"}) {
        ExpectRefused(Requested(QStringLiteral("d.esf"), EsfLine("1/1/9", "Neun"), QString::fromLatin1(replaced),
                                QStringLiteral("IBM850")),
                      QStringLiteral("eib.json"));
    }
    ExpectRefused(
        Requested(QStringLiteral("a.esf"), EsfLine("1/1/9", "Neun"), QStringLiteral("a.esf"), QStringLiteral("IBM850")),
        QStringLiteral("eib.json"));
}

TEST_F(DatapointImport, LeavesEverythingWhenTheDecisionsAreDamaged)
{
    WriteAll(DecisionsFile(), "{ kaputt");
    m_store.Load(Directory());
    ExpectRefused(
        Requested(QStringLiteral("d.esf"), EsfLine("1/1/9", "Neun"), QStringLiteral("a.esf"), QStringLiteral("IBM850")),
        QStringLiteral("beschädigt"));
}

TEST_F(DatapointImport, LeavesEverythingWhenTheNewFileCannotBeWritten)
{
    const QString tooLong = QString(300, u'x') + QStringLiteral(".esf");
    ExpectRefused(Requested(tooLong, EsfLine("1/1/9", "Neun"), QStringLiteral("a.esf"), QStringLiteral("IBM850")),
                  QStringLiteral("kann nicht"));
}

TEST_F(DatapointImport, LeavesEverythingWhenTheSameFileCannotBeWritten)
{
    m_store.Import(Requested(QStringLiteral("a.esf"), EsfLine("1/1/1", "Eins"), QStringLiteral("a.esf"),
                             QStringLiteral("IBM850")));
    PutDirectoryInPlaceOf(File(QStringLiteral("a.esf")));
    ExpectRefused(Requested(QStringLiteral("a.esf"), EsfLine("1/1/9", "Neun"), QStringLiteral("a.esf")),
                  QStringLiteral("a.esf"));
}

TEST_F(DatapointImport, LeavesEverythingWhenTheReplacedFileCannotBeDeleted)
{
    PutDirectoryInPlaceOf(File(QStringLiteral("a.esf")));
    ExpectRefused(
        Requested(QStringLiteral("d.esf"), EsfLine("1/1/9", "Neun"), QStringLiteral("a.esf"), QStringLiteral("IBM850")),
        QStringLiteral("a.esf"));
}

TEST_F(DatapointImport, TakesBackTheDirectoriesItMade)
{
    ASSERT_TRUE(QDir(m_project.Path(QStringLiteral("_config/data/datapoints"))).removeRecursively());
    m_store.Load(Directory());
    ExpectRefused(Requested(QString(300, u'x'), EsfLine("1/1/9", "Neun")), QStringLiteral("kann nicht"));
    EXPECT_FALSE(QFile::exists(Directory()));
}

TEST_F(DatapointImport, RefusesADirectoryThatIsAFile)
{
    ASSERT_TRUE(QDir(Directory()).removeRecursively());
    WriteAll(Directory(), "eine Datei");
    m_store.Load(Directory());
    EXPECT_EQ(Texts().size(), 1);
    ExpectRefused(Requested(QStringLiteral("d.esf"), EsfLine("1/1/9", "Neun")), QStringLiteral("datapoints"));
}

TEST_F(DatapointImport, RefusesNamesThatAreNoNames)
{
    for (const char* name : {"a\\b.esf", "../a.esf", "..\\a.esf", ".a.esf"})
        ExpectRefused(Requested(QString::fromLatin1(name), EsfLine("1/1/9", "Neun")), QString::fromLatin1(name));
}

TEST_F(DatapointImport, NeverWritesThroughALinkThatLeadsNowhere)
{
    const QString elsewhere = m_project.Path(QStringLiteral("anderswo"));
    ASSERT_TRUE(QFile::link(elsewhere, File(QStringLiteral("d.esf"))));
    ExpectRefused(Requested(QStringLiteral("d.esf"), EsfLine("1/1/9", "Neun")), QStringLiteral("d.esf"));
}
