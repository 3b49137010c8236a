#pragma once

#include "base/Geometry.hpp"

#include <gtkmm/cssprovider.h>
#include <gtkmm/widget.h>

#include <optional>

namespace pagora {

// Sets the colours of the bars around a page: those of the theme, or in the original theme the background of the book's
// own page. Owned by the reader window, of which the program has one at a time. Main thread only.
class BarColors {
public:
    // `whole` contains the bars and must outlive this object.
    explicit BarColors(Gtk::Widget& whole);
    ~BarColors();
    BarColors(const BarColors&) = delete;
    BarColors& operator=(const BarColors&) = delete;

    // Sets the background of the theme. A change of theme resets the page's own background.
    void setTheme(const Color& background);
    // Sets the background of the page's document; nullopt if it has none.
    void setGround(const std::optional<Color>& ground);

private:
    void apply();

    Gtk::Widget& _whole;
    std::optional<Color> _theme;
    std::optional<Color> _ground;
    // Defines the colour of `own-paper`.
    Glib::RefPtr<Gtk::CssProvider> _style = Gtk::CssProvider::create();
};

}
