#pragma once

#include "page/WebView.hpp"

#include <set>
#include <string>

namespace pagora {

// Which requests are handed to the desktop: those that leave the book for a server or another program. What the page
// asks for by itself is handed over once a book and only so many times, so that it cannot flood the desktop. Both
// readers use it. Main thread.
class LeavingLinks {
public:
    // Whether this request is to be handed over; it then counts as handed over.
    bool take(const Url& url, RequestedBy requestedBy);
    // Starts anew for another book.
    void clear() { _taken.clear(); }

private:
    std::set<std::string> _taken;
};

}
