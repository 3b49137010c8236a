#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace pagora::bench {

// The content of a made book.
struct BookPlan {
    std::string title;
    std::string author;
    std::string identifier;
    // The approximate size of each chapter, in bytes. Each has an entry in the contents.
    std::vector<std::size_t> chapters;
    // The size of each additional picture. No chapter shows them.
    std::vector<std::size_t> pictures;
    // True if each chapter is a page of 600 by 800 with its own picture.
    bool isFixed = false;
};

// Writes the book as an archive: its contents as an NCX, and a cover of 900 by 1400 pixels and about 150 kB. The same
// seed gives the same book.
void writeBook(const std::string& path, const BookPlan& plan, std::uint64_t seed);

// Return a book of 20 chapters of about 15 kB each, and the name of its file; both depend only on the number.
BookPlan everydayBook(std::size_t number);
std::string everydayFileName(std::size_t number);
// Writes that many of them into a folder and returns their paths.
std::vector<std::string> writeEverydayBooks(const std::string& folder, std::size_t count);

}
