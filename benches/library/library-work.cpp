// Performs one operation on a library and prints its time in seconds:
//
//     library-work import HOME FOLDER     imports the books of FOLDER into the library of HOME
//     library-work save HOME              saves the position of one book, 50 times for 50 books; prints the median
//     library-work remove HOME            removes 100 books, with their archives, to the Trash
//     library-work unpack ARCHIVE FOLDER  unpacks a book
//     library-work launch HOME            launches, and waits a moment

#include "app/LibraryFiles.hpp"
#include "benches/library/BenchLibrary.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "epub/Unpacking.hpp"

#include <giomm/init.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace {

using namespace pagora;
using pagora::bench::BenchLibrary;

constexpr std::size_t timesSaved = 50;
constexpr std::size_t booksRemoved = 100;

double secondsFor(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double importBooks(const std::string& home, const std::string& folder)
{
    auto files = booksIn(folder);
    std::sort(files.begin(), files.end());
    BenchLibrary library(home);
    const auto before = library.controller().catalogue().count();
    double seconds = 0;
    library.performInBackground(
        [&] { seconds = secondsFor([&] { library.controller().import().booksFromFilesArray(files); }); });
    if (library.controller().catalogue().count() != before + files.size()) {
        std::cerr << "not all books were imported\n";
        std::exit(1);
    }
    return seconds;
}

double savePosition(const std::string& home)
{
    BenchLibrary library(home);
    auto& catalogue = library.controller().catalogue();
    const auto books = catalogue.bookList();
    std::vector<double> times;
    for (std::size_t i = 0; i < timesSaved; ++i) {
        const auto& book = (*books)[i * books->size() / timesSaved];
        times.push_back(secondsFor([&] {
            catalogue.replaceEntry(book, entryWithPosition(*catalogue.entryOf(book), 3, 1'200, 0.5));
            catalogue.save(library.controller().defaults());
        }));
    }
    std::nth_element(times.begin(), times.begin() + timesSaved / 2, times.end());
    return times[timesSaved / 2];
}

double removeBooks(const std::string& home)
{
    BenchLibrary library(home);
    auto& controller = library.controller();
    std::vector<BookInfoPtr> books;
    const auto all = controller.catalogue().bookList();
    for (std::size_t i = 0; i < booksRemoved; ++i)
        books.push_back((*all)[i * all->size() / booksRemoved]);
    return secondsFor([&] {
        controller.deleteItemsFromLibrary(books);
        library.waitFor([&] { return !std::filesystem::exists(*books.back()->epubPath()); });
    });
}

double unpackBook(const std::string& archive, const std::string& folder)
{
    BookInfo book;
    book.setEpubPath(archive);
    book.setBookPath(folder);
    return secondsFor([&] { unZipBook(book); });
}

}

int main(int count, char** arguments)
{
    Gio::init();
    const std::string kind = count > 2 ? arguments[1] : "";
    if (kind == "import" && count == 4)
        std::cout << importBooks(arguments[2], arguments[3]) << "\n";
    else if (kind == "save")
        std::cout << savePosition(arguments[2]) << "\n";
    else if (kind == "remove")
        std::cout << removeBooks(arguments[2]) << "\n";
    else if (kind == "unpack" && count == 4)
        std::cout << unpackBook(arguments[2], arguments[3]) << "\n";
    else if (kind == "launch")
        std::cout << secondsFor([&] { const BenchLibrary library(arguments[2]); }) << "\n";
    else
        return 2;
    return 0;
}
