#include "Vlcolors.h"

#include "TestSupport.h"

#include <QTreeWidget>
#include <gtest/gtest.h>

namespace
{

constexpr TColor Fallback = 0x00123456;

QColor Shown(const QWidget& widget, QPalette::ColorRole role)
{
    return widget.palette().color(role);
}

// A palette whose roles all differ.
QPalette DistinctPalette()
{
    QPalette palette;
    for (int role = 0; role < QPalette::NColorRoles; ++role)
        palette.setColor(static_cast<QPalette::ColorRole>(role), QColor(role, 2 * role, 3 * role));
    return palette;
}

} // namespace

TEST(StrToColorDef, ReadsDecimalColours)
{
    EXPECT_EQ(StrToColorDef(u"0", Fallback), 0u);
    EXPECT_EQ(StrToColorDef(u"255", Fallback), 0x0000FFu);
    EXPECT_EQ(StrToColorDef(u"16777215", Fallback), 0xFFFFFFu);
    EXPECT_EQ(StrToColorDef(u"536870912", Fallback), DefaultColor);
}

TEST(StrToColorDef, ReadsASystemColourInAllItsSpellings)
{
    EXPECT_EQ(StrToColorDef(u"2147483653", Fallback), WindowColor);
    EXPECT_EQ(StrToColorDef(u"-2147483643", Fallback), WindowColor);
    EXPECT_EQ(StrToColorDef(u"$80000005", Fallback), WindowColor);
    EXPECT_EQ(StrToColorDef(u"-2147483636", Fallback), AppWorkspaceColor);
    EXPECT_EQ(StrToColorDef(u"$8000000c", Fallback), AppWorkspaceColor);
}

TEST(StrToColorDef, ReadsUpToThirtyTwoBits)
{
    EXPECT_EQ(StrToColorDef(u"2147483647", Fallback), 0x7FFFFFFFu);
    EXPECT_EQ(StrToColorDef(u"2147483648", Fallback), 0x80000000u);
    EXPECT_EQ(StrToColorDef(u"4294967295", Fallback), 0xFFFFFFFFu);
    EXPECT_EQ(StrToColorDef(u"4294967296", Fallback), Fallback);
    EXPECT_EQ(StrToColorDef(u"-2147483649", Fallback), Fallback);
    EXPECT_EQ(StrToColorDef(u"99999999999999999999999", Fallback), Fallback);
    EXPECT_EQ(StrToColorDef(u"$FFFFFFFF", Fallback), 0xFFFFFFFFu);
    EXPECT_EQ(StrToColorDef(u"$100000000", Fallback), Fallback);
}

TEST(StrToColorDef, GivesTheDefaultForWhatIsNoNumber)
{
    for (const char16_t* text :
         {u"", u" ", u"red", u"clWindow", u"#FF0000", u"0xFF", u"255 ", u"2147483653 ", u"1.5", u"$"})
        EXPECT_EQ(StrToColorDef(text, Fallback), Fallback) << QString::fromUtf16(text).toStdString();
}

TEST(ToQColor, TakesBlueFromTheHighByteAndRedFromTheLow)
{
    EXPECT_EQ(ToQColor(0x00FF8001, QPalette()), QColor(0x01, 0x80, 0xFF));
    EXPECT_EQ(ToQColor(0, QPalette()), QColor(0, 0, 0));
    EXPECT_EQ(ToQColor(255, QPalette()), QColor(255, 0, 0));
}

TEST(ToQColor, TakesTheWindowColourFromTheBaseOfThePalette)
{
    const QPalette palette = DistinctPalette();
    EXPECT_EQ(ToQColor(WindowColor, palette), palette.color(QPalette::Base));
}

TEST(ToQColor, TakesSystemColoursFromThePalette)
{
    const QPalette palette = DistinctPalette();
    EXPECT_EQ(ToQColor(0x80000008, palette), palette.color(QPalette::Text));
    EXPECT_EQ(ToQColor(AppWorkspaceColor, palette), palette.color(QPalette::Dark));
    EXPECT_EQ(ToQColor(0x8000000D, palette), palette.color(QPalette::Highlight));
    EXPECT_EQ(ToQColor(0x8000000F, palette), palette.color(QPalette::Button));
    EXPECT_EQ(ToQColor(0x80000018, palette), palette.color(QPalette::ToolTipBase));
}

