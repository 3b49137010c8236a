#include "paging/PageScripts.hpp"

#include <gtest/gtest.h>

using namespace pagora;

TEST(PageScripts, ScrollsToAnOffset)
{
    EXPECT_EQ(scripts::scrollTo(800), "window.scrollTo(800, 0);");
    EXPECT_EQ(scripts::scrollTo(-400), "window.scrollTo(-400, 0);");
    EXPECT_EQ(scripts::scrollToEnd, "window.scrollTo(document.body.scrollWidth, 0);");
}

TEST(PageScripts, ReadsThePageInItsFourForms)
{
    EXPECT_EQ(scripts::scrollWidth, "document.body.scrollWidth;");
    EXPECT_EQ(scripts::scrollWidthExpression, "document.body.scrollWidth");
    EXPECT_EQ(scripts::pageXOffset, "window.pageXOffset");
    EXPECT_EQ(scripts::innerWidth, "window.innerWidth");
}

TEST(PageScripts, SetsTheHash)
{
    EXPECT_EQ(scripts::setHash("sec3"), "window.location.hash = \"#sec3\";");
}

TEST(PageScripts, AsksForAnElementsPosition)
{
    EXPECT_EQ(scripts::offsetTopOf("sec3"), "document.getElementById('sec3').offsetTop;");
}

TEST(PageScripts, OneColumnHasAWidth)
{
    EXPECT_EQ(scripts::columns(1, 760), "document.body.style.webkitColumnWidth = '760px';");
}

TEST(PageScripts, MoreColumnsHaveACount)
{
    EXPECT_EQ(scripts::columns(2, 320),
        "document.body.style.webkitColumnWidth = 'auto';document.body.style.webkitColumnCount = '2';");
    EXPECT_EQ(scripts::columns(3, 146),
        "document.body.style.webkitColumnWidth = 'auto';document.body.style.webkitColumnCount = '3';");
}

TEST(PageScripts, SetsTheFont)
{
    EXPECT_EQ(scripts::textFont("Times New Roman"), "document.body.style.fontFamily = 'Times New Roman';");
}

TEST(PageScripts, SetsTheColors)
{
    EXPECT_EQ(scripts::colors("#FFF", "#000"),
        "var all = document.all;for (var i = 0; i < all.length; i++) {all[i].style.background = "
        "'none';all[i].style.color = '#FFF'; }document.body.style.backgroundColor = '#000';"
        "document.body.style.color = '#FFF';");
}

namespace {

const std::string plainLayout
    = "document.body.style.webkitColumnGap = '40px';"
      "document.body.style.margin = '0px';"
      "document.body.style.padding = '40px 20px';"
      "document.body.style.fontFamily = 'Georgia';"
      "document.body.style.overflow = 'hidden';"
      "document.body.style.height = '620px';"
      "var images = document.getElementsByTagName('img');for (var i = 0; i < images.length; i++) {"
      "images[i].style.float = 'left';images[i].style.height = 'auto';images[i].style.maxWidth = '320px';"
      "images[i].style.maxHeight = '496px'; }";

scripts::Layout layoutWithoutColors()
{
    scripts::Layout layout;
    layout.font = "Georgia";
    layout.pageWidth = 320;
    layout.columnHeight = 620;
    layout.imageHeight = 496;
    return layout;
}

}

TEST(PageScripts, LaysAChapterOut)
{
    EXPECT_EQ(scripts::layout(layoutWithoutColors()), plainLayout);
}

TEST(PageScripts, ColorsComeBeforeTheLayout)
{
    auto layout = layoutWithoutColors();
    layout.text = "#5F4B32";
    layout.background = "#FBF0D9";
    EXPECT_EQ(scripts::layout(layout), scripts::colors("#5F4B32", "#FBF0D9") + plainLayout);
}

TEST(PageScripts, AColumnCountChangesTheImageWidthsOnly)
{
    EXPECT_EQ(scripts::imageWidth(146),
        "var images = document.getElementsByTagName('img');for (var i = 0; i < images.length; i++) {"
        "images[i].style.maxWidth = '146px'; }");
}

