#include "library_views/MyCollectionView.hpp"

namespace pagora {

void MyCollectionView::userDidSelect()
{
    _selection.gridSelection = _books.selectionIndexes();
    setToolbarReadButton();
    setMultiSelection(_selection.gridSelection.size() >= 2);
}

void MyCollectionView::mouseDown(int clickCount)
{
    userDidSelect();
    if (clickCount >= 2 && !_selection.gridSelection.empty() && _mainController)
        _mainController->sendDoubleClick();
}

void MyCollectionView::rightMouseUp(std::optional<std::size_t> item)
{
    if (!item)
        return;
    if (multiSelection()) {
        popUp(removeMenu());
        return;
    }
    _books.setSelectionIndexes({ *item });
    _selection.gridSelection = { *item };
    setToolbarReadButton();
    popUp(popupMenu());
}

void MyCollectionView::removeBooks()
{
    auto selected = _books.selectedObjects();
    if (!selected.empty())
        askToRemove(std::move(selected));
}

void MyCollectionView::setToolbarReadButton()
{
    const auto& indexes = _selection.gridSelection;
    const bool onlyOne = indexes.size() == 1 && indexes.front() < _books.content().size();
    LibraryBookView::setToolbarReadButton(onlyOne ? _books.content()[indexes.front()] : nullptr);
}

}
