#include "DatapointModel.h"
#include "StoreFixture.h"
#include "Vldragobjects.h"

#include <QMimeData>
#include <QSet>

#include <memory>

namespace
{

class MergedAddresses : public TStoreFixture
{};

class MergedRegisters : public TStoreFixture
{
protected:
    MergedRegisters() : TStoreFixture(dkModbus) {}
};

class MergedVariables : public TStoreFixture
{
protected:
    MergedVariables() : TStoreFixture(dkVirtual) {}
};

} // namespace

TEST_F(MergedAddresses, AreOneInEveryNotation)
{
    Import(QStringLiteral("a.csv"), "Name;Adresse\nDrei;1/2/3\n");
    Import(QStringLiteral("b.csv"), "Name;Adresse\nAnderes;1/2/4\nZwei;1/515\n");
    Import(QStringLiteral("c.csv"), "Name;Adresse\nEins;2563\n");
    EXPECT_EQ(Names(m_store.Datapoints()), QStringList({QStringLiteral("Drei"), QStringLiteral("Anderes")}));
}

TEST_F(MergedAddresses, AreReportedInBothFilesWithTheirLines)
{
    Import(QStringLiteral("a.csv"), "Name;Adresse\nDrei;1/2/3\n");
    Import(QStringLiteral("b.csv"), "Name;Adresse\nAnderes;1/2/4\nZwei;1/515\n");
    Import(QStringLiteral("c.csv"), "Name;Adresse\nEins;2563\n");
    EXPECT_EQ(
        Texts(),
        QStringList(
            {QStringLiteral(
                 "a.csv, Zeile 2: Die Adresse „1/515“ steht noch einmal in b.csv, Zeile 3; diese hier gilt."),
             QStringLiteral("b.csv, Zeile 3: Die Adresse „1/515“ steht schon in a.csv, Zeile 2; diese hier wird nicht "
                            "übernommen."),
             QStringLiteral("c.csv, Zeile 2: Die Adresse „2563“ steht schon in a.csv, Zeile 2; diese hier wird nicht "
                            "übernommen.")}));
}

TEST_F(MergedAddresses, ReportEachFilesProblemsInTheOrderOfItsLines)
{
    Import(QStringLiteral("a.csv"), "Name;Adresse\nEins;1/2/3\n");
    Import(QStringLiteral("b.csv"), "Name;Adresse\nFalsch;99/1/1\nZwei;1/2/3\nAuch falsch;99/1/2\n");
    const QStringList texts = Texts();
    ASSERT_EQ(texts.size(), 4);
    EXPECT_TRUE(texts[0].startsWith(QStringLiteral("a.csv, Zeile 2:")));
    EXPECT_TRUE(texts[1].startsWith(QStringLiteral("b.csv, Zeile 2:")));
    EXPECT_TRUE(texts[2].startsWith(QStringLiteral("b.csv, Zeile 3:")));
    EXPECT_TRUE(texts[3].startsWith(QStringLiteral("b.csv, Zeile 4:")));
}

TEST_F(MergedAddresses, KeepTheirTypeInAnotherNotation)
{
    Import(QStringLiteral("a.csv"), "Name;Adresse\nEins;1/2/3\n");
    m_store.SetEisNumber(m_store.Datapoints()[0], 6);
    Import(QStringLiteral("a.csv"), "Name;Adresse\nEins;1/515\n", QStringLiteral("a.csv"));
    EXPECT_EQ(m_store.EisNumber(m_store.Datapoints()[0]), 6);
}

TEST_F(MergedAddresses, TakeTypesThatWereKeptByNotation)
{
    Import(QStringLiteral("a.csv"), "Name;Adresse\nEins;1/2/3\nZwei;1/516\nDrei;2565\nVier;1/2/6\n");
    WriteAll(DecisionsFile(), R"({"format":1,"encodings":{},"types":{"1/2/3":5,"2564":6,"1/517":7,"1/2/6":99}})");
    m_store.Load(Directory());
    QList<int> types;
    for (const TDatapoint& datapoint : m_store.Datapoints())
        types.append(m_store.EisNumber(datapoint));
    EXPECT_EQ(types, QList<int>({5, 6, 7, 0}));
    m_store.SetEisNumber(m_store.Datapoints()[3], 8);
    TDatapointStore other(dkEib);
    other.Load(Directory());
    EXPECT_EQ(other.EisNumber(other.Datapoints()[0]), 5);
    EXPECT_EQ(other.EisNumber(other.Datapoints()[3]), 8);
}

