#pragma once

#include "library_views/BookIndex.hpp"
#include "running/RunLoop.hpp"
#include "running/Worker.hpp"

#include <functional>
#include <memory>

namespace pagora {

// Finds and orders books in the background. Main thread only.
class LibraryFinder {
public:
    using Receiver = std::function<void(ShownBooks)>;
    // A pending search. Destroying it cancels the search.
    struct Request;
    using Ticket = std::shared_ptr<Request>;

    explicit LibraryFinder(RunLoop& runLoop);
    ~LibraryFinder();

    // `receive` is called later with the result.
    [[nodiscard]] Ticket find(const BookArray& books, BookQuery query, Receiver receive);
    // Builds the index of these books in advance.
    void prepare(const BookArray& books);
    // Releases the index of other books.
    void dropOthers(const BookArray& books);

private:
    // Returns the index of these books; replaces the previous index. Called on the worker's thread.
    BookIndex& indexOf(const BookArray& books);
    Worker& worker();

    RunLoop& _runLoop;
    // Accessed by the worker only.
    std::unique_ptr<BookIndex> _index;
    // Created with the first search.
    std::unique_ptr<Worker> _worker;
};

}
