#include "paging/PageArithmetic.hpp"
#include "paging/PageScripts.hpp"
#include "tests/engine/PageViewTest.hpp"

#include <cmath>

namespace pagora::test {

namespace {

struct Hostile {
    std::string name;
    std::string style;
    std::string body = {};
};

const std::string longWord = "<p>" + std::string(900, 'w') + "</p>";

const Hostile hostiles[] = {
    { "important margins", "html,body{margin:7em!important;padding:5em!important;border:9px solid!important}" },
    { "important sizes",
        "html,body{width:300px!important;height:90px!important;min-width:2000px!important;max-height:50px!important;"
        "min-height:3000px!important;max-width:200px!important}*{box-sizing:border-box!important}" },
    { "important columns",
        "html,body{columns:5 20px!important;column-gap:300px!important;column-fill:auto!important;"
        "column-rule:30px solid!important}" },
    { "important fonts and colours",
        "body{font-family:monospace!important;color:red!important;background:red!important}p{color:red!important}" },
    { "text across the columns", "p{column-span:all!important}" },
    { "vertical writing",
        "html,body{writing-mode:vertical-rl!important;-webkit-writing-mode:vertical-lr!important;"
        "text-orientation:upright!important}" },
    { "scroll bars", "html,body{overflow:scroll!important;overflow-x:auto!important;overscroll-behavior:none}" },
    { "positions",
        "html,body{position:fixed!important;left:90px!important;top:70px!important;right:5px!important;"
        "inset:40px!important;float:right!important}" },
    { "transforms",
        "html,body{transform:rotate(9deg) scale(.5)!important;zoom:3!important;translate:50px 90px!important;"
        "rotate:45deg!important;scale:2!important;perspective:10px!important;offset-path:ray(45deg)!important;"
        "offset-distance:90px!important}" },
    { "grids and containment",
        "html,body{display:grid!important;grid-template-columns:repeat(9,1fr)!important;contain:strict!important;"
        "content-visibility:hidden!important}" },
    { "no display", "html,body{display:none!important}" },
    { "flexible boxes", "html{display:flex!important;align-items:end!important}body{display:inline-flex!important}" },
    { "tables", "html{display:table!important}body{display:table-cell!important;vertical-align:bottom!important}" },
    { "print rules",
        "@page{size:3cm 3cm;margin:1cm}@media print{body{display:none}}p{page-break-after:avoid;page:narrow}" },
    { "fixed positions", "p:first-child{position:fixed!important;left:9000px;top:0;width:5000px}",
        "<div style='position:fixed;top:0;left:0;right:0;bottom:0'>x</div>" },
    { "absolute positions", "div{position:absolute;left:77777px;width:777px;top:9999px}",
        "<div>x</div><section style='position:relative'><div>y</div></section>" },
    { "wide content", "pre{width:7777px!important}",
        longWord + "<pre>wide</pre><table width='6666'><tr><td>x</td></tr></table>" },
    { "elements of other languages", "y{display:block}", "<x:y xmlns:x='urn:x'>z<x:z/></x:y>" },
    { "snapping",
        "html{scroll-snap-type:x mandatory!important;scroll-behavior:smooth!important;scroll-padding:99px}"
        "p{scroll-snap-align:center}" },
    { "generated content",
        "html::before,body::before,html::after,body::after{content:'x';display:block;position:absolute;left:5000px;"
        "width:9000px!important;height:9000px!important}" },
};

}

// No style sheet of a book moves pages off their grid.
class HostileStylesTest : public PageViewTest {
protected:
    // Lays the page out with the reader's own scripts, in the dark theme.
    void prepare(int columns)
    {
        page.W = width;
        page.H = height;
        page.columns = columns;
        page.pageWidth = PageGeometry::pageWidthFor(width, columns);
        scripts::Layout layout;
        layout.text = "white";
        layout.background = "black";
        layout.font = "Georgia";
        layout.pageWidth = page.pageWidth;
        layout.columnHeight = page.columnHeight();
        layout.imageHeight = page.imageHeight();
        evaluate(scripts::columns(columns, page.pageWidth));
        evaluate(scripts::layout(layout));
    }
    long long position() { return number(scripts::pageXOffset); }
    // The position of the body in the view, and the height of its columns.
    std::string frame()
    {
        return evaluate("(() => { const box = document.body.getBoundingClientRect();"
                        "return [box.left, box.top, getComputedStyle(document.body).height].join(' '); })()");
    }
    bool isSeen(const std::string& id)
    {
        return evaluate("(() => { const range = document.createRange(); range.selectNodeContents("
                        "document.getElementById('"
                   + id
                   + "')); const box = range.getClientRects()[0];"
                     "return box.left >= 0 && box.right <= innerWidth && box.top >= 0 && box.bottom <= "
                     "innerHeight;})()")
            == "true";
    }
    void expectGrid(int columns)
    {
        SCOPED_TRACE(std::to_string(columns) + " columns");
        prepare(columns);
        const long long strip = number(scripts::scrollWidth);
        const double share = strip * columns / double(width);
        EXPECT_LT(std::abs(share - std::round(share)), 0.01) << strip;
        EXPECT_GT(strip, 4 * width);
        evaluate(scripts::scrollTo(width));
        EXPECT_EQ(position(), width);
        EXPECT_EQ(frame(), "-800 0 520px");
        evaluate(scripts::scrollToEnd);
        EXPECT_EQ(position(), strip - width);

        const long long down = number(scripts::offsetTopOf("p12"));
        evaluate(scripts::scrollTo(page.offsetOfSignedPage(page.pageOfElement(down, page.pageArea()))));
        EXPECT_TRUE(isSeen("p12"));
        EXPECT_EQ(evaluate("getComputedStyle(document.getElementById('p12')).color"), "rgb(255, 255, 255)");
        EXPECT_EQ(evaluate("getComputedStyle(document.body).fontFamily"), "Georgia");
    }

