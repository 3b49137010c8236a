#include "library_views/ShownBooks.hpp"

#include <algorithm>

namespace pagora {

std::vector<std::size_t> ShownBooks::indexesAt(const std::vector<std::size_t>& positions) const
{
    std::vector<std::size_t> indexes;
    indexes.reserve(positions.size());
    for (const auto position : positions) {
        if (position < size())
            indexes.push_back(indexAt(position));
    }
    std::sort(indexes.begin(), indexes.end());
    return indexes;
}

std::vector<std::size_t> ShownBooks::positionsOf(const std::vector<std::size_t>& indexes) const
{
    if (!_indexes || indexes.empty())
        return indexes;
    std::vector<bool> asked(_books->size());
    for (const auto index : indexes) {
        if (index < asked.size())
            asked[index] = true;
    }
    std::vector<std::size_t> positions;
    positions.reserve(std::min(indexes.size(), size()));
    for (std::size_t position = 0; position < size(); ++position) {
        if (asked[(*_indexes)[position]])
            positions.push_back(position);
    }
    return positions;
}

}
