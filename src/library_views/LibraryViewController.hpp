#pragma once

#include "library_views/ArrayController.hpp"
#include "library_views/LibraryBookView.hpp"
#include "library_views/LibraryHub.hpp"
#include "library_views/LibraryViewSurface.hpp"

#include <memory>

namespace pagora {

// The common base of the grid's and the list's controllers: books, their selection, the view and drops on it. Owned by
// LibraryViews. Main thread only.
class LibraryViewController : public DropDelegate {
public:
    LibraryViewController(const char* layout, LibraryViewHost& host);
    ~LibraryViewController() override;

    void set_mainController(LibraryHub& hub);

    // Rejects drags without an ".epub" file, and drags that allow only copying.
    DragOperation::Mask validateDrop(const DraggingInfo& drag) override;
    std::string whyRefused(const DraggingInfo& drag) const override;
    bool acceptDrop(const DraggingInfo& drag) override;

    ArrayController& books() { return _books; }
    const ArrayController& books() const { return _books; }
    LibraryViewSurface& view() { return *_view; }
    // Returns the view that handles the user's input.
    virtual LibraryBookView& bookView() = 0;

protected:
    // Makes `view` the handler of the user's input.
    void listenWith(LibraryBookView& view) { _view->setHandler(&view); }

    LibraryHub* _mainController = nullptr;

private:
    LibraryViewHost& _host;
    ArrayController _books;
    std::unique_ptr<LibraryViewSurface> _view;
};

}
