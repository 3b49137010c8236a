#include "library_views/TableViewController.hpp"

namespace pagora {

void TableViewController::putBookList(BookArray array)
{
    books().setContent(std::move(array));
}

void TableViewController::mouseDoubleClick()
{
    if (!bookArray().selectionIndexes().empty() && _mainController)
        _mainController->sendDoubleClick();
}

void TableViewController::userDidSelect()
{
    auto& selected = _selection.listSelection;
    selected = bookArray().selectedObjects();
    setToolbarReadButton(selected.size(), selected.empty() ? nullptr : selected.front());
}

void TableViewController::userDidClick(int clickCount)
{
    userDidSelect();
    if (clickCount >= 2)
        mouseDoubleClick();
}

void TableViewController::removeBooks()
{
    processAlert(removeBooksText, [this] { remove(_selection.listSelection); });
}

}
