#include "library_views/MyTableView.hpp"

#include <algorithm>

namespace pagora {

void MyTableView::userDidSelect()
{
    _selection.listSelection = _books.selectedObjects();
    setToolbarReadButton();
}

void MyTableView::userWillClick()
{
    if (!multiSelection())
        _books.setSelectionIndexes({});
}

void MyTableView::mouseDown(int clickCount)
{
    userDidSelect();
    if (clickCount >= 2 && _tableController)
        _tableController->mouseDoubleClick();
}

void MyTableView::rightMouseUp(std::optional<std::size_t> item)
{
    if (!item)
        return;
    const auto& selected = _books.selectionIndexes();
    if (*item < _books.content().size() && !std::binary_search(selected.begin(), selected.end(), *item))
        _books.setSelectionIndexes({ *item });
    _selection.listSelection = _books.selectedObjects();
    if (_selection.listSelection.size() >= 2) {
        popUp(removeMenu());
    } else if (_selection.listSelection.size() == 1) {
        setToolbarReadButton();
        popUp(popupMenu());
    }
}

void MyTableView::removeBooks()
{
    askToRemove(_selection.listSelection);
}

void MyTableView::setToolbarReadButton()
{
    const auto& selected = _selection.listSelection;
    LibraryBookView::setToolbarReadButton(selected.size() == 1 ? selected.front() : nullptr);
}

}
