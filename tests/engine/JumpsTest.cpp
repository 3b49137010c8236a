// Jumps through a book in the real program, and returning from them.

#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <gtkmm/button.h>

namespace pagora::test {

namespace {

class Jumps : public ReadingTest {
protected:
    Jumps()
    {
        EpubBuilder book;
        book.chapters(3);
        book.member("OEBPS/chapter1.xhtml",
            chapterOf(60, "<p><a id='far' href='chapter2.xhtml#p40'>on</a> <a id='near' href='#p50'>down</a></p>"));
        book.member("OEBPS/chapter2.xhtml", chapterOf(60, ""));
        book.member("OEBPS/chapter3.xhtml", chapterOf(60, ""));
        import(book.write(_home.path("book.epub")));
        open();
    }
    // Simulates a press of the user.
    void pressLink(const std::string& id)
    {
        evaluate("document.getElementById('" + id + "').click()");
        settle();
    }
    void back()
    {
        reader().goBack();
        settle();
    }
    bool hasButton() { return window().parts().widget<Gtk::Button>("backButton").get_visible(); }
};

}

TEST_F(Jumps, BackShowsThePageThatTheContentsHaveLeft)
{
    turn(1);
    turn(1);
    EXPECT_FALSE(hasButton());
    const auto left = place();
    goToChapter(2);
    turn(1);
    EXPECT_TRUE(hasButton());
    const auto farther = place();
    back();
    EXPECT_EQ(place(), left);
    reader().goForward();
    settle();
    EXPECT_EQ(place(), farther);
}

TEST_F(Jumps, BackShowsThePageThatALinkToAnotherChapterHasLeft)
{
    const auto left = place();
    pressLink("far");
    ASSERT_EQ(reader().activeSplitIndex(), 1u);
    back();
    EXPECT_EQ(place(), left);
}

TEST_F(Jumps, BackShowsThePageThatALinkWithinTheChapterHasLeft)
{
    const auto left = place();
    pressLink("near");
    EXPECT_TRUE(hasButton());
    turn(1);
    ASSERT_NE(place(), left);
    back();
    EXPECT_EQ(place(), left);
}

TEST_F(Jumps, BackShowsThePageThatTheSliderHasLeft)
{
    turn(1);
    const auto left = place();
    moveSlider(2);
    ASSERT_EQ(reader().activeSplitIndex(), 2u);
    back();
    EXPECT_EQ(place(), left);
}

TEST_F(Jumps, BackKeepsThePlaceWhereTheTextHasTakenAnotherSize)
{
    turn(1);
    turn(1);
    const auto middle = number("window.pageXOffset") + number("innerWidth") / 2;
    const auto share = static_cast<double>(middle) / static_cast<double>(number("document.body.scrollWidth"));
    goToChapter(1);
    window().fontSizeSlider().setFloatValue(1.7f);
    reader().changeFontSize(1.7f);
    settle();
    back();
    const auto length = static_cast<double>(number("document.body.scrollWidth"));
    const auto start = static_cast<double>(number("window.pageXOffset"));
    EXPECT_LE(start, share * length + 1);
    EXPECT_GE(start + static_cast<double>(number("innerWidth")), share * length - 1);
}

TEST_F(Jumps, APercentageIsGoneToExactly)
{
    const auto shown = [this] { return std::atoi(window().locLabel().stringValue().c_str()); };
    for (const int percentage : { 10, 50, 77, 100 }) {
        reader().goToPercentage(percentage);
        settle();
        EXPECT_GE(shown(), percentage);
        EXPECT_EQ(number("window.pageXOffset") % number("innerWidth"), 0);
        // The page before it has a lower percentage.
        turn(0);
        EXPECT_LT(shown(), percentage);
    }
    reader().goToPercentage(0);
    settle();
    EXPECT_EQ(shown(), 0);
}

TEST_F(Jumps, APageOfTheChapterIsGoneToExactly)
{
    goToChapter(1);
    reader().goToPage(3);
    settle();
    EXPECT_EQ(number("window.pageXOffset"), 2 * number("innerWidth"));
    back();
    EXPECT_EQ(number("window.pageXOffset"), 0);
}

TEST_F(Jumps, APageOfThePrintedEditionIsGoneToExactly)
{
    reader().setPrintedPages({ *Url::fromString(book()->files().at(1).text() + "#p45") });
    reader().goToPrintedPage(0);
    settle();
    EXPECT_EQ(reader().activeSplitIndex(), 1u);
    EXPECT_EQ(evaluate("(() => { const box = document.getElementById('p45').getClientRects()[0];"
                       "return box.left >= 0 && box.left < innerWidth; })()"),
        "true");
}

}
