#include "MenuTransformation.h"

namespace
{

constexpr std::size_t Limit = std::size_t{24} << 20;
constexpr auto TooMuch = "Das Stylesheet braucht zu viel Speicher.";

// Calls itself for ever, each time with what this element makes of `$s`.
QByteArray Recursion(const QByteArray& parameter)
{
    return "<xsl:template match=\"/\" name=\"again\"><xsl:param name=\"s\" select=\"'0123456789abcdef'\"/>"
           "<xsl:call-template name=\"again\">" +
           parameter + "</xsl:call-template></xsl:template>";
}

QByteArray Growing(const QByteArray& expression)
{
    return Recursion("<xsl:with-param name=\"s\" select=\"" + expression + "\"/>");
}

QByteArray GrowingTree(const QByteArray& content)
{
    return Recursion("<xsl:with-param name=\"s\">" + content + "</xsl:with-param>");
}

// A text of 4 MiB in `$s`, and this after it.
QByteArray WithLongText(const QByteArray& content)
{
    return "<xsl:template match=\"/\" name=\"again\"><xsl:param name=\"s\" select=\"'0123456789abcdef'\"/>"
           "<xsl:choose><xsl:when test=\"string-length($s) &lt; 4000000\"><xsl:call-template name=\"again\">"
           "<xsl:with-param name=\"s\" select=\"concat($s, $s)\"/></xsl:call-template></xsl:when>"
           "<xsl:otherwise>" +
           content + "</xsl:otherwise></xsl:choose></xsl:template>";
}

// Under the sanitizers each growing block is mapped and copied anew, which takes minutes here; they watch the limit
// itself in its own tests and the export in all others.
#if defined(__has_feature)
constexpr bool IsSanitized = __has_feature(address_sanitizer);
#else
constexpr bool IsSanitized = false;
#endif

class MenuTransformationMemory : public MenuTransformation
{
protected:
    void SetUp() override
    {
        if (IsSanitized)
            GTEST_SKIP() << "Too slow under the sanitizers.";
    }

    TTransformationOutcome RunWithin(std::size_t limit, const QByteArray& templates) const
    {
        Write("project/_menu/menu.xsl", Stylesheet(templates));
        return TransformMenu({.StylePath = Path("project/_menu/menu.xsl"),
                              .MenuPath = Path("project/_menu/menu.xml"),
                              .OutputPath = Path("project/_menu/menu.html"),
                              .ReadableRoots = {Path("project")},
                              .MemoryLimit = limit});
    }
    void ExpectTooMuch(const QByteArray& templates) const
    {
        const TTransformationOutcome outcome = RunWithin(Limit, templates);
        ExpectFailure(outcome);
        EXPECT_EQ(outcome.Reason, QString::fromUtf8(TooMuch)) << templates.toStdString();
    }
};

} // namespace

TEST(MenuMemory, IsEnoughForALargeMenuOnEveryMachine)
{
    EXPECT_GE(DefaultMenuMemory(), std::size_t{2} << 30);
    EXPECT_EQ(TMenuTransformation().MemoryLimit, DefaultMenuMemory());
}

TEST_F(MenuTransformationMemory, EndsTheDoublingOfAText)
{
    ExpectTooMuch(Growing("concat($s, $s)"));
    ExpectTooMuch(Growing("concat($s, translate($s, '0', 'x'))"));
    ExpectTooMuch(Growing("concat(normalize-space($s), ' ', $s)"));
    ExpectTooMuch(Growing("concat($s, substring($s, 2), substring-after($s, '0'), string($s))"));
    ExpectTooMuch(Growing(QByteArray("concat(") + QByteArray("$s,").repeated(500) + "$s)"));
}

TEST_F(MenuTransformationMemory, EndsTheDoublingOfATree)
{
    ExpectTooMuch(GrowingTree("<xsl:copy-of select=\"$s\"/><a><xsl:copy-of select=\"$s\"/></a>"));
    ExpectTooMuch(GrowingTree("<xsl:value-of select=\"$s\"/><xsl:value-of select=\"$s\"/>"));
    ExpectTooMuch(GrowingTree("<xsl:copy-of select=\"$s\"/><a b=\"{$s}{$s}\"><xsl:value-of select=\"$s\"/></a>"));
    ExpectTooMuch(GrowingTree("<xsl:comment><xsl:value-of select=\"$s\"/></xsl:comment><xsl:value-of "
                              "select=\"concat($s, $s)\"/>"));
    ExpectTooMuch(GrowingTree("<a><xsl:attribute name=\"b\"><xsl:value-of select=\"$s\"/><xsl:value-of select=\"$s\"/>"
                              "</xsl:attribute></a><xsl:value-of select=\"concat($s, $s)\"/>"));
}

