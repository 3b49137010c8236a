#pragma once

#include "platform/Url.hpp"

#include <set>
#include <string>

namespace pagora {

// Which of a page's requests are handed to the desktop: those that leave the book for a server or another program, each
// address once a book and only so many of them, so that a page cannot flood the desktop. Both readers use it. Main
// thread.
class LeavingLinks {
public:
    // Whether this request is to be handed over; it then counts as handed over.
    bool take(const Url& url);
    // Starts anew for another book.
    void clear() { _taken.clear(); }

private:
    std::set<std::string> _taken;
};

}
