#pragma once

#include "library_views/ArrayController.hpp"
#include "library_views/LibraryHub.hpp"
#include "library_views/LibrarySelection.hpp"
#include "library_views/LibraryViewSurface.hpp"

#include <memory>

namespace pagora {

// What the grid's and the list's controllers have in common: books, their selection, and the view that shows them. Built
// by LibraryViews, which owns it. Main thread.
class LibraryViewController : public LibraryViewSurface::Handler {
public:
    LibraryViewController(const char* layout, LibraryViewHost& host, LibrarySelection& selection);
    ~LibraryViewController() override;

    void set_mainController(LibraryHub& hub) { _mainController = &hub; }

    ArrayController& books() { return _books; }
    const ArrayController& books() const { return _books; }
    LibraryViewSurface& view() { return *_view; }

protected:
    LibraryHub* _mainController = nullptr;
    LibraryViewHost& _host;
    LibrarySelection& _selection;

    // Enables the read button and keeps `book`, when there is exactly one selected.
    void setToolbarReadButton(std::size_t selectedBooks, const BookInfoPtr& book);

private:
    ArrayController _books;
    std::unique_ptr<LibraryViewSurface> _view;
};

}
