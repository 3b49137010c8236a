#pragma once

#include "fixed/PreparedPages.hpp"
#include "reader/gtk/ReaderPage.hpp"

#include <gtkmm/overlay.h>

namespace pagora {

// Two page views in one place, for the window of the layout "FixedLayout". Main thread only.
class PreparedPagesGtk final : public PreparedPages {
public:
    PreparedPagesGtk(ReaderPage shown, ReaderPage spare);
    ~PreparedPagesGtk() override;

    // Combines two pages into one for a reader window.
    static ReaderPage make(ReaderPage shown, ReaderPage spare);

private:
    void didExchange(std::size_t shown) override;

    struct Side {
        Gtk::Widget* widget;
        std::function<bool()> takesKeys;
    };

    Gtk::Overlay _place;
    Side _sides[2];
    // The index of the page that is shown.
    std::size_t _shown = 0;
};

}
