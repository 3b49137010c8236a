// The page scripts that handle floating pictures at the ends of columns.

#include "tests/engine/PageViewTest.hpp"

namespace pagora::test {

class PageFitEndsTest : public PageViewTest {
protected:
    // Returns a chapter with a picture that floats in a paragraph, `above` points down the text, and with text that
    // continues in the next column.
    static std::string chapter(int above, const std::string& picture)
    {
        std::string words;
        for (int i = 0; i < 60; ++i)
            words += "word ";
        return document("<div style='height:" + std::to_string(above) + "px'>x</div><p><img style='float:left' src='"
                + picture + "'/>" + words + "</p>" + paragraphs(10),
            "<style>div,p{margin:0} p{line-height:20px} img{margin:5px}</style>");
    }
    // Lays the chapter out in two columns and reads its length, which completes the fitting.
    void read(const std::string& chapter)
    {
        loadCompletely(write("chapter.xhtml", chapter));
        layOut(2);
        ASSERT_GT(number("document.body.scrollWidth;"), 0);
    }
    // Returns the boxes of all lines of text.
    std::string lines() { return evaluate("JSON.stringify(" + boxes + ")"); }
    // Returns the number of lines at the top of the second column that are indented.
    long long indentedLines()
    {
        return number(boxes + ".filter(([left, top]) => top < 60 && left > 421 && left < 800).length");
    }
    const std::string boxes = "Array.from(document.querySelectorAll('p')).flatMap((text) => { const range = "
                              "document.createRange(); range.selectNodeContents(text); return "
                              "Array.from(range.getClientRects(), (box) => [box.left, box.top, box.width]); })";
    static constexpr auto figure = "<svg xmlns='http://www.w3.org/2000/svg' width='100' height='60'></svg>";
    // The heights above the picture range from one with room for two lines below it to one at which it hardly fits.
    static constexpr int first = 400;
    static constexpr int last = 452;
};

TEST_F(PageFitEndsTest, TheNextColumnBeginsAtItsEdge)
{
    write("figure.svg", figure);
    for (int above = first; above < last; above += 2) {
        read(chapter(above, "figure.svg"));
        EXPECT_EQ(indentedLines(), 0) << above;
    }
}

TEST_F(PageFitEndsTest, NoLineIsLaidOutOverThePicture)
{
    write("figure.svg", figure);
    const auto covered = boxes
        + ".filter(([left, top]) => { const box = document.images[0].getBoundingClientRect();"
          "return left < box.right - 1 && left > box.left - 10 && top < box.bottom - 10 && top > box.top; }).length";
    for (int above = first; above < last; above += 2) {
        read(chapter(above, "figure.svg"));
        EXPECT_EQ(number(covered), 0) << above;
    }
}

TEST_F(PageFitEndsTest, LinesAreTheSameWhetherThePictureComesEarlyOrLate)
{
    write("figure.svg", figure);
    for (int above = first; above < last; above += 2) {
        read(chapter(above, "figure.svg"));
        const auto early = lines();
        read(chapter(above, "missing.svg"));
        ASSERT_NE(lines(), early);
        evaluate("document.images[0].src = 'figure.svg'; 0");
        ASSERT_TRUE(waitUntil([this] { return evaluate("document.images[0].naturalWidth") == "100"; }));
        settle();
        ASSERT_GT(number("document.body.scrollWidth;"), 0);
        EXPECT_EQ(lines(), early) << above;
    }
}

TEST_F(PageFitEndsTest, LinesAreTheSameAfterAnotherNumberOfColumns)
{
    write("figure.svg", figure);
    for (int above = first; above < last; above += 2) {
        read(chapter(above, "figure.svg"));
        const auto before = lines();
        layOut(3);
        ASSERT_GT(number("document.body.scrollWidth;"), 0);
        layOut(2);
        ASSERT_GT(number("document.body.scrollWidth;"), 0);
        EXPECT_EQ(lines(), before) << above;
    }
}

}
