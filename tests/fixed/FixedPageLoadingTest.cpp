// Opening of a fixed-layout book, scaling of its pages, and fitting of the window.

#include "tests/fixed/FixedTest.hpp"

using namespace pagora;
using namespace pagora::test;

namespace {

class FixedPageLoading : public FixedTest {
protected:
    FixedPageLoading()
    {
        answers = { { "getWidth()", "600" }, { "getHeight()", "800" }, { "getWidth( 'win' )", "500" },
            { "getHeight( 'win' )", "500" }, { "Xscale", "0.5" } };
        parts->window.rect = { 30, 40, 700, 560 };
    }
};

}

TEST_F(FixedPageLoading, TheWindowIsFittedToTheScaledPage)
{
    open(3);
    EXPECT_EQ(parts->window.animatedTo, (std::vector<Rect> { { 30, 40, 500, 460 } }));
}

TEST_F(FixedPageLoading, TheWindowIsFittedInPointsWhereThePageIsEnlarged)
{
    page().pixel = 1.25;
    open(3);
    EXPECT_EQ(parts->window.animatedTo, (std::vector<Rect> { { 30, 40, 700 - 250, 560 - 125 } }));
}

TEST_F(FixedPageLoading, ABookOpensAtItsFirstPage)
{
    reader->setActiveSplitIndex(6);
    open(10);
    EXPECT_EQ(page().loads, std::vector<Url> { file(1) });
    EXPECT_EQ(label(), "1 of 10");
}

TEST_F(FixedPageLoading, TheNextPageDoesNotFitTheWindowAgain)
{
    open(3);
    reader->changePage(1);
    page().finishDocument();
    EXPECT_EQ(parts->window.animatedTo.size(), 1U);
    EXPECT_EQ(label(), "2 of 3");
}

TEST_F(FixedPageLoading, ALinkToAWebAddressOpensInTheBrowserOnce)
{
    open(1);
    const auto site = *Url::fromString("https://example.org/");
    page().delegate->resourceWillSendRequest(file(1), RequestedBy::Page);
    page().delegate->resourceWillSendRequest(*Url::fromString("data:image/png,x"), RequestedBy::Page);
    page().delegate->resourceWillSendRequest(site, RequestedBy::Page);
    page().delegate->resourceWillSendRequest(site, RequestedBy::Page);
    EXPECT_EQ(hub.opened, std::vector<Url> { site });
}

TEST_F(FixedPageLoading, ThePageGetsItsScriptsInOrder)
{
    open(1);
    EXPECT_EQ(page().scripts,
        (std::vector<std::string> { "/* jquery-1.7.1.min */", "/* rescaling */", "init()", "scale()", "getWidth()",
            "getHeight()", "getWidth( 'win' )", "getHeight( 'win' )", "Xscale" }));
}

TEST_F(FixedPageLoading, AScaledLengthIsCutInSinglePrecision)
{
    answers["getWidth()"] = "10";
    answers["getHeight()"] = "1111";
    answers["Xscale"] = "0.7";
    open(1);
    // 10 × 0.7f is 7 in single precision and less in double precision; 777.7 is truncated.
    EXPECT_EQ(parts->window.rect.width, 700 - (500 - 7));
    EXPECT_EQ(parts->window.rect.height, 560 - (500 - 777));
}

TEST_F(FixedPageLoading, AnotherBookFitsTheWindowAgain)
{
    open(3);
    open(3);
    EXPECT_EQ(parts->window.animatedTo.size(), 2U);
}

TEST_F(FixedPageLoading, WithoutAnswersTheWindowKeepsItsSize)
{
    answers.clear();
    open(1);
    EXPECT_EQ(parts->window.rect, (Rect { 30, 40, 700, 560 }));
}

TEST_F(FixedPageLoading, APageThatIsStillLoadingIsNotScaled)
{
    reader->loadSplits(files(2), std::nullopt);
    page().finishDocument(true);
    EXPECT_TRUE(page().scripts.empty());
    page().finishSubresource(false);
    EXPECT_FALSE(page().scripts.empty());
}

TEST_F(FixedPageLoading, APictureThatNeverAnswersDoesNotKeepThePageAway)
{
    reader->loadSplits(files(2), std::nullopt);
    page().commit();
    page().finishDocument(true);
    EXPECT_TRUE(page().hidden);
    loop.runTimers();
    EXPECT_FALSE(page().hidden);
    EXPECT_EQ(label(), "1 of 2");
}

TEST_F(FixedPageLoading, OnlyAPageThatIsLoadingFor10SecondsIsShownAsItIs)
{
    reader->loadSplits(files(2), std::nullopt);
    page().commit();
    page().finishDocument(true);
    page().finishSubresource(true);
    EXPECT_EQ(loop.delays, (std::vector<double> { 10, 10 }));
    EXPECT_TRUE(page().scripts.empty());
}

TEST_F(FixedPageLoading, APageThatBeginsIsHiddenUntilItIsScaled)
{
    reader->loadSplits(files(5), std::nullopt);
    page().commit();
    EXPECT_TRUE(page().hidden);
    page().finishDocument();
    EXPECT_FALSE(page().hidden);
    page().loads.push_back(file(4));
    page().commit();
    EXPECT_TRUE(page().hidden);
    page().finishDocument();
    EXPECT_FALSE(page().hidden);
}

