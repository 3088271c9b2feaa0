#include "Listing.h"

#include "TestSupport.h"

#include <QDir>
#include <gtest/gtest.h>

namespace
{

QStringList Cases(const QString& folder)
{
    const QDir directory(TestDataPath(folder));
    QStringList files = directory.entryList(QDir::Files, QDir::Name);
    files.removeIf([](const QString& file) { return file.endsWith(QStringLiteral(".txt")); });
    return files;
}

// Every file of a folder gives, byte for byte, what the text file of its name says.
void ExpectListings(TDatapointKind kind, const QString& format)
{
    const QString folder = QStringLiteral("datapoints/") + format;
    const QStringList files = Cases(folder);
    ASSERT_FALSE(files.isEmpty());
    for (const QString& file : files) {
        const QString path = folder + u'/' + file;
        SCOPED_TRACE(path.toStdString());
        const QString expected = path.left(path.lastIndexOf(u'.')) + QStringLiteral(".txt");
        EXPECT_EQ(Listing(ReadDatapoints(kind, TestData(path))), TestData(expected));
    }
}

} // namespace

TEST(DatapointGolden, OpcExports)
{
    ExpectListings(dkEib, QStringLiteral("esf"));
}

TEST(DatapointGolden, GroupAddressTables)
{
    ExpectListings(dkEib, QStringLiteral("csv"));
}

TEST(DatapointGolden, GroupAddressDocuments)
{
    ExpectListings(dkEib, QStringLiteral("xml"));
}

TEST(DatapointGolden, RegisterLists)
{
    ExpectListings(dkModbus, QStringLiteral("modbus"));
}

TEST(DatapointGolden, VirtualVariables)
{
    ExpectListings(dkVirtual, QStringLiteral("virtual"));
}
