#include "app/HomeOpening.hpp"
#include "app/gtk/Application.hpp"
#include "base/Translation.hpp"
#include "base/UserFolders.hpp"
#include "confinement/Confinement.hpp"
#include "desktop/gtk/BookFonts.hpp"
#include "desktop/gtk/Graphics.hpp"
#include "desktop/gtk/WaylandSocket.hpp"

#include <gtk/gtk.h>

#include <memory>
#include <utility>

int main(int argc, char** argv)
{
    pagora::prepareWaylandSocket();
    pagora::prepareGraphics();
    pagora::useBookFonts(pagora::cachesFolder() + "/" PAGORA_IDENTIFIER ".fonts.conf");
    pagora::prepareConfinementSwitch();
    pagora::startTranslation();
    g_set_prgname(PAGORA_IDENTIFIER);
    g_set_application_name("Pagora");
    // Opening a large library takes as long as starting the toolkit, so both run in parallel.
    auto home = std::make_unique<pagora::HomeOpening>(pagora::defaultsFolder());
    // Without a display the application's constructor exits the program, so nothing may be open then.
    if (!gtk_init_check())
        home = nullptr;
    // A single file on the command line is opened for reading.
    using Purpose = pagora::Application::Purpose;
    const auto purpose = argc == 2 ? Purpose::Reading : Purpose::Library;
    return pagora::Application::create(purpose, std::move(home))->run(argc, argv);
}
