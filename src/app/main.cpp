#include "app/gtk/Application.hpp"
#include "platform/Confinement.hpp"
#include "platform/Translation.hpp"
#include "platform/UserFolders.hpp"
#include "platform/gtk/BookFonts.hpp"
#include "platform/gtk/Graphics.hpp"

#include <glib.h>

int main(int argc, char** argv)
{
    pagora::prepareGraphics();
    pagora::useBookFonts(pagora::cachesFolder() + "/" PAGORA_IDENTIFIER ".fonts.conf");
    pagora::prepareConfinementSwitch();
    pagora::startTranslation();
    g_set_prgname(PAGORA_IDENTIFIER);
    g_set_application_name("Pagora");
    return pagora::Application::create()->run(argc, argv);
}
