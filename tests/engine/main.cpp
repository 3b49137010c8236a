#include "base/UserFolders.hpp"
#include "desktop/gtk/BookFonts.hpp"
#include "desktop/gtk/Graphics.hpp"
#include "tests/engine/EngineHome.hpp"

#include <glib.h>
#include <gtkmm/application.h>
#include <gtkmm/init.h>

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>

int main(int argumentCount, char** arguments)
{
    // `--gtest_list_tests` needs no display.
    for (int i = 1; i < argumentCount; ++i) {
        if (std::strncmp(arguments[i], "--gtest_list_tests", 18) == 0) {
            testing::InitGoogleTest(&argumentCount, arguments);
            return RUN_ALL_TESTS();
        }
    }

    const pagora::test::EngineHome home;
    setenv("GTK_A11Y", "none", 0);
    setenv("MESA_SHADER_CACHE_DISABLE", "true", 1);
    setenv("GSETTINGS_BACKEND", "memory", 1);
    pagora::useBookFonts(pagora::cachesFolder() + "/fonts.conf");
    testing::InitGoogleTest(&argumentCount, arguments);
    pagora::prepareGraphics();
    gtk_init();
    Gtk::init_gtkmm_internals();
    g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL));
    return RUN_ALL_TESTS();
}