TEST(PageScripts, ARelayoutLeavesTheImageHeightsAlone)
{
    EXPECT_EQ(scripts::relayout(2, 320, 620, 496),
        "document.body.style.height = '620px';"
        "var images = document.getElementsByTagName('img');for (var i = 0; i < images.length; i++) {"
        "images[i].style.float = 'left';images[i].style.maxWidth = '320px';images[i].style.maxHeight = '496px'; }");
}

TEST(PageScripts, ARelayoutOfOneColumnSetsItsWidth)
{
    EXPECT_TRUE(
        scripts::relayout(1, 760, 620, 496)
            .starts_with("document.body.style.webkitColumnWidth = '760px';document.body.style.height = '620px';"));
}

TEST(PageScripts, NothingInANameEndsTheString)
{
    EXPECT_EQ(scripts::textFont("A'; evil(); '"), "document.body.style.fontFamily = 'A\\x27; evil(); \\x27';");
    EXPECT_EQ(scripts::textFont("A\\"), "document.body.style.fontFamily = 'A\\x5C';");
    EXPECT_EQ(scripts::textFont("A\nB\r"), "document.body.style.fontFamily = 'A\\x0AB\\x0D';");
    EXPECT_EQ(scripts::textFont("A\u2028B\u2029"), "document.body.style.fontFamily = 'A\\u2028B\\u2029';");
    EXPECT_EQ(scripts::offsetTopOf("a').x;('"), "document.getElementById('a\\x27).x;(\\x27').offsetTop;");
}

// The hash is in double quotes.
TEST(PageScripts, NothingInAnAnchorEndsTheString)
{
    EXPECT_EQ(scripts::setHash("a\"; evil(); \"").find('"', 26), scripts::setHash("a\"; evil(); \"").size() - 2);
    EXPECT_EQ(scripts::setHash("a\\\n"), "window.location.hash = \"#a\\x5C\\x0A\";");
}

TEST(PageScripts, StyleSheetSaysWhatTheScriptsSet)
{
    scripts::Layout layout;
    layout.font = "Times New Roman";
    layout.pageWidth = 320;
    layout.columnHeight = 620;
    layout.imageHeight = 496;
    EXPECT_EQ(scripts::styleSheet(layout, 2),
        "body{column-gap:40px!important;margin:0!important;padding:40px 20px!important;overflow:hidden!important;"
        "column-width:auto!important;column-count:2!important;height:620px!important;"
        "font-family:Times New Roman!important;}"
        "img{float:left!important;height:auto!important;max-width:min(320px,100%)!important;max-height:496px!"
        "important}");
    EXPECT_NE(scripts::styleSheet(layout, 1).find("column-width:320px!important;column-count:auto!important"),
        std::string::npos);
    layout.text = "#111";
    layout.background = "#eee";
    EXPECT_TRUE(scripts::styleSheet(layout, 2).starts_with("*{background:none!important;color:#111!important;}"));
}

TEST(PageScripts, FontNameWithAWordOfDigitsIsQuotedInTheStyleSheet)
{
    scripts::Layout layout;
    for (const auto* family : { "Source Sans 3", "Exo 2", "Press Start 2P" }) {
        layout.font = family;
        EXPECT_NE(
            scripts::styleSheet(layout, 2).find("font-family:\"" + layout.font + "\"!important;"), std::string::npos)
            << family;
    }
    layout.font = "Univers55 Plain";
    EXPECT_NE(scripts::styleSheet(layout, 2).find("font-family:Univers55 Plain!important;"), std::string::npos);
    EXPECT_EQ(scripts::textFont("Exo 2"), "document.body.style.fontFamily = 'Exo 2';");
}

TEST(PageScripts, FontNameThatIsMoreThanANameStaysOutOfTheStyleSheet)
{
    scripts::Layout layout;
    layout.font = "x}*{display:none";
    EXPECT_EQ(scripts::styleSheet(layout, 2).find("display"), std::string::npos);
    layout.font = "";
    EXPECT_EQ(scripts::styleSheet(layout, 2).find("font-family"), std::string::npos);
}
