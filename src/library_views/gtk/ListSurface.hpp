#pragma once

#include "covers/gtk/CoverLoader.hpp"
#include "library_views/gtk/BooksSurface.hpp"

#include <gtkmm/builder.h>
#include <gtkmm/columnview.h>

namespace pagora {

// The layout "TableView": a list with the columns cover, title, author and identifier. Main thread only.
class ListSurface : public BooksSurface {
public:
    ListSurface(ArrayController& books, LibraryFinder& finder, CoverLoader& loader);
    ~ListSurface() override;

    void makeFirstResponder() override { bookTable().grab_focus(); }
    Gtk::Widget& widget() override { return *_tableView; }
    Gtk::ColumnView& bookTable() { return *_bookTable; }

private:
    Glib::RefPtr<Gtk::Builder> _layout;
    Gtk::Widget* _tableView;
    Gtk::ColumnView* _bookTable;
};

}
