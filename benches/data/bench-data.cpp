// Makes data for the benches, identical on every machine:
//
//     bench-data books FOLDER [COUNT]      COUNT (1000) books of 20 chapters of about 15 kB
//     bench-data chapter-50k FOLDER        chapter-50k.epub: 20 chapters of 50 kB
//     bench-data chapter-500k FOLDER       chapter-500k.epub: a chapter of 500 kB and one of 50 kB; archive of 2 MB
//     bench-data chapter-3m FOLDER         chapter-3m.epub: a chapter of 3 MB and one of 50 kB
//     bench-data chapter-8m FOLDER         chapter-8m.epub: a chapter of 8 MB and one of 50 kB
//     bench-data fixed FOLDER              fixed.epub: a fixed-layout book of 60 pages with pictures
//     bench-data archive FOLDER            archive.epub: 200 MB in 2,000 members, half of them text
//     bench-data catalogue FOLDER COUNT    FOLDER as a home folder with a library of COUNT books
//
// FOLDER is created if it is missing. Existing files are overwritten. The chapters of a book with one large chapter are
// OEBPS/text/chapter0001.xhtml and so on.

#include "benches/data/MadeBooks.hpp"
#include "benches/data/MadeCatalogue.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>

namespace {

using pagora::bench::BookPlan;

constexpr std::size_t kB = 1'000;
constexpr std::size_t MB = 1'000'000;

BookPlan plan(const std::string& title, std::vector<std::size_t> chapters, std::vector<std::size_t> pictures = {})
{
    return { title, "Ada Marlow", "9780000000001", std::move(chapters), std::move(pictures), false };
}

std::map<std::string, BookPlan> bookKinds()
{
    using Sizes = std::vector<std::size_t>;
    std::map<std::string, BookPlan> kinds;
    kinds["chapter-50k"] = plan("Chapters of 50 kB", Sizes(20, 50 * kB));
    kinds["chapter-500k"] = plan("A Chapter of 500 kB", { 500 * kB, 50 * kB }, Sizes(16, 100 * kB));
    kinds["chapter-3m"] = plan("A Chapter of 3 MB", { 3 * MB, 50 * kB });
    kinds["chapter-8m"] = plan("A Chapter of 8 MB", { 8 * MB, 50 * kB });
    kinds["fixed"] = plan("Fixed Pages", Sizes(60, 1));
    kinds["fixed"].isFixed = true;
    kinds["archive"] = plan("Two Thousand Members", Sizes(994, 150 * kB), Sizes(1'000, 138 * kB));
    return kinds;
}

int usage()
{
    std::cerr << "bench-data KIND FOLDER [COUNT]; KIND is books, catalogue";
    for (const auto& [kind, plan] : bookKinds())
        std::cerr << ", " << kind;
    std::cerr << "\n";
    return 2;
}

}

int main(int count, char** arguments)
{
    if (count < 3)
        return usage();
    const std::string kind = arguments[1];
    std::filesystem::create_directories(arguments[2]);
    const auto folder = std::filesystem::canonical(arguments[2]).string();
    const std::size_t number = count > 3 ? std::strtoul(arguments[3], nullptr, 10) : 1'000;
    const auto kinds = bookKinds();
    if (kind == "books")
        pagora::bench::writeEverydayBooks(folder, number);
    else if (kind == "catalogue")
        pagora::bench::makeCatalogue(folder, number);
    else if (const auto book = kinds.find(kind); book != kinds.end())
        pagora::bench::writeBook(folder + "/" + kind + ".epub", book->second, 1);
    else
        return usage();
    return 0;
}
