#pragma once

#include "library_views/ArrayController.hpp"
#include "library_views/BookMenu.hpp"
#include "library_views/LibraryHub.hpp"
#include "library_views/LibrarySelection.hpp"
#include "library_views/LibraryViewSurface.hpp"

#include <functional>
#include <string>
#include <vector>

namespace pagora {

// The common part of the grid (MyCollectionView) and the list (MyTableView): context menus, confirmation before
// removal, and the read button. Owned by its controller. Main thread only.
class LibraryBookView : public LibraryViewSurface::Handler {
public:
    LibraryBookView(
        LibraryViewHost& host, LibrarySelection& selection, ArrayController& books, LibraryViewSurface& surface);

    void set_mainController(LibraryHub& hub) { _mainController = &hub; }

    // The menus for one book and for several.
    const BookMenu& popupMenu() const { return _popupMenu; }
    const BookMenu& removeMenu() const { return _removeMenu; }

    // Shows the question in an alert; the second button calls `proceed`. `forBook` is not shown.
    void processAlert(const std::string& text, const BookInfoPtr& forBook, std::function<void()> proceed);

    void sendBookForReading();
    void showFileInFinder();
    void moveToTrash();
    void removeItem();
    // Removes the selected books from the library after a confirmation.
    virtual void removeBooks() = 0;
    // Enables the read button and stores the selected book when exactly one is selected.
    virtual void setToolbarReadButton() = 0;

    // Called after the view was refilled, which clears the selection.
    void setNoBookSelected() { setToolbarReadButton(nullptr); }

    bool multiSelection() const { return _multiSelection; }
    void setMultiSelection(bool multiSelection) { _multiSelection = multiSelection; }

protected:
    void setToolbarReadButton(const BookInfoPtr& onlyBook);
    void askToRemove(std::vector<BookInfoPtr> books);
    void popUp(const BookMenu& menu) { _surface.popUpContextMenu(menu); }

    LibraryHub* _mainController = nullptr;
    LibrarySelection& _selection;
    ArrayController& _books;

private:
    void askAndTrash(const std::string& text);

    LibraryViewHost& _host;
    LibraryViewSurface& _surface;
    BookMenu _popupMenu;
    BookMenu _removeMenu;
    bool _multiSelection = false;
};

}
