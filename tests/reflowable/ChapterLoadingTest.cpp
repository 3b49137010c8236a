// Loading and preparation of chapters.

#include "paging/PageScripts.hpp"
#include "tests/reflowable/ReaderTest.hpp"

using namespace pagora;
using namespace pagora::test;

namespace {

class ChapterLoading : public ReaderTest { };

std::string scriptOf(std::int64_t offset)
{
    return scripts::scrollTo(offset);
}

}

TEST_F(ChapterLoading, ASavedFractionIsRestoredToItsPage)
{
    reader->setReadAmount(0.5F);
    open(10);
    EXPECT_EQ(reader->capacity(), 595200U);
    EXPECT_EQ(page().page.X, 800);
    EXPECT_FALSE(state.restorePositionPending);
}

TEST_F(ChapterLoading, ARestoreShowsTheRestoredPlaceAndThenTheChapterStart)
{
    reader->setReadAmount(0.5F);
    open(10, 3);
    // (3 + 800 / 2400) / 10, then 3 / 10.
    EXPECT_EQ(parts->locLabel.texts, (std::vector<std::string> { "0 %", "33 %", "30 %" }));
    EXPECT_EQ(sliderValue(), 3);
}

TEST_F(ChapterLoading, ARestoreLeavesTheDraggedSliderAtTheRestoredPlace)
{
    open(10, 3);
    parts->locSlider.moveTo(10, EventType::LeftMouseDragged);
    state.restorePositionPending = true;
    reader->setReadAmount(0.5F);
    page().finishSubresource();
    EXPECT_EQ(label(), "33 %");
}

TEST_F(ChapterLoading, ALargeNegativeFractionWrapsToAPageBeyondTheChapter)
{
    reader->setReadAmount(-2.0e13F);
    open(10);
    const auto capacity = static_cast<std::uint64_t>(static_cast<std::int64_t>(396800 * 3.0 * -2.0e13F));
    EXPECT_EQ(reader->capacity(), capacity);
    EXPECT_EQ(page().page.X, 1600);
}

TEST_F(ChapterLoading, TheSameFileNameInTwoFoldersMeansTheLaterChapter)
{
    reader->loadSplits({ Url::file("/book/a/x.xhtml"), Url::file("/book/b/x.xhtml") }, std::nullopt);
    page().finishDocument();
    EXPECT_EQ(reader->splitIndexDict(), (std::map<std::string, std::uint64_t> { { "x.xhtml", 1 } }));
    EXPECT_EQ(reader->activeSplitIndex(), 1U);
}

TEST_F(ChapterLoading, AFileThatIsNoChapterCountsAsTheFirst)
{
    open(3, 2);
    reader->changeChapter(Url::file("/book/notes.xhtml"));
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 0U);
}

TEST_F(ChapterLoading, OneColumnHasAnExplicitWidth)
{
    reader->setNumberOfColumns(1);
    reader->loadSplits(chapters(1), std::nullopt);
    page().finishDocument();
    EXPECT_EQ(page().timesEvaluated("document.body.style.webkitColumnWidth = '760px';"), 1U);
}

TEST_F(ChapterLoading, TwoAndThreeColumnsHaveACount)
{
    for (const int columns : { 2, 3 }) {
        reader->setNumberOfColumns(columns);
        open(1);
        page().finishSubresource();
        EXPECT_EQ(page().timesEvaluated(scripts::columns(columns, 0)), 1U);
    }
}

TEST_F(ChapterLoading, TheBooksOwnThemeGetsNoColorRule)
{
    reader->setCurrentColorOption(1);
    reader->loadSplits(chapters(1), std::nullopt);
    page().finishDocument();
    for (const auto& script : page().scripts)
        EXPECT_EQ(script.find("olor"), std::string::npos) << script;
}

TEST_F(ChapterLoading, EveryReportOfAPageWithThreeImagesSetsTheHashAgain)
{
    open(2);
    reader->setLastAnchor("sec");
    for (int i = 0; i < 4; ++i)
        page().finishSubresource();
    EXPECT_EQ(page().timesEvaluated("window.location.hash = \"#sec\";"), 4U);
    EXPECT_EQ(page().timesEvaluated(scripts::columns(2, 320)), 4U);
}

TEST_F(ChapterLoading, APreparationEvaluatesItsScriptsInOrder)
{
    open(3, 1);
    reader->setLastAnchor("sec");
    reader->setCurrentColorOption(3);
    page().scripts.clear();
    page().finishSubresource();
    scripts::Layout layout { "#5F4B32", "#FBF0D9", "Georgia", 320, 620, 496 };
    const std::vector<std::string> preparation {
        "window.location.hash = \"#sec\";",
        scripts::columns(2, 320),
        scripts::layout(layout),
        "document.body.scrollWidth;",
        "document.body.scrollWidth",
    };
    ASSERT_GE(page().scripts.size(), preparation.size());
    page().scripts.resize(preparation.size());
    EXPECT_EQ(page().scripts, preparation);
}

