// Page turns, the location slider and the location display.

#include "tests/reflowable/PagingTest.hpp"

using namespace pagora;
using namespace pagora::test;

TEST_F(Paging, NextPageScrollsOneWidth)
{
    open(10, 3);
    page().page.X = 800;
    reader->changePage(on);
    EXPECT_EQ(scrolls(), std::vector<std::string> { "window.scrollTo(1600, 0);" });
    EXPECT_EQ(reader->capacity(), 793600U);
    EXPECT_FLOAT_EQ(reader->readAmount(), 2.0F / 3);
    EXPECT_EQ(label(), "36 %");
    EXPECT_FLOAT_EQ(sliderValue(), 3 + 1600.0F / 2400);
}

TEST_F(Paging, ThePageOfTheChapterFollowsTheTurns)
{
    open(10, 3);
    EXPECT_EQ(parts->pageOfChapter, 1);
    EXPECT_EQ(parts->pagesOfChapter, 3);
    page().page.X = 800;
    reader->changePage(on);
    EXPECT_EQ(parts->pageOfChapter, 3);
    reader->changePage(back);
    EXPECT_EQ(parts->pageOfChapter, 2);
    EXPECT_EQ(parts->pagesOfChapter, 3);
}

TEST_F(Paging, PastTheLastPageTheNextChapterLoads)
{
    open(10, 3);
    reader->setReadAmount(0.5F);
    reader->setLastAnchor("sec");
    page().page.X = 1600;
    reader->changePage(on);
    EXPECT_EQ(page().loads.back(), chapter(4));
    EXPECT_EQ(reader->readAmount(), 0);
    EXPECT_EQ(reader->lastAnchor(), std::nullopt);
    EXPECT_EQ(reader->activeSplitIndex(), 3U);
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 4U);
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(Paging, PreviousPageSnapsToAColumn)
{
    open(10, 3);
    page().page.X = 1190;
    reader->changePage(back);
    EXPECT_EQ(page().page.X, 400);
    EXPECT_EQ(reader->capacity(), 198400U);
    EXPECT_EQ(label(), "31 %");
}

TEST_F(Paging, PreviousPageRoundsHalfAColumnUp)
{
    open(10, 3);
    page().page.X = 1000;
    reader->changePage(back);
    EXPECT_EQ(page().page.X, 400);
}

TEST_F(Paging, AtTheStartOfTheBookNothingTurnsBack)
{
    open(2);
    reader->changePage(back);
    EXPECT_TRUE(scrolls().empty());
    EXPECT_EQ(page().loads.size(), 1U);
    EXPECT_TRUE(logged.empty());
}

TEST_F(Paging, BackFromAChapterStartOpensTheLastPageOfTheOneBefore)
{
    open(2, 1);
    reader->changePage(back);
    EXPECT_EQ(page().loads.back(), chapter(0));
    EXPECT_TRUE(state.openAtChapterEnd);
    page().finishDocument();
    EXPECT_EQ(page().page.X, 1600);
    EXPECT_EQ(reader->capacity(), 793600U);
    EXPECT_FLOAT_EQ(reader->readAmount(), 2.0F / 3);
    EXPECT_EQ(label(), "33 %");
}

TEST_F(Paging, TheChapterEndStaysWantedUntilTheNextMove)
{
    open(2, 1);
    reader->changePage(back);
    page().finishDocument();
    page().page.S = 3200;
    page().finishSubresource();
    EXPECT_EQ(page().page.X, 2400);
    reader->changePage(back);
    EXPECT_FALSE(state.openAtChapterEnd);
}

TEST_F(Paging, TheLastPageOfTheBookShowsAllOfIt)
{
    open(2, 1);
    page().page.X = 800;
    reader->changePage(on);
    EXPECT_EQ(label(), "100 %");
    EXPECT_EQ(sliderValue(), 2);
}

TEST_F(Paging, OnTheLastPageOfTheBookNothingTurnsOn)
{
    open(2, 1);
    page().page.X = 1600;
    reader->setReadAmount(0.5F);
    state.openAtChapterEnd = true;
    reader->changePage(on);
    EXPECT_TRUE(scrolls().empty());
    EXPECT_TRUE(logged.empty());
    EXPECT_EQ(reader->readAmount(), 0.5F);
    EXPECT_TRUE(state.openAtChapterEnd);
}

TEST_F(Paging, TheSlidersEndShowsTheEndOfTheChapter)
{
    open(3);
    parts->locSlider.moveTo(3);
    EXPECT_EQ(label(), "100 %");
    EXPECT_EQ(page().page.X, 1600);
    EXPECT_EQ(page().loads.size(), 1U);
    EXPECT_EQ(reader->activeSplitIndex(), 0U);
    EXPECT_EQ(state.lastSliderValue, 0);
}

TEST_F(Paging, TheSameSliderValueIsActedOnOnce)
{
    open(3);
    parts->locSlider.moveTo(1.5F);
    page().finishDocument();
    const auto evaluated = page().scripts.size();
    parts->locSlider.moveTo(1.5F);
    EXPECT_EQ(page().scripts.size(), evaluated + 2);
    EXPECT_EQ(page().loads.size(), 2U);
    EXPECT_EQ(state.lastSliderValue, 1.5F);
}

TEST_F(Paging, AWholeSliderValueOpensTheChapterAtItsStart)
{
    open(3);
    parts->locSlider.moveTo(2);
    EXPECT_EQ(page().loads.back(), chapter(2));
    EXPECT_EQ(reader->activeSplitIndex(), 2U);
    page().finishDocument();
    EXPECT_TRUE(scrolls().empty());
    EXPECT_EQ(label(), "66 %");
}

