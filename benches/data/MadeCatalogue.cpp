#include "benches/data/MadeCatalogue.hpp"

#include "base/Path.hpp"
#include "benches/data/MadeBooks.hpp"
#include "benches/data/MadePictures.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "catalogue/Settings.hpp"
#include "store/UserDefaults.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace pagora::bench {

namespace {

// The number of entries in one flush.
constexpr std::size_t portion = 5'000;
constexpr std::uintmax_t archiveBytes = 260'000;

Value madeEntry(const std::string& home, std::size_t number)
{
    const auto plan = everydayBook(number);
    const auto name = everydayFileName(number);
    const auto bookPath = cachesFolderIn(home) + "/_books/" + deletingPathExtension(name);
    BookInfo book;
    book.setEpubPath(libraryFolderIn(home) + "/" + name);
    book.setTitle(plan.title);
    book.setAuthor(plan.author);
    book.setIsbn(plan.identifier);
    book.setImgData(Data(madeSmallCover(number)));
    book.setBookPath(bookPath);
    Value::Array files;
    Value::Array content;
    for (std::size_t i = 1; i <= plan.chapters.size(); ++i) {
        const auto path = bookPath + "/OEBPS/text/chapter" + std::to_string(i) + ".xhtml";
        files.emplace_back(path);
        content.emplace_back(Value::Dictionary { { "src", path }, { "text", plan.title }, { "level", 1 } });
    }
    book.setFilePaths(std::move(files));
    book.setContent(std::move(content));
    return entryFromBook(book);
}

}

std::string libraryFolderIn(const std::string& home)
{
    return home + "/Documents/ePubLibrary";
}

std::string defaultsFolderIn(const std::string& home)
{
    return home + "/.local/share/" PAGORA_IDENTIFIER;
}

std::string cachesFolderIn(const std::string& home)
{
    return home + "/.cache/" PAGORA_IDENTIFIER;
}

void makeCatalogue(const std::string& home, std::size_t count, std::size_t firstNumber)
{
    std::filesystem::create_directories(libraryFolderIn(home));
    std::filesystem::create_directories(defaultsFolderIn(home));
    UserDefaults defaults(defaultsFolderIn(home));
    storeStartUpDefaults(defaults);
    defaults.setObject(defaults_keys::BundleVersion, PAGORA_VERSION);
    defaults.setObject(defaults_keys::PreviousSuccessfulLaunch, true);
    Value::Array entries;
    while (entries.size() < count) {
        for (const auto end = std::min(count, entries.size() + portion); entries.size() < end;) {
            const auto number = firstNumber + entries.size();
            entries.push_back(madeEntry(home, number));
            const auto archive = libraryFolderIn(home) + "/" + everydayFileName(number);
            std::ofstream(archive, std::ios::binary).close();
            std::filesystem::resize_file(archive, archiveBytes);
        }
        defaults.setObject(defaults_keys::BookData, entries);
        defaults.synchronize();
    }
    defaults.waitForBackup();
}

}
