#include "confinement/gtk/PageFile.hpp"

#include <glib.h>

#include <filesystem>
#include <system_error>
#include <vector>

namespace pagora {

namespace {

bool isRegularFile(const std::string& path)
{
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

std::optional<std::string> normalized(const std::string& path, GNormalizeMode mode)
{
    char* text = g_utf8_normalize(path.data(), static_cast<gssize>(path.size()), mode);
    if (!text)
        return std::nullopt;
    std::string result = text;
    g_free(text);
    return result;
}

std::string fragmentText(const Url& url)
{
    const std::size_t start = url.text().find('#');
    return start == std::string::npos ? std::string() : url.text().substr(start);
}

// The last character compared is never "/", so "/books/a" does not contain "/books/ab".
bool startsWithFolder(const std::string& path, const std::string& folder)
{
    return path.size() > folder.size() && path.compare(0, folder.size(), folder) == 0 && path[folder.size()] == '/';
}

std::string withoutTrailingSlash(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

}

std::optional<PageFile> existingFile(const Url& url)
{
    const std::string path = url.path();
    if (path.empty() || path.front() != '/')
        return std::nullopt;

    std::vector<std::string> spellings = { path };
    if (auto replaced = replacingPercentEscapes(path); replaced && *replaced != path)
        spellings.push_back(*replaced);
    for (std::size_t i = 0, count = spellings.size(); i < count; ++i) {
        for (const auto mode : { G_NORMALIZE_NFC, G_NORMALIZE_NFD }) {
            if (auto other = normalized(spellings[i], mode); other && *other != spellings[i])
                spellings.push_back(*other);
        }
    }
    for (const auto& spelling : spellings) {
        if (spelling.find('\0') != std::string::npos || !isRegularFile(spelling))
            continue;
        if (auto fileUrl = Url::fromString(Url::file(spelling).text() + fragmentText(url)))
            return PageFile { spelling, std::move(*fileUrl) };
    }
    return std::nullopt;
}

bool isFileInFolder(const std::string& path, const std::string& folder)
{
    std::error_code error;
    const auto file = std::filesystem::canonical(path, error);
    if (error)
        return false;
    const auto realFolder = std::filesystem::canonical(folder, error);
    return !error && startsWithFolder(file.string(), realFolder.string());
}

bool isUrlInFolder(const Url& url, const std::string& folder)
{
    const std::string path = url.path();
    const auto plain = std::filesystem::path(path).lexically_normal().string();
    return url.isFile() && startsWithFolder(plain, withoutTrailingSlash(folder));
}

}