TEST_F(ChapterLoading, ARestoreEvaluatesItsScrollBetweenReadingTheWidthAndTheLocation)
{
    reader->setReadAmount(0.5F);
    reader->loadSplits(chapters(3), std::nullopt);
    page().finishDocument();
    page().scripts.erase(page().scripts.begin(), page().scripts.begin() + 2);
    page().scripts.resize(4);
    EXPECT_EQ(page().scripts,
        (std::vector<std::string> { "document.body.scrollWidth;", "window.scrollTo(800, 0);",
            "document.body.scrollWidth", "document.body.scrollWidth" }));
}

TEST_F(ChapterLoading, AFragmentOpensThePageOfItsElement)
{
    page().page.offsetTop = { { "sec", 1300 } };
    open(3);
    reader->changeChapter(*Url::fromString(chapter(2).text() + "#sec"));
    page().finishDocument();
    EXPECT_EQ(scrolls(), std::vector<std::string> { scriptOf(800) });
    EXPECT_EQ(reader->capacity(), 396800U);
    EXPECT_FLOAT_EQ(reader->readAmount(), 1.0F / 3);
    EXPECT_EQ(label(), "77 %");
}

TEST_F(ChapterLoading, AFragmentAtTheTopLeavesThePageAtItsStart)
{
    open(3);
    reader->setReadAmount(0.25F);
    reader->changeChapter(*Url::fromString(chapter(2).text() + "#gone"));
    page().finishDocument();
    EXPECT_TRUE(scrolls().empty());
    EXPECT_EQ(reader->capacity(), 0U);
    EXPECT_EQ(reader->readAmount(), 0.25F);
}

TEST_F(ChapterLoading, AnEscapedNumberSignInAPathSplitsOffTheAnchor)
{
    open(3);
    reader->changeChapter(*Url::fromString("file:///book/my%20text.xhtml%23sec%25201"));
    EXPECT_EQ(page().loads.back().text(), "/book/my%20text.xhtml");
    EXPECT_EQ(reader->lastAnchor(), "sec 1");
}

TEST_F(ChapterLoading, ALinkWithAFragmentIsLoadedAsItIs)
{
    open(3);
    reader->setLastAnchor("old");
    state.openAtChapterEnd = true;
    const auto url = *Url::fromString(chapter(1).text() + "#sec");
    reader->changeChapter(url);
    EXPECT_EQ(page().loads.back(), url);
    EXPECT_EQ(reader->lastAnchor(), std::nullopt);
    EXPECT_FALSE(state.openAtChapterEnd);
}

TEST_F(ChapterLoading, AnAnchorIsTrackedBeforeThePlacement)
{
    page().page.offsetTop = { { "sec", 1300 } };
    open(3);
    // The engine reports the new location before it answers the script.
    page().answer = [this](const std::string& script) {
        if (script == "window.location.hash = \"#sec\";")
            page().delegate->didChangeLocationWithinPage(*Url::fromString(page().loads.back().text() + "#sec"));
        return page().page.answer(script);
    };
    reader->changeChapter(*Url::fromString("file:///book/chapter2.xhtml%23sec"));
    page().scripts.clear();
    page().finishDocument();
    // Tracking uses the seek divisor; placement uses the page area.
    EXPECT_EQ(scrolls(), (std::vector<std::string> { scriptOf(-1600), scriptOf(800) }));
    EXPECT_EQ(page().scripts.at(0), "window.location.hash = \"#sec\";");
    EXPECT_EQ(page().scripts.at(1), "document.getElementById('sec').offsetTop;");
    EXPECT_EQ(page().page.X, 800);
    EXPECT_EQ(reader->activeSplitIndex(), 2U);
    EXPECT_EQ(reader->capacity(), 396800U);
}

TEST_F(ChapterLoading, ALoadedChapterIsShown)
{
    page().hidden = true;
    open(1);
    EXPECT_FALSE(page().hidden);
}

TEST_F(ChapterLoading, AReportOfAnEarlierLoadIsDropped)
{
    open(3);
    const auto stale = page().source();
    reader->changeChapter(chapter(2));
    page().scripts.clear();
    page().delegate->resourceDidFinishLoading(stale);
    EXPECT_TRUE(page().scripts.empty());
    EXPECT_EQ(reader->activeSplitIndex(), 0U);
}

TEST_F(ChapterLoading, AFailureOfAnEarlierLoadReleasesNothing)
{
    open(3);
    const auto stale = page().source();
    reader->changeChapter(chapter(2));
    reader->changeChapter(chapter(1));
    page().delegate->resourceDidFailLoading(stale);
    EXPECT_EQ(page().loads.back(), chapter(2));
}

