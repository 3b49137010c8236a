#include "platform/gtk/Graphics.hpp"

#include <string_view>

namespace pagora {

namespace {

constexpr const char* toolkitSwitches = "GDK_DEBUG";
bool isLeftOut = false;

}

void leaveOutUnusedGraphics()
{
    const char* const renderer = g_getenv("GSK_RENDERER");
    if (renderer && renderer == std::string_view("cairo"))
        isLeftOut = !g_getenv(toolkitSwitches) && g_setenv(toolkitSwitches, "gl-disable", FALSE);
}

GAppLaunchContext* makeLaunchContext()
{
    auto* const context = g_app_launch_context_new();
    if (isLeftOut)
        g_app_launch_context_unsetenv(context, toolkitSwitches);
    return context;
}

}
