#include "library_views/LibraryViews.hpp"

namespace pagora {

LibraryViews::LibraryViews(LibraryViewHost& host, LibraryHub& hub, std::function<BookArray()> bookList)
    : _host(host)
    , _mainController(hub)
    , _bookList(std::move(bookList))
{
}

LibraryViews::~LibraryViews()
{
    if (_currentContentView)
        _host.removeContentView(*_currentContentView);
}

void LibraryViews::showFirstView()
{
    show(_imageController).view().makeFirstResponder();
    _host.bListControl().setHidden(false);
    _imageMode = true;
}

// Replaces the view in the window. The old controller is destroyed last.
template <typename Controller>
Controller& LibraryViews::show(std::unique_ptr<Controller>& controller)
{
    if (_currentContentView)
        _host.removeContentView(*_currentContentView);
    controller = std::make_unique<Controller>(_host, _selection);
    controller->set_mainController(_mainController);
    _host.setContentView(controller->view());
    _activeViewController = controller.get();
    _currentContentView = &controller->view();
    return *controller;
}

void LibraryViews::takeImageView()
{
    if (_activeViewController && _activeViewController == _imageController.get())
        return;
    const auto released = std::move(_tableController);
    _host.readerButton().setEnabled(false);
    auto& grid = show(_imageController);
    grid.putBookImages(_bookList());
    grid.view().makeFirstResponder();
    _imageMode = true;
}

void LibraryViews::takeTableView()
{
    if (_activeViewController && _activeViewController == _tableController.get())
        return;
    const auto released = std::move(_imageController);
    _host.readerButton().setEnabled(false);
    auto& list = show(_tableController);
    list.putBookList(_bookList());
    list.view().makeFirstResponder();
    _imageMode = false;
}

void LibraryViews::bookListMode()
{
    if (_host.bListControl().selectedSegment() == 0)
        takeImageView();
    else
        takeTableView();
}

void LibraryViews::refreshBookView(BookArray books)
{
    if (_activeViewController && _activeViewController == _imageController.get())
        _imageController->putBookImages(std::move(books));
    else if (_tableController)
        _tableController->putBookList(std::move(books));
}

void LibraryViews::selectAll()
{
    if (!_activeViewController)
        return;
    _host.endSearch();
    _activeViewController->view().makeFirstResponder();
    _activeViewController->books().selectAll();
    _activeViewController->bookView().userDidSelect();
    if (_activeViewController == _imageController.get())
        _imageController->bookCollectionView().setMultiSelection(true);
}

}
