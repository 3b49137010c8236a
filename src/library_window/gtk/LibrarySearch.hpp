#pragma once

#include "library_views/BookQuery.hpp"
#include "panels/gtk/SearchFieldControl.hpp"

#include <giomm/simpleactiongroup.h>
#include <gtkmm/builder.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/label.h>
#include <gtkmm/searchbar.h>
#include <gtkmm/togglebutton.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace pagora {

// The search bar of the library window, its button, and the menu that orders the books. Together they define the query
// that filters and sorts the views. Main thread only.
class LibrarySearch {
public:
    // `layout` is "LibraryWindow".
    explicit LibrarySearch(const Glib::RefPtr<Gtk::Builder>& layout);
    ~LibrarySearch();
    LibrarySearch(const LibrarySearch&) = delete;
    LibrarySearch& operator=(const LibrarySearch&) = delete;

    // Returns the query without the list of books that were read.
    BookQuery query() const;
    // Sets the callback for a change of the query.
    void setQueryAction(std::function<void()> action) { _queryAction = std::move(action); }
    // Sets the callback for opening the bar.
    void setOpenAction(std::function<void()> action) { _openAction = std::move(action); }
    // Sets the callback for leaving the field for the results.
    void setDoneAction(std::function<void()> action) { _doneAction = std::move(action); }
    // Sets the callback for closing the bar while it has the focus.
    void setCloseAction(std::function<void()> action) { _closeAction = std::move(action); }

    // Opens and focuses the bar, unless the library is empty.
    void open();
    // Ends the search and closes the bar.
    void end();
    bool isOpen() const { return _bar.get_search_mode(); }
    // Shows the number of books. Disables the search if the library is empty.
    void setCount(std::size_t shown, std::size_t all);
    // Returns the window's controller that opens the bar on a printable key and closes it on Escape, unless a control
    // uses the key.
    Glib::RefPtr<Gtk::EventController> keys();
    Gtk::Widget& field() { return _entry; }

private:
    void addOrders();
    void addFieldKeys();
    void barDidChange();
    bool hasKeyboard() const;
    bool take(Gtk::EventControllerKey& keys, guint key, Gdk::ModifierType state);
    bool isWithinLibrary(Gtk::Widget* focus) const;

    Gtk::Widget& _root;
    Gtk::SearchBar& _bar;
    Gtk::Widget& _entry;
    SearchFieldControl _field;
    Gtk::Label& _count;
    Gtk::ToggleButton& _button;
    Gtk::Widget& _orderButton;
    std::vector<std::string> _words;
    BookOrder _order = BookOrder::AsAdded;
    std::function<void()> _queryAction;
    std::function<void()> _openAction;
    std::function<void()> _doneAction;
    std::function<void()> _closeAction;
    std::vector<sigc::connection> _connections;
};

}
