#include "desktop/gtk/TextScale.hpp"

#include <gtkmm/settings.h>

namespace pagora {

double textScale()
{
    constexpr double usual = 96.0 * 1024;
    const int dpi = Gtk::Settings::get_default()->property_gtk_xft_dpi();
    return dpi > 0 ? dpi / usual : 1;
}

}
