#include "marks/Anchors.hpp"

#include "find/ChapterText.hpp"
#include "marks/AnchorSearch.hpp"

namespace pagora {

std::vector<std::optional<MarkAnchor>> findMarks(const std::vector<Mark>& marks, const MarkedDocuments& documents)
{
    AnchorSearch search(documents);
    std::vector<std::optional<MarkAnchor>> anchors;
    anchors.reserve(marks.size());
    for (const auto& mark : marks)
        anchors.push_back(search.find(mark.text));
    return anchors;
}

MarkedText markedTextAt(const MarkedDocuments& documents, const MarkAnchor& place)
{
    MarkedText text;
    text.source = documents.sourceOf(place.chapter);
    text.exact = place.text;
    const auto whole = chapterTextOf(documents.paths.at(place.chapter), documents.folder);
    if (!whole)
        return text;
    const ChapterUnits units(whole->text);
    const auto found = placeOfText(units, place);
    if (!found)
        return text;
    text.exact = units.between(found->start, found->end);
    text.before = units.before(found->start, marksContext);
    text.after
        = found->start == found->end ? units.from(found->start, marksContext) : units.after(found->end, marksContext);
    text.start = units.characterAt(found->start);
    text.end = found->start == found->end ? *text.start : units.characterAt(found->end - 1) + 1;
    return text;
}

}
