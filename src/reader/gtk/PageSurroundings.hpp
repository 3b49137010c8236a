#pragma once

#include "controls/Controls.hpp"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>

#include <cstdint>
#include <functional>
#include <string>

namespace pagora {

// What stands around the page besides its controls: the chapter and the page in it below, the notice of a book without
// contents beside it, the line in the place of a page that there is none. Main thread.
class PageSurroundings {
public:
    // The parts of the layout, which outlive this: the whole, the bar with the location, the contents, the page's
    // place.
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

    // Lets the bars take the page's paper.
    void setPaper(const Color& color);
    void setChapter(const std::string& name);
    // Counted from 1; nothing is shown where the count is 0.
    void setPageOfChapter(std::int64_t page, std::int64_t count);
    void setHasContents(bool hasContents) { _noContents.set_visible(!hasContents); }
    // Says in one line that the book has nothing to show, and offers the way back.
    void setNothingToShow(bool isNothing, std::function<void()> goBack);

private:
    Parts _parts;
    Gtk::Label _chapter;
    Gtk::Label _page;
    Gtk::Label _noContents;
    Gtk::Box _nothing;
    Gtk::Label _nothingText;
    Gtk::Button _back;
    sigc::connection _backClicked;
};

}
