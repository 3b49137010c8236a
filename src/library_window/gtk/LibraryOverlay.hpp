#pragma once

#include "library_views/gtk/BooksSurface.hpp"
#include "library_views/gtk/FileDropTarget.hpp"

#include <gtkmm/builder.h>
#include <gtkmm/label.h>
#include <gtkmm/revealer.h>

#include <memory>

namespace pagora {

// What lies over the books in the library window: the page of an empty library, that of a search without result, and
// what happens to files that are held above. Main thread.
class LibraryOverlay {
public:
    // The layout "LibraryWindow".
    explicit LibraryOverlay(const Glib::RefPtr<Gtk::Builder>& layout);
    ~LibraryOverlay();

    // The view that lies below; null for none. It outlives this use.
    void setView(BooksSurface* view) { _view = view; }
    // Shows the page that is due.
    void update(bool isImporting);
    void showDrop(const DropHover& hover);

private:
    Gtk::Widget& _emptyPage;
    Gtk::Widget& _noMatchPage;
    Gtk::Revealer& _dropTarget;
    Gtk::Label& _dropLabel;
    BooksSurface* _view = nullptr;
    // The page of the empty library takes files for the view that it covers.
    std::unique_ptr<FileDropTarget> _emptyPageTarget;
};

}
