#pragma once

#include "base/Url.hpp"
#include "reader/Destination.hpp"

#include <deque>
#include <optional>

namespace pagora {

// A page that was shown: its document and its start.
struct SeenPage {
    Url document;
    OffsetInChapter place;
    bool operator==(const SeenPage&) const = default;
};

// The history of jumps: the pages before them, and the pages that were left by going back. Main thread only.
class JumpHistory {
public:
    // Adds the page that a jump leaves. Drops the pages to go forward to.
    void leave(const SeenPage& page);
    // Returns the page to go back to, and stores `seen`, the page that is shown, as one to go forward to. Skips pages
    // equal to `seen`. Nullopt if there is none.
    std::optional<SeenPage> back(const std::optional<SeenPage>& seen) { return step(seen, _back, _forward); }
    // Returns the page to go forward to, in the same way.
    std::optional<SeenPage> forward(const std::optional<SeenPage>& seen) { return step(seen, _forward, _back); }
    bool canGoBack() const { return !_back.empty(); }
    bool canGoForward() const { return !_forward.empty(); }
    void clear();

private:
    using Pages = std::deque<SeenPage>;
    static std::optional<SeenPage> step(const std::optional<SeenPage>& seen, Pages& from, Pages& to);

    Pages _back;
    Pages _forward;
};

}
