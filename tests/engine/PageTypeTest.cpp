#include "tests/engine/PageViewTest.hpp"

namespace pagora::test {

namespace {

constexpr auto longWords = "Considerations concerning representative responsibilities, characteristically "
                           "incomprehensible, notwithstanding extraordinary administrative circumstances.";
constexpr auto germanWords = "Lebensmittelverarbeitung und Wirtschaftswissenschaften, Nachrichtensprecher, "
                             "Rechtsschutzversicherung, Sehenswürdigkeiten und Geschwindigkeitsbegrenzung.";

// Default typography of text without styles of the book.
class PageTypeTest : public PageViewTest {
protected:
    // Loads an element with this text in a narrow column, in a document with these attributes.
    void loadNarrow(const std::string& element, const std::string& text = longWords,
        const std::string& attributes = " lang=\"en\"", const std::string& head = {})
    {
        const auto url = write("page.xhtml",
            document("<div style=\"width: 230px\"><" + element + " id=\"t\">" + text + "</" + element + "></div>", head,
                attributes));
        load(url);
    }
    // Returns the number of hyphenated words of the element.
    long long brokenWords()
    {
        return number("(() => { const walker = document.createTreeWalker(document.getElementById('t'), 4);"
                      "let broken = 0; for (let node; (node = walker.nextNode());)"
                      "for (const word of node.data.matchAll(/\\p{L}+/gu)) {"
                      "const range = document.createRange(); range.setStart(node, word.index);"
                      "range.setEnd(node, word.index + word[0].length);"
                      "const tops = new Set(Array.from(range.getClientRects(), (box) => Math.round(box.top)));"
                      "broken += tops.size > 1; } return broken; })()");
    }
    std::string style(const std::string& property)
    {
        return evaluate("getComputedStyle(document.getElementById('t'))['" + property + "']");
    }
};

}

TEST_F(PageTypeTest, WordsAreBrokenByTheBooksLanguage)
{
    loadNarrow("p");
    EXPECT_GT(brokenWords(), 0);
    loadNarrow("p", germanWords, " xml:lang=\"de\"");
    EXPECT_GT(brokenWords(), 0);
}

TEST_F(PageTypeTest, WordsAreNotBrokenWhereTheLanguageIsNotKnown)
{
    loadNarrow("p", "incomprehensible notwithstanding", "");
    EXPECT_EQ(brokenWords(), 0);
}

TEST_F(PageTypeTest, ADocumentThatDoesNotSayItsLanguageHasTheBooks)
{
    _view->setPageStart({ "", false, 1, "en" });
    loadNarrow("p", longWords, "");
    EXPECT_GT(brokenWords(), 0);
    EXPECT_EQ(evaluate("document.documentElement.lang"), "en");
    loadNarrow("p", germanWords, " xml:lang=\"de\"");
    EXPECT_EQ(evaluate("document.documentElement.lang"), "");
}

TEST_F(PageTypeTest, WhereTheBookSaysItsWordHolds)
{
    loadNarrow("p", longWords, " lang=\"en\"", "<style>body { hyphens: none; line-height: 2 }</style>");
    EXPECT_EQ(brokenWords(), 0);
    EXPECT_EQ(style("lineHeight"), "32px");
    loadNarrow("h2", longWords, " lang=\"en\"", "<style>h2 { hyphens: auto }</style>");
    EXPECT_GT(brokenWords(), 0);
}

TEST_F(PageTypeTest, HeadingsCaptionsAndCodeKeepTheirWords)
{
    for (const char* element : { "h1", "h4", "figcaption", "address", "code", "pre", "samp" }) {
        loadNarrow(element, longWords, " lang=\"en\"", "<style>body { hyphens: auto }</style>");
        EXPECT_EQ(style("hyphens"), "manual") << element;
    }
}

TEST_F(PageTypeTest, TextIsRaggedUnlessTheBookAsksForJustification)
{
    loadNarrow("p");
    EXPECT_EQ(style("textAlign"), "start");
    loadNarrow("p", longWords, " lang=\"en\"", "<style>p { text-align: justify }</style>");
    EXPECT_EQ(style("textAlign"), "justify");
    EXPECT_GT(brokenWords(), 0);
}

TEST_F(PageTypeTest, NoMoreThanThreeLinesInARowEndInAHyphen)
{
    std::string words;
    for (int i = 0; i < 60; ++i)
        words += "incomprehensibilities ";
    loadNarrow("p", words);
    // The expression returns the maximum number of consecutive hyphenated lines.
    EXPECT_EQ(number("(() => { const node = document.getElementById('t').firstChild; const broken = new Map();"
                     "for (const word of node.data.matchAll(/\\w+/g)) {"
                     "const range = document.createRange(); range.setStart(node, word.index);"
                     "range.setEnd(node, word.index + word[0].length);"
                     "const tops = Array.from(range.getClientRects(), (box) => Math.round(box.top));"
                     "for (const top of tops) broken.set(top, broken.get(top) || top !== tops[tops.length - 1]); }"
                     "let longest = 0, row = 0; for (const top of [...broken.keys()].sort((a, b) => a - b)) {"
                     "row = broken.get(top) ? row + 1 : 0; longest = Math.max(longest, row); } return longest; })()"),
        3);
}

TEST_F(PageTypeTest, LinesAreNoLongerThanABooksInAnyNumberOfColumns)
{
    loadDocument(paragraphs(40));
    for (const int columns : { 1, 2, 3, 1 }) {
        layOut(columns);
        EXPECT_LE(number("document.getElementById('p1').getClientRects()[0].width"), 480) << columns;
        // The gap of the columns equals both margins, so that each page is as wide as the view.
        EXPECT_EQ(number("parseFloat(getComputedStyle(document.body).columnGap)"),
            2 * number("parseFloat(getComputedStyle(document.body).paddingLeft)"));
        EXPECT_GE(number("parseFloat(getComputedStyle(document.body).paddingLeft)"), 20) << columns;
        EXPECT_EQ(number("document.body.scrollWidth;") % width, 0) << columns;
    }
}

TEST_F(PageTypeTest, LargerTextHasLongerLines)
{
    loadDocument(paragraphs(40));
    layOut(1);
    const auto before = number("document.getElementById('p1').getClientRects()[0].width");
    _view->setTextSizeMultiplier(1.5);
    EXPECT_TRUE(
        waitUntil([&] { return number("document.getElementById('p1').getClientRects()[0].width") == before * 3 / 2; }));
}

TEST_F(PageTypeTest, APictureIsNoWiderThanTheText)
{
    loadDocument("<p><img id=\"t\" width=\"2000\" height=\"200\" src=\"none.png\"/></p>" + paragraphs(9));
    layOut(1);
    evaluate("document.images[0].style.maxWidth = '760px'");
    EXPECT_EQ(style("width"), "480px");
    evaluate("document.images[0].style.maxWidth = '300px'");
    EXPECT_EQ(style("width"), "300px");
}

}