TEST_F(MenuTransformationMemory, EndsManySmallNodes)
{
    Write("project/_menu/menu.xml", "<menu>" + QByteArray("<menuitem/>").repeated(1000) + "</menu>");
    ExpectTooMuch("<xsl:template match=\"/\"><xsl:for-each select=\"//menuitem\"><xsl:for-each select=\"//menuitem\">"
                  "<a b=\"c\">d</a></xsl:for-each></xsl:for-each></xsl:template>");
}

TEST_F(MenuTransformationMemory, EndsWhateverIsMadeOfALongText)
{
    Write("project/_menu/menu.xml", "<menu>" + QByteArray("<menuitem/>").repeated(3) + "</menu>");
    const QByteArray several = QByteArray("$s,").repeated(8) + "$s";
    for (const QByteArray& content :
         {"<xsl:value-of select=\"concat(" + several + ")\"/>", "<a b=\"" + QByteArray("{$s}").repeated(8) + "\"/>",
          "<xsl:message><xsl:value-of select=\"concat(" + several + ")\"/></xsl:message>",
          "<xsl:element name=\"{concat(" + several + ")}\"/>",
          "<xsl:processing-instruction name=\"p\"><xsl:value-of select=\"concat(" + several +
              ")\"/></xsl:processing-instruction>",
          "<xsl:value-of select=\"translate(concat(" + several + "), '0', '')\"/>",
          "<xsl:value-of select=\"format-number(1, concat(" + several + "))\"/>",
          "<xsl:value-of select=\"contains(concat(" + several + "), concat(" + several + "))\"/>",
          "<xsl:copy-of select=\"document(concat(" + several + "))\"/>",
          "<xsl:copy-of select=\"key(concat(" + several + "), 'a')\"/>",
          "<xsl:copy-of select=\"id(concat(" + several + "))\"/>",
          "<xsl:number value=\"1\" format=\"{concat(" + several + ")}\"/>",
          "<xsl:for-each select=\"//menuitem\"><xsl:sort select=\"concat(" + several +
              ")\"/><xsl:value-of select=\"$s\"/></xsl:for-each>",
          QByteArray("<xsl:value-of select=\"$s\"/>").repeated(8),
          QByteArray("<a><xsl:value-of select=\"$s\"/></a>").repeated(8),
          "<xsl:variable name=\"t\"><xsl:value-of select=\"$s\"/></xsl:variable>" +
              QByteArray("<xsl:copy-of select=\"$t\"/><b/>").repeated(8)})
        ExpectTooMuch(WithLongText(content));
}

TEST_F(MenuTransformationMemory, IsEnoughForWhatStaysBelowTheLimit)
{
    const TTransformationOutcome outcome =
        RunWithin(Limit, WithLongText("<out><xsl:value-of select=\"string-length($s)\"/></out>"));
    EXPECT_GE(outcome.Saved, 0);
    EXPECT_TRUE(Html().contains("<out>4194304</out>"));
}

TEST_F(MenuTransformationMemory, IsNoConcernOfTheNextRun)
{
    ExpectTooMuch(Growing("concat($s, $s)"));
    const TTransformationOutcome outcome = Run(Template("gut"));
    EXPECT_EQ(outcome.Reason, QString());
    EXPECT_EQ(Html(), "<out>gut</out>\n");
}

// What is parsed counts as well.
TEST_F(MenuTransformationMemory, IsTooMuchForADocumentThatDoesNotFit)
{
    Write("project/_menu/menu.xml", "<menu>" + QByteArray("<menuitem a=\"b\"/>").repeated(10000) + "</menu>");
    ExpectFailure(RunWithin(std::size_t{1} << 20, "<xsl:template match=\"/\"><out/></xsl:template>"));
}
