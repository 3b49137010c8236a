#include "app/gtk/Application.hpp"
#include "base/Translation.hpp"
#include "base/UserFolders.hpp"
#include "confinement/Confinement.hpp"
#include "desktop/gtk/BookFonts.hpp"
#include "desktop/gtk/Graphics.hpp"
#include "desktop/gtk/WaylandSocket.hpp"

#include <glib.h>

int main(int argc, char** argv)
{
    pagora::prepareWaylandSocket();
    pagora::prepareGraphics();
    pagora::useBookFonts(pagora::cachesFolder() + "/" PAGORA_IDENTIFIER ".fonts.conf");
    pagora::prepareConfinementSwitch();
    pagora::startTranslation();
    g_set_prgname(PAGORA_IDENTIFIER);
    g_set_application_name("Pagora");
    // A single file on the command line is opened for reading.
    using Purpose = pagora::Application::Purpose;
    return pagora::Application::create(argc == 2 ? Purpose::Reading : Purpose::Library)->run(argc, argv);
}