TEST_F(ChapterLoading, ActionsWaitForTheChapterThatIsLoading)
{
    open(3);
    reader->changeChapter(chapter(1));
    reader->changePage(1);
    reader->changeColor();
    EXPECT_EQ(page().page.X, 0);
    page().finishDocument();
    EXPECT_EQ(reader->activeSplitIndex(), 1U);
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(ChapterLoading, AResourceDoesNotReleaseTheActions)
{
    open(3);
    reader->changeChapter(chapter(1));
    reader->changePage(1);
    page().finishSubresource();
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(ChapterLoading, AFailureReleasesTheActions)
{
    open(3);
    reader->changeChapter(Url::file("/book/gone.xhtml"));
    reader->changePage(1);
    page().failDocument();
    EXPECT_EQ(logged, std::vector<std::string> { "fail" });
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(ChapterLoading, AChapterIsOnItsWayUntilItIsThereOrFails)
{
    open(3);
    EXPECT_FALSE(parts->isLoading);
    reader->changeChapter(chapter(1));
    EXPECT_TRUE(parts->isLoading);
    page().finishDocument();
    EXPECT_FALSE(parts->isLoading);
    reader->changeChapter(Url::file("/book/gone.xhtml"));
    EXPECT_TRUE(parts->isLoading);
    page().failDocument();
    EXPECT_FALSE(parts->isLoading);
}

TEST_F(ChapterLoading, AFailedResourceIsOnlyLogged)
{
    open(3);
    reader->changeChapter(chapter(1));
    reader->changePage(1);
    page().failSubresource();
    EXPECT_EQ(logged, std::vector<std::string> { "fail" });
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(ChapterLoading, ActionsDoNotWaitForeverForAChapter)
{
    open(3);
    reader->changeChapter(chapter(1));
    reader->changePage(1);
    loop.runTimers();
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(ChapterLoading, TheTimeoutMayStartTheNextLoad)
{
    open(3);
    reader->changeChapter(chapter(1));
    reader->changeChapter(chapter(2));
    loop.runTimers();
    EXPECT_EQ(page().loads.back(), chapter(2));
}

TEST_F(ChapterLoading, AViewTooLowForTextSkipsThePlacement)
{
    page().rect.height = 80;
    reader->setReadAmount(0.5F);
    open(2);
    EXPECT_TRUE(state.restorePositionPending);
    EXPECT_EQ(page().page.X, 0);
    EXPECT_EQ(label(), "0 %");
}

TEST_F(ChapterLoading, APageThatAnswersNothingReadsAsZero)
{
    page().answer = [](const std::string&) { return std::string(); };
    reader->setReadAmount(0.5F);
    open(2);
    EXPECT_EQ(reader->capacity(), 0U);
    EXPECT_EQ(label(), "0 %");
}

TEST_F(ChapterLoading, ADocumentsTypeIsLogged)
{
    page().delegate->decidePolicyForMIMEType("application/xhtml+xml");
    EXPECT_EQ(logged, std::vector<std::string> { "type: application/xhtml+xml" });
}

TEST_F(ChapterLoading, AnAddressThatLeavesTheBookIsHandedOverOnce)
{
    open(1);
    const auto site = *Url::fromString("https://example.org/");
    page().delegate->resourceWillSendRequest(site, RequestedBy::Page);
    page().delegate->resourceWillSendRequest(site, RequestedBy::Page);
    page().delegate->resourceWillSendRequest(chapter(0), RequestedBy::Page);
    EXPECT_EQ(hub.opened, std::vector<Url> { site });
}

TEST_F(ChapterLoading, ClosingWhileAScriptRunsIsSafe)
{
    reader->loadSplits(chapters(2), std::nullopt);
    endWhileAScriptRuns(reader);
    EXPECT_EQ(page().scripts.size(), 2U);
}

TEST_F(ChapterLoading, AWindowThatOutlivesItsReaderIsQuiet)
{
    reader->loadSplits(chapters(2), std::vector<ContentsEntry> { { "One", chapter(0), 1 } });
    reader = nullptr;
    EXPECT_TRUE(parts->tocView.links.empty());
    EXPECT_EQ(parts->mainSplitView.delegate, nullptr);
    parts->goRightButton.click();
    parts->goLeftButton.click();
    parts->locSlider.moveTo(1);
    parts->fontSizeSlider.moveTo(2);
    parts->colorControl.choose(1);
    parts->fontMenu.choose("Arial");
    page().finishDocument();
    loop.runTimers();
    EXPECT_TRUE(page().scripts.empty());
}

TEST_F(ChapterLoading, APageThatWentElsewhereByItselfIsNotPlaced)
{
    reader->setReadAmount(0.5F);
    reader->loadSplits(chapters(2), std::nullopt);
    page().holdsReplies = true;
    page().finishDocument();
    page().loads.push_back(chapter(1));
    page().replyToAll();
    EXPECT_TRUE(state.restorePositionPending);
    EXPECT_TRUE(scrolls().empty());
}
