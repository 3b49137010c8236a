#include "base/Path.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "epub/EpubInspection.hpp"
#include "files/Files.hpp"
#include "tests/fuzz/FuzzArchive.hpp"
#include "tests/fuzz/FuzzRun.hpp"
#include "tests/support/FakeInspectionHub.hpp"
#include "tests/support/TemporaryFolder.hpp"

using namespace pagora;
using test::require;

namespace {

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
    static const test::TemporaryFolder root;
    static test::FakeInspectionHub hub(root.path());
    static test::MemoryFile file;
    const auto bytes = test::archiveFrom(test::inputBytes(data, size));
    const test::FuzzRun run;
    hub.faultyBooks.clear();
    const auto book = EpubInspection(hub).getBookInfo(file.write(bytes), StopOnErrors::Yes);
    require(hub.faultyBooks.size() == (book ? 0 : 1));
    for (const auto& line : hub.faultyBooks)
        require(line.find(" --> ") != std::string::npos);
    if (book)
        checkBook(*book);
    removeItem(hub.layout._dataPath);
    return 0;
}
