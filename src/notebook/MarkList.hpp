#pragma once

#include "marks/KeptMarks.hpp"
#include "notebook/MarksPane.hpp"

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace pagora {

// Numbers identifiers in the order of the first request. Thread-safe.
class MarkNumbers {
public:
    std::size_t numberOf(const std::string& id);
    // Returns nullopt if no identifier has that number.
    std::optional<std::string> idOf(std::size_t number) const;

private:
    mutable std::mutex _mutex;
    std::unordered_map<std::string, std::size_t> _numbers;
    std::vector<std::string> _ids;
};

// The input of the list.
struct MarksToList {
    KeptMarks marks;
    // Marks of the book's makers; listed last.
    KeptMarks bundledMarks;
    // The names by spine index.
    std::shared_ptr<const std::vector<std::string>> chapterNames;
    MarksChoice choice;
    std::shared_ptr<MarkNumbers> numbers;
};

// Returns the lines of the marks that match the filter, with a heading for each chapter. Long texts are truncated.
// Takes time proportional to the number of marks, so it is called in the background. Thread-safe.
std::vector<MarkLine> linesOf(const MarksToList& given);
// Returns the new lines, and the number of lines at both ends that are the same as before. Thread-safe.
ListedMarks listedAfter(const MarkLines& before, std::vector<MarkLine> lines);

// Returns the text that represents a mark; for a bookmark, the text after it. Empty on a page without text.
std::string shownTextOf(const KeptMark& kept);

}
