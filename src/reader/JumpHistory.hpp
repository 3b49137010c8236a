#pragma once

#include "base/Url.hpp"
#include "reader/Destination.hpp"

#include <deque>
#include <optional>

namespace pagora {

// A page that was seen: its document and where it began.
struct SeenPage {
    Url document;
    OffsetInChapter place;
    bool operator==(const SeenPage&) const = default;
};

// The way through a book by jumps: the pages that were left by one, and those that the way back has left. Main thread
// only.
class JumpHistory {
public:
    // A jump leaves this page. There is no way on from here.
    void leave(const SeenPage& page);
    // The page to go back to from the one that is seen, to which the way on then leads; missing at the start of the
    // way. Pages that are seen already are passed over.
    std::optional<SeenPage> back(const std::optional<SeenPage>& seen) { return step(seen, _back, _on); }
    // The page to go on to, likewise.
    std::optional<SeenPage> on(const std::optional<SeenPage>& seen) { return step(seen, _on, _back); }
    bool leadsBack() const { return !_back.empty(); }
    bool leadsOn() const { return !_on.empty(); }
    void clear();

private:
    using Pages = std::deque<SeenPage>;
    static std::optional<SeenPage> step(const std::optional<SeenPage>& seen, Pages& from, Pages& to);

    Pages _back;
    Pages _on;
};

}
