#include "tests/killing/Home.hpp"

#include "base/Numbers.hpp"
#include "base/Path.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "catalogue/Settings.hpp"
#include "files/Files.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <filesystem>

namespace pagora::test {

namespace {

constexpr int bookCount = 10;

bool isCopy(const std::string& path, const std::string& master)
{
    return fileExists(path) && contentsOf(path) == contentsOf(master);
}

bool isWhole(const Value& entry)
{
    using namespace entry_keys;
    for (const char* key :
        { Type, ePubPath, Title, Author, ISBN, LastInd, LastCap, fixedWidth, fixedHeight, Files, Content, BookLoc }) {
        if (!entry.find(key))
            return false;
    }
    const auto* cover = entry.find(CoverImage);
    const auto bytes = cover && cover->data() ? cover->data()->bytes() : std::string();
    return bytes.starts_with("\xff\xd8") && bytes.ends_with("\xff\xd9") && entry.find(Files)->array()->size() == 3;
}

}

std::vector<std::string> bookNames()
{
    std::vector<std::string> names;
    for (int i = 0; i < bookCount; ++i)
        names.push_back("Book-" + std::to_string(10 + i) + ".epub");
    return names;
}

std::string KeptState::text() const
{
    std::string text = "setting " + std::to_string(setting);
    for (const auto& [name, place] : books)
        text += ", " + name + " at " + std::to_string(place);
    return text;
}

Home::Home(std::string path)
    : _path(std::move(path))
{
}

void Home::fill() const
{
    createFolder(trash());
    for (const auto& name : bookNames()) {
        makeFile(download(name), "");
        createFolder(_path + "/Masters");
        const auto stem = deletingPathExtension(name);
        EpubBuilder().title(stem).identifier("978" + stem).write(master(name));
        std::filesystem::copy_file(master(name), download(name), std::filesystem::copy_options::overwrite_existing);
    }
}

std::set<std::string> Home::archives() const
{
    std::set<std::string> names;
    for (const auto& name : folderEntries(library()).value_or(std::vector<std::string> {})) {
        if (pathExtension(name) == "epub")
            names.insert(name);
    }
    return names;
}

std::string Home::fault() const
{
    for (const auto& name : archives()) {
        if (!isCopy(library() + "/" + name, master(name)))
            return name + " in the library folder is not whole";
    }
    for (const auto& name : bookNames()) {
        if (!isCopy(library() + "/" + name, master(name)) && !isCopy(download(name), master(name))
            && !isCopy(trash() + "/" + name, master(name)))
            return "there is no whole archive left of " + name;
    }
    for (const auto& name : folderEntries(store()).value_or(std::vector<std::string> {})) {
        if (name.starts_with("defaults-damaged") || name.starts_with("defaults-newer"))
            return "a store was set aside as " + name;
    }
    return {};
}

KeptState keptState(const Value& values, std::string& fault)
{
    KeptState state;
    state.setting = integerFrom(values.find(defaults_keys::Columns));
    const auto* entries = values.find(defaults_keys::BookData);
    if (!entries || !entries->array())
        return state;
    for (const auto& entry : *entries->array()) {
        if (!isWhole(entry))
            fault = "an entry is not whole";
        const auto name = lastPathComponent(stringFrom(entry.find(entry_keys::ePubPath)).value_or(""));
        if (!state.books.emplace(name, integerFrom(entry.find(entry_keys::LastCap))).second)
            fault = name + " is catalogued twice";
    }
    return state;
}

}
