#include "tests/engine/PageViewTest.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <cmath>

namespace pagora::test {

// Boxes of a book that do not fit into a column: tables, equations, pictures, floats and long words.
class PageBoxesTest : public PageViewTest {
protected:
    // Returns the width of all columns. Reading it forces a layout.
    long long strip() { return number("document.body.scrollWidth;"); }
};

TEST_F(PageBoxesTest, NothingSticksOutOfItsColumn)
{
    const std::string line(300, 'x');
    const std::string wide[] = {
        "<svg id='w' xmlns='http://www.w3.org/2000/svg' width='100%' viewBox='0 0 600 2400'><rect width='9' "
        "height='9'/></svg>",
        "<div><svg id='w' xmlns='http://www.w3.org/2000/svg' width='2000' height='3000'><rect width='9' "
        "height='9'/></svg></div>",
        "<video id='w' width='2000' height='3000'></video>",
        "<object id='w' style='min-width:2000px;height:3000px'>x</object>",
        "<pre id='w' style='width:2000px;overflow:auto'>" + line + "</pre>",
        "<pre style='margin:0'><code id='w'>" + line + "\n" + line + "</code></pre>",
        "<p><span id='w'>" + line + "</span></p>",
        "<table id='w' width='2000'><tr><td width='3000'>x</td></tr></table>",
        "<table id='w'><tr><td>" + line
            + "</td><td nowrap='nowrap'>A cell of words that stay on a line, as it says.</td></tr>" + "</table>",
    };
    for (const auto& thing : wide) {
        loadDocument(paragraphs(3) + thing + paragraphs(9));
        for (const int columns : { 1, 2 }) {
            layOut(columns);
            const double share = strip() * columns / double(width);
            EXPECT_LT(std::abs(share - std::round(share)), 0.01) << thing;
            const auto size = "(() => { const boxes = Array.from(document.getElementById('w').getClientRects());"
                              "return Math.ceil(Math.max(...boxes.map((box) => box.width))) + 10000 * "
                              "Math.ceil(Math.max(...boxes.map((box) => box.height))); })()";
            EXPECT_LE(number(size) % 10000, width / columns - 40) << thing << " in " << columns;
            EXPECT_LE(number(size) / 10000, height - 80) << thing << " in " << columns;
        }
    }
}

TEST_F(PageBoxesTest, ATableThatIsTooWideHasSmallerLettersUntilItFits)
{
    const std::string word(16, 'm');
    loadDocument("<table id='table'><tr><td>" + word + "</td><td>" + word + "</td></tr></table>" + paragraphs(9));
    const std::string marks = "(() => { const table = document.getElementById('table');"
                              "return [table.hasAttribute('data-pagora-wide'), !!table.dataset.pagoraSmall,"
                              "table.offsetWidth <= innerWidth / {columns} - 40].join(); })()";
    layOut(2);
    ASSERT_GT(strip(), 0);
    EXPECT_EQ(evaluate(replaced(marks, "{columns}", "2")), "true,true,true");
    layOut(1);
    ASSERT_GT(strip(), 0);
    EXPECT_EQ(evaluate(replaced(marks, "{columns}", "1")), "false,false,true");
}

TEST_F(PageBoxesTest, ATableThatFitsIntoAColumnInSmallerLettersIsNotDivided)
{
    std::string lines(16, 'm');
    for (int i = 0; i < 25; ++i)
        lines += "<br/>m";
    loadDocument("<p style='height:100px'>Above</p><table id='table'><tr><td>" + lines + "</td><td>"
        + std::string(16, 'm') + "</td></tr></table>" + paragraphs(9));
    layOut(2);
    ASSERT_GT(strip(), 0);
    ASSERT_EQ(evaluate("!!document.getElementById('table').dataset.pagoraSmall"), "true");
    EXPECT_EQ(evaluate("document.getElementById('table').getClientRects().length"), "1");
}

TEST_F(PageBoxesTest, ATableThatFitsInNoLettersScrollsWithinItself)
{
    std::string cells;
    for (int i = 0; i < 12; ++i)
        cells += "<td>immeasurably</td>";
    loadDocument("<table id='table'><tr>" + cells + "</tr></table>" + paragraphs(9));
    layOut(2);
    ASSERT_GT(strip(), 0);
    EXPECT_EQ(evaluate("(() => { const table = document.getElementById('table');"
                       "return [table.offsetWidth <= innerWidth / 2 - 40, table.scrollWidth > table.clientWidth,"
                       "table.tabIndex].join(); })()"),
        "true,true,0");
}

TEST_F(PageBoxesTest, AnEquationThatIsTooWideHasSmallerLettersOrScrolls)
{
    const auto equation = [](int letters) {
        return "<p><math xmlns='http://www.w3.org/1998/Math/MathML'><mi>" + std::string(letters, 'm')
            + "</mi></math></p>";
    };
    loadDocument(equation(20) + equation(30) + equation(90) + paragraphs(9));
    layOut(2);
    ASSERT_GT(strip(), 0);
    EXPECT_EQ(evaluate("Array.from(document.querySelectorAll('math'), (math) => [math.dataset.pagoraSmall || 10,"
                       "math.parentElement.hasAttribute('data-pagora-scrolls')].join(' ')).join()"),
        "10 false,8 false,6 true");
}

TEST_F(PageBoxesTest, ColumnsOfTheBooksOwnAreFlattened)
{
    loadDocument("<div style='columns:2' id='own'>" + paragraphs(20) + "</div>");
    layOut(2);
    EXPECT_EQ(evaluate("getComputedStyle(document.getElementById('own')).columnCount"), "auto");
}

TEST_F(PageBoxesTest, AFloatThatLeavesNoRoomForTextHasItsRowToItself)
{
    const auto picture = [](const char* id, int size) {
        return std::string("<img id='") + id + "' style='float:left' width='" + std::to_string(size)
            + "' height='60' src='none.svg'/>";
    };
    const std::string text = " Some words that stand beside the picture where there is room for them.";
    loadDocument("<p>" + picture("large", 300) + text + "</p><p>" + picture("small", 100) + text + "</p>");
    layOut(2);
    ASSERT_GT(strip(), 0);
    EXPECT_EQ(evaluate("['large', 'small'].map((id) => { const image = document.getElementById(id);"
                       "const range = document.createRange(); range.setStart(image.nextSibling, 1);"
                       "range.setEnd(image.nextSibling, 2);"
                       "return range.getBoundingClientRect().top < image.getBoundingClientRect().bottom; }).join()"),
        "false,true");
}

TEST_F(PageBoxesTest, AWordThatIsWiderThanItsColumnIsBroken)
{
    loadDocument("<p id='long'>" + std::string(120, 'x') + "</p><p id='short'>" + std::string(12, 'x') + "</p>");
    layOut(2);
    ASSERT_GT(strip(), 0);
    EXPECT_EQ(evaluate("['long', 'short'].map((id) => "
                       "getComputedStyle(document.getElementById(id)).overflowWrap).join()"),
        "anywhere,normal");
}

TEST_F(PageBoxesTest, APictureAtAColumnsEndMovesToTheNextColumn)
{
    const std::string picture = "<p><img style='float:left' width='200' height='200' src='none.svg'/></p>";
    loadDocument("<div style='height:450px'>x</div>" + picture + paragraphs(5));
    layOut(2);
    ASSERT_GT(strip(), 0);
    EXPECT_EQ(evaluate("(() => { const box = document.images[0].getBoundingClientRect();"
                       "return [box.left, box.top, box.height].join(); })()"),
        "420,40,200");
}

TEST_F(PageBoxesTest, ABoxThatIsTallerThanAColumnIsDivided)
{
    loadDocument("<div style='display:inline-block' id='tall'>" + paragraphs(30) + "</div>");
    layOut(2);
    EXPECT_GT(strip(), width);
    EXPECT_EQ(evaluate("getComputedStyle(document.getElementById('tall')).display"), "block");
}

TEST_F(PageBoxesTest, AParagraphLeavesTwoLinesOrNone)
{
    const std::string style = "p{orphans:1;widows:1;margin:0;line-height:20px}";
    loadDocument("<div style='height:490px'>x</div><p id='four'>1<br/>2<br/>3<br/>4</p>" + paragraphs(5),
        "<style>" + style + "</style>");
    layOut(2);
    ASSERT_GT(strip(), 0);
    EXPECT_EQ(evaluate("document.getElementById('four').getBoundingClientRect().left"), "420");
}

TEST_F(PageBoxesTest, ARowOfATableIsNotCut)
{
    std::string rows;
    for (int i = 0; i < 30; ++i)
        rows += "<tr><td>" + paragraphs(1) + "</td></tr>";
    loadDocument("<table>" + rows + "</table>");
    layOut(2);
    ASSERT_GT(strip(), 0);
    EXPECT_EQ(evaluate("Array.from(document.querySelectorAll('tr')).filter((row) => "
                       "Array.from(row.getClientRects()).filter((box) => box.height > 1.5).length > 1).length"),
        "0");
}

TEST_F(PageBoxesTest, AnImageOfAGivenSizeKeepsItsProportions)
{
    loadDocument("<img width='2000' height='200' src='none.svg'/>" + paragraphs(3));
    layOut(1);
    EXPECT_EQ(evaluate("getComputedStyle(document.images[0]).objectFit"), "contain");
}

}
