#include "library_views/LibraryViewController.hpp"

#include <utility>

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

void LibraryViewController::processAlert(const std::string& text, std::function<void()> proceed)
{
    constexpr int secondButton = 1001;
    const char* agree = text.find("Trash") == std::string::npos ? "Remove from library" : "Move to Trash";
    _host.runAlert(text, "Cancel", agree, [proceed = std::move(proceed)](int code) {
        if (code == secondButton)
            proceed();
    });
}

void LibraryViewController::remove(const std::vector<BookInfoPtr>& books)
{
    _host.readerButton().setEnabled(false);
    if (_mainController)
        _mainController->deleteItemsFromLibrary(books);
}

void LibraryViewController::setToolbarReadButton(std::size_t selectedBooks, const BookInfoPtr& book)
{
    const bool exactlyOne = selectedBooks == 1;
    _selection.selectedBook = exactlyOne ? book : nullptr;
    _host.readerButton().setEnabled(exactlyOne);
}

}
