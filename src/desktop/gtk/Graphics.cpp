#include "desktop/gtk/Graphics.hpp"

#include "desktop/gtk/BookFonts.hpp"

#include <gtk/gtk.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace pagora {

namespace {

struct Switch {
    const char* name;
    const char* value;
};

constexpr const char* rendererName = "GSK_RENDERER";

// Keeps the page engine from using GL in this process.
constexpr Switch engineWithoutGl = { "WEBKIT_DISABLE_DMABUF_RENDERER", "1" };

// From this minor version of GTK 4 on, a separate variable disables features.
constexpr unsigned firstThatDisables = 16;
constexpr Switch toolkitWithoutGl = { "GDK_DISABLE", "gl" };
constexpr Switch olderToolkitWithoutGl = { "GDK_DEBUG", "gl-disable" };

// Disables hardware rendering in the toolkit and the page engine. The engine would initialize the driver to find its
// device; an empty file lists none.
std::array<Switch, 4> withoutGl()
{
    return { gtk_get_minor_version() < firstThatDisables ? olderToolkitWithoutGl : toolkitWithoutGl,
        { "WEBKIT_DISABLE_COMPOSITING_MODE", "1" }, engineWithoutGl, { "WEBKIT_WEB_RENDER_DEVICE_FILE", "/dev/null" } };
}

// From this minor version on, GTK notices that another library has changed the current GL context.
constexpr unsigned firstThatNotices = 18;

// An environment variable that was set here, with its previous value.
struct Former {
    const char* name;
    std::string value;
    bool wasSet;
};
std::vector<Former>& formerValues()
{
    static std::vector<Former> values;
    return values;
}

bool isSet(const Switch& setting)
{
    return g_getenv(setting.name) != nullptr;
}

std::string_view chosenRenderer()
{
    const char* const renderer = g_getenv(rendererName);
    return renderer ? renderer : "";
}

void set(const Switch& setting)
{
    const char* const former = g_getenv(setting.name);
    formerValues().push_back({ setting.name, former ? former : "", former != nullptr });
    g_setenv(setting.name, setting.value, TRUE);
}

}

void prepareGraphics(const GraphicsCard& card)
{
    if (chosenRenderer().empty() && !card.draws())
        set({ rendererName, "cairo" });
    if (chosenRenderer() == "cairo") {
        const auto switches = withoutGl();
        if (std::ranges::none_of(switches, isSet))
            std::ranges::for_each(switches, set);
        return;
    }
    // The engine's initialization would leave this thread without a current GL context, which older GTK does not
    // notice.
    if (gtk_get_minor_version() < firstThatNotices)
        set(engineWithoutGl);
}

GAppLaunchContext* makeLaunchContext()
{
    auto* const context = g_app_launch_context_new();
    for (const auto& [name, value, wasSet] : formerValues()) {
        if (wasSet)
            g_app_launch_context_setenv(context, name, value.c_str());
        else
            g_app_launch_context_unsetenv(context, name);
    }
    if (!bookFontsFile().empty()) {
        g_app_launch_context_unsetenv(context, "FONTCONFIG_FILE");
        g_app_launch_context_unsetenv(context, "HB_SHAPER_LIST");
    }
    return context;
}

}
