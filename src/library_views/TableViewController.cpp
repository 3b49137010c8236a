#include "library_views/TableViewController.hpp"

namespace pagora {

void TableViewController::mouseDoubleClick()
{
    if (!bookArray().selectionIndexes().empty() && _mainController)
        _mainController->sendDoubleClick();
}

}
