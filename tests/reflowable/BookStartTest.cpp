// Start of a book in the reader.

#include "tests/reflowable/ReaderTest.hpp"

#include <cmath>

using namespace pagora;
using namespace pagora::test;

namespace {

class BookStart : public ReaderTest { };

}

TEST_F(BookStart, NotANumberAsFractionSetsTheRestore)
{
    reader->setReadAmount(std::nanf(""));
    reader->loadSplits(chapters(1), std::nullopt);
    EXPECT_TRUE(state.restorePositionPending);
    page().finishDocument();
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(BookStart, AFractionOfZeroDoesNotSetTheRestore)
{
    state.restorePositionPending = true;
    reader->loadSplits(chapters(1), std::nullopt);
    EXPECT_FALSE(state.restorePositionPending);
}

TEST_F(BookStart, WithoutContentsThePaneIsEmptyAndReadingWorks)
{
    open(2);
    EXPECT_TRUE(parts->tocView.links.empty());
    EXPECT_EQ(reader->contentsPane().links().size(), 0U);
    reader->changePage(1);
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(BookStart, ABookStartsWithTheReadersDefaults)
{
    parts->colorControl.selected = 1;
    reader->loadSplits(chapters(4), std::nullopt);
    EXPECT_EQ(reader->currentFont(), "Georgia");
    EXPECT_EQ(reader->currentFontSize(), 1.5F);
    EXPECT_EQ(reader->currentColorOption(), 2);
    EXPECT_EQ(reader->numberOfColumns(), 2);
    EXPECT_EQ(reader->pageWidth(), 320);
    EXPECT_EQ(page().textSizeMultiplier, 1.5);
    EXPECT_EQ(parts->fontSizeSlider.value, 1.5F);
}

TEST_F(BookStart, ABookWithoutFilesHasNothingToShow)
{
    window.setLoading(true);
    reader->loadSplits({}, std::nullopt);
    EXPECT_TRUE(parts->hasNothingToShow);
    EXPECT_FALSE(parts->isLoading);
    reader->loadSplits(chapters(1), std::nullopt);
    EXPECT_FALSE(parts->hasNothingToShow);
}

TEST_F(BookStart, ABookStartsWithTheSettingsThatWereGiven)
{
    parts->goLeftButton.hidden = parts->locSlider.hidden = true;
    parts->goRightButton.enabled = false;
    reader->setCurrentFont("Palatino");
    reader->setCurrentColorOption(3);
    reader->setCurrentFontSize(2);
    reader->setNumberOfColumns(3);
    reader->setLastAnchor("old");
    reader->loadSplits(chapters(4), std::nullopt);
    EXPECT_EQ(parts->fontMenu.selected, "Palatino");
    EXPECT_EQ(parts->colorControl.selected, 2);
    EXPECT_EQ(reader->pageWidth(), 146);
    EXPECT_EQ(reader->lastAnchor(), std::nullopt);
    EXPECT_EQ(page().textSizeMultiplier, 2);
    EXPECT_FALSE(parts->goLeftButton.hidden);
    EXPECT_TRUE(parts->goRightButton.enabled);
    EXPECT_FALSE(parts->locSlider.hidden);
    EXPECT_EQ(parts->locSlider.most, 4);
    EXPECT_EQ(label(), "0 %");
}

TEST_F(BookStart, TheFontMenuListsTheClassicFontsAndThenTheSystems)
{
    open(1);
    EXPECT_EQ(parts->fontMenu.items,
        (std::vector<std::string> { "Arial", "Baskerville", "Georgia", "Helvetica", "Palatino", "Times New Roman", "-",
            "Cantarell", "Georgia", "Noto Sans" }));
}

TEST_F(BookStart, AFirstBookOpensAtTheGivenChapter)
{
    open(5, 3);
    EXPECT_EQ(page().loads, std::vector<Url> { chapter(3) });
}

TEST_F(BookStart, ASecondBookInTheSameReaderOpensAtItsStart)
{
    open(5, 3);
    reader->loadSplits(chapters(5), std::nullopt);
    EXPECT_EQ(page().loads.back(), chapter(0));
}

TEST_F(BookStart, AReopenedReaderKeepsTheChapterOnceItsListsAreCleared)
{
    open(5, 3);
    reader->setBookSplits({});
    reader->loadSplits(chapters(5), std::nullopt);
    EXPECT_EQ(page().loads.back(), chapter(3));
}

TEST_F(BookStart, AChapterBeyondTheBookLoadsNothing)
{
    reader->setActiveSplitIndex(7);
    reader->loadSplits(chapters(5), std::nullopt);
    EXPECT_TRUE(page().loads.empty());
}

TEST_F(BookStart, NothingIsOnItsWayInABookWithoutChapters)
{
    parts->isLoading = true;
    reader->loadSplits({}, std::nullopt);
    EXPECT_FALSE(parts->isLoading);
}

TEST_F(BookStart, AChapterIsStyledFromItsBeginningOn)
{
    reader->setCurrentColorOption(2);
    reader->loadSplits(chapters(1), std::nullopt);
    ASSERT_EQ(page().starts.size(), 1U);
    EXPECT_EQ(page().starts.front().columnCount, 2);
    const auto& sheet = page().starts.front().styleSheet;
    const std::vector<std::string> rules { "column-count:2!important", "height:620px!important",
        "max-width:min(320px,100%)!important", "font-family:Georgia!important",
        std::string("color:") + reader->getCSSColorFor(2) + "!important" };
    for (const auto& rule : rules)
        EXPECT_NE(sheet.find(rule), std::string::npos) << rule << " in " << sheet;
}

TEST_F(BookStart, TheBooksLanguageGoesWithEachChapter)
{
    reader->setBookLanguage("pt-BR");
    reader->loadSplits(chapters(2), std::nullopt);
    EXPECT_EQ(page().starts.back().language, "pt-BR");
}

TEST_F(BookStart, AChapterThatOpensAtItsStartIsShownAtOnce)
{
    reader->loadSplits(chapters(2), std::nullopt);
    EXPECT_TRUE(page().starts.back().isShownAtOnce);
    page().finishDocument();
    reader->goToLastPage();
    reader->changePage(1);
    EXPECT_EQ(page().starts.size(), 2U);
    EXPECT_TRUE(page().starts.back().isShownAtOnce);
}

TEST_F(BookStart, AChapterThatOpensElsewhereIsShownOnceItIsThere)
{
    reader->setReadAmount(0.5F);
    reader->setActiveSplitIndex(1);
    reader->loadSplits(chapters(2), std::nullopt);
    EXPECT_FALSE(page().starts.back().isShownAtOnce) << "a restored place";
    page().finishDocument();
    reader->goToFirstPage();
    reader->changePage(0);
    EXPECT_EQ(page().starts.size(), 2U);
    EXPECT_FALSE(page().starts.back().isShownAtOnce) << "the end of the chapter before";
    reader->changeChapter(*Url::fromString("file:///book/chapter0.xhtml#part"));
    EXPECT_FALSE(page().starts.back().isShownAtOnce) << "a fragment";
}
