#include "tests/fixed/FixedTest.hpp"

using namespace pagora;
using namespace pagora::test;

namespace {

class FixedNavigation : public FixedTest {
protected:
    static constexpr int back = 0;
    static constexpr int on = 1;
};

}

TEST_F(FixedNavigation, OnTheLastPageNothingTurnsOn)
{
    openAt(3, 3);
    state.lastSliderValue = 9;
    parts->goRightButton.click();
    reader->scrollWheelBegan(-1);
    reader->changePage(on);
    EXPECT_TRUE(newLoads().empty());
    EXPECT_EQ(state.lastSliderValue, 9);
    EXPECT_FALSE(page().hidden);
}

TEST_F(FixedNavigation, OnTheFirstPageNothingTurnsBack)
{
    openAt(1, 3);
    state.lastSliderValue = 9;
    parts->goLeftButton.click();
    reader->scrollWheelBegan(1);
    EXPECT_TRUE(newLoads().empty());
    EXPECT_EQ(state.lastSliderValue, 9);
}

TEST_F(FixedNavigation, TheSliderLoadsAPageOnce)
{
    openAt(5, 9);
    parts->locSlider.moveTo(5);
    EXPECT_TRUE(newLoads().empty());
    parts->locSlider.moveTo(6);
    EXPECT_EQ(newLoads(), std::vector<Url> { file(6) });
    page().finishDocument();
    parts->locSlider.moveTo(6.4F);
    EXPECT_EQ(newLoads().size(), 1U);
}

TEST_F(FixedNavigation, TheSliderOnThePageShownLoadsNothingAndIsRemembered)
{
    openAt(5, 9);
    state.lastSliderValue = 0;
    parts->locSlider.moveTo(5);
    EXPECT_TRUE(newLoads().empty());
    EXPECT_EQ(state.lastSliderValue, 5);
}

TEST_F(FixedNavigation, AButtonMovesTheRememberedSliderValueAtOnce)
{
    openAt(3, 9);
    parts->goRightButton.click();
    EXPECT_EQ(state.lastSliderValue, 4);
    EXPECT_EQ(reader->activeSplitIndex(), 3U);
    EXPECT_EQ(newLoads(), std::vector<Url> { file(4) });
    EXPECT_EQ(label(), "3 of 9");
    page().finishDocument();
    EXPECT_EQ(label(), "4 of 9");
    parts->locSlider.moveTo(4);
    EXPECT_EQ(newLoads().size(), 1U);
}

TEST_F(FixedNavigation, AnyOtherTagTurnsOn)
{
    openAt(3, 9);
    reader->changePage(3);
    EXPECT_EQ(newLoads(), std::vector<Url> { file(4) });
}

TEST_F(FixedNavigation, AContentsLinkWithAFragmentLightsItsOwnEntry)
{
    const auto target = *Url::fromString(file(2).text() + "#s");
    open(3, std::vector<ContentsEntry> { { "Page", file(2), 1 }, { "Section", target, 2 } });
    parts->tocView.links.at(1)->mouseDown();
    EXPECT_EQ(page().loads.back(), target);
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 1U);
    EXPECT_TRUE(parts->tocView.links.at(1)->isActive());
    EXPECT_FALSE(parts->tocView.links.at(0)->isActive());
}

TEST_F(FixedNavigation, APageLoadedByItsFileLightsTheBareEntry)
{
    const auto target = *Url::fromString(file(2).text() + "#s");
    open(3, std::vector<ContentsEntry> { { "Page", file(2), 1 }, { "Section", target, 2 } });
    reader->changePage(on);
    page().finishDocument();
    EXPECT_TRUE(parts->tocView.links.at(0)->isActive());
    EXPECT_FALSE(parts->tocView.links.at(1)->isActive());
}

TEST_F(FixedNavigation, ClickingTheActiveEntryReloadsItsPage)
{
    open(3, std::vector<ContentsEntry> { { "Page", file(1), 1 } });
    parts->tocView.links.at(0)->mouseDown();
    EXPECT_EQ(page().loads, (std::vector<Url> { file(1), file(1) }));
}

