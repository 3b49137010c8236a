#include "library_views/LibraryViews.hpp"
#include "tests/support/FakeLibraryHub.hpp"
#include "tests/support/FakeLibraryWindow.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

using Indexes = std::vector<std::size_t>;
using Names = std::vector<std::string>;

constexpr int cancel = 1000;
constexpr int goForward = 1001;

const Names oneBookMenu { "Read this book", "Show in Finder", "-", "Move to Trash" };
const Names manyBooksMenu { "Remove epubs from library" };

// Four books; subclasses show them as one of the two views.
class BookActions : public testing::Test {
protected:
    BookActions()
    {
        auto list = std::make_shared<std::vector<BookInfoPtr>>();
        for (const char* name : { "Sea", "Plan", "Tale", "Song" }) {
            list->push_back(std::make_shared<BookInfo>());
            list->back()->setEpubPath("/library/" + std::string(name) + ".epub");
        }
        books = list;
        views.showFirstView();
        views.refreshBookView(books);
    }
    void showList() { views.takeTableView(); }
    auto& shown() { return *host.shown; }
    Indexes selected() { return shown().books.selectionIndexes(); }
    BookInfoPtr selectedBook() { return views.selection().selectedBook; }
    LibraryBookView& view() { return views.activeViewController()->bookView(); }
    auto& question() { return host.questions.back(); }

    test::FakeLibraryViewHost host;
    test::FakeLibraryHub hub;
    BookArray books;
    LibraryViews views { host, hub, [this] { return books; } };
};

using Grid = BookActions;

class List : public BookActions {
protected:
    List() { showList(); }
};

}

TEST_F(Grid, RightClickOnAnItemSelectsItAloneAndShowsTheMenuForOneBook)
{
    shown().select({ 0 });
    shown().rightClick(2);
    EXPECT_EQ(selected(), Indexes { 2 });
    EXPECT_EQ(views.selection().gridSelection, Indexes { 2 });
    EXPECT_EQ(selectedBook(), (*books)[2]);
    EXPECT_TRUE(host.readerButtonFake.enabled);
    EXPECT_EQ(shown().menuTitles(), oneBookMenu);
}

TEST_F(Grid, RightClickWithTwoItemsSelectedShowsTheMenuForManyAndKeepsTheSelection)
{
    shown().select({ 0, 1 });
    shown().rightClick(3);
    EXPECT_EQ(selected(), (Indexes { 0, 1 }));
    EXPECT_EQ(shown().menuTitles(), manyBooksMenu);
}

TEST_F(Grid, RightClickOnTheEmptyPartShowsNothing)
{
    shown().select({ 1 });
    shown().rightClick(std::nullopt);
    EXPECT_TRUE(shown().menus.empty());
    EXPECT_EQ(selected(), Indexes { 1 });
}

TEST_F(Grid, ThreeSelectedBooksDisableTheReadButtonAndLeaveNoSelectedBook)
{
    shown().select({ 0 });
    shown().select({ 0, 1, 2 });
    EXPECT_FALSE(host.readerButtonFake.enabled);
    EXPECT_EQ(selectedBook(), nullptr);
}

TEST_F(Grid, MultiSelectionFollowsTheNumberOfSelectedBooks)
{
    shown().select({ 0, 1 });
    EXPECT_TRUE(view().multiSelection());
    shown().clickItem(1);
    EXPECT_FALSE(view().multiSelection());
}

TEST_F(Grid, RemovingWithNothingSelectedAsksNothing)
{
    view().removeBooks();
    EXPECT_TRUE(host.questions.empty());
}

TEST_F(Grid, RemovingHandsOverTheSelectedBooksInOrder)
{
    shown().select({ 3, 1 });
    shown().rightClick(1);
    shown().choose("Remove epubs from library");
    EXPECT_EQ(question().text, "Are You sure to remove epub(s) from library?");
    EXPECT_EQ(question().firstButton, "Cancel");
    EXPECT_EQ(question().secondButton, "Remove from library");
    question().answered(goForward);
    EXPECT_EQ(hub.deleted, (std::vector<BookInfoPtr> { (*books)[1], (*books)[3] }));
}

TEST_F(List, RightClickOnARowThatIsNotSelectedSelectsItAlone)
{
    shown().select({ 0, 1 });
    shown().rightClick(3);
    EXPECT_EQ(selected(), Indexes { 3 });
    EXPECT_EQ(selectedBook(), (*books)[3]);
    EXPECT_EQ(shown().menuTitles(), oneBookMenu);
}

