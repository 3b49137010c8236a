#include "reader/JumpHistory.hpp"

namespace pagora {

namespace {

// The maximum number of pages in the history; the oldest are dropped.
constexpr std::size_t maxPages = 200;

void remember(std::deque<SeenPage>& pages, const SeenPage& page)
{
    if (!pages.empty() && pages.back() == page)
        return;
    pages.push_back(page);
    if (pages.size() > maxPages)
        pages.pop_front();
}

}

void JumpHistory::leave(const SeenPage& page)
{
    remember(_back, page);
    _forward.clear();
}

void JumpHistory::clear()
{
    _back.clear();
    _forward.clear();
}

std::optional<SeenPage> JumpHistory::step(const std::optional<SeenPage>& seen, Pages& from, Pages& to)
{
    while (!from.empty() && seen && from.back() == *seen)
        from.pop_back();
    if (from.empty())
        return std::nullopt;
    const auto page = from.back();
    from.pop_back();
    if (seen)
        remember(to, *seen);
    return page;
}

}
