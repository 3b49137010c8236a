#include "tests/engine/PageViewTest.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <gtkmm/settings.h>

#include <cmath>

namespace pagora::test {

class PageLayoutTest : public PageViewTest {
protected:
    // Scrolls to page `index` and returns the ids whose first letter is visible.
    bool isOnPage(const std::string& id, long long index)
    {
        evaluate("window.scrollTo(" + std::to_string(index * width) + ", 0);");
        return evaluate("(() => { const range = document.createRange();"
                        "const text = document.getElementById('"
                   + id
                   + "').firstChild; range.setStart(text, 0); range.setEnd(text, 1);"
                     "const box = range.getClientRects()[0];"
                     "return box.left >= -1 && box.right <= innerWidth + 1; })()")
            == "true";
    }
    // Returns the page of the element according to the reader's arithmetic.
    long long pageOf(const std::string& id, int columns)
    {
        const long long columnWidth = static_cast<long long>(double(width) / columns - 40 * columns);
        const long long area = (height - 80) * columnWidth * columns;
        return number("document.getElementById('" + id + "').offsetTop;") * columnWidth / area;
    }
    void expectAnchorsOnTheirPages(int columns, int count)
    {
        layOut(columns);
        for (int i = 0; i < count; i += 7) {
            const std::string id = "p" + std::to_string(i);
            EXPECT_TRUE(isOnPage(id, pageOf(id, columns))) << id << " with " << columns << " columns";
        }
    }
    long long strip() { return number("document.body.scrollWidth;"); }
    long long position() { return number("window.pageXOffset"); }
};

TEST_F(PageLayoutTest, TheStripIsAWholeNumberOfColumns)
{
    for (const int columns : { 1, 2, 3 }) {
        for (const int length : { 1, 20, 23, 60 }) {
            loadDocument(paragraphs(length));
            layOut(columns);
            const double share = strip() * columns / double(width);
            EXPECT_LT(std::abs(share - std::round(share)), 0.01) << length << " in " << columns << ": " << strip();
            EXPECT_GE(strip(), width);
        }
    }
}

TEST_F(PageLayoutTest, TheViewScrollsToTheEndOfTheStripAndNoFurther)
{
    for (const int columns : { 1, 2, 3 }) {
        loadDocument(paragraphs(60));
        layOut(columns);
        evaluate("window.scrollTo(document.body.scrollWidth, 0);");
        EXPECT_EQ(position(), strip() - width) << columns;
    }
}

TEST_F(PageLayoutTest, EveryPageIsOneViewFurther)
{
    loadDocument(paragraphs(60));
    layOut(1);
    ASSERT_EQ(strip() % width, 0);
    for (long long x = 0; x < strip(); x += width) {
        evaluate("window.scrollTo(" + std::to_string(x) + ", 0);");
        EXPECT_EQ(position(), x);
    }
}

TEST_F(PageLayoutTest, TheStripFollowsEveryNewLayout)
{
    loadDocument(paragraphs(60));
    for (const int columns : { 3, 1, 2, 1 }) {
        layOut(columns);
        const double share = strip() * columns / double(width);
        EXPECT_LT(std::abs(share - std::round(share)), 0.01) << columns << ": " << strip();
        evaluate("window.scrollTo(document.body.scrollWidth, 0);");
        EXPECT_EQ(position(), strip() - width);
    }
}

TEST_F(PageLayoutTest, AnAnchorIsFoundOnItsPageWithOneColumn)
{
    loadDocument(paragraphs(140));
    expectAnchorsOnTheirPages(1, 140);
}

TEST_F(PageLayoutTest, AnAnchorIsFoundOnItsPageWithTwoColumns)
{
    loadDocument(paragraphs(140));
    expectAnchorsOnTheirPages(2, 140);
}

TEST_F(PageLayoutTest, AnAnchorIsFoundOnItsPageWithThreeColumns)
{
    loadDocument(paragraphs(140));
    expectAnchorsOnTheirPages(3, 140);
}

TEST_F(PageLayoutTest, AnAnchorIsFoundOnItsPageInLargerText)
{
    loadDocument(paragraphs(70));
    _view->setTextSizeMultiplier(1.5);
    expectAnchorsOnTheirPages(2, 70);
}

TEST_F(PageLayoutTest, DistancesStayWhereverTheViewIs)
{
    loadDocument(paragraphs(140));
    layOut(2);
    const auto atStart = evaluate("document.getElementById('p100').offsetTop;");
    evaluate("window.scrollTo(1600, 0);");
    EXPECT_EQ(evaluate("document.getElementById('p100').offsetTop;"), atStart);
}

TEST_F(PageLayoutTest, TheFirstLineIsAtDistanceZero)
{
    loadDocument("<p id='first' style='margin:0;line-height:1'>A</p>" + paragraphs(9));
    layOut(2);
    EXPECT_LE(number("document.getElementById('first').offsetTop;"), 5);
}

TEST_F(PageLayoutTest, TheStylesOfTheBooksBoxesDoNotMoveThePages)
{
    const std::string hostile[] = {
        "html{margin:3em;padding:2em;border:5px solid}",
        "body{margin:0 15%;border:9px solid;max-width:20em;width:300px}",
        "body{float:left;position:absolute;left:90px;transform:scale(.5)}",
        "html{overflow:auto;writing-mode:vertical-rl}body{min-height:3000px;box-sizing:border-box}",
        "html{position:relative;max-width:30em;transform:rotate(3deg)}body{display:flex}",
        "html::after,body::after{content:'x';position:fixed;width:9000px;left:500px}",
    };
    for (const auto& style : hostile) {
        loadDocument(paragraphs(60), "<style>" + style + "</style>");
        expectAnchorsOnTheirPages(2, 60);
        const double share = strip() / 400.0;
        EXPECT_EQ(share, std::round(share)) << style;
    }
}

TEST_F(PageLayoutTest, TheStripEndsOnAWholePage)
{
    const std::string column = "<p style='-webkit-column-break-before:always'>A column.</p>";
    loadDocument("<p>A column.</p>" + column + column);
    for (const auto& [columns, pages] : { std::pair(1, 3), std::pair(2, 2), std::pair(3, 1) }) {
        layOut(columns);
        EXPECT_EQ(strip(), pages * width) << columns;
    }
}

TEST_F(PageLayoutTest, AShortChapterFillsItsFirstColumnFirst)
{
    loadDocument(paragraphs(2));
    layOut(2);
    EXPECT_EQ(evaluate("(() => { const box = document.getElementById('p1').getBoundingClientRect();"
                       "return box.left < innerWidth / 2; })()"),
        "true");
}

TEST_F(PageLayoutTest, PagesOfRightToLeftTextCountFromZero)
{
    for (const std::string attributes : { " dir=\"rtl\"", "" }) {
        const std::string body = attributes.empty() ? "<div id='x'/><script>document.body.dir='rtl'</script>" : "";
        load(write("chapter.xhtml", document(body + paragraphs(140), {}, attributes)));
        layOut(2);
        EXPECT_EQ(strip() % 400, 0);
        evaluate("window.scrollTo(800, 0);");
        EXPECT_EQ(position(), 800);
        evaluate("window.scrollTo(document.body.scrollWidth, 0);");
        EXPECT_EQ(position(), strip() - width);
        evaluate("window.scrollTo(-5, 0);");
        EXPECT_EQ(position(), 0);
        for (int i = 0; i < 140; i += 7) {
            const std::string id = "p" + std::to_string(i);
            EXPECT_TRUE(isOnPage(id, pageOf(id, 2))) << id << attributes;
        }
    }
}

TEST_F(PageLayoutTest, TheTextSizeChangesTheTextAtOnceAndStays)
{
    loadDocument(paragraphs(60));
    layOut(2);
    const auto before = strip();
    _view->setTextSizeMultiplier(2);
    EXPECT_GT(strip(), before * 2);
    EXPECT_EQ(number("innerWidth"), width);
    const auto larger = strip();
    loadDocument(paragraphs(60));
    layOut(2);
    EXPECT_EQ(strip(), larger);
}

TEST_F(PageLayoutTest, APageAtTheEndOfAStripThatBecomesShorterIsAtItsNewEnd)
{
    const std::string lastIsSeen
        = "(function () { const box = Array.from(document.getElementById('p139').getClientRects()).pop();"
          "return box.left >= 0 && box.right <= innerWidth; })()";
    const auto expectAtEnd = [&](const char* after) {
        EXPECT_EQ(evaluate("window.scrollX === document.body.scrollWidth - innerWidth"), "true") << after;
    };
    for (const std::string attributes : { "", " dir=\"rtl\"" }) {
        load(write("chapter.xhtml", document(paragraphs(140), {}, attributes)));
        layOut(2);
        _view->setTextSizeMultiplier(2);
        evaluate("window.scrollTo(document.body.scrollWidth, 0);");
        const auto larger = strip();
        _view->setTextSizeMultiplier(1);
        expectAtEnd("smaller text");
        EXPECT_EQ(evaluate(lastIsSeen), "true");
        EXPECT_LT(strip(), larger);
        evaluate("document.body.style.height = '200px';");
        evaluate("window.scrollTo(document.body.scrollWidth, 0);");
        evaluate("document.body.style.height = '400px';");
        expectAtEnd("longer columns");
    }
}

TEST_F(PageLayoutTest, AFrameIsMeasuredInThePagesPixelsWhereTheDesktopEnlargesText)
{
    loadDocument(paragraphs(20));
    const auto settings = Gtk::Settings::get_default();
    const int before = settings->property_gtk_xft_dpi();
    const int resizes = _delegate.resizes;
    settings->property_gtk_xft_dpi() = 96 * 1024 * 5 / 4;
    EXPECT_TRUE(waitUntil([&] { return _delegate.resizes > resizes; }));
    EXPECT_TRUE(waitUntil([&] { return number("innerWidth") == 640; }));
    EXPECT_EQ(_view->frame().width, 640);
    EXPECT_EQ(_view->frame().height, 480);
    EXPECT_EQ(number("innerHeight"), 480);
    settings->property_gtk_xft_dpi() = before;
    EXPECT_TRUE(waitUntil([&] { return number("innerWidth") == width; }));
    EXPECT_EQ(_view->frame().width, width);
}

TEST_F(PageLayoutTest, AHiddenViewIsLaidOutAtItsSize)
{
    _view->setHidden(true);
    EXPECT_TRUE(_view->isHidden());
    loadDocument(paragraphs(60));
    layOut(2);
    EXPECT_EQ(_view->frame().width, width);
    EXPECT_EQ(_view->frame().height, height);
    EXPECT_EQ(number("innerWidth"), width);
    EXPECT_EQ(number("innerHeight"), height);
    _view->setHidden(false);
    EXPECT_FALSE(_view->isHidden());
}

TEST_F(PageLayoutTest, ANewSizeIsReportedOnceWhenThePageHasIt)
{
    loadCompletely(write("chapter.xhtml", document(paragraphs(60))));
    layOut(2);
    settle();
    const int before = _delegate.resizes;
    Task<void> reading;
    std::string seen;
    _delegate.onResize = [&] {
        const auto read = [](WebView& view, std::string* seen) -> Task<void> {
            *seen = co_await view.evaluateScript("innerWidth + 'x' + innerHeight");
        };
        reading = read(*_view, &seen);
    };
    _view->widget().set_size_request(640, 480);
    _window.set_default_size(640, 480);
    ASSERT_TRUE(waitUntil([&] { return _delegate.resizes > before && reading.done(); }));
    _delegate.onResize = {};
    settle();
    EXPECT_EQ(_delegate.resizes, before + 1);
    EXPECT_EQ(_view->frame().width, 640);
    EXPECT_EQ(_view->frame().height, 480);
    EXPECT_EQ(seen, "640x480");
}

TEST_F(PageLayoutTest, AFixedPageHasItsOwnBoxesAndNoScrollBars)
{
    show(PageKind::Fixed);
    load(write(
        "page.html", "<!DOCTYPE html><html><body style='width:1200px;height:1600px;margin:10px'>x</body></html>"));
    EXPECT_EQ(evaluate("document.body.offsetWidth"), "1200");
    EXPECT_EQ(evaluate("getComputedStyle(document.body).marginLeft"), "10px");
    EXPECT_EQ(evaluate("document.documentElement.clientWidth"), "800");
}

}
