#pragma once

#include "page/WebView.hpp"

#include <set>
#include <string>

namespace pagora {

// Selects the requests that are passed to the desktop: those for a server or another program. A request of the page
// itself is passed once per book and only up to a number, so that a page cannot flood the desktop. Both readers use it.
// Main thread only.
class LeavingLinks {
public:
    // Returns whether to pass this request on; it then counts as passed.
    bool take(const Url& url, RequestedBy requestedBy);
    // Starts anew for another book.
    void clear() { _taken.clear(); }

private:
    std::set<std::string> _taken;
};

}
