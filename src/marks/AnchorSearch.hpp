#pragma once

#include "marks/ChapterUnits.hpp"
#include "marks/Mark.hpp"
#include "marks/MarkAnchor.hpp"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

namespace pagora {

// Where a text begins and ends, in places.
struct TextSpan {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
};

// Searches the documents of a book for the texts of marks, with a bound for all of them together. One thread.
class AnchorSearch {
public:
    // They outlive it.
    explicit AnchorSearch(const MarkedDocuments& documents);

    std::optional<MarkAnchor> find(const MarkedText& text);

private:
    // What is looked for, in units.
    struct Quote;
    struct Candidate;

    std::optional<Candidate> same(std::size_t chapter, const Quote& quote);
    std::optional<Candidate> similar(std::size_t chapter, const Quote& quote);
    std::optional<MarkAnchor> atPosition(std::size_t chapter, const MarkedText& text);
    std::optional<std::uint32_t> placeOfElement(std::size_t chapter, const std::string& id);
    MarkAnchor anchor(const Candidate& candidate);
    // The document's text; null where it cannot be read, or the work is done.
    const ChapterUnits* units(std::size_t chapter);
    bool spend(std::size_t work);

    const MarkedDocuments& _documents;
    std::map<std::size_t, std::unique_ptr<ChapterUnits>> _units;
    std::size_t _kept = 0;
    // In units of text that are looked at.
    std::size_t _workLeft;
};

// The span of a text that a page has at a place, in the document's own text: there, or the nearest of the same text.
std::optional<TextSpan> placeOfText(const ChapterUnits& units, const MarkAnchor& place);

}
