#include "fixed/gtk/FixedWindowGtk.hpp"

#include "base/Translation.hpp"

#include <gtkmm/label.h>

#include <utility>

namespace pagora {

FixedWindowGtk::FixedWindowGtk(Toplevel& toplevel, ReaderPage page)
    : MarkedWindowRole(toplevel, ReaderLayout("FixedLayout"), std::move(page), MarkedPage::Search::No,
        { { _("Copy"), [this] { _parts.send(&ReaderWindowActions::copySelection); } } })
{
    _parts.setExtraCommands([this](ReaderCommand command) { return _marked.perform(command); });
}

void FixedWindowGtk::setPageIsMissing(bool isMissing)
{
    auto& notice = _parts.widget<Gtk::Label>("missingPage");
    notice.set_visible(isMissing);
    // The page keeps the keyboard focus, so its accessible text gives the notice.
    if (_parts.page.setNotice)
        _parts.page.setNotice(isMissing ? notice.get_text() : Glib::ustring());
}

}
