#pragma once

#include "library_views/ArrayController.hpp"
#include "library_views/LibraryHub.hpp"
#include "library_views/LibrarySelection.hpp"
#include "library_views/LibraryViewSurface.hpp"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace pagora {

// The question before books leave the library.
inline constexpr const char* removeBooksText = "Are You sure to remove epub(s) from library?";

// What the grid's and the list's controllers have in common: books, their selection, and the view that shows them.
// Built by LibraryViews, which owns it. Main thread.
class LibraryViewController : public LibraryViewSurface::Handler {
public:
    LibraryViewController(const char* layout, LibraryViewHost& host, LibrarySelection& selection);
    ~LibraryViewController() override;

    void set_mainController(LibraryHub& hub) { _mainController = &hub; }

    // Asks whether to go on, with the texts that belong to the question; `proceed` runs when the user agrees.
    void processAlert(const std::string& text, std::function<void()> proceed);
    // Takes the selected books out of the library, when the user agrees.
    virtual void removeBooks() = 0;

    ArrayController& books() { return _books; }
    const ArrayController& books() const { return _books; }
    LibraryViewSurface& view() { return *_view; }

protected:
    LibraryHub* _mainController = nullptr;
    LibraryViewHost& _host;
    LibrarySelection& _selection;

    // Disables the read button and hands the books over.
    void remove(const std::vector<BookInfoPtr>& books);

    // Enables the read button and keeps `book`, when there is exactly one selected.
    void setToolbarReadButton(std::size_t selectedBooks, const BookInfoPtr& book);

private:
    ArrayController _books;
    std::unique_ptr<LibraryViewSurface> _view;
};

}
