#include "platform/gtk/Graphics.hpp"

#include <string_view>

namespace pagora {

namespace {

constexpr const char* toolkitSwitches = "GDK_DEBUG";
// The page engine, which is never to use a graphics card, would warn that there is none.
constexpr const char* engineSwitch = "WEBKIT_DISABLE_COMPOSITING_MODE";
bool isLeftOut = false;

}

void leaveOutUnusedGraphics()
{
    const char* const renderer = g_getenv("GSK_RENDERER");
    if (!renderer || renderer != std::string_view("cairo") || g_getenv(toolkitSwitches) || g_getenv(engineSwitch))
        return;
    g_setenv(toolkitSwitches, "gl-disable", TRUE);
    g_setenv(engineSwitch, "1", TRUE);
    isLeftOut = true;
}

GAppLaunchContext* makeLaunchContext()
{
    auto* const context = g_app_launch_context_new();
    if (isLeftOut) {
        g_app_launch_context_unsetenv(context, toolkitSwitches);
        g_app_launch_context_unsetenv(context, engineSwitch);
    }
    return context;
}

}
