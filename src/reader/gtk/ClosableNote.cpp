#include "reader/gtk/ClosableNote.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"

namespace pagora {

ClosableNote::ClosableNote()
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, 6)
{
    add_css_class("confinement-note");
}

Gtk::Button& ClosableNote::addCloseButton(const std::function<void()>& whenDone)
{
    auto* const close = Gtk::make_managed<Gtk::Button>();
    close->set_icon_name("window-close-symbolic");
    close->set_has_frame(false);
    close->set_tooltip_text(_("Close"));
    setAccessibleName(*close, _("Close"));
    close->signal_clicked().connect([this, whenDone] {
        set_visible(false);
        whenDone();
    });
    append(*close);
    return *close;
}

}
