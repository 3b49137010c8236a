#include "library_views/LibraryBookView.hpp"

#include "base/Translation.hpp"

#include <utility>

namespace pagora {

namespace {

constexpr int secondButton = 1001;

constexpr const char* moveToTrashText = N_("Are You sure to move epub to Trash?");
constexpr const char* removeItemText = N_("Are You sure to remove epub from library?");
constexpr const char* removeBooksText = N_("Are You sure to remove epub(s) from library?");

}

LibraryBookView::LibraryBookView(
    LibraryViewHost& host, LibrarySelection& selection, ArrayController& books, LibraryViewSurface& surface)
    : _selection(selection)
    , _books(books)
    , _host(host)
    , _surface(surface)
    , _popupMenu({ { _("Read this book"), [this] { sendBookForReading(); } },
          { _("Show in Finder"), [this] { showFileInFinder(); } }, {},
          { _("Move to Trash"), [this] { moveToTrash(); } } })
    , _removeMenu({ { _("Remove epubs from library"), [this] { removeBooks(); } } })
{
}

void LibraryBookView::processAlert(const std::string& text, const BookInfoPtr&, std::function<void()> proceed)
{
    const char* agree = text.find("Trash") == std::string::npos ? _("Remove from library") : _("Move to Trash");
    _host.runAlert(_(text.c_str()), _("Cancel"), agree, [proceed = std::move(proceed)](int code) {
        if (code == secondButton)
            proceed();
    });
}

void LibraryBookView::sendBookForReading()
{
    if (_mainController)
        _mainController->sendDoubleClick();
}

void LibraryBookView::showFileInFinder()
{
    const auto& book = _selection.selectedBook;
    if (_mainController && book && book->epubPath())
        _mainController->selectFile(*book->epubPath());
}

void LibraryBookView::moveToTrash()
{
    askAndTrash(moveToTrashText);
}

void LibraryBookView::removeItem()
{
    askAndTrash(removeItemText);
}

// The alert may outlive this view, so it refers only to the window and the hub.
void LibraryBookView::askAndTrash(const std::string& text)
{
    const auto book = _selection.selectedBook;
    if (!book)
        return;
    processAlert(text, book, [&host = _host, hub = _mainController, book] {
        host.readerButton().setEnabled(false);
        if (hub)
            hub->deleteItemFromCollection(book, ByRemovingFromDisk::Yes);
    });
}

void LibraryBookView::askToRemove(std::vector<BookInfoPtr> books)
{
    processAlert(removeBooksText, nullptr, [&host = _host, hub = _mainController, books = std::move(books)] {
        host.readerButton().setEnabled(false);
        if (hub)
            hub->deleteItemsFromLibrary(books);
    });
}

void LibraryBookView::setToolbarReadButton(const BookInfoPtr& onlyBook)
{
    _selection.selectedBook = onlyBook;
    _host.readerButton().setEnabled(onlyBook != nullptr);
}

}
