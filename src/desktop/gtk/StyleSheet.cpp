#include "desktop/gtk/StyleSheet.hpp"

#include <gdkmm/display.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/icontheme.h>
#include <gtkmm/stylecontext.h>

#include <set>

namespace pagora {

namespace {

Glib::RefPtr<Gtk::CssProvider> sheet(const std::string& fileName)
{
    auto provider = Gtk::CssProvider::create();
    provider->load_from_resource("/org/pagora/Pagora/" + fileName);
    return provider;
}

// A display can start or stop compositing at run time.
void followCompositing(const Glib::RefPtr<Gdk::Display>& display)
{
    const auto follow = [display, provider = sheet("uncomposited.css")] {
        if (display->is_composited())
            Gtk::StyleContext::remove_provider_for_display(display, provider);
        else
            Gtk::StyleContext::add_provider_for_display(display, provider, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION + 1);
    };
    follow();
    display->property_composited().signal_changed().connect(follow);
}

}

void addStyleSheet(const std::string& fileName)
{
    static std::set<std::string> added;
    if (!added.insert(fileName).second)
        return;
    const auto display = Gdk::Display::get_default();
    if (added.size() == 1) {
        Gtk::IconTheme::get_for_display(display)->add_resource_path("/org/pagora/Pagora/icons");
        followCompositing(display);
    }
    Gtk::StyleContext::add_provider_for_display(display, sheet(fileName), GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}