TEST_F(Paging, ASliderFractionWaitsForItsChapter)
{
    open(3);
    parts->locSlider.moveTo(1.25F);
    EXPECT_EQ(state.pendingChapterFraction, 0.25F);
    page().finishDocument();
    EXPECT_EQ(state.pendingChapterFraction, 0);
    EXPECT_EQ(page().page.X, 800);
    EXPECT_EQ(label(), "41 %");
    EXPECT_EQ(sliderValue(), 1.25F);
}

TEST_F(Paging, ASeekInTheChapterShownNeedsNoLoad)
{
    open(3);
    parts->locSlider.moveTo(0.25F);
    EXPECT_EQ(page().loads.size(), 1U);
    EXPECT_EQ(scrolls(), std::vector<std::string> { "window.scrollTo(800, 0);" });
}

TEST_F(Paging, OnlyThePressedOrDraggedSliderCountsAsDragging)
{
    open(3);
    parts->locSlider.moveTo(0.1F, EventType::LeftMouseDown);
    EXPECT_TRUE(reader->dragging());
    parts->locSlider.moveTo(0.2F, EventType::LeftMouseUp);
    EXPECT_FALSE(reader->dragging());
    parts->locSlider.moveTo(0.3F, EventType::LeftMouseDragged);
    EXPECT_TRUE(reader->dragging());
    parts->locSlider.moveTo(0.4F, EventType::KeyDown);
    EXPECT_FALSE(reader->dragging());
}

TEST_F(Paging, ADraggedSliderIsNotMovedByALoad)
{
    open(3);
    parts->locSlider.moveTo(2, EventType::LeftMouseDragged);
    parts->locSlider.value = 1.7F;
    page().finishDocument();
    EXPECT_EQ(sliderValue(), 1.7F);
}

// |B| is 148160; V is 3 times as much.
TEST_F(Paging, ASeekToLessThanOneUnitStaysOnTheFirstPage)
{
    seekTo(0.000001);
    EXPECT_EQ(reader->capacity(), 0U);
    EXPECT_EQ(page().page.X, 0);
    EXPECT_EQ(reader->readAmount(), 0);
}

TEST_F(Paging, ASeekUpToTheDivisorLandsOnTheSecondPage)
{
    seekTo(0.25);
    EXPECT_EQ(reader->capacity(), static_cast<std::uint64_t>(-111120));
    EXPECT_EQ(page().page.X, 800);
    EXPECT_FLOAT_EQ(reader->readAmount(), static_cast<float>(0x1p64 / (-148160.0 * 3)));
}

TEST_F(Paging, ASeekBeyondTheDivisorLandsOnTheFirstPage)
{
    seekTo(0.5);
    EXPECT_EQ(reader->capacity(), static_cast<std::uint64_t>(-222240));
    EXPECT_EQ(scrolls(), std::vector<std::string> { "window.scrollTo(0, 0);" });
    EXPECT_LT(reader->readAmount(), -4.0e13F);
}

TEST_F(Paging, ASeekAtTheDivisorLandsOnTheSecondPage)
{
    page().page.S = 1600;
    seekTo(0.5);
    EXPECT_EQ(reader->capacity(), static_cast<std::uint64_t>(-148160));
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(Paging, AnyOtherTagTurnsOn)
{
    open(3);
    reader->changePage(7);
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(Paging, TheButtonsTurnThePage)
{
    open(3);
    parts->goRightButton.click();
    EXPECT_EQ(page().page.X, 800);
    parts->goLeftButton.click();
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(Paging, AnEmptyPageLeavesTheLocationAlone)
{
    open(3, 1);
    parts->locSlider.value = 1.5F;
    page().answer = [](const std::string& script) { return script == "window.pageXOffset" ? "1600" : ""; };
    page().finishSubresource();
    reader->changePage(back);
    EXPECT_EQ(scrolls(), std::vector<std::string> { "window.scrollTo(800, 0);" });
    EXPECT_EQ(sliderValue(), 1.5F);
}

TEST_F(Paging, TheLabelGrowsIntoTheSlider)
{
    open(3, 1);
    parts->locLabel.rect = { 720, 10, 21, 20 };
    parts->locSlider.rect = { 100, 10, 600, 20 };
    parts->locSlider.moveTo(3);
    // "100 %" is five characters wide.
    EXPECT_EQ(parts->locLabel.rect, (Rect { 706, 10, 35, 20 }));
    EXPECT_EQ(parts->locSlider.rect, (Rect { 100, 10, 586, 20 }));
}

TEST_F(Paging, ALabelOfTheSameWidthMovesNothing)
{
    open(3);
    parts->locLabel.rect = { 720, 10, 35, 20 };
    const auto slider = parts->locSlider.rect;
    parts->locSlider.moveTo(3);
    EXPECT_EQ(parts->locLabel.rect.x, 720);
    EXPECT_EQ(parts->locSlider.rect, slider);
}

TEST_F(Paging, TheFirstAndTheLastPageOfTheChapterAreAKeyAway)
{
    open(3, 1);
    reader->goToLastPage();
    EXPECT_EQ(page().page.X, 1600);
    EXPECT_FLOAT_EQ(reader->readAmount(), 2.0F / 3);
    reader->goToFirstPage();
    EXPECT_EQ(page().page.X, 0);
    EXPECT_EQ(reader->capacity(), 0U);
    EXPECT_EQ(label(), "33 %");
}
