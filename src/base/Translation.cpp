#include "base/Translation.hpp"

#include <glib.h>

#include <clocale>
#include <cstdarg>
#include <filesystem>
#include <libintl.h>

namespace pagora {

namespace {

constexpr const char* domain = "pagora";

// Beside the program in a build tree, in share/ when installed.
std::filesystem::path translationsFolder()
{
    std::error_code ignored;
    const auto programFolder = std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
    const auto built = programFolder / "translations";
    return std::filesystem::is_directory(built, ignored) ? built : programFolder.parent_path() / "share" / "locale";
}

}

const char* _(const char* text)
{
    return dgettext(domain, text);
}

const char* plural(const char* one, const char* many, unsigned long count)
{
    return dngettext(domain, one, many, count);
}

std::string formatted(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    char* text = g_strdup_vprintf(format, arguments);
    va_end(arguments);
    std::string result = text;
    g_free(text);
    return result;
}

void startTranslation()
{
    std::setlocale(LC_ALL, "");
    bindtextdomain(domain, translationsFolder().c_str());
    bind_textdomain_codeset(domain, "UTF-8");
    textdomain(domain);
}

}
