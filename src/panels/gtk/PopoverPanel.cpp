#include "panels/gtk/PopoverPanel.hpp"

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

}
