#include "desktop/gtk/StyleSheet.hpp"

#include <gdkmm/display.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/icontheme.h>
#include <gtkmm/stylecontext.h>

#include <set>

namespace pagora {

void addStyleSheet(const std::string& fileName)
{
    static std::set<std::string> added;
    if (!added.insert(fileName).second)
        return;
    const auto display = Gdk::Display::get_default();
    if (added.size() == 1)
        Gtk::IconTheme::get_for_display(display)->add_resource_path("/org/pagora/Pagora/icons");
    const auto provider = Gtk::CssProvider::create();
    provider->load_from_resource("/org/pagora/Pagora/" + fileName);
    Gtk::StyleContext::add_provider_for_display(display, provider, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}
