#include "desktop/gtk/Tooltip.hpp"

#include <gtkmm/tooltip.h>

#include <utility>

namespace pagora {

void showOnHover(Gtk::Widget& widget, std::function<Glib::ustring()> text)
{
    widget.set_has_tooltip(true);
    widget.signal_query_tooltip().connect(
        [text = std::move(text)](int, int, bool, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
            const auto shown = text();
            tooltip->set_text(shown);
            return !shown.empty();
        },
        false);
}

}
