#include "notebook/MarkList.hpp"

#include "base/Path.hpp"
#include "base/SearchText.hpp"
#include "base/Translation.hpp"

#include <algorithm>
#include <utility>

namespace pagora {

namespace {

// In bytes; a line of the list shows less.
constexpr std::size_t maxTextLength = 512;

MarkLine::Kind lineKind(Mark::Kind kind)
{
    switch (kind) {
    case Mark::Kind::Bookmark:
        return MarkLine::Kind::Bookmark;
    case Mark::Kind::Highlight:
        return MarkLine::Kind::Highlight;
    default:
        return MarkLine::Kind::Note;
    }
}

// Truncates the text at a character boundary.
std::string beginningOf(const std::string& text)
{
    auto length = std::min(text.size(), maxTextLength);
    while (length < text.size() && length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    return text.substr(0, length);
}

class Chooser {
public:
    explicit Chooser(const MarksChoice& choice)
        : _choice(choice)
        , _wanted(searchText(choice.text))
    {
    }

    bool chooses(const KeptMark& kept) const
    {
        const auto& mark = kept.mark;
        if (_choice.kind && *_choice.kind != lineKind(mark.kind()))
            return false;
        if (!_choice.color.empty() && (mark.isBookmark || _choice.color != nameOf(mark.color)))
            return false;
        if (!_choice.tag.empty() && std::find(mark.tags.begin(), mark.tags.end(), _choice.tag) == mark.tags.end())
            return false;
        if (_wanted.empty())
            return true;
        return holds(shownTextOf(kept)) || holds(mark.note) || holds(joined(mark.tags, "\n"));
    }

private:
    bool holds(const std::string& text) const { return searchText(text).find(_wanted) != std::string::npos; }

    const MarksChoice& _choice;
    std::string _wanted;
};

}

std::size_t MarkNumbers::numberOf(const std::string& id)
{
    const std::scoped_lock lock(_mutex);
    const auto [found, isNew] = _numbers.emplace(id, _ids.size());
    if (isNew)
        _ids.push_back(id);
    return found->second;
}

std::optional<std::string> MarkNumbers::idOf(std::size_t number) const
{
    const std::scoped_lock lock(_mutex);
    return number < _ids.size() ? std::optional(_ids[number]) : std::nullopt;
}

std::string shownTextOf(const KeptMark& kept)
{
    if (!kept.mark.text.exact.empty())
        return kept.mark.text.exact;
    if (kept.anchor && !kept.anchor->text.empty())
        return kept.anchor->text;
    return kept.mark.text.after;
}

std::vector<MarkLine> linesOf(const MarksToList& given)
{
    const Chooser chooser(given.choice);
    std::vector<MarkLine> lines;
    std::optional<std::string> heading;
    const auto add = [&](const KeptMark& kept, const std::string& under, bool isMine) {
        if (!chooser.chooses(kept))
            return;
        if (heading != under)
            lines.push_back({ MarkLine::Kind::Heading, under, {}, {}, {}, 0, false, false });
        heading = under;
        lines.push_back({ lineKind(kept.mark.kind()), beginningOf(shownTextOf(kept)), beginningOf(kept.mark.note),
            nameOf(kept.mark.color), beginningOf(joined(kept.mark.tags, ", ")), given.numbers->numberOf(kept.mark.id),
            !kept.anchor, isMine });
    };
    const std::string lost = _("Not found in this edition");
    const std::string makers = _("From the makers of the book");
    for (const auto& kept : given.marks.pointers())
        add(*kept, kept->anchor ? given.chapterNames->at(kept->anchor->chapter) : lost, true);
    for (const auto& kept : given.bundledMarks.pointers())
        add(*kept, makers, false);
    return lines;
}

ListedMarks listedAfter(const MarkLines& before, std::vector<MarkLine> lines)
{
    const auto shorter = std::min(before->size(), lines.size());
    std::size_t start = 0;
    while (start < shorter && before->at(start) == lines[start])
        ++start;
    std::size_t end = 0;
    while (end < shorter - start && before->at(before->size() - 1 - end) == lines[lines.size() - 1 - end])
        ++end;
    return { std::make_shared<const std::vector<MarkLine>>(std::move(lines)), start, end };
}

}
