// Recovery of the reader after a crash of the engine, when the page is loaded again.

#include "tests/reflowable/ReaderTest.hpp"

using namespace pagora;
using namespace pagora::test;

namespace {

class LostPage : public ReaderTest {
protected:
    // Simulates a crash of the engine; pending scripts return empty texts.
    void lose()
    {
        page().delegate->webProcessDidTerminate();
        page().answer = [](const std::string&) { return ""; };
        page().replyToAll();
        page().answer = [this](const std::string& script) { return page().page.answer(script); };
    }
    void comeBack()
    {
        page().loadRequest(page().loads.back());
        page().finishDocument();
        page().finishFrame();
    }
};

}

TEST_F(LostPage, ComesBackAtThePageThatWasRead)
{
    open(3, 1);
    reader->changePage(1);
    reader->changePage(1);
    ASSERT_EQ(page().page.X, 1600);
    lose();
    comeBack();
    EXPECT_EQ(page().page.X, 1600);
    EXPECT_EQ(reader->activeSplitIndex(), 1U);
    reader->changePage(0);
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(LostPage, ComesBackOftenAtThePageThatWasRead)
{
    open(3, 1);
    reader->changePage(1);
    for (int i = 0; i < 5; ++i) {
        lose();
        comeBack();
        EXPECT_EQ(page().page.X, 800);
    }
}

TEST_F(LostPage, TurnThatItDidNotAnswerLeadsNowhere)
{
    for (const int tag : { 0, 1 }) {
        makeReader();
        open(3, 1);
        page().page.X = 800;
        page().holdsReplies = true;
        reader->changePage(tag);
        const auto loads = page().loads.size();
        lose();
        page().holdsReplies = false;
        EXPECT_EQ(page().loads.size(), loads);
        EXPECT_EQ(reader->activeSplitIndex(), 1U);
        comeBack();
    }
}

TEST_F(LostPage, ActionsWaitUntilItIsBack)
{
    open(3, 1);
    reader->changePage(1);
    lose();
    reader->changePage(1);
    EXPECT_EQ(page().page.X, 800);
    comeBack();
    EXPECT_EQ(page().page.X, 1600);
}

TEST_F(LostPage, ActionsGoOnWhenItFails)
{
    open(3, 1);
    lose();
    page().failDocument();
    reader->changePage(1);
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(LostPage, ChapterThatWasBeingLoadedOpensWhereItWouldHave)
{
    open(3, 1);
    reader->changePage(0);
    ASSERT_EQ(page().loads.back(), chapter(0));
    lose();
    comeBack();
    EXPECT_EQ(page().page.X, 1600);
    EXPECT_EQ(reader->activeSplitIndex(), 0U);
}

TEST_F(LostPage, SavedPlaceOutlivesALossDuringTheOpening)
{
    reader->setReadAmount(0.5F);
    reader->loadSplits(chapters(3), std::nullopt);
    page().holdsReplies = true;
    page().finishDocument();
    lose();
    page().holdsReplies = false;
    EXPECT_FALSE(reader->isSettled());
    comeBack();
    EXPECT_EQ(page().page.X, 800);
    EXPECT_TRUE(reader->isSettled());
}

TEST_F(LostPage, TextSizeChosenWhileItWasLostHolds)
{
    open(3, 1);
    reader->changePage(1);
    page().holdsReplies = true;
    reader->changeFontSize(2);
    lose();
    page().holdsReplies = false;
    comeBack();
    EXPECT_EQ(reader->currentFontSize(), 2);
    EXPECT_EQ(page().textSizeMultiplier, 2);
    EXPECT_EQ(page().page.X, 800);
}

TEST_F(LostPage, SeekThatItDidNotAnswerLeavesThePosition)
{
    open(3, 1);
    reader->changePage(1);
    const auto capacity = reader->capacity();
    page().holdsReplies = true;
    reader->changePage(1.9F, EventType::LeftMouseDown);
    lose();
    page().holdsReplies = false;
    EXPECT_EQ(reader->capacity(), capacity);
    comeBack();
    EXPECT_EQ(page().page.X, 800);
    EXPECT_EQ(state.pendingChapterFraction, 0);
}

TEST_F(LostPage, StepToTheLastPageThatItDidNotAnswerLeavesThePosition)
{
    open(3, 1);
    reader->changePage(1);
    const auto capacity = reader->capacity();
    page().holdsReplies = true;
    reader->goToLastPage();
    lose();
    page().holdsReplies = false;
    EXPECT_EQ(reader->capacity(), capacity);
    comeBack();
    EXPECT_EQ(page().page.X, 800);
}
