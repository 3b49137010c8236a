// Changes of the location within the page, and their effects on the contents pane and the search field.

#include "tests/reflowable/ReaderTest.hpp"

using namespace pagora;
using namespace pagora::test;

namespace {

class AnchorTracking : public ReaderTest {
protected:
    void goTo(const std::string& fragment)
    {
        page().delegate->didChangeLocationWithinPage(*Url::fromString(chapter(1).text() + "#" + fragment));
    }
};

}

TEST_F(AnchorTracking, GoesByTheSeekDivisorToTheChapterStart)
{
    page().page.offsetTop = { { "sec", 1000 } };
    open(3, 1);
    page().page.X = 1600;
    goTo("sec");
    // 1000 × 320 / −148160 is −2.
    EXPECT_EQ(scrolls(), std::vector<std::string> { "window.scrollTo(-1600, 0);" });
    EXPECT_EQ(page().page.X, 0);
    EXPECT_EQ(reader->capacity(), 296320U);
    EXPECT_FLOAT_EQ(reader->readAmount(), static_cast<float>(296320 / (3 * -148160.0)));
    EXPECT_EQ(page().scripts.at(1), "document.body.scrollWidth;");
}

TEST_F(AnchorTracking, ShowsTheNegativeOffsetInTheLabel)
{
    page().page.offsetTop = { { "note", 3300 } };
    open(1);
    page().delegate->didChangeLocationWithinPage(*Url::fromString(chapter(0).text() + "#note"));
    // 3300 × 320 / −148160 is −7, and −7 × 800 / 2400 is −2.33 of a book of one chapter.
    EXPECT_EQ(label(), "-233 %");
    EXPECT_FLOAT_EQ(sliderValue(), -5600.0F / 2400);
}

TEST_F(AnchorTracking, AnElementAtTheTopChangesNothing)
{
    open(3, 1);
    page().page.X = 1600;
    goTo("gone");
    EXPECT_TRUE(scrolls().empty());
    EXPECT_EQ(page().page.X, 1600);
}

TEST_F(AnchorTracking, AFragmentCannotEndItsScript)
{
    open(3, 1);
    goTo("a%27)%5C%0A");
    EXPECT_EQ(page().scripts.at(0), "document.getElementById('a\\x27)\\x5C\\x0A').offsetTop;");
}

TEST_F(AnchorTracking, AContentsLinkOpensItsTarget)
{
    reader->loadSplits(chapters(3), std::vector<ContentsEntry> { { "Two", chapter(1), 1 } });
    page().finishDocument();
    parts->tocView.links.at(0)->mouseDown();
    EXPECT_EQ(page().loads.back(), chapter(1));
}

TEST_F(AnchorTracking, TheChapterShownIsLitInTheContents)
{
    reader->loadSplits(chapters(3), std::vector<ContentsEntry> { { "One", chapter(0), 1 }, { "Two", chapter(1), 1 } });
    page().finishDocument();
    EXPECT_TRUE(parts->tocView.links.at(0)->isActive());
    page().page.X = 1600;
    reader->changePage(1);
    page().finishDocument();
    EXPECT_TRUE(parts->tocView.links.at(1)->isActive());
}

TEST_F(AnchorTracking, WhileAnAnchorIsPendingTheHighlightStays)
{
    reader->loadSplits(chapters(3), std::vector<ContentsEntry> { { "One", chapter(0), 1 }, { "Two", chapter(1), 1 } });
    page().finishDocument();
    reader->changeChapter(*Url::fromString("file:///book/chapter1.xhtml%23sec"));
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 1U);
    EXPECT_TRUE(parts->tocView.links.at(0)->isActive());
}

TEST_F(AnchorTracking, ASearchIsOnlyLogged)
{
    reader->searchContent("whale");
    EXPECT_EQ(logged, std::vector<std::string> { "search: whale" });
}

TEST_F(AnchorTracking, AnEmptySearchLogsNothing)
{
    reader->searchContent("");
    EXPECT_TRUE(logged.empty());
}

TEST_F(AnchorTracking, TheSearchFieldTakesTheFocus)
{
    reader->focusSearch();
    EXPECT_EQ(parts->searchField.timesFocused, 1);
}
