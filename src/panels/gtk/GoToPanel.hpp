#pragma once

#include <gtkmm/box.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/popover.h>
#include <gtkmm/spinbutton.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The panel for jumps by number: to a percentage of the book, to a page, or to a page of the printed edition. Main
// thread only.
class GoToPanel {
public:
    // The current place. Numbers that are nullopt are not offered.
    struct Place {
        std::optional<int> percentage;
        // The page number, from 1.
        int page = 1;
        int pages = 1;
        // True if the pages are those of the whole book.
        bool isOfBook = false;
    };
    struct Actions {
        std::function<void(double percentage)> goToPercentage;
        std::function<void(std::int64_t page)> goToPage;
        // Called with the index in the list of printed pages.
        std::function<void(std::size_t index)> goToPrintedPage;
    };

    // The panel is shown at the lower edge of `anchor`, which must outlive this object.
    GoToPanel(Gtk::Widget& anchor, std::function<Place()> place, Actions actions);
    ~GoToPanel();
    GoToPanel(const GoToPanel&) = delete;
    GoToPanel& operator=(const GoToPanel&) = delete;

    void setPrintedPages(std::vector<std::string> labels);
    void open();
    Gtk::Popover& popover() { return _popover; }

private:
    void addRow(int row, Gtk::Label& name, Gtk::Widget& field, Gtk::Label& unit);
    void addSpin(int row, Gtk::Label& name, Gtk::SpinButton& field, Gtk::Label& unit, std::function<void()> go);
    void goToPrintedPage();
    void close() { _popover.popdown(); }

    Gtk::Widget& _anchor;
    std::function<Place()> _place;
    Actions _actions;
    std::vector<std::string> _printedPages;
    Gtk::Popover _popover;
    Gtk::Grid _grid;
    Gtk::Label _percentageName;
    Gtk::SpinButton _percentage;
    Gtk::Label _percentageUnit;
    Gtk::Label _pageName;
    Gtk::SpinButton _page;
    Gtk::Label _pageUnit;
    Gtk::Label _printedName;
    Gtk::Entry _printed;
    Gtk::Label _printedUnit;
};

}
