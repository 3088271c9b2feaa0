#include "Datapoints.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

constexpr int ManyRows = 5000;

// Addresses 1/0/0 and on, in each of the formats for group addresses.
QByteArray Table(const QString& head, const QString& row, const QString& foot = {})
{
    QString text = head;
    for (int i = 0; i < ManyRows; ++i) {
        const int value = 2048 + i;
        text += row.arg(QString::number(value >> 11), QString::number(value >> 8 & 7), QString::number(value & 255));
    }
    return (text + foot).toUtf8();
}

QList<QByteArray> Files()
{
    return {
        Table(QStringLiteral("Haus\n"), QStringLiteral("A.B.%1/%2/%3\tName\tEIS 1 'Schalten' (1 Bit)\tLow\t\n")),
        Table(QStringLiteral("Name;Adresse\n"), QStringLiteral("Name;%1/%2/%3\n")),
        Table(QStringLiteral("<GroupAddress-Export xmlns=\"http://knx.org/xml/ga-export/01\">"),
              QStringLiteral("<GroupAddress Name=\"Name\" Address=\"%1/%2/%3\"/>"),
              QStringLiteral("</GroupAddress-Export>")),
    };
}

} // namespace

TEST(ImportProgress, GrowsFromZeroToOne)
{
    for (const QByteArray& content : Files()) {
        QList<double> shares;
        TImportOptions options;
        options.Progress = [&](double done) {
            shares.append(done);
            return true;
        };
        EXPECT_EQ(ReadDatapoints(dkEib, content, options).Datapoints.size(), ManyRows);
        ASSERT_GT(shares.size(), 5);
        EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
        EXPECT_GE(shares.first(), 0.0);
        EXPECT_LE(shares.last(), 1.0);
    }
}

TEST(ImportProgress, CancelsAtAnyTimeAndLeavesNothing)
{
    for (const QByteArray& content : Files()) {
        for (int allowed = 0; allowed < 5; ++allowed) {
            int calls = 0;
            TImportOptions options;
            options.Progress = [&](double) { return calls++ < allowed; };
            const TImportResult result = ReadDatapoints(dkEib, content, options);
            EXPECT_TRUE(result.Cancelled);
            EXPECT_TRUE(result.Datapoints.isEmpty());
            EXPECT_EQ(calls, allowed + 1);
        }
    }
}

TEST(ImportProgress, CancelsTheOtherKinds)
{
    TImportOptions options;
    options.Progress = [](double) { return false; };
    EXPECT_TRUE(ReadDatapoints(dkModbus, "Adresse;Name\n1;Eins\n", options).Cancelled);
    EXPECT_TRUE(ReadDatapoints(dkVirtual, "Anwesend\n", options).Cancelled);
}

TEST(ImportProgress, CancelsBetweenTheRowsAndTheirAddresses)
{
    const QByteArray content = Files()[1];
    int calls = 0;
    TImportOptions options;
    options.Progress = [&](double) { return ++calls > 0; };
    ReadDatapoints(dkEib, content, options);
    const int all = calls;
    for (int allowed = 0; allowed < all; ++allowed) {
        calls = 0;
        options.Progress = [&](double) { return calls++ < allowed; };
        const TImportResult result = ReadDatapoints(dkEib, content, options);
        EXPECT_TRUE(result.Cancelled);
        EXPECT_TRUE(result.Datapoints.isEmpty());
        EXPECT_EQ(calls, allowed + 1);
    }
}

TEST(ImportProgress, SaysHowFarTheAddressesOfATableAre)
{
    QList<double> shares;
    TImportOptions options;
    options.Progress = [&](double done) {
        shares.append(done);
        return true;
    };
    ReadDatapoints(dkEib, Files()[1], options);
    // Of the rows' half of the reading, the middle is the pass over the addresses.
    const auto inPass = [](double share) { return share > 0.6 && share < 0.8; };
    EXPECT_GT(std::count_if(shares.begin(), shares.end(), inPass), 3);
}
