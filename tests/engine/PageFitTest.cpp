// The page scripts that fit text, titles and pictures into the columns.

#include "paging/PageScripts.hpp"
#include "tests/engine/PageViewTest.hpp"

namespace pagora::test {

class PageFitTest : public PageViewTest {
protected:
    // Lays the chapter out in `columns` columns and reads its length, which completes the fitting.
    void fit(const std::string& body, int columns, const std::string& styles = {})
    {
        loadDocument(body, "<style>" + styles + "</style>");
        layOut(columns);
        ASSERT_GT(number("document.body.scrollWidth;"), 0);
    }
    // Returns the position of the first letter in the element with this id: "left,top" in whole pixels.
    std::string placeOf(const std::string& id)
    {
        return evaluate("(() => { const range = document.createRange();"
                        "const nodes = document.createTreeWalker(document.getElementById('"
            + id
            + "'), NodeFilter.SHOW_TEXT); const text = nodes.nextNode();"
              "range.setStart(text, 0); range.setEnd(text, 1); const box = range.getBoundingClientRect();"
              "return Math.round(box.left) + ',' + Math.round(box.top); })()");
    }
    // Returns the left and upper edges of an element: "left,top". Those of its letters depend on the font.
    std::string edgesOf(const std::string& id)
    {
        return evaluate("(() => { const { left, top } = document.getElementById('" + id
            + "').getBoundingClientRect(); return left + ',' + top; })()");
    }
    // Returns whether each line of the block with this id is at most as wide as the block.
    bool allLinesFit(const std::string& id)
    {
        return evaluate("(() => { const block = document.getElementById('" + id
                   + "'); const range = document.createRange(); range.selectNodeContents(block);"
                     "return Array.from(range.getClientRects()).every((box) => box.width <= block.clientWidth + 1); "
                     "})()")
            == "true";
    }
    static std::string filler(int pixels) { return "<div style='height:" + std::to_string(pixels) + "px'>x</div>"; }
    static constexpr auto plain = "h2,p,div{margin:0} h2{font-size:20px;line-height:24px} p{line-height:20px}";
};

TEST_F(PageFitTest, ThereIsRoomBetweenAPictureAndTheTextBesideIt)
{
    fit("<p id='text'><img style='float:left' width='100' height='60' src='none.svg'/>Some words beside the "
        "picture.</p>"
            + paragraphs(20),
        2, "p,img{margin:0}");
    EXPECT_GE(number("(() => { const range = document.createRange(); range.selectNode(document.images[0].nextSibling);"
                     "return range.getClientRects()[0].left - document.images[0].getBoundingClientRect().right; })()"),
        8)
        << evaluate("document.images[0].outerHTML");
}

TEST_F(PageFitTest, APictureThatMayBeLargerIsFittedAnew)
{
    fit("<p><img id='picture' style='float:left' width='700' height='70' src='none.svg'/>Some words beside the "
        "picture.</p>"
            + paragraphs(20),
        3);
    evaluate(scripts::columns(1, width));
    ASSERT_GT(number("document.body.scrollWidth;"), 0);
    layOut(1);
    ASSERT_GT(number("document.body.scrollWidth;"), 0);
    EXPECT_EQ(evaluate("(() => { const picture = document.getElementById('picture'); const box = "
                       "picture.getBoundingClientRect(); const room = picture.parentElement.getBoundingClientRect();"
                       "return [box.left - room.left, box.right - room.right].map(Math.round).join(); })()"),
        "0,0");
}

TEST_F(PageFitTest, APictureAtTheEndOfAColumnKeepsItsSize)
{
    fit("<div style='height:300px'>x</div><p><img style='float:left' width='300' height='400' src='none.svg'/></p>"
            + paragraphs(20),
        2, "p,div{margin:0} img{max-width:280px;height:auto}");
    EXPECT_EQ(number("document.images[0].offsetWidth;"), 280) << evaluate("document.images[0].outerHTML");
}

TEST_F(PageFitTest, AHeadingStandsWithTheTextBelowIt)
{
    fit(filler(490) + "<h2 id='heading'>Heading</h2><p id='text'>One line of text.<br/>And another.</p>"
            + paragraphs(9),
        2, plain);
    EXPECT_EQ(placeOf("heading").substr(0, 4), "420,");
    EXPECT_EQ(placeOf("text").substr(0, 4), "420,");
}

TEST_F(PageFitTest, TheRoomThatAHeadingAsksForIsNotSeen)
{
    fit("<h2 id='heading'>Heading</h2><p id='text'>One line.</p>" + paragraphs(30), 2, plain);
    EXPECT_EQ(edgesOf("text"), "20,64");
}

TEST_F(PageFitTest, AHeadingOnAGroundOfItsOwnStandsWithItsTextToo)
{
    fit(filler(490) + "<h2 id='heading'>Heading</h2><p id='text'>One line of text.<br/>And another.</p>"
            + paragraphs(9),
        2, std::string(plain) + "h2{background:#ddd}");
    EXPECT_EQ(placeOf("heading"), "420,40");
}

TEST_F(PageFitTest, AChapterOfOneColumnStandsInTheMiddleOfThePage)
{
    const std::string middle = std::to_string((width - (width / 2 - 40)) / 2) + ",";
    fit("<p id='title'>A title</p><p id='anchor'>An author</p>", 2, plain);
    EXPECT_EQ(placeOf("title").substr(0, 4), middle);
    EXPECT_EQ(number("document.body.scrollWidth;"), width);
    EXPECT_EQ(edgesOf("anchor"), middle + "60");
    EXPECT_EQ(middle + evaluate("document.getElementById('anchor').offsetTop + 40"), placeOf("anchor"));
    layOut(1);
    ASSERT_GT(number("document.body.scrollWidth;"), 0);
    EXPECT_NE(placeOf("title").substr(0, 4), middle);
}

TEST_F(PageFitTest, MarginsLeaveTheTextOfANarrowColumnItsRoom)
{
    fit("<div style='padding:0 80px'><p style='margin:0 10px'><span id='text'>Some words in a narrow column, which "
        "go on for a while.</span></p></div>"
            + paragraphs(30),
        3);
    EXPECT_EQ(evaluate("(() => { const boxes = Array.from(document.getElementById('text').getClientRects());"
                       "return Math.max(...boxes.map((box) => box.width)) > 110; })()"),
        "true");
}

TEST_F(PageFitTest, ATitleThatTheTextSizeMakesTooLargeHasSmallerLetters)
{
    const std::string sticksOut = "(() => { const title = document.getElementById('title');"
                                  "return title.scrollWidth > title.clientWidth; })()";
    _view->setTextSizeMultiplier(2.5);
    fit("<h1 id='title'>Extraordinary Classification</h1>" + paragraphs(30), 3, "h1{font-size:24px}");
    EXPECT_EQ(evaluate(sticksOut), "false");
    EXPECT_EQ(evaluate("document.getElementById('title').hasAttribute('data-pagora-title')"), "true");
    _view->setTextSizeMultiplier(1);
    ASSERT_GT(number("document.body.scrollWidth;"), 0);
    EXPECT_EQ(evaluate("document.getElementById('title').hasAttribute('data-pagora-title')"), "false");
    _view->setTextSizeMultiplier(2.5);
    ASSERT_GT(number("document.body.scrollWidth;"), 0);
    EXPECT_EQ(evaluate(sticksOut), "false");
}

TEST_F(PageFitTest, ATitleThatIsTooLargeForItsColumnHasSmallerLetters)
{
    fit("<h1 id='title'>Extraordinary Classification</h1>" + paragraphs(30), 3, "h1{font-size:60px}");
    EXPECT_EQ(evaluate("(() => { const title = document.getElementById('title');"
                       "return [parseFloat(getComputedStyle(title).fontSize) < 60, title.scrollWidth <= "
                       "title.clientWidth].join(); })()"),
        "true,true");
    layOut(1);
    ASSERT_GT(number("document.body.scrollWidth;"), 0);
    EXPECT_EQ(evaluate("getComputedStyle(document.getElementById('title')).fontSize"), "60px");
}

TEST_F(PageFitTest, ParagraphsInATableStandBelowEachOtherInANarrowColumn)
{
    std::string cells;
    for (int i = 0; i < 5; ++i)
        cells += "<td>A paragraph that only stands in a table because its author wanted it beside another one of its "
                 "kind, as in a magazine.</td>";
    fit("<table id='table'><tr>" + cells + "</tr></table>" + paragraphs(9), 2);
    EXPECT_EQ(evaluate("getComputedStyle(document.querySelector('td')).display"), "block");
}

TEST_F(PageFitTest, ASmallFrameIsNotDivided)
{
    fit(filler(490) + "<div id='frame' style='border:1px solid;padding:9px'>A note.<br/>And more.</div>"
            + paragraphs(9),
        2, "p{margin:0;font-size:16px;line-height:20px}");
    EXPECT_EQ(evaluate("document.getElementById('frame').getClientRects().length"), "1");
}

TEST_F(PageFitTest, AHeadingStandsWithTheTextAfterAnEmptyElement)
{
    fit(filler(490)
            + "<h2 id='heading'>Heading</h2><div></div><div><p id='text'>One line of text.<br/>And another.</p>"
              "</div>"
            + paragraphs(9),
        2, plain);
    EXPECT_EQ(placeOf("heading").substr(0, 4), "420,");
    EXPECT_EQ(placeOf("text").substr(0, 4), "420,");
}

TEST_F(PageFitTest, AHeadingStandsWithThePictureThatFloatsInItsFigure)
{
    fit(filler(360)
            + "<h2 id='heading'>Heading</h2><figure style='margin:0'><img src='none.svg' width='200' height='200' "
              "style='float:left'/><figcaption>A caption.</figcaption></figure>"
            + paragraphs(9),
        2, plain);
    EXPECT_EQ(placeOf("heading").substr(0, 4), "420,");
}

TEST_F(PageFitTest, AHeadingHasThePictureBelowItWhereOnlyTheCaptionHasNoRoom)
{
    std::string caption;
    for (int i = 0; i < 5; ++i)
        caption += "<p>A line</p>";
    // Without its margin the heading would fit together with the whole caption.
    fit("<h2 style='margin:30px 0'>Heading</h2><object data='none' type='text/none'><figure style='margin:0'><img "
        "src='none.svg' width='200' "
        "height='360' style='display:block'/><figcaption>"
            + caption + "</figcaption></figure></object>" + paragraphs(9),
        2, plain);
    EXPECT_LT(number("document.images[0].getBoundingClientRect().left"), 400);
}

TEST_F(PageFitTest, ALineNumberThatFloatsIsNotCut)
{
    fit(filler(505) + "<div style='line-height:20px'>A line<span id='number' style='float:right'>250</span></div>"
            + paragraphs(9),
        2, plain);
    EXPECT_EQ(evaluate("document.getElementById('number').getClientRects().length"), "1");
}

TEST_F(PageFitTest, VersesKeepTheirWords)
{
    fit("<p id='verse' lang='en' style='text-indent:-20px;padding-left:20px'>A verse</p><p id='prose' "
        "lang='en'>Prose</p>",
        1, "p{hyphens:auto}");
    EXPECT_EQ(evaluate("['verse', 'prose'].map((id) => getComputedStyle(document.getElementById(id)).hyphens).join()"),
        "manual,auto");
}

TEST_F(PageFitTest, WhatTakesLittleMoreThanALineKeepsItsWords)
{
    fit("<p id='entry' lang='en'>And the dead tree gives no shelter, no relief,</p><p id='prose' lang='en'>"
            + std::string(400, 'x') + "</p>",
        2, "p{hyphens:auto;font-size:16px}");
    EXPECT_EQ(evaluate("['entry', 'prose'].map((id) => getComputedStyle(document.getElementById(id)).hyphens).join()"),
        "manual,auto");
}

TEST_F(PageFitTest, RaisedLettersLeaveTheDistanceOfTheLines)
{
    fit("<p id='plain'>One 1</p><p id='tag'>One<sup>1</sup></p><p id='class'>One<span class='raised'>1</span></p>", 1,
        ".raised{vertical-align:super;font-size:80%} p{line-height:1.2}");
    const auto heightOf
        = [&](const std::string& id) { return evaluate("document.getElementById('" + id + "').offsetHeight"); };
    EXPECT_EQ(heightOf("tag"), heightOf("plain"));
    EXPECT_EQ(heightOf("class"), heightOf("plain"));
}

TEST_F(PageFitTest, AnAddressThatEndsInAHyphenatedWordStaysInItsColumn)
{
    fit("<p id='text' lang='en' style='font-size:28px'>See http://www.gnu.org/copyleft/ for it.</p>" + paragraphs(30),
        3, "p{hyphens:auto}");
    EXPECT_TRUE(allLinesFit("text"));
}

TEST_F(PageFitTest, AWordThatFitsWithoutItsHyphenOnlyStaysInItsColumn)
{
    fit("<p id='text' style='width:21ch'>" + std::string(21, 'm') + "-and more of it</p>" + paragraphs(30), 2,
        "p{font-family:monospace}");
    EXPECT_TRUE(allLinesFit("text"));
}

TEST_F(PageFitTest, ATitleInSmallerLettersFillsItsLines)
{
    fit("<h1 id='title'>Extraordinary Classification</h1>" + paragraphs(30), 3, "h1{font-size:60px;text-wrap:balance}");
    EXPECT_EQ(evaluate("getComputedStyle(document.getElementById('title')).textWrap"), "wrap");
}

TEST_F(PageFitTest, AnInlineBlockThatIsTooHighWithItsMarginsIsDivided)
{
    fit("<p style='display:inline-block;margin:60px 0 0;height:490px'>Words</p>" + paragraphs(30), 2);
    EXPECT_EQ(evaluate("getComputedStyle(document.querySelector('p')).display"), "block");
}

TEST_F(PageFitTest, ABoxInARowOfBoxesIsDividedWithIt)
{
    fit("<div style='display:flex'><div id='box' style='display:inline-block'>" + paragraphs(60) + "</div></div>", 2);
    EXPECT_EQ(evaluate("getComputedStyle(document.getElementById('box')).display"), "block");
}

TEST_F(PageFitTest, APictureThatFillsItsFigureHasNothingBesideIt)
{
    // The figure's margins have room for only single letters.
    fit("<figure style='margin:0 40px'><img width='280' height='100' src='none.svg' style='float:left'/></figure>"
        "<p id='text'>a b c d e f</p>"
            + paragraphs(20),
        2, "p{margin:0}");
    EXPECT_GE(number("document.getElementById('text').getBoundingClientRect().top - "
                     "document.images[0].getBoundingClientRect().bottom"),
        0);
}

TEST_F(PageFitTest, AFloatInThePreviousColumnTakesNoRoomBesideAPicture)
{
    std::string column;
    for (int i = 0; i < 26; ++i)
        column += "<p style='margin-left:4px'><img width='60' height='16' src='none.svg' style='float:left'/>Words</p>";
    // The last picture leaves room for two letters beside it.
    fit(column + "<p>Words <img width='330' height='300' src='none.svg' style='float:left'/>before it</p>"
            + paragraphs(20),
        2, plain);
    EXPECT_EQ(evaluate("document.images[26].hasAttribute('data-pagora-alone')"), "true");
}

TEST_F(PageFitTest, ATitleInANarrowColumnHasItsLettersCloser)
{
    const auto spacing = [&] { return evaluate("getComputedStyle(document.querySelector('h1')).letterSpacing"); };
    const std::string title = "<h1>An extraordinary title</h1>";
    fit(title + paragraphs(30), 1, "h1{font-size:40px;letter-spacing:8px}");
    EXPECT_EQ(spacing(), "8px");
    fit(title + paragraphs(30), 3, "body{font-size:30px} h1{font-size:40px;letter-spacing:8px}");
    EXPECT_LT(std::atof(spacing().c_str()), 8);
}

// 800 pixels cannot be divided into three columns in whole layout units of the engine.
TEST_F(PageFitTest, PagesOfALongChapterBeginAtTheMargin)
{
    fit(paragraphs(3000), 3);
    const auto last = number("document.body.scrollWidth;") - width;
    ASSERT_GT(last, 100 * width);
    evaluate("window.scrollTo(" + std::to_string(last) + ", 0);");
    EXPECT_EQ(number("window.pageXOffset"), last);
    EXPECT_EQ(evaluate("(() => { const lefts = Array.from(document.querySelectorAll('p')).flatMap((p) => "
                       "Array.from(p.getClientRects(), (box) => box.left)).filter((left) => left > 0 && left < 200);"
                       "return lefts.length > 0 && lefts.every((left) => Math.abs(left - 20) <= 1); })()"),
        "true");
}

}
