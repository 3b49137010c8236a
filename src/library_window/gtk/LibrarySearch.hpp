#pragma once

#include "library_views/BookQuery.hpp"

#include <giomm/simpleactiongroup.h>
#include <gtkmm/builder.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/label.h>
#include <gtkmm/searchbar.h>
#include <gtkmm/searchentry.h>
#include <gtkmm/togglebutton.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace pagora {

// The search bar of the library window with its button, and the menu of the orders: what the person asks of the books.
// Main thread.
class LibrarySearch {
public:
    // The layout "LibraryWindow".
    explicit LibrarySearch(const Glib::RefPtr<Gtk::Builder>& layout);
    ~LibrarySearch();
    LibrarySearch(const LibrarySearch&) = delete;
    LibrarySearch& operator=(const LibrarySearch&) = delete;

    // Without the list of books that were read.
    BookQuery query() const;
    // Called when another query is asked.
    void setQueryAction(std::function<void()> action) { _queryAction = std::move(action); }
    // Called when the bar has opened.
    void setOpenAction(std::function<void()> action) { _openAction = std::move(action); }
    // Called when the user goes from the field to what was found.
    void setDoneAction(std::function<void()> action) { _doneAction = std::move(action); }
    // Called when the bar closes that had the keyboard.
    void setCloseAction(std::function<void()> action) { _closeAction = std::move(action); }

    // Gives the bar the keyboard and opens it first; not where there is no book.
    void open();
    // Shows every book again and closes the bar.
    void end();
    bool isOpen() const { return _bar.get_search_mode(); }
    // What the bar says of the books; there is nothing to search where there is no book.
    void setCount(std::size_t shown, std::size_t all);
    // Opens the bar for a key that writes something, and closes it for Escape, where no control takes them. The
    // controller is for the window.
    Glib::RefPtr<Gtk::EventController> keys();
    Gtk::Widget& field() { return _field; }

private:
    void addOrders();
    void addFieldKeys();
    void barDidChange();
    bool hasKeyboard() const;
    bool take(Gtk::EventControllerKey& keys, guint key, Gdk::ModifierType state);
    bool isWithinLibrary(Gtk::Widget* focus) const;

    Gtk::Widget& _root;
    Gtk::SearchBar& _bar;
    Gtk::SearchEntry& _field;
    Gtk::Label& _count;
    Gtk::ToggleButton& _button;
    std::vector<std::string> _words;
    BookOrder _order = BookOrder::AsAdded;
    std::function<void()> _queryAction;
    std::function<void()> _openAction;
    std::function<void()> _doneAction;
    std::function<void()> _closeAction;
    std::vector<sigc::connection> _connections;
};

}