TEST_F(FixedPageLoading, APageThatNeverEndsIsShownAfterAWhile)
{
    open(2);
    page().loads.push_back(Url::file("/book/endless.xhtml"));
    page().commit();
    EXPECT_TRUE(page().hidden);
    loop.runTimers();
    EXPECT_FALSE(page().hidden);
}

TEST_F(FixedPageLoading, APageIsScaledOncePerLoad)
{
    open(1);
    page().finishSubresource();
    page().finishFrame();
    EXPECT_EQ(page().timesEvaluated("init()"), 1U);
}

TEST_F(FixedPageLoading, APageIsScaledAgainInAnotherSize)
{
    open(1);
    page().resizeTo(900, 700);
    EXPECT_EQ(page().timesEvaluated("scale()"), 2U);
    EXPECT_EQ(page().timesEvaluated("init()"), 1U);
    EXPECT_EQ(parts->window.animatedTo.size(), 1U);
}

TEST_F(FixedPageLoading, ADividerThatMovesScalesNothing)
{
    open(1);
    page().scripts.clear();
    parts->mainSplitView.frames[0].width = 300;
    page().resizeTo(750, 600);
    EXPECT_TRUE(page().scripts.empty());
    // The next change comes from the window.
    parts->mainSplitView.rect.width = 1200;
    parts->mainSplitView.frames[0].width = 320;
    page().resizeTo(879, 600);
    EXPECT_EQ(page().scripts, std::vector<std::string> { "scale()" });
}

TEST_F(FixedPageLoading, ContentsThatAreHiddenScaleThePage)
{
    open(1);
    page().scripts.clear();
    parts->mainSplitView.hidden[0] = true;
    page().resizeTo(1051, 600);
    EXPECT_EQ(page().scripts, std::vector<std::string> { "scale()" });
}

TEST_F(FixedPageLoading, AReportOfAnEarlierLoadIsDropped)
{
    reader->loadSplits(files(3), std::nullopt);
    const auto stale = page().source();
    page().loads.push_back(file(2));
    page().delegate->resourceDidFinishLoading(stale);
    EXPECT_TRUE(page().scripts.empty());
}

TEST_F(FixedPageLoading, APageReachedByALinkInTheBookSetsTheIndex)
{
    open(5);
    page().loads.push_back(file(4));
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 3U);
    EXPECT_EQ(label(), "4 of 5");
    EXPECT_EQ(parts->locSlider.value, 4);
    page().loads.push_back(Url::file("/book/notes.xhtml"));
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 0U);
}

TEST_F(FixedPageLoading, TheSliderCountsPagesFromOne)
{
    parts->locSlider.hidden = parts->goLeftButton.hidden = parts->goRightButton.hidden = true;
    open(7);
    EXPECT_EQ(parts->locSlider.least, 1);
    EXPECT_EQ(parts->locSlider.most, 7);
    EXPECT_EQ(parts->locSlider.value, 1);
    EXPECT_FALSE(parts->locSlider.hidden || parts->goLeftButton.hidden || parts->goRightButton.hidden);
}

TEST_F(FixedPageLoading, FailuresTypesAndLocationsAreOnlyLogged)
{
    open(1);
    page().failSubresource();
    page().delegate->decidePolicyForMIMEType("text/html");
    page().delegate->didChangeLocationWithinPage(*Url::fromString("file:///a.xhtml#s"));
    EXPECT_EQ(logged,
        (std::vector<std::string> { "fail", "decidePolicyForMIMEType: text/html",
            "didChangeLocationWithinPageForFrame--> URL: file:///a.xhtml#s" }));
}

TEST_F(FixedPageLoading, TheDividerLaysNothingOut)
{
    open(1);
    page().scripts.clear();
    EXPECT_EQ(parts->mainSplitView.delegate->constrainSplitPosition(300, 0), 300);
    EXPECT_TRUE(page().scripts.empty());
}

TEST_F(FixedPageLoading, AnEmptyBookLoadsNothing)
{
    reader->loadSplits({}, std::nullopt);
    reader->changePage(1);
    reader->changePage(0);
    reader->goToLastPage();
    EXPECT_TRUE(page().loads.empty());
}

TEST_F(FixedPageLoading, ClosingWhileAScriptRunsIsSafe)
{
    reader->loadSplits(files(2), std::nullopt);
    endWhileAScriptRuns(reader);
    EXPECT_EQ(page().scripts.size(), 2U);
}

TEST_F(FixedPageLoading, AWindowThatOutlivesItsReaderIsQuiet)
{
    open(2, std::vector<ContentsEntry> { { "One", file(1), 1 } });
    reader = nullptr;
    page().scripts.clear();
    EXPECT_TRUE(parts->tocView.links.empty());
    parts->goRightButton.click();
    parts->goLeftButton.click();
    parts->locSlider.moveTo(2);
    page().finishDocument();
    loop.runTimers();
    EXPECT_TRUE(page().scripts.empty());
    EXPECT_EQ(page().loads.size(), 1U);
}
