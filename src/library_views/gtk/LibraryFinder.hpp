#pragma once

#include "library_views/BookIndex.hpp"
#include "running/RunLoop.hpp"
#include "running/Worker.hpp"

#include <functional>
#include <memory>

namespace pagora {

// Finds and orders books in the background. Main thread.
class LibraryFinder {
public:
    using Receiver = std::function<void(ShownBooks)>;
    // A search that somebody waits for; dropping it calls it off.
    struct Request;
    using Ticket = std::shared_ptr<Request>;

    explicit LibraryFinder(RunLoop& runLoop);
    ~LibraryFinder();

    // `receive` is called later with what was found.
    [[nodiscard]] Ticket find(const BookArray& books, BookQuery query, Receiver receive);
    // Makes searches in these books ready before they are asked for.
    void prepare(const BookArray& books);
    // Lets go of what was made ready for other books.
    void dropOthers(const BookArray& books);

private:
    // The index of these books; the one before goes. The worker's thread.
    BookIndex& indexOf(const BookArray& books);
    Worker& worker();

    RunLoop& _runLoop;
    // The worker's, while there is one.
    std::unique_ptr<BookIndex> _index;
    // Made for the first search.
    std::unique_ptr<Worker> _worker;
};

}
