#pragma once

#include "controls/gtk/WidgetControl.hpp"

#include <gtkmm/cssprovider.h>

#include <functional>

namespace pagora {

// A widget of a layout whose area is filled with one colour, initially white. Main thread only.
class ColorArea final : public ColorView, public WidgetControl {
public:
    explicit ColorArea(Gtk::Widget& area);
    ~ColorArea() override;

    void setFillColor(const Color& color) override;
    const Color& fillColor() const { return _fillColor; }
    // Sets the callback for each new colour, for widgets that cover the area.
    void setFillHandler(std::function<void(const Color&)> handler) { _filled = std::move(handler); }

private:
    Color _fillColor = Color::white(1);
    std::function<void(const Color&)> _filled;
    Glib::RefPtr<Gtk::CssProvider> _style = Gtk::CssProvider::create();
};

}
