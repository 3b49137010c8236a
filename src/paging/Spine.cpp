#include "paging/Spine.hpp"

#include <utility>

namespace pagora {

void Spine::setDocuments(std::vector<Url> splits)
{
    bookSplits = std::move(splits);
    splitIndexDict.clear();
    for (std::size_t i = 0; i < bookSplits.size(); ++i)
        splitIndexDict[bookSplits[i].lastPathComponent()] = i;
    missingSplits.clear();
}

std::uint64_t Spine::indexOf(const Url& url) const
{
    const auto found = splitIndexDict.find(url.lastPathComponent());
    return found == splitIndexDict.end() ? 0 : found->second;
}

std::optional<std::uint64_t> Spine::next(Direction direction) const
{
    auto index = activeSplitIndex;
    do {
        if (direction == Direction::Back && index == 0)
            return std::nullopt;
        index += static_cast<std::uint64_t>(direction);
        if (index >= bookSplits.size())
            return std::nullopt;
    } while (missingSplits.contains(index));
    return index;
}

void Spine::requestFailed()
{
    if (requestedSplit)
        missingSplits.insert(*requestedSplit);
}

}
