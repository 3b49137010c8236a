#include "marks/KeptMarks.hpp"

#include <algorithm>
#include <tuple>
#include <utility>

namespace pagora {

namespace {

bool isBefore(const KeptMarks::Pointer& first, const KeptMarks::Pointer& second)
{
    const auto place = [](const std::optional<MarkAnchor>& anchor) {
        return std::tuple(!anchor, anchor ? anchor->chapter : 0, anchor ? anchor->start : 0, anchor ? anchor->end : 0);
    };
    return place(first->anchor) < place(second->anchor);
}

}

KeptMarks::KeptMarks()
    : KeptMarks(std::vector<KeptMark>())
{
}

KeptMarks::KeptMarks(std::vector<KeptMark> marks)
{
    auto list = std::make_shared<std::vector<Pointer>>();
    list->reserve(marks.size());
    for (auto& mark : marks)
        list->push_back(std::make_shared<const KeptMark>(std::move(mark)));
    std::stable_sort(list->begin(), list->end(), isBefore);
    _list = std::move(list);
}

KeptMarks::KeptMarks(std::shared_ptr<const std::vector<Pointer>> list)
    : _list(std::move(list))
{
}

std::span<const KeptMarks::Pointer> KeptMarks::inChapter(std::size_t chapter) const
{
    const auto isBeforeChapter
        = [](const Pointer& kept, std::size_t wanted) { return kept->anchor && kept->anchor->chapter < wanted; };
    const auto first = std::lower_bound(_list->begin(), _list->end(), chapter, isBeforeChapter);
    const auto last = std::lower_bound(first, _list->end(), chapter + 1, isBeforeChapter);
    return { first, last };
}

const KeptMark* KeptMarks::find(const std::string& id) const
{
    const auto found
        = std::find_if(_list->begin(), _list->end(), [&id](const Pointer& kept) { return kept->mark.id == id; });
    return found == _list->end() ? nullptr : found->get();
}

KeptMarks KeptMarks::with(KeptMark mark) const
{
    auto list = std::make_shared<std::vector<Pointer>>(*_list);
    std::erase_if(*list, [&mark](const Pointer& kept) { return kept->mark.id == mark.mark.id; });
    auto added = std::make_shared<const KeptMark>(std::move(mark));
    list->insert(std::upper_bound(list->begin(), list->end(), added, isBefore), added);
    return KeptMarks(std::move(list));
}

KeptMarks KeptMarks::without(const std::string& id) const
{
    auto list = std::make_shared<std::vector<Pointer>>(*_list);
    std::erase_if(*list, [&id](const Pointer& kept) { return kept->mark.id == id; });
    return KeptMarks(std::move(list));
}

}