TEST_F(FixedNavigation, ThePageIsHiddenUntilItIsScaled)
{
    openAt(3, 9);
    reader->changePage(back);
    EXPECT_EQ(newLoads(), std::vector<Url> { file(2) });
    EXPECT_TRUE(page().hidden);
    page().finishDocument();
    EXPECT_FALSE(page().hidden);
    EXPECT_EQ(label(), "2 of 9");
}

TEST_F(FixedNavigation, AFlickTurnsOnePage)
{
    openAt(3, 9);
    reader->scrollWheelBegan(0);
    EXPECT_TRUE(newLoads().empty());
    reader->scrollWheelBegan(-2);
    page().finishDocument();
    reader->scrollWheelBegan(2);
    EXPECT_EQ(newLoads(), (std::vector<Url> { file(4), file(3) }));
}

TEST_F(FixedNavigation, ActionsWaitForThePageThatIsLoading)
{
    openAt(3, 9);
    reader->changePage(on);
    reader->changePage(on);
    EXPECT_EQ(newLoads().size(), 1U);
    page().finishDocument();
    EXPECT_EQ(newLoads(), (std::vector<Url> { file(4), file(5) }));
}

TEST_F(FixedNavigation, AMissingPageIsPassedByTheNextTurn)
{
    openAt(3, 9);
    reader->changePage(on);
    reader->changePage(on);
    page().failDocument();
    EXPECT_EQ(logged, std::vector<std::string> { "fail" });
    EXPECT_EQ(newLoads(), (std::vector<Url> { file(4), file(5) }));
}

TEST_F(FixedNavigation, AMissingPageSaysSo)
{
    openAt(3, 9);
    reader->changePage(on);
    page().failDocument();
    EXPECT_TRUE(parts->pageIsMissing);
    EXPECT_TRUE(page().hidden);
    EXPECT_EQ(label(), "4 of 9");
    reader->changePage(on);
    EXPECT_FALSE(parts->pageIsMissing);
    page().finishDocument();
    EXPECT_FALSE(page().hidden);
    EXPECT_EQ(label(), "5 of 9");
}

TEST_F(FixedNavigation, APageIsOnItsWayUntilItIsThereOrFails)
{
    openAt(3, 9);
    EXPECT_FALSE(parts->isLoading);
    reader->changePage(on);
    EXPECT_TRUE(parts->isLoading);
    page().finishDocument();
    EXPECT_FALSE(parts->isLoading);
    reader->changePage(on);
    EXPECT_TRUE(parts->isLoading);
    page().failDocument();
    EXPECT_FALSE(parts->isLoading);
}

TEST_F(FixedNavigation, ALinkToAMissingFileLeavesThePageThere)
{
    openAt(3, 9);
    page().loads.push_back(Url::file("/book/none.xhtml"));
    page().failDocument();
    EXPECT_FALSE(parts->pageIsMissing);
    EXPECT_FALSE(page().hidden);
    EXPECT_EQ(label(), "3 of 9");
}

TEST_F(FixedNavigation, ALinkToAMissingFileLeavesTheFirstPageThere)
{
    open(3);
    page().loads.push_back(Url::file("/book/none.xhtml"));
    page().failDocument();
    EXPECT_FALSE(parts->pageIsMissing);
    EXPECT_FALSE(page().hidden);
}

TEST_F(FixedNavigation, AMissingFirstPageSaysSo)
{
    reader->loadSplits(files(3), std::nullopt);
    ASSERT_FALSE(page().hidden);
    page().failDocument();
    EXPECT_TRUE(parts->pageIsMissing);
    EXPECT_TRUE(page().hidden);
}

TEST_F(FixedNavigation, ASlowFlickTurnsBackToo)
{
    openAt(3, 9);
    reader->scrollWheelBegan(0.5);
    EXPECT_EQ(newLoads(), std::vector<Url> { file(2) });
}

