#pragma once

#include "reader/gtk/BarColors.hpp"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace pagora {

// The texts around the page: chapter and page number below, the notice for a book without contents, and the message for
// a book without pages. Main thread only.
class PageSurroundings {
public:
    // Widgets of the layout: the content, the location bar, the contents pane, the page area. All must outlive this
    // object.
    struct Parts {
        Gtk::Widget& whole;
        Gtk::Box& locationBar;
        Gtk::Widget& locationLabel;
        Gtk::Box& contents;
        Gtk::Widget& contentsList;
        Gtk::Overlay& page;
    };
    explicit PageSurroundings(const Parts& parts);
    ~PageSurroundings();
    PageSurroundings(const PageSurroundings&) = delete;
    PageSurroundings& operator=(const PageSurroundings&) = delete;

    BarColors& barColors() { return _barColors; }
    void setChapter(const std::string& name);
    // Shows the page number, from 1, and the number of pages; nothing if `count` is 0.
    void setPageOfChapter(std::int64_t page, std::int64_t count);
    // The last page number and count; nullopt while none is shown.
    std::optional<std::pair<std::int64_t, std::int64_t>> pageOfChapter() const { return _pageOfChapter; }
    // Without contents, a line in their place says so.
    void setHasContents(bool hasContents);
    // Shows that the book has no pages, with a button back to the library.
    void setNothingToShow(bool isNothing, std::function<void()> goBack);

private:
    Parts _parts;
    BarColors _barColors;
    Gtk::Label _chapter;
    Gtk::Label _page;
    std::optional<std::pair<std::int64_t, std::int64_t>> _pageOfChapter;
    void showNoContents();

    Gtk::Label _noContents;
    bool _hasContents = true;
    sigc::connection _listChanged;
    Gtk::Box _nothing;
    Gtk::Label _nothingText;
    Gtk::Button _back;
    sigc::connection _backClicked;
};

}
