#pragma once

#include <string>
#include <vector>

namespace pagora::test {

// Books with one difficulty each, written on demand.
std::vector<std::string> madeBookNames();
// Writes the book of that name into the folder and returns the archive's path.
std::string writeMadeBook(const std::string& name, const std::string& folder);

// A page of paragraphs with the ids p0, p1, …, between `before` and `after`.
std::string chapterOf(
    int paragraphs, const std::string& before = {}, const std::string& after = {}, const std::string& attributes = {});

}
