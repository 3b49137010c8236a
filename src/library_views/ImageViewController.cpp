#include "library_views/ImageViewController.hpp"

namespace pagora {

void ImageViewController::putBookImages(BookArray array)
{
    books().setContent(std::move(array));
}

void ImageViewController::userDidSelect()
{
    auto& indexes = _selection.gridSelection;
    indexes = bookController().selectionIndexes();
    setToolbarReadButton(indexes.size(), indexes.empty() ? nullptr : eBooks()[indexes.front()]);
    _multiSelection = indexes.size() >= 2;
}

void ImageViewController::userDidClick(int clickCount)
{
    userDidSelect();
    if (clickCount >= 2 && !_selection.gridSelection.empty() && _mainController)
        _mainController->sendDoubleClick();
}

void ImageViewController::removeBooks()
{
    const auto selected = bookController().selectedObjects();
    if (!selected.empty())
        processAlert(removeBooksText, [this, selected] { remove(selected); });
}

}
