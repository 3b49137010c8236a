#include "base/Unicode.hpp"

#include <glib.h>

#include <memory>

namespace pagora {

namespace {

std::string taken(gchar* text)
{
    const std::unique_ptr<gchar, decltype(&g_free)> owner(text, &g_free);
    return text;
}

std::string normalForm(std::string_view text, GNormalizeMode mode)
{
    auto* form = isUtf8(text) ? g_utf8_normalize(text.data(), static_cast<gssize>(text.size()), mode) : nullptr;
    return form ? taken(form) : std::string(text);
}

}

std::string composedForm(std::string_view text)
{
    return normalForm(text, G_NORMALIZE_NFC);
}
std::string decomposedForm(std::string_view text)
{
    return normalForm(text, G_NORMALIZE_NFD);
}

std::string validUtf8(std::string_view text)
{
    return text.empty() ? std::string() : taken(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

bool isUtf8(std::string_view text)
{
    // g_utf8_validate stops at NUL, which is treated as an ordinary character here.
    while (!text.empty()) {
        const char* end = nullptr;
        if (g_utf8_validate(text.data(), static_cast<gssize>(text.size()), &end))
            return true;
        if (*end != '\0')
            return false;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    }
    return true;
}

}
