#include "library_views/gtk/LibraryFinder.hpp"

#include <utility>

namespace pagora {

struct LibraryFinder::Request {
    Receiver receive;
};

LibraryFinder::LibraryFinder(RunLoop& runLoop)
    : _runLoop(runLoop)
{
}

LibraryFinder::~LibraryFinder() = default;

Worker& LibraryFinder::worker()
{
    if (!_worker)
        _worker = std::make_unique<Worker>();
    return *_worker;
}

BookIndex& LibraryFinder::indexOf(const BookArray& books)
{
    if (!_index || _index->books() != books)
        _index = std::make_unique<BookIndex>(books);
    return *_index;
}

void LibraryFinder::prepare(const BookArray& books)
{
    worker().perform([this, books] { indexOf(books).prepare(); });
}

void LibraryFinder::dropOthers(const BookArray& books)
{
    if (!_worker)
        return;
    _worker->perform([this, books] {
        if (_index && _index->books() != books)
            _index = nullptr;
    });
}

LibraryFinder::Ticket LibraryFinder::find(const BookArray& books, BookQuery query, Receiver receive)
{
    auto ticket = std::make_shared<Request>(Request { std::move(receive) });
    worker().perform([this, waiting = std::weak_ptr<Request>(ticket), books, query = std::move(query)] {
        const auto isWanted = [&waiting] { return !waiting.expired(); };
        if (!isWanted())
            return;
        auto found = indexOf(books).find(query, isWanted);
        if (!found)
            return;
        _runLoop.postToMainThread([waiting, found = std::move(*found)] {
            if (const auto request = waiting.lock())
                request->receive(found);
        });
    });
    return ticket;
}

}
