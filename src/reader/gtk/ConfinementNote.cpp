#include "reader/gtk/ConfinementNote.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"

#include <gtkmm/label.h>

namespace pagora {

namespace {

// Maximum length of the explanation's lines, in characters.
constexpr int lineLength = 50;

}

ConfinementNote::ConfinementNote(std::function<void()> whenDone)
{
    auto* const line = Gtk::make_managed<Gtk::Label>(
        _("The book’s own scripts are off: this system does not let Pagora confine them."));
    line->set_ellipsize(Pango::EllipsizeMode::END);
    line->set_tooltip_text(line->get_text());
    line->set_xalign(0);
    line->set_hexpand(true);
    append(*line);

    auto* const text = Gtk::make_managed<Gtk::Label>(_(
        "Pagora shows books in processes of their own, which see no other file of yours. This system forbids programs "
        "to confine their processes in this way. Therefore books are shown here without their own scripts. Everything "
        "else works as usual.\n\nThe guide says more under “Safety”. To read it, press F1 in the library."));
    text->set_wrap(true);
    text->set_xalign(0);
    text->set_max_width_chars(lineLength);
    text->set_width_chars(lineLength);
    _explanation.set_child(*text);
    _explanation.add_css_class("confinement-explanation");
    _explanation.signal_closed().connect(whenDone);
    leaveUnnamed(_explanation);
    setAccessibleName(_explanation, _("Why the book’s own scripts are off"));
    _more.set_label(_("Read more"));
    _more.set_has_frame(false);
    _more.set_direction(Gtk::ArrowType::UP);
    _more.set_popover(_explanation);
    append(_more);

    addCloseButton(whenDone);
}

}
