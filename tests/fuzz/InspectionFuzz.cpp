#include "catalogue/CatalogueEntry.hpp"
#include "epub/EpubInspection.hpp"
#include "platform/Files.hpp"
#include "platform/Path.hpp"
#include "tests/fuzz/FuzzArchive.hpp"
#include "tests/fuzz/FuzzRun.hpp"
#include "tests/support/TemporaryFolder.hpp"

using namespace pagora;
using test::require;

namespace {

// Counts the lines on rejected files.
class Hub : public InspectionHub {
public:
    Hub()
        : layout { _folder.path("library"), _folder.path("temp"), _folder.path("books"), _folder.path("data") }
    {
    }
    const LibraryFolders& folders() const override { return layout; }
    void addFaultyBook(const std::string& line) override
    {
        require(line.find(" --> ") != std::string::npos);
        ++lines;
    }
    void set_bookInfo(BookInfoPtr) override { }
    void set_epubPath(const std::string&) override { }

private:
    test::TemporaryFolder _folder;

public:
    const LibraryFolders layout;
    int lines = 0;
};

void checkBook(const BookInfo& book)
{
    const auto folder = book.bookPath().value();
    for (const auto& file : book.files())
        require(isPathInside(file.path(), folder));
    const auto content = book.content();
    for (const auto& entry : content.value())
        require(entry.find("src")->string() && entry.find("level")->integer());
    require(bookFromEntry(entryFromBook(book))->title() == book.title());
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Hub hub;
    static test::MemoryFile file;
    const auto bytes = test::archiveFrom(test::inputBytes(data, size));
    const test::FuzzRun run;
    hub.lines = 0;
    const auto book = EpubInspection(hub).getBookInfo(file.write(bytes), StopOnErrors::Yes);
    require(hub.lines == (book ? 0 : 1));
    if (book)
        checkBook(*book);
    removeItem(hub.layout._dataPath);
    return 0;
}
