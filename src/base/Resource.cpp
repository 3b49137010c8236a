#include "base/Resource.hpp"

#include <gio/gio.h>

#include <memory>

namespace pagora {

std::optional<std::string> resourceBytes(const std::string& path)
{
    const std::unique_ptr<GBytes, decltype(&g_bytes_unref)> bytes(
        g_resources_lookup_data(path.c_str(), G_RESOURCE_LOOKUP_FLAGS_NONE, nullptr), &g_bytes_unref);
    if (!bytes)
        return std::nullopt;
    gsize size = 0;
    const auto* data = static_cast<const char*>(g_bytes_get_data(bytes.get(), &size));
    return std::string(data, size);
}

}
