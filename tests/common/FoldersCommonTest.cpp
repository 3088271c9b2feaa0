#include "FoldersCommon.h"

#include "TestSupport.h"

#include <QDir>
#include <gtest/gtest.h>

#include <array>

namespace
{

const auto Base = QStringLiteral("C:\\prj");

// PRJPATH has a value while it lives.
class TProjectPath
{
public:
    explicit TProjectPath(const QByteArray& value) { qputenv("PRJPATH", value); }
    ~TProjectPath() { qunsetenv("PRJPATH"); }
    TProjectPath(const TProjectPath&) = delete;
    TProjectPath& operator=(const TProjectPath&) = delete;
};

} // namespace

TEST(NodeSource, HasItsOrdinals)
{
    EXPECT_EQ(static_cast<int>(nsEIB), 0);
    EXPECT_EQ(static_cast<int>(nsMODBUS), 1);
    EXPECT_EQ(static_cast<int>(nsVIRTUAL), 2);
    EXPECT_EQ(sizeof(TNodeSource), 1u);
}

TEST(NodeSource, IsReadFromEachOfItsTexts)
{
    EXPECT_EQ(Str2NS(u"eib"), nsEIB);
    EXPECT_EQ(Str2NS(u"modbus"), nsMODBUS);
    EXPECT_EQ(Str2NS(u"virtual"), nsVIRTUAL);
}

TEST(NodeSource, IsReadWithoutRegardToCase)
{
    EXPECT_EQ(Str2NS(u"MODBUS"), nsMODBUS);
    EXPECT_EQ(Str2NS(u"Virtual"), nsVIRTUAL);
    EXPECT_EQ(Str2NS(u"vIRTUAL"), nsVIRTUAL);
}

TEST(NodeSource, IsEibForEveryOtherText)
{
    EXPECT_EQ(Str2NS(u""), nsEIB);
    EXPECT_EQ(Str2NS(QStringView()), nsEIB);
    EXPECT_EQ(Str2NS(u" modbus"), nsEIB);
    EXPECT_EQ(Str2NS(u"modbus "), nsEIB);
    EXPECT_EQ(Str2NS(u"modbu"), nsEIB);
    EXPECT_EQ(Str2NS(u"modbus1"), nsEIB);
}

TEST(NodeSource, IsWrittenAsTheTextItIsReadFrom)
{
    for (const TNodeSource source : {nsEIB, nsMODBUS, nsVIRTUAL}) {
        EXPECT_STREQ(SourceText(source), DSRC_ITEMS[source]);
        EXPECT_EQ(Str2NS(QString::fromLatin1(SourceText(source))), source);
    }
    EXPECT_STREQ(SourceText(static_cast<TNodeSource>(3)), "eib");
}

TEST(DataType, HasItsOrdinalsWithEis14BeforeEis10)
{
    EXPECT_EQ(static_cast<int>(dtmEIS1), 0);
    EXPECT_EQ(static_cast<int>(dtmEIS6), 1);
    EXPECT_EQ(static_cast<int>(dtmEIS14), 2);
    EXPECT_EQ(static_cast<int>(dtmEIS10), 3);
    EXPECT_EQ(static_cast<int>(dtmEIS11), 4);
    EXPECT_EQ(sizeof(TDataTypeMap), 1u);
}

TEST(DataType, ComesFromItsEisNumberAndGoesBack)
{
    EXPECT_EQ(eis2dt(6), dtmEIS6);
    EXPECT_EQ(eis2dt(10), dtmEIS10);
    EXPECT_EQ(eis2dt(11), dtmEIS11);
    EXPECT_EQ(eis2dt(14), dtmEIS14);
    for (const int number : {1, 6, 10, 11, 14})
        EXPECT_EQ(dt2Eis(eis2dt(number)), number);
}

TEST(DataType, IsEis1ForEveryOtherNumber)
{
    for (const int number : {1, 7, 0, -1, -6, 2, 15, 100, 2147483647})
        EXPECT_EQ(eis2dt(number), dtmEIS1) << number;
}

TEST(DataType, HasNumberOneOutsideItsOrdinals)
{
    EXPECT_EQ(dt2Eis(static_cast<TDataTypeMap>(5)), 1);
    EXPECT_EQ(dt2Eis(static_cast<TDataTypeMap>(255)), 1);
}

TEST(Direction, HasItsOrdinals)
{
    constexpr std::array Directions{dirNone, dirTop, dirLeft, dirRight, dirBottom, dirUp, dirDown};
    for (std::size_t i = 0; i < Directions.size(); ++i)
        EXPECT_EQ(static_cast<std::size_t>(Directions[i]), i);
    EXPECT_EQ(sizeof(TDirection), 1u);
}

TEST(GetResourceUrl, MakesARootedUrlRelativeToTheBase)
{
    EXPECT_EQ(GetResourceUrl(QStringLiteral("C:\\prj\\images\\a.gif"), Base, false), QStringLiteral("/images/a.gif"));
    EXPECT_EQ(GetResourceUrl(QStringLiteral("C:/prj/images/a.gif"), Base, false), QStringLiteral("/images/a.gif"));
}

TEST(GetResourceUrl, TakesTheProjectForAnEmptyBase)
{
    const TProjectPath projectPath("/home/haus");
    EXPECT_EQ(GetResourceUrl(QStringLiteral("/home/haus/images/a.gif"), QString(), false),
              QStringLiteral("/images/a.gif"));
    EXPECT_EQ(GetResourceUrl(QStringLiteral("C:\\prj\\a.gif"), Base, false), QStringLiteral("/a.gif"));
}

TEST(GetResourceUrl, DoesNotNeedAProject)
{
    qunsetenv("PRJPATH");
    EXPECT_EQ(GetResourceUrl(QStringLiteral("images\\a.gif"), QString(), false), QStringLiteral("/images/a.gif"));
    EXPECT_EQ(GetResourceUrl(QStringLiteral("/images/a.gif"), QString(), false), QStringLiteral("/images/a.gif"));
    EXPECT_EQ(GetResourceUrl(QStringLiteral("\\images\\a.gif"), QString(), false), QStringLiteral("/images/a.gif"));
}

TEST(GetResourceUrl, PutsNoSlashInFrontWithPrefix)
{
    EXPECT_EQ(GetResourceUrl(QStringLiteral("C:\\prj\\images\\a.gif"), Base, true), QStringLiteral("images/a.gif"));
}

TEST(GetResourceUrl, GoesUpWithPrefixOutsideTheBase)
{
    EXPECT_EQ(GetResourceUrl(QStringLiteral("C:\\other\\a.gif"), Base, true), QStringLiteral("../other/a.gif"));
    EXPECT_EQ(GetResourceUrl(QStringLiteral("C:\\prj2\\a.gif"), Base, true), QStringLiteral("../prj2/a.gif"));
}

TEST(GetResourceUrl, LeavesAUrlAlone)
{
    for (const QString& url :
         {QStringLiteral("res://images/a.gif"), QStringLiteral("http://host\\x"), QStringLiteral("C:\\prj\\x://y")}) {
        EXPECT_EQ(GetResourceUrl(url, Base, false), url);
        EXPECT_EQ(GetResourceUrl(url, Base, true), url);
    }
}

TEST(GetResourceUrl, IsEmptyForAnEmptyPath)
{
    EXPECT_EQ(GetResourceUrl(QString(), Base, false), QString());
    EXPECT_EQ(GetResourceUrl(QString(), Base, true), QString());
}

TEST(GetResourceUrl, IsEmptyForTheBaseItself)
{
    EXPECT_EQ(GetResourceUrl(Base, Base, false), QString());
}
