#include "library_views/LibraryViewController.hpp"

#include "base/Path.hpp"

#include <algorithm>

namespace pagora {

LibraryViewController::LibraryViewController(const char* layout, LibraryViewHost& host)
    : _host(host)
    , _view(host.loadView(layout, _books))
{
    _view->setDropDelegate(this);
}

LibraryViewController::~LibraryViewController()
{
    _view->setHandler(nullptr);
    _view->setDropDelegate(nullptr);
    _books.setObserver(nullptr);
}

void LibraryViewController::set_mainController(LibraryHub& hub)
{
    _mainController = &hub;
    bookView().set_mainController(hub);
}

DragOperation::Mask LibraryViewController::validateDrop(const DraggingInfo& drag)
{
    if (!_host.isActive())
        _host.activateIgnoringOtherApps();
    const auto isBook = [](const std::string& name) { return pathExtension(name) == "epub"; };
    if (drag.fileNames && std::none_of(drag.fileNames->begin(), drag.fileNames->end(), isBook))
        return DragOperation::None;
    return drag.sourceOperations & DragOperation::Generic;
}

bool LibraryViewController::acceptDrop(const DraggingInfo& drag)
{
    if (drag.fileNames && _mainController)
        _mainController->draggedEpubs(*drag.fileNames);
    return true;
}

}