TEST_F(FixedNavigation, TheFirstAndTheLastPageAreRememberedBySlider)
{
    openAt(3, 9);
    reader->goToLastPage();
    EXPECT_EQ(state.lastSliderValue, 9);
    page().finishDocument();
    reader->goToFirstPage();
    EXPECT_EQ(state.lastSliderValue, 1);
}

TEST_F(FixedNavigation, ASecondBookOpensAtItsFirstPageAlsoAfterTheSecond)
{
    openAt(2, 9);
    open(9);
    EXPECT_EQ(page().loads.back(), file(1));
}

TEST_F(FixedNavigation, APageBeyondTheLastLoadsNothing)
{
    openAt(3, 9);
    reader->changePageTo(10);
    reader->changePageTo(0);
    EXPECT_TRUE(newLoads().empty());
    EXPECT_EQ(reader->activeSplitIndex(), 2U);
}

TEST_F(FixedNavigation, TheNextPageIsPreparedInTheDirectionOfReading)
{
    openAt(3, 9);
    EXPECT_EQ(page().prepared.back(), file(4));
    reader->changePage(back);
    page().finishDocument();
    EXPECT_EQ(page().prepared.back(), file(1));
    reader->changePage(back);
    page().finishDocument();
    EXPECT_EQ(page().prepared.back(), file(2));
}

TEST_F(FixedNavigation, NothingIsPreparedAfterTheLastPage)
{
    openAt(3, 3);
    EXPECT_EQ(page().prepared, std::vector<Url> { file(2) });
}

TEST_F(FixedNavigation, ActionsDoNotWaitForeverForAPage)
{
    openAt(3, 9);
    reader->changePage(on);
    reader->changePage(on);
    loop.runTimers();
    EXPECT_EQ(newLoads().size(), 2U);
}

TEST_F(FixedNavigation, ASliderValueOutsideTheBookLoadsNothing)
{
    openAt(3, 9);
    reader->changePageTo(0);
    reader->changePageTo(-5);
    reader->changePageTo(12);
    EXPECT_TRUE(newLoads().empty());
    EXPECT_EQ(reader->activeSplitIndex(), 2U);
}

TEST_F(FixedNavigation, TheFirstAndTheLastPageAreAKeyAway)
{
    openAt(3, 9);
    reader->goToLastPage();
    page().finishDocument();
    reader->goToFirstPage();
    EXPECT_EQ(newLoads(), (std::vector<Url> { file(9), file(1) }));
}

TEST_F(FixedNavigation, AKeyGoesToAPageThatTheSliderHadBefore)
{
    openAt(3, 9);
    state.lastSliderValue = 9;
    reader->goToLastPage();
    EXPECT_EQ(newLoads(), std::vector<Url> { file(9) });
}

TEST_F(FixedNavigation, TheContentsPaneCanBeHidden)
{
    open(1);
    reader->toggleLeftView();
    EXPECT_TRUE(parts->mainSplitView.hidden[0]);
}

TEST_F(FixedNavigation, TheWayBackShowsThePageThatAJumpHasLeft)
{
    openAt(3, 9);
    reader->changeChapter(file(7));
    page().finishDocument();
    EXPECT_TRUE(parts->canGoBack);
    reader->goBack();
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 2u);
    EXPECT_TRUE(parts->canGoForward);
    reader->goForward();
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 6u);
    EXPECT_FALSE(parts->canGoForward);
}

TEST_F(FixedNavigation, TheWayBackShowsThePageThatALinkHasLeft)
{
    openAt(3, 9);
    page().delegate->pageFollowsLink();
    page().loadRequest(file(8));
    page().finishDocument();
    reader->goBack();
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 2u);
}

TEST_F(FixedNavigation, AWayOfTheSliderIsOneJumpAndTurnsAreNone)
{
    open(9);
    reader->changePage(1);
    page().finishDocument();
    EXPECT_FALSE(parts->canGoBack);
    for (const float value : { 3.f, 4.f, 5.f }) {
        reader->changePageTo(value);
        page().finishDocument();
    }
    reader->goBack();
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 1u);
    EXPECT_FALSE(parts->canGoBack);
}