TEST(ToQColor, TakesTheWindowRoleForUnknownSystemColours)
{
    const QPalette palette = DistinctPalette();
    EXPECT_EQ(ToQColor(0x80000019, palette), palette.color(QPalette::Window));
    EXPECT_EQ(ToQColor(0xFFFFFFFF, palette), palette.color(QPalette::Window));
}

TEST(ToQColor, HasNoneForTheDefaultColour)
{
    EXPECT_EQ(ToQColor(DefaultColor, QPalette()), std::nullopt);
}

TEST(ApplyColor, ColoursOneRoleOfAWidget)
{
    QTreeWidget tree;
    const QColor text = Shown(tree, QPalette::Text);
    ApplyColor(&tree, QPalette::Base, 0x00FF8001);
    EXPECT_EQ(Shown(tree, QPalette::Base), QColor(0x01, 0x80, 0xFF));
    EXPECT_EQ(Shown(tree, QPalette::Text), text);
}

TEST(ApplyColor, ColoursAWidgetInEveryState)
{
    QTreeWidget tree;
    ApplyColor(&tree, QPalette::Text, 0x000000FF);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        EXPECT_EQ(tree.palette().color(group, QPalette::Text), QColor(255, 0, 0));
}

TEST(ApplyColor, ReachesTheViewport)
{
    QTreeWidget tree;
    ApplyColor(&tree, QPalette::Base, 0x000000FF);
    EXPECT_EQ(Shown(*tree.viewport(), QPalette::Base), QColor(255, 0, 0));
}

TEST(ApplyColor, GivesTheDefaultColourBack)
{
    QTreeWidget tree;
    const QPalette before = tree.palette();
    ApplyColor(&tree, QPalette::Base, 0x000000FF);
    ApplyColor(&tree, QPalette::Text, 0x0000FF00);
    ApplyColor(&tree, QPalette::Base, DefaultColor);
    EXPECT_EQ(Shown(tree, QPalette::Base), before.color(QPalette::Base));
    EXPECT_EQ(Shown(tree, QPalette::Text), QColor(0, 255, 0));
    EXPECT_EQ(Shown(*tree.viewport(), QPalette::Base), before.color(QPalette::Base));
    ApplyColor(&tree, QPalette::Text, DefaultColor);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        EXPECT_EQ(tree.palette().color(group, QPalette::Text), before.color(group, QPalette::Text));
}

TEST(ApplyColor, GivesBackTheDefaultColourOfTheParent)
{
    QWidget parent;
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(1, 2, 3));
    parent.setPalette(palette);
    auto* tree = new QTreeWidget(&parent);
    ApplyColor(tree, QPalette::Base, 0x000000FF);
    ApplyColor(tree, QPalette::Base, DefaultColor);
    EXPECT_EQ(Shown(*tree, QPalette::Base), QColor(1, 2, 3));
}

TEST(ApplyColor, LetsADefaultColourFollowTheParent)
{
    QWidget parent;
    auto* tree = new QTreeWidget(&parent);
    ApplyColor(tree, QPalette::Base, 0x000000FF);
    ApplyColor(tree, QPalette::Base, DefaultColor);
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(9, 8, 7));
    parent.setPalette(palette);
    EXPECT_EQ(Shown(*tree, QPalette::Base), QColor(9, 8, 7));
}

TEST(ApplyColor, TakesSystemColoursAsTheyAreWithoutWhatWasApplied)
{
    QTreeWidget tree;
    const QColor base = Shown(tree, QPalette::Base);
    ApplyColor(&tree, QPalette::Base, 0x000000FF);
    ApplyColor(&tree, QPalette::Base, WindowColor);
    EXPECT_EQ(Shown(tree, QPalette::Base), base);
}
