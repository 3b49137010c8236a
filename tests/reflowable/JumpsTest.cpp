// Jumps to exact places, and returning from them.

#include "tests/reflowable/ReaderTest.hpp"

using namespace pagora;
using namespace pagora::test;

namespace {

class JumpsTest : public ReaderTest {
protected:
    JumpsTest()
    {
        page().answer = [this](const std::string& script) {
            return script.starts_with("pagoraFind.offset") ? offset : page().page.answer(script);
        };
    }
    void goTo(std::size_t split, PlaceInChapter place) { reader->goTo({ chapter(split), std::move(place) }); }

    // The offset of a text according to the page.
    std::string offset = "1600";
};

}

TEST_F(JumpsTest, ShowThePageOfATextInTheChapterThatIsShown)
{
    open(3, 1);
    goTo(1, TextInChapter { 3, 5, "it's" });
    EXPECT_EQ(page().timesEvaluated("pagoraFind.offsetOfText([3,5,'it\\x27s'])"), 1u);
    EXPECT_EQ(page().page.X, 1600);
    EXPECT_EQ(page().loads.size(), 1u);
    EXPECT_EQ(label(), "55 %");
}

TEST_F(JumpsTest, LoadTheChapterAndShowThePage)
{
    open(3);
    goTo(2, ElementInChapter { "note" });
    ASSERT_EQ(page().loads.back(), chapter(2));
    page().finishDocument();
    EXPECT_EQ(page().page.X, 1600);
    EXPECT_EQ(reader->activeSplitIndex(), 2u);
    EXPECT_FLOAT_EQ(reader->readAmount(), 2.f / 3);
}

TEST_F(JumpsTest, ShowThePageAgainWhenPicturesThatComeLateMoveIt)
{
    open(3);
    goTo(2, ElementInChapter { "note" });
    page().finishDocument(true);
    page().page.S = 4000;
    offset = "2400";
    page().finishSubresource();
    EXPECT_EQ(page().page.X, 2400);
}

