#pragma once

#include "covers/gtk/CoverLoader.hpp"
#include "library_views/gtk/BooksSurface.hpp"

#include <gtkmm/builder.h>
#include <gtkmm/gridview.h>
#include <gtkmm/scrolledwindow.h>

namespace pagora {

// The layout "ImageView": a grid of covers. Main thread only.
class GridSurface : public BooksSurface {
public:
    GridSurface(ArrayController& books, LibraryFinder& finder, CoverLoader& loader);
    ~GridSurface() override;

    void makeFirstResponder() override { bookCollectionView().grab_focus(); }
    Gtk::Widget& widget() override { return *_imageView; }
    Gtk::GridView& bookCollectionView() { return *_bookCollectionView; }

private:
    void fitColumns();

    Glib::RefPtr<Gtk::Builder> _layout;
    Gtk::Widget* _imageView;
    Gtk::ScrolledWindow* _scroller;
    Gtk::GridView* _bookCollectionView;
    sigc::connection _widthChanged;
    sigc::connection _fitting;
};

}
