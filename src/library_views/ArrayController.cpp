#include "library_views/ArrayController.hpp"

#include <algorithm>
#include <numeric>

namespace pagora {

void ArrayController::setContent(BookArray content)
{
    _content = std::move(content);
    _selection.clear();
    if (_observer) {
        _observer->contentDidChange();
        _observer->selectionDidChange();
    }
}

void ArrayController::setSelectionIndexes(std::vector<std::size_t> indexes)
{
    std::erase_if(indexes, [this](std::size_t index) { return index >= _content->size(); });
    std::sort(indexes.begin(), indexes.end());
    if (indexes == _selection)
        return;
    _selection = std::move(indexes);
    if (_observer)
        _observer->selectionDidChange();
}

void ArrayController::selectAll()
{
    std::vector<std::size_t> all(_content->size());
    std::iota(all.begin(), all.end(), std::size_t { 0 });
    setSelectionIndexes(std::move(all));
}

std::vector<BookInfoPtr> ArrayController::selectedObjects() const
{
    std::vector<BookInfoPtr> books;
    books.reserve(_selection.size());
    for (const auto index : _selection)
        books.push_back((*_content)[index]);
    return books;
}

}
