#include "library_views/LibraryViews.hpp"

#include "tests/support/FakeLibraryHub.hpp"
#include "tests/support/FakeLibraryWindow.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

using Indexes = std::vector<std::size_t>;

class LibraryViewsTest : public testing::Test {
protected:
    static constexpr int grid = 0;
    static constexpr int list = 1;

    LibraryViewsTest() { views.showFirstView(); }

    void showSegment(int segment)
    {
        host.bListControlFake.selected = segment;
        views.bookListMode();
    }
    void fill() { views.refreshBookView(books); }
    std::vector<BookInfoPtr> shownBooks() { return host.shown->books.content(); }

    test::FakeLibraryViewHost host;
    test::FakeLibraryHub hub;
    BookArray books = std::make_shared<const std::vector<BookInfoPtr>>(std::vector<BookInfoPtr> {
        std::make_shared<BookInfo>(), std::make_shared<BookInfo>(), std::make_shared<BookInfo>() });
    LibraryViews views { host, hub, [this] { return books; } };
};

}

TEST_F(LibraryViewsTest, TheFirstViewIsAnEmptyGrid)
{
    EXPECT_EQ(host.shown->layout, "ImageView");
    EXPECT_TRUE(shownBooks().empty());
    EXPECT_EQ(views.activeViewController(), views.imageController());
    EXPECT_EQ(views.currentContentView(), host.shown);
    EXPECT_TRUE(views.imageMode());
    EXPECT_FALSE(host.bListControlFake.hidden);
}

TEST_F(LibraryViewsTest, ARefillShowsTheBooksInCatalogueOrder)
{
    fill();
    EXPECT_EQ(shownBooks(), *books);
}

TEST_F(LibraryViewsTest, TheOtherSegmentShowsTheListOfTheSameBooks)
{
    showSegment(list);
    EXPECT_EQ(host.shown->layout, "TableView");
    EXPECT_EQ(shownBooks(), *books);
    EXPECT_EQ(views.activeViewController(), views.tableController());
    EXPECT_FALSE(views.imageMode());
}

TEST_F(LibraryViewsTest, AnySegmentButTheFirstShowsTheList)
{
    showSegment(2);
    EXPECT_EQ(host.shown->layout, "TableView");
}

TEST_F(LibraryViewsTest, OnlyTheViewThatIsShownLives)
{
    showSegment(list);
    EXPECT_EQ(views.imageController(), nullptr);
    showSegment(grid);
    EXPECT_EQ(views.tableController(), nullptr);
    EXPECT_EQ(views.activeViewController(), views.imageController());
    EXPECT_TRUE(views.imageMode());
}

TEST_F(LibraryViewsTest, EachSwitchBuildsAFreshView)
{
    showSegment(list);
    showSegment(grid);
    EXPECT_EQ(host.loadedLayouts, (std::vector<std::string> { "ImageView", "TableView", "ImageView" }));
    EXPECT_EQ(shownBooks(), *books);
}

TEST_F(LibraryViewsTest, TheSegmentOfTheViewShownChangesNothing)
{
    for (const int segment : { grid, list }) {
        showSegment(segment);
        fill();
        host.shown->select({ 1 });
        const auto* shown = host.shown;
        showSegment(segment);
        EXPECT_EQ(host.shown, shown);
        EXPECT_EQ(host.shown->books.selectionIndexes(), Indexes { 1 });
        EXPECT_TRUE(host.readerButtonFake.enabled);
    }
}

TEST_F(LibraryViewsTest, SwitchingDisablesTheReadButton)
{
    fill();
    for (const int segment : { list, grid }) {
        host.shown->select({ 1 });
        ASSERT_TRUE(host.readerButtonFake.enabled);
        showSegment(segment);
        EXPECT_FALSE(host.readerButtonFake.enabled);
    }
}

TEST_F(LibraryViewsTest, SwitchingDoesNotCarryTheSelectionOver)
{
    fill();
    host.shown->select({ 1 });
    showSegment(list);
    EXPECT_TRUE(host.shown->books.selectionIndexes().empty());
}

TEST_F(LibraryViewsTest, ANewViewHasTheFocus)
{
    showSegment(list);
    EXPECT_EQ(host.shown->timesFocused, 1);
    showSegment(grid);
    EXPECT_EQ(host.shown->timesFocused, 1);
}