TEST_F(JumpsTest, LetThePersonTurnAfterwards)
{
    open(3, 1);
    goTo(1, ElementInChapter { "note" });
    reader->changePage(0);
    page().finishSubresource();
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(JumpsTest, StayWhereThePageHasNoSuchText)
{
    open(3, 1);
    offset = "-1";
    goTo(1, TextInChapter { 3, 5, "gone" });
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(JumpsTest, GoToThePageThatHoldsAShareOfTheChapter)
{
    open(3, 1);
    goTo(1, ShareOfChapter { 0.3 });
    EXPECT_EQ(page().page.X, 800);
    goTo(1, ShareOfChapter { 1 });
    EXPECT_EQ(page().page.X, 1600);
    goTo(1, PageOfChapter { 2 });
    EXPECT_EQ(page().page.X, 800);
    goTo(1, PageOfChapter { 99 });
    EXPECT_EQ(page().page.X, 1600);
    goTo(1, PageOfChapter { -4 });
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(JumpsTest, BackShowsThePageThatTheContentsHaveLeft)
{
    open(3);
    reader->changePage(1);
    EXPECT_FALSE(parts->canGoBack);
    reader->changeChapter(chapter(2));
    page().finishDocument();
    EXPECT_TRUE(parts->canGoBack);
    reader->goBack();
    ASSERT_EQ(page().loads.back(), chapter(0));
    page().finishDocument();
    EXPECT_EQ(page().page.X, 800);
    EXPECT_FALSE(parts->canGoBack);
    EXPECT_TRUE(parts->canGoForward);
    reader->goForward();
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 2u);
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(JumpsTest, BackShowsThePageThatALinkHasLeft)
{
    open(3);
    reader->changePage(1);
    page().delegate->pageFollowsLink();
    page().loadRequest(chapter(1));
    page().finishDocument();
    reader->goBack();
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 0u);
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(JumpsTest, BackShowsThePageThatALinkToTheWebHasLeft)
{
    open(3, 1);
    reader->changePage(1);
    page().delegate->pageFollowsLink();
    page().loadRequest(*Url::fromString("https://example.org/a"));
    page().finishDocument();
    reader->goBack();
    EXPECT_EQ(page().loads.back(), chapter(1));
    page().finishDocument();
    EXPECT_EQ(page().page.X, 800);
    EXPECT_FALSE(parts->canGoForward);
}

TEST_F(JumpsTest, AWayOfTheSliderIsOneJump)
{
    open(4);
    for (const float value : { 1.f, 2.f, 3.f }) {
        parts->locSlider.value = value;
        reader->changePage(value, EventType::LeftMouseDragged);
        page().finishDocument();
    }
    reader->goBack();
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 0u);
    EXPECT_FALSE(parts->canGoBack);
}

TEST_F(JumpsTest, BackKeepsTheMiddleOfThePageWhereTheTextHasAnotherLength)
{
    open(3);
    page().page.S = 8000;
    page().page.scrollTo(4000);
    reader->changePage(1);
    ASSERT_EQ(page().page.X, 4800);
    reader->changeChapter(chapter(1));
    page().finishDocument();
    page().page.S = 4000;
    reader->goBack();
    page().finishDocument();
    EXPECT_EQ(page().page.X, 2400);
}

TEST_F(JumpsTest, ATurnIsNoJump)
{
    open(3);
    reader->changePage(1);
    reader->goToLastPage();
    reader->changePage(1);
    page().finishDocument();
    EXPECT_FALSE(parts->canGoBack);
    reader->goBack();
    EXPECT_EQ(reader->activeSplitIndex(), 1u);
}

TEST_F(JumpsTest, AnotherBookBeginsWithoutAWayBack)
{
    open(3);
    reader->changeChapter(chapter(2));
    page().finishDocument();
    open(2);
    EXPECT_FALSE(parts->canGoBack);
}

TEST_F(JumpsTest, AChapterIsPaintedOnceItIsLaidOut)
{
    reader->setChapterScript([](std::uint64_t split) { return "paint " + std::to_string(split); });
    open(3, 1);
    reader->changeChapter(chapter(2));
    page().finishDocument();
    EXPECT_EQ(page().timesEvaluated("paint 2"), 1u);
}

TEST_F(JumpsTest, GoToAPercentageOfTheBook)
{
    open(4);
    reader->goToPercentage(60);
    ASSERT_EQ(page().loads.back(), chapter(2));
    page().page.S = 8000;
    page().finishDocument();
    EXPECT_EQ(page().page.X, 3200);
    EXPECT_EQ(label(), "60 %");
    reader->goToPercentage(0);
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 0u);
    EXPECT_EQ(label(), "0 %");
    reader->goToPercentage(100);
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 3u);
    EXPECT_EQ(page().page.X, 7200);
    EXPECT_EQ(label(), "100 %");
    EXPECT_TRUE(parts->canGoBack);
}

TEST_F(JumpsTest, GoToAPageOfTheChapter)
{
    open(3, 1);
    reader->goToPage(3);
    EXPECT_EQ(page().page.X, 1600);
    EXPECT_EQ(page().loads.size(), 1u);
}

TEST_F(JumpsTest, GoToAPageOfThePrintedEdition)
{
    open(3);
    reader->setPrintedPages({ *Url::fromString("file:///book/chapter2.xhtml#p7"), chapter(1) });
    reader->goToPrintedPage(0);
    ASSERT_EQ(page().loads.back(), chapter(2));
    page().finishDocument();
    EXPECT_EQ(page().timesEvaluated("pagoraFind.offsetOfElement('p7')"), 1u);
    EXPECT_EQ(page().page.X, 1600);
    reader->goToPrintedPage(1);
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 1u);
    reader->goToPrintedPage(2);
    EXPECT_EQ(reader->activeSplitIndex(), 1u);
}
