#include "desktop/gtk/Toplevel.hpp"
#include "library_views/LibraryViews.hpp"
#include "library_window/gtk/LibraryWindowGtk.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/FakeLibraryHub.hpp"

#include <gtkmm/label.h>
#include <gtkmm/menubutton.h>
#include <gtkmm/popover.h>
#include <gtkmm/searchbar.h>

namespace pagora::test {

namespace {

using Titles = std::vector<std::string>;

// The library window with four books by three authors.
class LibrarySearchTest : public ToolkitTest, public FakeLibraryHub {
protected:
    LibrarySearchTest()
    {
        _books = makeBooks(4);
        const std::pair<const char*, const char*> texts[] = { { "Wuthering Heights", "Emily Brontë" },
            { "The Sea", "John Banville" }, { "Agnes Grey", "Anne Brontë" }, { "Villette", "Charlotte Brontë" } };
        for (std::size_t i = 0; i < _books->size(); ++i) {
            (*_books)[i]->setTitle(texts[i].first);
            (*_books)[i]->setAuthor(texts[i].second);
        }
        LibraryWindowActions actions;
        actions.bookListMode = [this] { _views.bookListMode(); };
        actions.booksRead = [this] { return _booksRead; };
        actions.bookToContinue = [this] { return _bookToContinue; };
        actions.continueReading = [this] { ++_timesContinued; };
        _window.setActions(std::move(actions));
        _views.showFirstView();
        refill();
        _window.mainWindow().makeKeyAndOrderFront();
    }

    void refill() { _views.refreshBookView(_books); }
    void search(const char* pattern)
    {
        bar().set_search_mode(true);
        gtk_editable_set_text(GTK_EDITABLE(field().gobj()), pattern);
    }
    // Does what the item of the menu does.
    void order(const char* name)
    {
        auto* const menu = _window.outlet<Gtk::MenuButton>("orderButton")->get_popover();
        EXPECT_TRUE(menu->activate_action("books.order", Glib::Variant<Glib::ustring>::create(name)));
    }
    Gtk::SearchBar& bar() { return *_window.outlet<Gtk::SearchBar>("searchBar"); }
    Gtk::Widget& field() { return *_window.outlet<Gtk::Widget>("searchField"); }
    std::string count() { return _window.outlet<Gtk::Label>("bookCount")->get_text(); }
    BooksSurface& surface() { return *dynamic_cast<BooksSurface*>(_views.currentContentView()); }
    ArrayController& controller() { return _views.activeViewController()->books(); }
    Titles shown()
    {
        Titles titles;
        const auto& books = surface().shownBooks();
        for (std::size_t i = 0; i < books.size(); ++i)
            titles.push_back(books.at(i)->title().value_or(""));
        return titles;
    }
    // Waits until these books are shown in this order.
    testing::AssertionResult comesToShow(const Titles& titles)
    {
        if (waitUntil([&] { return shown() == titles; }, 20))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(shown());
    }