TEST_F(List, RightClickInsideASelectionOfSeveralShowsTheMenuForMany)
{
    shown().select({ 0, 1 });
    shown().rightClick(1);
    EXPECT_EQ(selected(), (Indexes { 0, 1 }));
    EXPECT_EQ(shown().menuTitles(), manyBooksMenu);
}

TEST_F(List, RightClickOnTheOnlySelectedRowShowsTheMenuForOneBook)
{
    shown().select({ 2 });
    shown().rightClick(2);
    EXPECT_EQ(shown().menuTitles(), oneBookMenu);
    EXPECT_TRUE(host.readerButtonFake.enabled);
}

TEST_F(List, RightClickBelowTheRowsShowsNothing)
{
    shown().rightClick(std::nullopt);
    EXPECT_TRUE(shown().menus.empty());
}

TEST_F(List, PlainClickStartsANewSelection)
{
    shown().select({ 0, 1 });
    views.tableController()->bookTable().userWillClick();
    EXPECT_TRUE(selected().empty());
}

TEST_F(List, ClickWithControlKeepsTheSelection)
{
    shown().select({ 0, 1 });
    view().setMultiSelection(true);
    views.tableController()->bookTable().userWillClick();
    EXPECT_EQ(selected(), (Indexes { 0, 1 }));
}

TEST_F(List, RemovingAsksWithoutCountingAndTakesTheSelectionOfTheLastClick)
{
    view().removeBooks();
    EXPECT_EQ(question().text, "Are You sure to remove epub(s) from library?");
    question().answered(goForward);
    EXPECT_EQ(hub.timesDeletedMany, 1);
    EXPECT_TRUE(hub.deleted.empty());
    shown().select({ 1 });
    views.refreshBookView(books);
    view().removeBooks();
    question().answered(goForward);
    EXPECT_EQ(hub.deleted, (std::vector<BookInfoPtr> { (*books)[1] }));
}

TEST_F(BookActions, ReadThisBookOpensTheSelectedOne)
{
    for (const bool inList : { false, true }) {
        if (inList)
            showList();
        shown().rightClick(1);
        shown().choose("Read this book");
        EXPECT_EQ(hub.timesOpened, inList ? 2 : 1);
    }
}

TEST_F(BookActions, ShowInFinderRevealsTheArchive)
{
    for (const bool inList : { false, true }) {
        if (inList)
            showList();
        shown().rightClick(2);
        shown().choose("Show in Finder");
    }
    EXPECT_EQ(hub.revealed, (Names { "/library/Tale.epub", "/library/Tale.epub" }));
}

TEST_F(BookActions, MoveToTrashAsksWithItsOwnTexts)
{
    shown().rightClick(0);
    shown().choose("Move to Trash");
    EXPECT_EQ(question().text, "Are You sure to move epub to Trash?");
    EXPECT_EQ(question().firstButton, "Cancel");
    EXPECT_EQ(question().secondButton, "Move to Trash");
}

TEST_F(BookActions, MoveToTrashRemovesTheBookAndItsArchive)
{
    for (const bool inList : { false, true }) {
        if (inList)
            showList();
        shown().rightClick(1);
        shown().choose("Move to Trash");
        question().answered(goForward);
        EXPECT_EQ(hub.deleted.back(), (*books)[1]);
        EXPECT_TRUE(hub.removedFromDisk);
        EXPECT_FALSE(host.readerButtonFake.enabled);
    }
}

TEST_F(BookActions, CancelChangesNothing)
{
    shown().rightClick(1);
    shown().choose("Move to Trash");
    question().answered(cancel);
    EXPECT_TRUE(hub.deleted.empty());
    EXPECT_TRUE(host.readerButtonFake.enabled);
    EXPECT_EQ(selectedBook(), (*books)[1]);
}

TEST_F(BookActions, RemovingOneItemMovesItsArchiveToTheTrashToo)
{
    shown().rightClick(1);
    view().removeItem();
    EXPECT_EQ(question().text, "Are You sure to remove epub from library?");
    EXPECT_EQ(question().secondButton, "Remove from library");
    question().answered(goForward);
    EXPECT_EQ(hub.deleted.back(), (*books)[1]);
    EXPECT_TRUE(hub.removedFromDisk);
}

TEST_F(BookActions, NothingSelectedMeansNothingToTrashOrReveal)
{
    view().moveToTrash();
    view().removeItem();
    view().showFileInFinder();
    EXPECT_TRUE(host.questions.empty());
    EXPECT_TRUE(hub.revealed.empty());
}

}
