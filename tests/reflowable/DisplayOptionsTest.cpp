#include "paging/PageScripts.hpp"
#include "tests/reflowable/ReaderTest.hpp"

using namespace pagora;
using namespace pagora::test;

namespace {

class DisplayOptions : public ReaderTest {
protected:
    void openInTheme(int theme)
    {
        reader->setCurrentColorOption(theme);
        open(4, 1);
    }
};

}

TEST_F(DisplayOptions, ChoosingTheSameThemeDoesNothing)
{
    openInTheme(2);
    parts->colorControl.choose(1);
    EXPECT_TRUE(parts->bgView.fills.empty());
    EXPECT_EQ(page().timesEvaluated(scripts::colors("#FFF", "#000")), 0U);
    EXPECT_EQ(page().loads.size(), 1U);
}

TEST_F(DisplayOptions, TheBooksOwnThemeReloadsTheChapterAtItsPage)
{
    openInTheme(2);
    reader->changePage(1);
    reader->setLastAnchor("sec");
    // The fraction and the place in the page differ, so that the test distinguishes them.
    reader->setReadAmount(0.67F);
    page().scripts.clear();
    parts->colorControl.choose(0);
    EXPECT_EQ(page().loads.size(), 2U);
    EXPECT_EQ(page().loads.back(), chapter(1));
    EXPECT_EQ(reader->lastAnchor(), std::nullopt);
    EXPECT_TRUE(state.restorePositionPending);
    page().finishDocument();
    EXPECT_EQ(scrolls(), (std::vector<std::string> { "window.scrollTo(1600, 0);", "window.scrollTo(800, 0);" }));
    EXPECT_EQ(reader->capacity() / 396800, 2U);
    EXPECT_EQ(parts->bgView.fill, Color::white(1));
}

TEST_F(DisplayOptions, AChapterIsSeenOnceItIsLaidOut)
{
    reader->setActiveSplitIndex(0);
    reader->loadSplits(chapters(2), std::nullopt);
    EXPECT_EQ(page().timesPrepared, 0);
    page().holdsReplies = true;
    page().finishDocument();
    EXPECT_EQ(page().timesPrepared, 0);
    page().replyToAll();
    EXPECT_EQ(page().timesPrepared, 1);
}

TEST_F(DisplayOptions, AnotherThemeColorsThePageWithoutAReload)
{
    openInTheme(1);
    parts->colorControl.choose(2);
    EXPECT_EQ(page().loads.size(), 1U);
    EXPECT_EQ(page().timesEvaluated(scripts::colors("#5F4B32", "#FBF0D9")), 1U);
    EXPECT_EQ(parts->bgView.fills, (std::vector<Color> { { 0.98, 0.94, 0.85, 1 } }));
    EXPECT_EQ(reader->currentColorOption(), 3);
}

TEST_F(DisplayOptions, ThemeNumberZeroMeansTheCurrentTheme)
{
    openInTheme(2);
    EXPECT_STREQ(reader->getCSSColorFor(0), "#FFF");
    EXPECT_STREQ(reader->getCSSBackgroundColorFor(0), "#000");
    EXPECT_EQ(reader->getBackgroundColorFor(0), Color::white(0));
}

TEST_F(DisplayOptions, AnUnknownThemeIsSepiaInScriptsAndWhiteBehindThem)
{
    EXPECT_STREQ(reader->getCSSColorFor(4), "#5F4B32");
    EXPECT_STREQ(reader->getCSSBackgroundColorFor(4), "#FBF0D9");
    EXPECT_EQ(reader->getBackgroundColorFor(4), Color::white(1));
    EXPECT_STREQ(reader->getCSSColorFor(-1), "#5F4B32");
}

TEST_F(DisplayOptions, TheThreeThemesHaveTheirColors)
{
    EXPECT_STREQ(reader->getCSSColorFor(1), "#000");
    EXPECT_STREQ(reader->getCSSBackgroundColorFor(1), "#FFF");
    EXPECT_EQ(reader->getBackgroundColorFor(1), Color::white(1));
    EXPECT_EQ(reader->getBackgroundColorFor(3), (Color { 0.98, 0.94, 0.85, 1 }));
}

TEST_F(DisplayOptions, ThreeColumnsIn800PointsAre146PointsWide)
{
    open(1);
    EXPECT_EQ(parts->columnCount, 2);
    reader->changeWidth();
    EXPECT_EQ(reader->numberOfColumns(), 3);
    EXPECT_EQ(reader->pageWidth(), 146);
    EXPECT_EQ(parts->columnCount, 3);
}

