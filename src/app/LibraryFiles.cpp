#include "app/LibraryFiles.hpp"

#include "base/Path.hpp"
#include "files/Files.hpp"

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

}
