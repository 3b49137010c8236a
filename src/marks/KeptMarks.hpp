#pragma once

#include "marks/Mark.hpp"
#include "marks/MarkAnchor.hpp"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace pagora {

struct KeptMark {
    Mark mark;
    // Nullopt if the text was not found in the book.
    std::optional<MarkAnchor> anchor;
};

// Marks in the order of the book; marks without a place are last. Immutable: copies share their data, so other threads
// can work with a copy. A change makes a new list that shares the marks. Thread-safe.
class KeptMarks {
public:
    using Pointer = std::shared_ptr<const KeptMark>;

    KeptMarks();
    explicit KeptMarks(std::vector<KeptMark> marks);

    std::size_t size() const { return _list->size(); }
    bool empty() const { return _list->empty(); }
    const KeptMark& operator[](std::size_t index) const { return *_list->at(index); }
    const std::vector<Pointer>& pointers() const { return *_list; }
    // Returns the marks in a spine document.
    std::span<const Pointer> inChapter(std::size_t chapter) const;
    // Returns null if no mark has that identifier.
    const KeptMark* find(const std::string& id) const;

    // `with` returns a list with this mark added, or replacing the mark with its identifier. `without` returns a list
    // without the mark with that identifier.
    KeptMarks with(KeptMark mark) const;
    KeptMarks without(const std::string& id) const;

private:
    explicit KeptMarks(std::shared_ptr<const std::vector<Pointer>> list);

    std::shared_ptr<const std::vector<Pointer>> _list;
};

}
