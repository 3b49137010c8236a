#include "controls/gtk/ColorArea.hpp"

#include <gdkmm/rgba.h>
#include <gtkmm/stylecontext.h>

namespace pagora {

ColorArea::ColorArea(Gtk::Widget& area)
    : WidgetControl(area)
{
    area.get_style_context()->add_provider(_style, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION + 1);
    setFillColor(_fillColor);
}

ColorArea::~ColorArea()
{
    widget().get_style_context()->remove_provider(_style);
}

void ColorArea::setFillColor(const Color& color)
{
    _fillColor = color;
    Gdk::RGBA fill;
    fill.set_rgba(static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue),
        static_cast<float>(color.alpha));
    _style->load_from_data("* { background-image: none; background-color: " + fill.to_string().raw() + "; }");
    if (_filled)
        _filled(color);
}

}
