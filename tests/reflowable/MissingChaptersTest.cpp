// Page turns past chapters that cannot be loaded.

#include "tests/reflowable/PagingTest.hpp"

using namespace pagora;
using namespace pagora::test;

TEST_F(Paging, AMissingChapterIsPassedByTheNextTurn)
{
    open(4);
    page().page.X = 1600;
    reader->changePage(on);
    page().failDocument();
    EXPECT_EQ(logged, std::vector<std::string> { "fail" });
    EXPECT_EQ(reader->activeSplitIndex(), 0U);
    reader->changePage(on);
    EXPECT_EQ(page().loads.back(), chapter(2));
}

TEST_F(Paging, AMissingChapterIsPassedBackwardsToo)
{
    open(4, 2);
    reader->changePage(back);
    EXPECT_EQ(page().loads.back(), chapter(1));
    page().failDocument();
    reader->changePage(back);
    EXPECT_EQ(page().loads.back(), chapter(0));
    page().finishDocument();
    EXPECT_EQ(page().page.X, 1600);
}

TEST_F(Paging, MissingChaptersAtTheEndAreTheEndOfTheBook)
{
    open(3);
    page().page.X = 1600;
    reader->changePage(on);
    page().failDocument();
    reader->changePage(on);
    page().failDocument();
    logged.clear();
    reader->changePage(on);
    EXPECT_EQ(logged, std::vector<std::string> { "End of content" });
    EXPECT_EQ(page().loads.size(), 3U);
}

TEST_F(Paging, MissingChaptersAtTheStartAreTheStartOfTheBook)
{
    open(2, 1);
    reader->changePage(back);
    page().failDocument();
    logged.clear();
    reader->changePage(back);
    EXPECT_EQ(logged, std::vector<std::string> { "Start of content" });
}

TEST_F(Paging, AChapterThatLoadsAfterAllIsNotPassedAnyMore)
{
    open(3);
    page().page.X = 1600;
    reader->changePage(on);
    page().failDocument();
    reader->changeChapter(chapter(1));
    page().finishDocument();
    reader->changeChapter(chapter(0));
    page().finishDocument();
    page().page.X = 1600;
    reader->changePage(on);
    EXPECT_EQ(page().loads.back(), chapter(1));
}

TEST_F(Paging, AMissingContentsTargetHidesNoChapter)
{
    open(3);
    reader->changeChapter(Url::file("/book/gone.xhtml"));
    page().failDocument();
    page().page.X = 1600;
    reader->changePage(on);
    EXPECT_EQ(page().loads.back(), chapter(1));
}

TEST_F(Paging, ALinkThatCannotBeShownHidesNoChapter)
{
    open(2, 1);
    reader->changePage(back);
    page().finishDocument();
    page().page.X = 1600;
    reader->changePage(on);
    page().finishDocument();
    // This load is a link in the page, not a request of the reader.
    page().failDocument();
    page().page.X = 0;
    reader->changePage(back);
    EXPECT_EQ(page().loads.back(), chapter(0));
    page().finishDocument();
    page().failDocument();
    page().page.X = 1600;
    reader->changePage(on);
    EXPECT_EQ(page().loads.back(), chapter(1));
}
