#include "MenuExport.h"

#include "TestSupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{

const auto Templates = QStringLiteral(VELMORA_EXAMPLES "/home/config/lang/shared/templates/kolt/_menu");

// What the product's stylesheet makes of a menu.
QByteArray Html(const QString& menuPath)
{
    const QTemporaryDir directory;
    const QString output = directory.filePath(QStringLiteral("menu.html"));
    const TTransformationOutcome outcome = TransformMenu({.StylePath = Templates + QStringLiteral("/menu.xsl"),
                                                          .MenuPath = menuPath,
                                                          .OutputPath = output,
                                                          .ReadableRoots = {}});
    EXPECT_GE(outcome.Saved, 0);
    EXPECT_EQ(outcome.Reason, QString());
    return outcome.Saved < 0 ? QByteArray() : ReadAll(output);
}

QStringList HtmlCases()
{
    return QDir(TestDataPath(QStringLiteral("menu/html"))).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

class MenuHtml : public testing::TestWithParam<QString>
{};

} // namespace

TEST_P(MenuHtml, IsWhatIsExpectedByteForByte)
{
    const QString directory = QStringLiteral("menu/html/") + GetParam();
    const QByteArray expected = TestData(directory + QStringLiteral("/menu.html"));
    ASSERT_FALSE(expected.isEmpty());
    EXPECT_EQ(Html(TestDataPath(directory + QStringLiteral("/menu.xml"))).toStdString(), expected.toStdString());
}

INSTANTIATE_TEST_SUITE_P(Cases, MenuHtml, testing::ValuesIn(HtmlCases()),
                         [](const auto& test) { return QString(test.param).replace(u'-', u'_').toStdString(); });

TEST(MenuHtmlCases, AreThere)
{
    EXPECT_GE(HtmlCases().size(), 7);
}

TEST(SampleHtml, IsWhatTheStylesheetMakesOfTheSampleMenu)
{
    const auto sample = QStringLiteral(VELMORA_EXAMPLES "/musterhaus/_menu/");
    EXPECT_TRUE(Html(sample + QStringLiteral("menu.xml")) == ReadAll(sample + QStringLiteral("menu.html")));
}

TEST(SampleHtml, StandsBesideTheTemplatesOfTheProduct)
{
    for (const char* name : {"/menu.xsl", "/menu.js", "/menu.css"})
        EXPECT_TRUE(ReadAll(Templates + QString::fromLatin1(name)) ==
                    ReadAll(QStringLiteral(VELMORA_EXAMPLES "/musterhaus/_menu") + QString::fromLatin1(name)))
            << name;
}

TEST(LargeHtml, IsMadeOfAMenuOfAHundredThousandItems)
{
    QByteArray menu = "<menu version=\"0.1\" levels=\"2\" logo=\"\" helpbase=\"\">";
    for (int main = 0; main < 10000; ++main) {
        menu += "<menuitem class=\"main\" caption=\"Haupt\" title=\"\" link=\"\" help=\"\" access=\"0\">";
        for (int sub = 0; sub < 10; ++sub)
            menu += "<menuitem class=\"sub\" caption=\"Unter\" title=\"\" link=\"u.html\" help=\"\" access=\"0\"/>";
        menu += "</menuitem>";
    }
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("menu.xml"));
    WriteAll(path, menu + "</menu>");
    const QByteArray html = Html(path);
    EXPECT_GE(html.count("Haupt"), 10000);
    EXPECT_EQ(html.count("href=\"u.html\""), 100000);
}
