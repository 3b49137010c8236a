#include "platform/gtk/Graphics.hpp"

#include "platform/gtk/BookFonts.hpp"

#include <algorithm>
#include <string_view>

namespace pagora {

namespace {

struct Switch {
    const char* name;
    const char* value;
};

// What keeps the toolkit, and the page engine, which is never to use a graphics card, from starting the drawing by one.
// The engine would look for its card by starting it: there is none in a file that is always empty.
constexpr Switch switches[] = {
    { "GDK_DEBUG", "gl-disable" },
    { "WEBKIT_DISABLE_COMPOSITING_MODE", "1" },
    { "WEBKIT_DISABLE_DMABUF_RENDERER", "1" },
    { "WEBKIT_WEB_RENDER_DEVICE_FILE", "/dev/null" },
};
bool isLeftOut = false;

bool isSet(const Switch& setting)
{
    return g_getenv(setting.name) != nullptr;
}

}

void leaveOutUnusedGraphics()
{
    const char* const renderer = g_getenv("GSK_RENDERER");
    if (!renderer || renderer != std::string_view("cairo") || std::ranges::any_of(switches, isSet))
        return;
    for (const auto& [name, value] : switches)
        g_setenv(name, value, TRUE);
    isLeftOut = true;
}

GAppLaunchContext* makeLaunchContext()
{
    auto* const context = g_app_launch_context_new();
    if (isLeftOut) {
        for (const auto& [name, value] : switches)
            g_app_launch_context_unsetenv(context, name);
    }
    if (!bookFontsFile().empty())
        g_app_launch_context_unsetenv(context, "FONTCONFIG_FILE");
    return context;
}

}