TEST_F(DisplayOptions, AfterThreeColumnsComesOneWithAnExplicitWidth)
{
    reader->setNumberOfColumns(3);
    open(1);
    page().page.X = 400;
    reader->changeWidth();
    EXPECT_EQ(reader->numberOfColumns(), 1);
    ASSERT_GE(page().scripts.size(), 2U);
    EXPECT_EQ(page().scripts[0], "document.body.style.webkitColumnWidth = '760px';");
    EXPECT_EQ(page().scripts[1], scripts::imageWidth(760));
    EXPECT_EQ(page().page.X, 400);
}

TEST_F(DisplayOptions, AResizeOnTheFirstPageStaysThere)
{
    open(2);
    page().resizeTo(1000, 700);
    EXPECT_TRUE(scrolls().empty());
    EXPECT_EQ(reader->pageWidth(), 420);
    EXPECT_EQ(page().scripts.at(0), scripts::relayout(2, 420, 620, 496));
}

TEST_F(DisplayOptions, AResizeGoesToThePageOfTheCapacity)
{
    open(2);
    page().page.X = 800;
    reader->changePage(1);
    page().page.S = 4000;
    // The capacity of 793600 is slightly more than one page of 420 × 620 × 2.
    page().resizeTo(1000, 700);
    EXPECT_EQ(page().page.X, 1000);
    EXPECT_EQ(label(), "12 %");
}

TEST_F(DisplayOptions, OneLayoutServesSeveralSizes)
{
    open(2);
    page().holdsReplies = true;
    page().resizeTo(1000, 700);
    page().resizeTo(1010, 700);
    page().resizeTo(1020, 700);
    page().replyToAll();
    EXPECT_EQ(page().timesEvaluated(scripts::relayout(2, 420, 620, 496)), 1U);
    EXPECT_EQ(page().timesEvaluated(scripts::relayout(2, 430, 620, 496)), 1U);
    EXPECT_EQ(page().timesEvaluated(scripts::relayout(2, 425, 620, 496)), 0U);
}

TEST_F(DisplayOptions, AHiddenPageIsNotLaidOut)
{
    open(2);
    page().hidden = true;
    page().resizeTo(1000, 700);
    EXPECT_TRUE(page().scripts.empty());
}

TEST_F(DisplayOptions, AFontIsSetOnce)
{
    open(1);
    parts->fontMenu.choose("Palatino");
    parts->fontMenu.choose("Palatino");
    EXPECT_EQ(reader->currentFont(), "Palatino");
    EXPECT_EQ(page().timesEvaluated("document.body.style.fontFamily = 'Palatino';"), 1U);
}

TEST_F(DisplayOptions, ATextSizeKeepsTheOffsetInARealWindow)
{
    open(2);
    reader->changePage(1);
    page().scripts.clear();
    parts->fontSizeSlider.moveTo(2);
    EXPECT_EQ(page().textSizeMultiplier, 2);
    EXPECT_EQ(reader->currentFontSize(), 2);
    EXPECT_TRUE(scrolls().empty());
    EXPECT_EQ(reader->capacity(), 396800U);
}

TEST_F(DisplayOptions, TheSameTextSizeDoesNothing)
{
    open(2);
    page().textSizeMultiplier = 0;
    parts->fontSizeSlider.moveTo(reader->currentFontSize());
    EXPECT_EQ(page().textSizeMultiplier, 0);
}

TEST_F(DisplayOptions, ATextSizeMovesThePageWhereTheSeekDivisorIsPositive)
{
    page().rect.height = 80.5;
    open(2);
    // A is 320, B is 2 × (320 − 60) = 520.
    page().page.X = 800;
    reader->changePage(1);
    ASSERT_EQ(reader->capacity(), 640U);
    page().scripts.clear();
    page().answer = [this](const std::string& script) {
        page().page.S = page().textSizeMultiplier == 2 ? 4800 : 2400;
        return page().page.answer(script);
    };
    parts->fontSizeSlider.moveTo(2);
    EXPECT_EQ(reader->capacity(), 1280U);
    EXPECT_EQ(scrolls(), std::vector<std::string> { "window.scrollTo(1600, 0);" });
    EXPECT_FLOAT_EQ(reader->readAmount(), 1280 / (6 * 520.0F));
}