    PageGeometry page;
};

TEST_F(HostileStylesTest, PagesOfADocumentLieOnTheirGrid)
{
    for (const auto& hostile : hostiles) {
        SCOPED_TRACE(hostile.name);
        loadDocument(hostile.body + paragraphs(20), "<style>" + hostile.style + "</style>");
        for (const int columns : { 1, 2, 3 })
            expectGrid(columns);
    }
}

TEST_F(HostileStylesTest, PagesOfADocumentOfTheOldKindLieOnTheirGrid)
{
    for (const auto& hostile : hostiles) {
        SCOPED_TRACE(hostile.name);
        load(write("chapter.html",
            "<html><head><style>" + hostile.style + "</style></head><body>" + hostile.body + paragraphs(20)
                + "</body></html>"));
        expectGrid(2);
    }
}

TEST_F(HostileStylesTest, ImagesKeepWithinTheirColumn)
{
    write("large.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='5000' height='7000'></svg>");
    const std::string styles[] = {
        "",
        "img{width:4000px!important;height:5000px!important;max-width:none!important;max-height:none!important}",
        "img{min-width:3000px!important;min-height:3000px!important;float:none!important}",
    };
    for (const auto& style : styles) {
        loadCompletely(write("chapter.xhtml",
            document("<img src='large.svg'/><p>x</p><img src='large.svg' width='9000' height='9000'/>" + paragraphs(20),
                "<style>" + style + "</style>")));
        for (const int columns : { 1, 2, 3 }) {
            expectGrid(columns);
            EXPECT_LE(number("Math.max(...Array.from(document.images, image => image.offsetWidth))"), page.pageWidth);
            EXPECT_LE(
                number("Math.max(...Array.from(document.images, image => image.offsetHeight))"), page.imageHeight())
                << style;
        }
    }
}

}
