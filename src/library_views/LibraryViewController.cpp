#include "library_views/LibraryViewController.hpp"

namespace pagora {

LibraryViewController::LibraryViewController(const char* layout, LibraryViewHost& host, LibrarySelection& selection)
    : _host(host)
    , _selection(selection)
    , _view(host.loadView(layout, _books))
{
    _view->setHandler(this);
}

LibraryViewController::~LibraryViewController()
{
    _view->setHandler(nullptr);
    _books.setObserver(nullptr);
}

void LibraryViewController::setToolbarReadButton(std::size_t selectedBooks, const BookInfoPtr& book)
{
    const bool exactlyOne = selectedBooks == 1;
    _selection.selectedBook = exactlyOne ? book : nullptr;
    _host.readerButton().setEnabled(exactlyOne);
}

}
