// The stored place of a closed book, and its restoration.

#include "tests/reflowable/ReaderTest.hpp"

using namespace pagora;
using namespace pagora::test;

namespace {

class Place : public ReaderTest {
protected:
    void resize(double width, std::int64_t S)
    {
        page().page.S = S;
        page().rect.width = width;
        page().page.W = static_cast<std::int64_t>(width);
    }

    // Closes the book and opens it again at the stored place.
    void reopen()
    {
        const auto place = reader->lastPlace();
        const auto columns = reader->numberOfColumns();
        makeReader();
        reader->setNumberOfColumns(columns);
        if (place) {
            reader->setReadAmount(static_cast<float>(*place));
            reader->setPlaceToKeep(place);
        }
        open(1);
    }
};

}

TEST_F(Place, IsMissingBeforeAChapterIsShown)
{
    reader->loadSplits(chapters(2), std::nullopt);
    EXPECT_EQ(reader->lastPlace(), std::nullopt);
    page().failDocument();
    reader->changeWidth();
    EXPECT_EQ(reader->lastPlace(), std::nullopt);
}

TEST_F(Place, IsTheStartOnTheFirstPageWhilePicturesAreAwaited)
{
    open(2);
    EXPECT_EQ(reader->lastPlace(), 0);
}

TEST_F(Place, IsTheMiddleOfTheFirstPageOnceAllHasArrived)
{
    open(2);
    page().finishFrame();
    EXPECT_DOUBLE_EQ(*reader->lastPlace(), 400 / 2400.0);
}

TEST_F(Place, IsTheMiddleOfThePageAfterATurn)
{
    open(2);
    reader->changePage(1);
    EXPECT_EQ(reader->lastPlace(), 0.5);
    reader->changePage(1);
    EXPECT_DOUBLE_EQ(*reader->lastPlace(), 2000 / 2400.0);
}

TEST_F(Place, IsTheStartOfAChapterThatIsAwaited)
{
    open(3);
    reader->changePage(1);
    parts->locSlider.moveTo(2);
    EXPECT_EQ(reader->activeSplitIndex(), 2U);
    EXPECT_EQ(reader->lastPlace(), 0);
}

TEST_F(Place, StaysWhileTheNextChapterIsAwaited)
{
    open(3);
    page().page.X = 1600;
    reader->changePage(1);
    page().page.X = 0;
    reader->updateColumns();
    EXPECT_EQ(reader->lastPlace(), 0);
    page().finishDocument(true);
    reader->changePage(1);
    EXPECT_EQ(reader->lastPlace(), 0.5);
}

TEST_F(Place, IsKeptWhenAPictureArrivesLate)
{
    reader->setPlaceToKeep(0.5);
    open(2);
    EXPECT_EQ(page().page.X, 800);
    page().page.S = 4000;
    page().finishSubresource();
    EXPECT_EQ(page().page.X, 1600);
    EXPECT_EQ(reader->lastPlace(), 0.5);
}

TEST_F(Place, IsKeptWhenTheLoadEnds)
{
    reader->setPlaceToKeep(0.5);
    open(2);
    page().page.S = 4000;
    page().finishFrame();
    EXPECT_EQ(page().page.X, 1600);
}

TEST_F(Place, IsKeptInAnotherSize)
{
    reader->setPlaceToKeep(0.5);
    open(2);
    page().page.S = 6000;
    page().resizeTo(600, 700);
    EXPECT_EQ(page().page.X, 2700);
}

TEST_F(Place, IsGivenUpWhenTheUserTurnsThePage)
{
    reader->setPlaceToKeep(0.5);
    open(2);
    reader->changePage(1);
    page().page.S = 4000;
    page().finishSubresource();
    EXPECT_EQ(page().page.X, 1600);
    EXPECT_EQ(reader->lastPlace(), 0.5);
    page().page.S = 8000;
    page().finishFrame();
    EXPECT_EQ(page().page.X, 1600);
}

TEST_F(Place, IsGivenUpWhenTheUserMovesTheSlider)
{
    reader->setPlaceToKeep(0.5);
    open(2);
    parts->locSlider.moveTo(2);
    page().finishFrame();
    EXPECT_EQ(page().page.X, 1600);
}