    const Titles _all { "Wuthering Heights", "The Sea", "Agnes Grey", "Villette" };
    const Titles _brontes { "Wuthering Heights", "Agnes Grey", "Villette" };
    std::shared_ptr<std::vector<BookInfoPtr>> _books;
    std::vector<BookInfoPtr> _booksRead;
    BookInfoPtr _bookToContinue;
    int _timesContinued = 0;
    Toplevel _toplevel;
    GLibRunLoop _runLoop;
    LibraryWindowGtk _window { _toplevel, _runLoop };
    LibraryViews _views { _window, *this, [this] { return BookArray(_books); } };
};

}

TEST_F(LibrarySearchTest, ShowsTheBooksThatHaveEveryWordWithoutCaseAndAccents)
{
    search("BRONTE gr");
    EXPECT_TRUE(comesToShow({ "Agnes Grey" }));
    EXPECT_EQ(count(), "1 of 4 books");
}

TEST_F(LibrarySearchTest, LeavesTheArrayAndItsOrderAlone)
{
    search("bronte");
    ASSERT_TRUE(comesToShow(_brontes));
    EXPECT_EQ(controller().content(), *_books);
    EXPECT_EQ(_views.imageController()->eBooks(), *_books);
}

TEST_F(LibrarySearchTest, ShowsAllBooksAgainWhenItEnds)
{
    search("bronte");
    ASSERT_TRUE(comesToShow(_brontes));
    g_signal_emit_by_name(field().gobj(), "stop-search");
    EXPECT_TRUE(comesToShow(_all));
    EXPECT_FALSE(bar().get_search_mode());
    EXPECT_STREQ(gtk_editable_get_text(GTK_EDITABLE(field().gobj())), "");
    EXPECT_EQ(count(), "4 books");
}

TEST_F(LibrarySearchTest, ABookThatIsSelectedIsTheOneOnScreen)
{
    search("bronte");
    ASSERT_TRUE(comesToShow(_brontes));
    surface().selection().select_item(1, true);
    EXPECT_EQ(controller().selectedObjects(), (std::vector<BookInfoPtr> { (*_books)[2] }));
    EXPECT_EQ(_views.selection().selectedBook, (*_books)[2]);
    EXPECT_EQ(_views.selection().gridSelection, (std::vector<std::size_t> { 2 }));
}

TEST_F(LibrarySearchTest, KeepsSelectedBooksThatItShowsAndDeselectsTheOthers)
{
    surface().selection().select_item(1, true);
    surface().selection().select_item(3, false);
    search("bronte");
    ASSERT_TRUE(comesToShow(_brontes));
    EXPECT_EQ(controller().selectedObjects(), (std::vector<BookInfoPtr> { (*_books)[3] }));
    EXPECT_TRUE(surface().selection().is_selected(2));
    EXPECT_EQ(_views.selection().selectedBook, (*_books)[3]);
    EXPECT_TRUE(_window.readerButton().isEnabled());
}

TEST_F(LibrarySearchTest, SurvivesARefill)
{
    search("bronte");
    ASSERT_TRUE(comesToShow(_brontes));
    auto fewer = std::make_shared<std::vector<BookInfoPtr>>(*_books);
    fewer->erase(fewer->begin());
    _books = fewer;
    refill();
    EXPECT_TRUE(comesToShow({ "Agnes Grey", "Villette" }));
    EXPECT_EQ(count(), "2 of 3 books");
}

TEST_F(LibrarySearchTest, BooksOfBeforeARefillCannotBeSelected)
{
    search("bronte");
    ASSERT_TRUE(comesToShow(_brontes));
    _books = std::make_shared<std::vector<BookInfoPtr>>(1, (*_books)[1]);
    refill();
    surface().selection().select_item(2, true);
    EXPECT_TRUE(controller().selectionIndexes().empty());
    EXPECT_TRUE(comesToShow({}));
}

TEST_F(LibrarySearchTest, SurvivesTheChangeToTheList)
{
    search("bronte");
    ASSERT_TRUE(comesToShow(_brontes));
    _views.takeTableView();
    EXPECT_TRUE(comesToShow(_brontes));
    surface().selection().select_item(2, true);
    EXPECT_EQ(_views.selection().listSelection, (std::vector<BookInfoPtr> { (*_books)[3] }));
}

TEST_F(LibrarySearchTest, IsEndedByTheSelectionOfAllBooks)
{
    search("bronte");
    ASSERT_TRUE(comesToShow(_brontes));
    _views.selectAll();
    EXPECT_TRUE(comesToShow(_all));
    EXPECT_EQ(controller().selectedObjects(), *_books);
    EXPECT_TRUE(_views.imageController()->bookCollectionView().multiSelection());
}

TEST_F(LibrarySearchTest, TellsOfASearchWithoutResult)
{
    search("nothing like this");
    EXPECT_TRUE(comesToShow({}));
    EXPECT_TRUE(_window.outlet<Gtk::Widget>("noMatchPage")->get_visible());
    EXPECT_FALSE(_window.outlet<Gtk::Widget>("emptyPage")->get_visible());
    EXPECT_EQ(count(), "0 of 4 books");
    _window.endSearch();
    EXPECT_TRUE(comesToShow(_all));
    EXPECT_FALSE(_window.outlet<Gtk::Widget>("noMatchPage")->get_visible());
}

TEST_F(LibrarySearchTest, TakesPatternsOfAnyKind)
{
    search(std::string(10'000, 'x').c_str());
    EXPECT_TRUE(comesToShow({}));
    search("\u0301\u0308");
    EXPECT_TRUE(comesToShow(_all));
    std::string words;
    while (words.size() < 10'000)
        words += std::to_string(words.size()) + " ";
    search(words.c_str());
    EXPECT_TRUE(comesToShow({}));
}

TEST_F(LibrarySearchTest, LeadsToTheFirstBookThatWasFound)
{
    search("bronte");
    ASSERT_TRUE(comesToShow(_brontes));
    g_signal_emit_by_name(field().gobj(), "activate");
    EXPECT_EQ(controller().selectedObjects(), (std::vector<BookInfoPtr> { (*_books)[0] }));
}

TEST_F(LibrarySearchTest, HasTheKeyboardAtOnce)
{
    ASSERT_TRUE(waitUntil([&] { return surface().widget().get_mapped(); }));
    surface().makeFirstResponder();
    _window.window().activate_action("app.search");
    ASSERT_TRUE(_window.window().get_focus());
    EXPECT_TRUE(_window.window().get_focus()->is_ancestor(field()));
}

TEST_F(LibrarySearchTest, TakesRoomOnlyWhileItIsOpen)
{
    search("bronte");
    ASSERT_TRUE(waitUntil([&] { return bar().get_height() > 20; }));
    _window.endSearch();
    EXPECT_TRUE(waitUntil([&] { return bar().get_height() == 0; }, 20)) << bar().get_height();
}

TEST_F(LibrarySearchTest, LeadsToWhatIsStillLookedFor)
{
    search("sea");
    g_signal_emit_by_name(field().gobj(), "activate");
    ASSERT_TRUE(comesToShow({ "The Sea" }));
    EXPECT_EQ(controller().selectedObjects(), (std::vector<BookInfoPtr> { (*_books)[1] }));
}

TEST_F(LibrarySearchTest, HasNothingToSearchInAnEmptyLibrary)
{
    _books = makeBooks(0);
    refill();
    EXPECT_FALSE(_window.outlet<Gtk::Widget>("searchButton")->get_sensitive());
    EXPECT_TRUE(_window.outlet<Gtk::Widget>("emptyPage")->get_visible());
}

TEST_F(LibrarySearchTest, OrdersTheBooksOnScreenAlone)
{
    order("title");
    EXPECT_TRUE(comesToShow({ "Agnes Grey", "The Sea", "Villette", "Wuthering Heights" }));
    EXPECT_EQ(controller().content(), *_books);
    surface().selection().select_item(0, true);
    EXPECT_EQ(controller().selectedObjects(), (std::vector<BookInfoPtr> { (*_books)[2] }));
    order("as-added");
    EXPECT_TRUE(comesToShow(_all));
    EXPECT_EQ(controller().selectedObjects(), (std::vector<BookInfoPtr> { (*_books)[2] }));
    EXPECT_TRUE(surface().selection().is_selected(2));
}

TEST_F(LibrarySearchTest, OrdersByAuthor)
{
    order("author");
    EXPECT_TRUE(comesToShow({ "Agnes Grey", "Villette", "Wuthering Heights", "The Sea" }));
}

TEST_F(LibrarySearchTest, OrdersByLastReadingWhenTheLibraryComesBack)
{
    _booksRead = { (*_books)[3] };
    order("last-read");
    EXPECT_TRUE(comesToShow({ "Villette", "Wuthering Heights", "The Sea", "Agnes Grey" }));
    _window.mainWindow().orderOut();
    _booksRead = { (*_books)[1], (*_books)[3] };
    _window.mainWindow().makeKeyAndOrderFront();
    EXPECT_TRUE(comesToShow({ "The Sea", "Villette", "Wuthering Heights", "Agnes Grey" }));
}

TEST_F(LibrarySearchTest, ContinueReadingIsThereForABookThatWasRead)
{
    auto& button = *_window.outlet<Gtk::Button>("continueButton");
    EXPECT_FALSE(button.get_visible());
    _window.mainWindow().orderOut();
    _bookToContinue = (*_books)[1];
    _window.mainWindow().makeKeyAndOrderFront();
    EXPECT_TRUE(button.get_visible());
    g_signal_emit_by_name(button.gobj(), "clicked");
    EXPECT_EQ(_timesContinued, 1);
    _bookToContinue = nullptr;
    // The catalogue may be unchanged after a reset.
    refill();
    EXPECT_FALSE(button.get_visible());
}

}
