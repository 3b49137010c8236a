#include "controls/gtk/WidgetControl.hpp"

#include <gtkmm/fixed.h>

#include <algorithm>
#include <cmath>

namespace pagora {

Rect frameInParent(const Gtk::Widget& widget)
{
    const auto* parent = widget.get_parent();
    graphene_rect_t bounds;
    auto* const raw = const_cast<GtkWidget*>(widget.gobj());
    if (!parent || !gtk_widget_compute_bounds(raw, const_cast<GtkWidget*>(parent->gobj()), &bounds))
        return {};
    return { bounds.origin.x, parent->get_height() - bounds.origin.y - bounds.size.height, bounds.size.width,
        bounds.size.height };
}

void WidgetControl::setFrame(const Rect& frame)
{
    const auto points = [](double length) { return static_cast<int>(std::lround(std::clamp(length, 0.0, 32'767.0))); };
    _widget.set_size_request(points(frame.width), points(frame.height));
    if (auto* const fixed = dynamic_cast<Gtk::Fixed*>(_widget.get_parent()))
        fixed->move(_widget, frame.x, fixed->get_height() - frame.y - frame.height);
}

}
