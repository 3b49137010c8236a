#include "app/LibraryFiles.hpp"

#include "base/Path.hpp"
#include "files/Files.hpp"

#include <algorithm>
#include <filesystem>
#include <strings.h>
#include <system_error>

namespace pagora {

std::vector<std::string> bookNamesIn(const std::string& folder)
{
    auto names = folderEntries(folder).value_or(std::vector<std::string> {});
    std::erase_if(names, [](const std::string& name) { return pathExtension(name) != "epub"; });
    return names;
}

std::vector<std::string> booksIn(const std::string& folder)
{
    auto books = bookNamesIn(folder);
    for (auto& book : books)
        book = appendingPathComponent(folder, book);
    return books;
}

std::vector<std::string> booksBelow(const std::string& folder)
{
    namespace fs = std::filesystem;
    std::vector<std::string> books;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
    for (const fs::recursive_directory_iterator end; !error && entry != end; entry.increment(error)) {
        const auto name = entry->path().filename().string();
        if (name.starts_with('.')) {
            entry.disable_recursion_pending();
            continue;
        }
        std::error_code ignored;
        if (strcasecmp(pathExtension(name).c_str(), "epub") == 0 && entry->is_regular_file(ignored))
            books.push_back(entry->path().string());
    }
    std::sort(books.begin(), books.end());
    return books;
}

}
