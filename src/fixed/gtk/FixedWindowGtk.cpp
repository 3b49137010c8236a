#include "fixed/gtk/FixedWindowGtk.hpp"

namespace pagora {

FixedWindowGtk::FixedWindowGtk(ReaderPage page)
    : ReaderWindowRole("FixedLayout", std::move(page))
{
}

void FixedWindowGtk::setPageIsMissing(bool isMissing)
{
    _parts.widget<Gtk::Widget>("missingPage").set_visible(isMissing);
}

}
