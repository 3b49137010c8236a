// Boundary values.

#include "contents/SplitRules.hpp"
#include "paging/PageScripts.hpp"
#include "tests/reflowable/ReaderTest.hpp"

using namespace pagora;
using namespace pagora::test;

namespace {

class Boundaries : public ReaderTest { };

}

TEST_F(Boundaries, AListAsTallAsThePaneTakesTheVisibleHeight)
{
    parts->tocView.rect.height = 40;
    parts->tocView.clip = 300;
    reader->loadSplits(chapters(2), std::vector<ContentsEntry> { { "One", chapter(0), 1 }, { "Two", chapter(1), 1 } });
    EXPECT_EQ(parts->tocView.rect.height, 300);
}

TEST_F(Boundaries, AnActionWaitsTenSecondsForAChapter)
{
    open(3);
    reader->changeChapter(chapter(1));
    EXPECT_EQ(loop.delays.back(), 10);
}

TEST_F(Boundaries, ASecondBookOpensAtItsStartAlsoAfterTheSecondChapter)
{
    open(5, 1);
    reader->loadSplits(chapters(5), std::nullopt);
    EXPECT_EQ(page().loads.back(), chapter(0));
}

TEST_F(Boundaries, EveryChapterHasItsIndexAndTheSliderStartsAtZero)
{
    parts->locSlider.value = 3;
    reader->loadSplits(chapters(2), std::nullopt);
    EXPECT_EQ(reader->splitIndexDict(),
        (std::map<std::string, std::uint64_t> { { "chapter0.xhtml", 0 }, { "chapter1.xhtml", 1 } }));
    EXPECT_EQ(sliderValue(), 0);
}

TEST_F(Boundaries, APageWithoutRoomForTextIsNotStyledAhead)
{
    const auto isStyled = [this](double width, double height) {
        makeReader();
        page().rect = { 0, 0, width, height };
        reader->loadSplits(chapters(1), std::nullopt);
        return !page().starts.back().styleSheet.empty();
    };
    EXPECT_FALSE(isStyled(800, 80));
    EXPECT_TRUE(isStyled(800, 81));
    EXPECT_FALSE(isStyled(160, 700));
    EXPECT_TRUE(isStyled(162, 700));
}

TEST_F(Boundaries, AnAnchorThatIsNoEscapedTextStandsAsItIs)
{
    open(3);
    reader->changeChapter(*Url::fromString("file:///book/chapter2.xhtml%23sec%25zz"));
    EXPECT_EQ(reader->lastAnchor(), "sec%zz");
}

TEST_F(Boundaries, ALocationWithoutAFragmentHasAnEmptyOne)
{
    open(3);
    page().delegate->didChangeLocationWithinPage(chapter(0));
    EXPECT_EQ(page().scripts.at(0), "document.getElementById('').offsetTop;");
}

TEST_F(Boundaries, ATextSizeAtTheChaptersStartScrollsNowhere)
{
    page().rect.height = 80.5;
    open(2);
    parts->fontSizeSlider.moveTo(2);
    EXPECT_TRUE(scrolls().empty());
}

TEST_F(Boundaries, ASlowFlickTurnsBackToo)
{
    open(2);
    page().page.X = 800;
    reader->scrollWheelBegan(0.5);
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(Boundaries, APlaceIsKeptInOneColumn)
{
    reader->setNumberOfColumns(1);
    reader->setPlaceToKeep(0.5);
    open(2);
    page().page.S = 4000;
    page().finishSubresource();
    EXPECT_EQ(page().page.X, 1600);
}

TEST_F(Boundaries, ALabelThatGrowsByOnePointMovesByOne)
{
    open(3);
    parts->locLabel.rect = { 720, 10, 34, 20 };
    parts->locSlider.rect = { 100, 10, 600, 20 };
    parts->locSlider.moveTo(3);
    EXPECT_EQ(parts->locLabel.rect, (Rect { 719, 10, 35, 20 }));
    EXPECT_EQ(parts->locSlider.rect.width, 599);
}

TEST_F(Boundaries, OnePointIsSnappedToTheStart)
{
    EXPECT_EQ((PageGeometry { 800, 700, 2, 320 }).adjustOffset(1), 0);
}

TEST_F(Boundaries, AStripThatIsShorterThanTheViewHasItsPlaceAtTheStart)
{
    EXPECT_EQ((PageGeometry { 800, 700, 2, 320 }).offsetAround(0.9, 700), 0);
}

TEST_F(Boundaries, AQuotationMarkInAnAnchorIsEscaped)
{
    EXPECT_EQ(scripts::setHash("a\"b"), "window.location.hash = \"#a\\x22b\";");
}

TEST_F(Boundaries, TheStyleSheetOfAThemeSaysItsColors)
{
    scripts::Layout layout { "#5F4B32", "#FBF0D9", "Georgia", 320, 620, 496 };
    EXPECT_EQ(scripts::styleSheet(layout, 2),
        "*{background:none!important;color:#5F4B32!important;}"
        "body{column-gap:40px!important;margin:0!important;padding:40px 20px!important;overflow:hidden!important;"
        "column-width:auto!important;column-count:2!important;height:620px!important;font-family:Georgia!important;"
        "color:#5F4B32!important;background-color:#FBF0D9!important;}"
        "img{float:left!important;height:auto!important;max-width:min(320px,100%)!important;max-height:496px!"
        "important}");
}

TEST_F(Boundaries, AContentsPaneOfJustHalfTheWindowKeepsItsWidth)
{
    FakeSplitView view;
    SplitRules rules(view, SplitRules::FollowDivider::No, [] {});
    view.rect = { 0, 0, 1001, 500 };
    view.frames = { { 0, 0, 500, 500 }, { 501, 0, 1501, 500 } };
    rules.resizeSubviewsWithOldSize({ 2002, 500 });
    EXPECT_EQ(view.frames[0].width, 500);
    rules.toggleLeftView();
    EXPECT_EQ(view.frames[1].x, 0);
    EXPECT_EQ(view.frames[1].width, 1001);
}
