#include "fixed/gtk/FixedWindowGtk.hpp"

#include <gtkmm/label.h>

namespace pagora {

FixedWindowGtk::FixedWindowGtk(Toplevel& toplevel, ReaderPage page)
    : ReaderWindowRole(toplevel, ReaderLayout("FixedLayout"), std::move(page))
{
}

void FixedWindowGtk::setPageIsMissing(bool isMissing)
{
    auto& notice = _parts.widget<Gtk::Label>("missingPage");
    notice.set_visible(isMissing);
    // The keyboard focus stays with the page.
    if (_parts.page.setNotice)
        _parts.page.setNotice(isMissing ? notice.get_text() : Glib::ustring());
}

}
