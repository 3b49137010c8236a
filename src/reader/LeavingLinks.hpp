#pragma once

#include "page/WebView.hpp"

#include <set>
#include <string>

namespace pagora {

// Selects the requests that are passed to the desktop: those for a server or another program. A request of the page
// itself is passed once per book and only up to a maximum number, so that a page cannot flood the desktop. Used by both
// readers. Main thread only.
class LeavingLinks {
public:
    // Returns whether to pass this request on, and then counts it as passed.
    bool take(const Url& url, RequestedBy requestedBy);
    // Forgets the passed requests. Called for another book.
    void clear() { _taken.clear(); }

private:
    std::set<std::string> _taken;
};

}
