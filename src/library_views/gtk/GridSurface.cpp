#include "library_views/gtk/GridSurface.hpp"

#include "desktop/gtk/AccessibleNames.hpp"
#include "library_views/gtk/BookCell.hpp"

#include <glibmm/main.h>
#include <gtkmm/adjustment.h>

#include <algorithm>

namespace pagora {

namespace {

// The space that the style sheet puts around a cell, in points.
constexpr int cellMargins = 24;

}

GridSurface::GridSurface(ArrayController& books, LibraryFinder& finder, CoverLoader& loader)
    : BooksSurface(books, finder)
    , _layout(Gtk::Builder::create_from_resource("/org/pagora/Pagora/ui/ImageView.ui"))
    , _imageView(_layout->get_widget<Gtk::Widget>("imageView"))
    , _scroller(_layout->get_widget<Gtk::ScrolledWindow>("scroller"))
    , _bookCollectionView(_layout->get_widget<Gtk::GridView>("bookCollectionView"))
{
    _bookCollectionView->set_factory(makeFactory<BookCell>([&loader] { return Gtk::make_managed<BookCell>(loader); }));
    _bookCollectionView->set_model(sharedSelection());
    _bookCollectionView->signal_activate().connect([this](guint position) { activate(position); });
    leaveUnnamed(*_imageView);
    watchInput(*_bookCollectionView, *_bookCollectionView);

    // The view creates cells for thirty rows of its maximum column count, so that count is set to the columns that fit.
    _widthChanged = _scroller->get_hadjustment()->property_page_size().signal_changed().connect([this] {
        _fitting.disconnect();
        _fitting = Glib::signal_idle().connect(
            [this] {
                fitColumns();
                return false;
            },
            Glib::PRIORITY_HIGH);
    });
}

GridSurface::~GridSurface()
{
    _widthChanged.disconnect();
    _fitting.disconnect();
    stopWatching();
    _bookCollectionView->set_model({});
}

void GridSurface::fitColumns()
{
    const int width = static_cast<int>(_scroller->get_hadjustment()->get_page_size());
    if (width <= 0)
        return;
    const auto columns = static_cast<guint>(std::clamp(width / (BookCell::width() + cellMargins), 1, 30));
    if (columns != _bookCollectionView->get_max_columns())
        _bookCollectionView->set_max_columns(columns);
}

}
