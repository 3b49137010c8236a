#pragma once

#include "library_views/gtk/BooksSurface.hpp"
#include "library_views/gtk/FileDropTarget.hpp"

#include <gtkmm/builder.h>
#include <gtkmm/label.h>
#include <gtkmm/revealer.h>

#include <memory>

namespace pagora {

// The overlay over the books in the library window: the page of an empty library, the page of a search without result,
// and the drop target. Main thread only.
class LibraryOverlay {
public:
    // `layout` is "LibraryWindow".
    explicit LibraryOverlay(const Glib::RefPtr<Gtk::Builder>& layout);
    ~LibraryOverlay();

    // Sets the view below the overlay; null for none. It must live until it is replaced here.
    void setView(BooksSurface* view) { _view = view; }
    // Shows the page for the current state.
    void update(bool isImporting);
    void showDrop(const DropHover& hover);

private:
    Gtk::Widget& _emptyPage;
    Gtk::Widget& _noMatchPage;
    Gtk::Revealer& _dropTarget;
    Gtk::Label& _dropLabel;
    BooksSurface* _view = nullptr;
    // Drops on the page of an empty library are passed to the view below.
    std::unique_ptr<FileDropTarget> _emptyPageTarget;
};

}