TEST_F(Place, IsGivenUpWhenALinkIsOpened)
{
    reader->setPlaceToKeep(0.5);
    open(2);
    reader->changeChapter(chapter(1));
    page().finishDocument();
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(Place, IsGivenUpWhenTheUserFollowsAnAnchorInThePage)
{
    page().page.offsetTop = { { "sec", 10 } };
    reader->setPlaceToKeep(0.5);
    open(2);
    page().delegate->didChangeLocationWithinPage(*Url::fromString(chapter(0).text() + "#sec"));
    EXPECT_EQ(page().page.X, 0);
    page().finishFrame();
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(Place, IsNotLostWhenItsChapterDoesNotLoad)
{
    reader->setPlaceToKeep(0.37);
    reader->loadSplits(chapters(2), std::nullopt);
    page().failDocument();
    EXPECT_EQ(reader->lastPlace(), 0.37);
}

TEST_F(Place, IsKeptWhenTheBooksOwnColorsComeBack)
{
    reader->setCurrentColorOption(2);
    open(2);
    reader->changePage(1);
    parts->colorControl.choose(0);
    page().finishDocument();
    EXPECT_EQ(page().page.X, 800);
    page().page.S = 4000;
    page().finishSubresource();
    EXPECT_EQ(page().page.X, 1600);
}

TEST_F(Place, IsTheOneAfterATurnThatWaitedWithTheBooksOwnColors)
{
    reader->setCurrentColorOption(2);
    open(2);
    reader->changePage(1);
    page().holdsReplies = true;
    reader->changePage(1);
    parts->colorControl.choose(0);
    page().replyToAll();
    ASSERT_EQ(page().loads.size(), 2U);
    page().holdsReplies = false;
    page().finishDocument();
    EXPECT_EQ(page().page.X, 1600);
}

TEST_F(Place, IsTheStartAfterATurnBackBeyondIt)
{
    page().page.S = 1200;
    open(1);
    page().finishFrame();
    reader->changePage(1);
    ASSERT_EQ(page().page.X, 400);
    reader->changePage(0);
    EXPECT_EQ(scrolls().back(), "window.scrollTo(-400, 0);");
    EXPECT_GT(reader->readAmount(), 1.0e13F);
    EXPECT_EQ(page().page.X, 0);
    EXPECT_DOUBLE_EQ(*reader->lastPlace(), 400 / 1200.0);
    reopen();
    EXPECT_EQ(page().page.X, 0);
}

TEST_F(Place, DoesNotDriftOverManyReadings)
{
    for (const double W : { 800, 801 }) {
        for (int C = 1; C <= 3; ++C) {
            for (int columns = 2 * C; columns <= 6 * C + 1; ++columns) {
                resize(W, static_cast<std::int64_t>(columns * W / C));
                for (int n = 0; n <= columns - C; ++n) {
                    makeReader();
                    reader->setNumberOfColumns(C);
                    open(1);
                    // Turning a page back from here snaps to the column's start.
                    page().page.X = static_cast<std::int64_t>(n * W / C);
                    reader->updateColumns();
                    const auto X = page().page.X;
                    for (int round = 0; round < 20; ++round) {
                        reopen();
                        ASSERT_EQ(page().page.X, X) << W << " " << C << " " << columns << " " << n << " " << round;
                    }
                }
            }
        }
    }
}

TEST_F(Place, DoesNotDriftWhenThePicturesAreAlwaysLate)
{
    open(1);
    reader->changePage(1);
    for (int round = 0; round < 20; ++round) {
        page().page.S = 1300;
        reopen();
        reopen();
        page().page.S = 2400;
        page().finishSubresource();
        ASSERT_EQ(page().page.X, 800);
    }
}

TEST_F(Place, ComesBackAfterAReadingInAnotherWindow)
{
    open(1);
    reader->changePage(1);
    resize(501, 7000);
    reopen();
    EXPECT_NE(page().page.X, 800);
    resize(800, 2400);
    reopen();
    EXPECT_EQ(page().page.X, 800);
}
