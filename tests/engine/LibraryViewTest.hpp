#pragma once

#include "library_views/gtk/BookCell.hpp"
#include "library_views/gtk/GridSurface.hpp"
#include "library_views/gtk/ListSurface.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/engine/ToolkitTest.hpp"

#include <gtkmm/window.h>

#include <optional>
#include <vector>

namespace pagora::test {

struct RecordingHandler : LibraryViewSurface::Handler {
    void userDidSelect() override { ++selections; }
    void userWillClick() override { }
    void mouseDown(int clickCount) override { clicks.push_back(clickCount); }
    void rightMouseUp(std::optional<std::size_t> item) override { rightClicks.push_back(item); }
    int selections = 0;
    std::vector<int> clicks;
    std::vector<std::optional<std::size_t>> rightClicks;
};
// Collects the existing cells of a view in order.
inline void collect(Gtk::Widget& widget, std::vector<BookCell*>& cells)
{
    if (auto* const cell = dynamic_cast<BookCell*>(&widget))
        cells.push_back(cell);
    for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling())
        collect(*child, cells);
}

inline std::vector<BookCell*> cellsOf(Gtk::Widget& widget)
{
    std::vector<BookCell*> cells;
    collect(widget, cells);
    return cells;
}

// A window, 800 by 600 points, with one of the two views.
template <typename Surface>
class LibraryView : public ToolkitTest {
protected:
    LibraryView()
    {
        _window.set_default_size(800, 600);
        _window.set_child(_surface.widget());
        _surface.setHandler(&_handler);
        _window.present();
    }
    ~LibraryView() override { _window.unset_child(); }

    // Waits for the cover of the first cell; null if it does not appear.
    const BookCell* firstCellWithCover()
    {
        const auto hasCover = [&] {
            const auto cells = cellsOf(_surface.widget());
            return !cells.empty() && cells.front()->cover().cover();
        };
        return waitUntil(hasCover) ? cellsOf(_surface.widget()).front() : nullptr;
    }

    // Activates a book, as Return and a double click do.
    void activate(Gtk::Widget& view, guint position)
    {
        view.activate_action("list.activate-item", Glib::Variant<guint>::create(position));
    }

    GLibRunLoop _runLoop;
    CoverLoader _loader { _runLoop };
    LibraryFinder _finder { _runLoop };
    ArrayController _books;
    RecordingHandler _handler;
    Surface _surface { _books, _finder, _loader };
    Gtk::Window _window;
};

}
