#include "reader/gtk/PopoverPanel.hpp"

namespace pagora {

PopoverPanel::PopoverPanel(Gtk::Popover& popover, Gtk::Widget& anchor)
    : _popover(popover)
{
    _popover.set_parent(anchor);
}

PopoverPanel::~PopoverPanel()
{
    _popover.unparent();
}

Rect PopoverPanel::frame() const
{
    return { 0, 0, static_cast<double>(_popover.get_width()), static_cast<double>(_popover.get_height()) };
}

}
