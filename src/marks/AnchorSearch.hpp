#pragma once

#include "marks/ChapterUnits.hpp"
#include "marks/Mark.hpp"
#include "marks/MarkAnchor.hpp"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

namespace pagora {

// The start and the end of a text, in places of `ChapterUnits`.
struct TextSpan {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
};

// Searches the documents of a book for the texts of marks. All searches of one object share a limit of work. Use each
// object on one thread only.
class AnchorSearch {
public:
    // `documents` must outlive this object.
    explicit AnchorSearch(const MarkedDocuments& documents);

    std::optional<MarkAnchor> find(const MarkedText& text);

private:
    // The searched text, in units.
    struct Quote;
    struct Candidate;

    std::optional<Candidate> same(std::size_t chapter, const Quote& quote);
    std::optional<Candidate> similar(std::size_t chapter, const Quote& quote);
    std::optional<MarkAnchor> atPosition(std::size_t chapter, const MarkedText& text);
    std::optional<std::uint32_t> placeOfElement(std::size_t chapter, const std::string& id);
    MarkAnchor anchor(const Candidate& candidate);
    // Returns the document's text; null if it cannot be read or the limit of work is reached.
    const ChapterUnits* units(std::size_t chapter);
    bool spend(std::size_t work);

    const MarkedDocuments& _documents;
    std::map<std::size_t, std::unique_ptr<ChapterUnits>> _units;
    std::size_t _kept = 0;
    // Remaining work, in units of text.
    std::size_t _workLeft;
};

// Returns the span of a text that is known from the shown page. `place` has the text and its position there, which may
// differ from the position in the document. Of several spans with the text, it is the nearest to the position. Returns
// nullopt if the text does not occur.
std::optional<TextSpan> placeOfText(const ChapterUnits& units, const MarkAnchor& place);

}