TEST_F(LibraryViewsTest, ARefillClearsTheSelection)
{
    for (const int segment : { grid, list }) {
        showSegment(segment);
        fill();
        host.shown->select({ 0, 2 });
        fill();
        EXPECT_TRUE(host.shown->books.selectionIndexes().empty());
    }
}

TEST_F(LibraryViewsTest, ARefillLeavesNoBookToRead)
{
    for (const int segment : { grid, list }) {
        showSegment(segment);
        fill();
        host.shown->select({ 2 });
        fill();
        EXPECT_FALSE(host.readerButtonFake.enabled);
        EXPECT_EQ(views.selection().selectedBook, nullptr);
    }
}

TEST_F(LibraryViewsTest, ARefillOfTheGridEndsTheSelectionOfMany)
{
    fill();
    host.shown->select({ 0, 2 });
    fill();
    EXPECT_FALSE(views.imageController()->bookCollectionView().multiSelection());
}

TEST_F(LibraryViewsTest, ARefillWithoutBooksLeavesAnEmptyList)
{
    showSegment(list);
    views.refreshBookView(std::make_shared<const std::vector<BookInfoPtr>>());
    EXPECT_TRUE(shownBooks().empty());
}

TEST_F(LibraryViewsTest, ADoubleClickWithNothingSelectedOpensNothing)
{
    for (const int segment : { grid, list }) {
        showSegment(segment);
        fill();
        host.shown->click(2);
    }
    EXPECT_EQ(hub.timesOpened, 0);
}

TEST_F(LibraryViewsTest, ADoubleClickOnASelectedBookOpensIt)
{
    for (const int segment : { grid, list }) {
        showSegment(segment);
        fill();
        host.shown->select({ 1 });
        host.shown->click(1);
        EXPECT_EQ(hub.timesOpened, segment);
        host.shown->click(2);
        EXPECT_EQ(hub.timesOpened, segment + 1);
    }
}

TEST_F(LibraryViewsTest, OneSelectedBookEnablesTheReadButton)
{
    for (const int segment : { grid, list }) {
        showSegment(segment);
        fill();
        host.shown->select({ 2 });
        EXPECT_TRUE(host.readerButtonFake.enabled);
        EXPECT_EQ(views.selection().selectedBook, (*books)[2]);
        host.shown->select({ 0, 2 });
        EXPECT_FALSE(host.readerButtonFake.enabled);
        EXPECT_EQ(views.selection().selectedBook, nullptr);
    }
}

TEST_F(LibraryViewsTest, SelectingAllTakesEveryBookAndTheFocus)
{
    for (const int segment : { grid, list }) {
        showSegment(segment);
        fill();
        const int before = host.shown->timesFocused;
        views.selectAll();
        EXPECT_EQ(host.shown->books.selectedObjects(), *books);
        EXPECT_EQ(host.shown->timesFocused, before + 1);
    }
}

TEST_F(LibraryViewsTest, SelectingAllInTheGridCountsAsManyBooks)
{
    views.selectAll();
    EXPECT_TRUE(views.imageController()->bookCollectionView().multiSelection());
}

TEST_F(LibraryViewsTest, SelectingAllEndsASearch)
{
    fill();
    test::Journal journal;
    host.journal = &journal;
    views.selectAll();
    EXPECT_EQ(journal, test::Journal { "endSearch" });
}

TEST_F(LibraryViewsTest, ARefillEndsNoSearch)
{
    fill();
    EXPECT_EQ(host.timesSearchEnded, 0);
}

TEST(LibraryViews, ALibraryWithoutViewTakesBooksAndSelectionsQuietly)
{
    test::FakeLibraryHub hub;
    test::FakeLibraryViewHost host;
    const auto none = std::make_shared<const std::vector<BookInfoPtr>>();
    LibraryViews views(host, hub, [none] { return none; });
    views.refreshBookView(none);
    views.selectAll();
    EXPECT_EQ(views.activeViewController(), nullptr);
    EXPECT_EQ(host.shown, nullptr);
}

TEST(LibraryViews, TheViewIsTakenOutOfTheWindowBeforeItGoes)
{
    test::FakeLibraryHub hub;
    test::FakeLibraryViewHost host;
    {
        LibraryViews views(host, hub, [] { return BookArray(); });
        views.showFirstView();
        ASSERT_NE(host.shown, nullptr);
    }
    EXPECT_EQ(host.shown, nullptr);
}

}
