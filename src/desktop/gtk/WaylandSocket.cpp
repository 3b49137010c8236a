#include "desktop/gtk/WaylandSocket.hpp"

#include <glib.h>

#include <filesystem>
#include <functional>
#include <string>
#include <system_error>
#include <unistd.h>

namespace pagora {

void prepareWaylandSocket()
{
    constexpr const char* variable = "WAYLAND_DISPLAY";
    const char* const display = g_getenv(variable);
    const char* const runtime = g_getenv("XDG_RUNTIME_DIR");
    if (!display || !runtime || !g_path_is_absolute(display))
        return;
    const std::filesystem::path socket = display;
    const std::filesystem::path folder = runtime;
    // One link for each display, because their programs may run at the same time.
    const auto link = folder / (PAGORA_IDENTIFIER ".wayland-" + std::to_string(std::hash<std::string>()(socket)));
    // Replaced atomically, because another program may be using the link.
    auto made = link;
    made += "." + std::to_string(getpid());
    std::error_code error;
    std::filesystem::create_symlink(socket, made, error);
    if (!error)
        std::filesystem::rename(made, link, error);
    if (!error)
        g_setenv(variable, link.filename().c_str(), TRUE);
}

}
