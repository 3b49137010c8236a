#pragma once

#include "library_views/ArrayController.hpp"
#include "library_views/LibraryBookView.hpp"
#include "library_views/LibraryHub.hpp"
#include "library_views/LibrarySelection.hpp"
#include "library_views/LibraryViewSurface.hpp"

#include <memory>

namespace pagora {

// What the grid's and the list's controllers have in common: books, their selection, the view that shows them, and the
// files that are dropped on it. Built by LibraryViews, which owns it. Main thread.
class LibraryViewController : public DropDelegate {
public:
    LibraryViewController(const char* layout, LibraryViewHost& host);
    ~LibraryViewController() override;

    void set_mainController(LibraryHub& hub);

    // Refuses files of which none has the extension "epub", and sources that leave the destination no choice.
    DragOperation::Mask validateDrop(const DraggingInfo& drag) override;
    std::string whyRefused(const DraggingInfo& drag) const override;
    bool acceptDrop(const DraggingInfo& drag) override;

    ArrayController& books() { return _books; }
    const ArrayController& books() const { return _books; }
    LibraryViewSurface& view() { return *_view; }
    // The view as the user acts on it.
    virtual LibraryBookView& bookView() = 0;

protected:
    // The derived class's view hears what the user does from now on.
    void listenWith(LibraryBookView& view) { _view->setHandler(&view); }

    LibraryHub* _mainController = nullptr;

private:
    LibraryViewHost& _host;
    ArrayController _books;
    std::unique_ptr<LibraryViewSurface> _view;
};

}
