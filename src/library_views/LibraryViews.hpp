#pragma once

#include "library_views/ImageViewController.hpp"
#include "library_views/TableViewController.hpp"

#include <functional>
#include <memory>

namespace pagora {

// The grid and the list. Only one exists at a time; switching builds the other. Main thread only.
class LibraryViews {
public:
    // `bookList` returns the books for a new view.
    LibraryViews(LibraryViewHost& host, LibraryHub& hub, std::function<BookArray()> bookList);
    ~LibraryViews();

    // Creates the grid, empty, as the first view.
    void showFirstView();

    void takeImageView();
    void takeTableView();
    // Shows the view that the two-segment switch selects.
    void bookListMode();
    // Refills the view that is shown.
    void refreshBookView(BookArray books);
    // Ends a search, selects all books of the shown view and gives it the focus.
    void selectAll();

    ImageViewController* imageController() { return _imageController.get(); }
    TableViewController* tableController() { return _tableController.get(); }
    // The controller of the view that is shown; null before the first.
    LibraryViewController* activeViewController() { return _activeViewController; }
    // Returns the view that is in the window.
    LibraryViewSurface* currentContentView() { return _currentContentView; }
    // Returns whether the grid is shown.
    bool imageMode() const { return _imageMode; }
    LibrarySelection& selection() { return _selection; }

private:
    template <typename Controller>
    Controller& show(std::unique_ptr<Controller>& controller);

    LibraryViewHost& _host;
    LibraryHub& _mainController;
    std::function<BookArray()> _bookList;
    LibrarySelection _selection;
    std::unique_ptr<ImageViewController> _imageController;
    std::unique_ptr<TableViewController> _tableController;
    LibraryViewController* _activeViewController = nullptr;
    LibraryViewSurface* _currentContentView = nullptr;
    bool _imageMode = true;
};

}
