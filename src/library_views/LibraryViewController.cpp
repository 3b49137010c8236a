#include "library_views/LibraryViewController.hpp"

#include "base/Path.hpp"
#include "base/Translation.hpp"

#include <algorithm>

namespace pagora {

namespace {

bool holdsNoBook(const DraggingInfo& drag)
{
    const auto isBook = [](const std::string& name) { return pathExtension(name) == "epub"; };
    return drag.fileNames && std::none_of(drag.fileNames->begin(), drag.fileNames->end(), isBook);
}

}

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
    return holdsNoBook(drag) ? DragOperation::None : drag.sourceOperations & DragOperation::Generic;
}

std::string LibraryViewController::whyRefused(const DraggingInfo& drag) const
{
    return holdsNoBook(drag) ? _("Only files that end in “.epub” can be dropped here")
                             : _("The program that these files come from does not let them be dropped here");
}

bool LibraryViewController::acceptDrop(const DraggingInfo& drag)
{
    if (drag.fileNames && _mainController)
        _mainController->draggedEpubs(*drag.fileNames);
    return true;
}

}
