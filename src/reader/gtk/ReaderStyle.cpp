#include "reader/gtk/ReaderStyle.hpp"

#include <gdkmm/display.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

namespace pagora {

void loadReaderStyle()
{
    static const auto style = [] {
        auto provider = Gtk::CssProvider::create();
        provider->load_from_resource("/org/pagora/Pagora/reader.css");
        Gtk::StyleContext::add_provider_for_display(
            Gdk::Display::get_default(), provider, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
        return provider;
    }();
}

}