TEST_F(MergedRegisters, AreOneAsDecimalAndHexadecimal)
{
    Import(QStringLiteral("a.csv"), "Adresse;Name\n0x10;Eins\n");
    Import(QStringLiteral("b.csv"), "Adresse;Name\n16;Zwei\n17;Drei\n");
    EXPECT_EQ(Names(m_store.Datapoints()), QStringList({QStringLiteral("Eins"), QStringLiteral("Drei")}));
    EXPECT_EQ(Texts().size(), 2);
}

TEST_F(MergedRegisters, OfDifferentKindsAreDifferent)
{
    Import(QStringLiteral("pumpe.tsv"), "Title\tRegister type\tRegister\n"
                                        "Vorlauf\tMODBUS_INPUT_REGISTER\t1\n"
                                        "Sollwert\tMODBUS_HOLDING_REGISTER\t1\n");
    EXPECT_EQ(m_store.Datapoints().size(), 2);
    EXPECT_TRUE(Texts().isEmpty());
}

TEST_F(MergedRegisters, OfDifferentDevicesAreDifferentAlsoInOneFileEach)
{
    Import(QStringLiteral("a.csv"), "deviceId;Adresse;Name\n1;16;Eins\n");
    Import(QStringLiteral("b.csv"), "deviceId;Adresse;Name\n2;16;Zwei\n01;0x10;Doppelt\n");
    EXPECT_EQ(Addresses(m_store.Datapoints()), QStringList({QStringLiteral("1/16"), QStringLiteral("2/16")}));
    EXPECT_EQ(Texts().size(), 2);
}

TEST_F(MergedRegisters, AreDraggedByNamesThatAreDifferentToo)
{
    Import(QStringLiteral("a.csv"), "deviceId;Registertyp;Adresse;Name\n"
                                    "1;Holding;16;a\n2;Holding;16;b\n2;Input;16;c\n;;16;d\n");
    TDatapointModel model(m_store, nullptr);
    QSet<QString> names;
    const QModelIndexList rows = model.match(model.index(0, 0), Qt::DisplayRole, QStringLiteral("16"), -1,
                                             Qt::MatchExactly | Qt::MatchRecursive);
    for (const QModelIndex& row : rows) {
        const std::unique_ptr<QMimeData> content(model.mimeData({row}));
        names.insert(TPropertyDragObject::FromMimeData(content.get())->GetValue(QStringLiteral("name")));
    }
    EXPECT_EQ(names, QSet<QString>({QStringLiteral("1/Holding-Register/16"), QStringLiteral("2/Holding-Register/16"),
                                    QStringLiteral("2/Input-Register/16"), QStringLiteral("16")}));
}

TEST_F(MergedRegisters, KeepTheirTypesApart)
{
    Import(QStringLiteral("a.csv"), "deviceId;Adresse;Name\n1;16;Eins\n2;16;Zwei\n");
    m_store.SetEisNumber(m_store.Datapoints()[1], 9);
    EXPECT_EQ(m_store.EisNumber(m_store.Datapoints()[0]), 0);
    TDatapointStore other(dkModbus);
    other.Load(Directory());
    EXPECT_EQ(other.EisNumber(other.Datapoints()[0]), 0);
    EXPECT_EQ(other.EisNumber(other.Datapoints()[1]), 9);
}

TEST_F(MergedRegisters, TakeTypesThatWereKeptByNotationAndWithoutADevice)
{
    Import(QStringLiteral("a.csv"), "deviceId;Adresse;Name\n1;16;Eins\n2;16;Zwei\n");
    Import(QStringLiteral("b.csv"), "Registertyp;Adresse;Name\nInput;7;Drei\n");
    WriteAll(DecisionsFile(), R"({"format":1,"encodings":{},"types":{"0x10":9,"Input-Register/0x7":5}})");
    m_store.Load(Directory());
    ASSERT_EQ(m_store.Datapoints().size(), 3);
    EXPECT_EQ(m_store.EisNumber(m_store.Datapoints()[0]), 9);
    EXPECT_EQ(m_store.EisNumber(m_store.Datapoints()[1]), 0);
    EXPECT_EQ(m_store.EisNumber(m_store.Datapoints()[2]), 5);
}

TEST_F(MergedVariables, AreOneByTheirNames)
{
    Import(QStringLiteral("a.txt"), "Anwesend;Eins\n");
    Import(QStringLiteral("b.txt"), "Urlaub\nAnwesend;Zwei\n");
    EXPECT_EQ(Names(m_store.Datapoints()), QStringList({QStringLiteral("Eins"), QStringLiteral("Urlaub")}));
    EXPECT_TRUE(Texts().last().startsWith(QStringLiteral("b.txt, Zeile 2:")));
}
