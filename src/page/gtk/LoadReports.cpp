#include "page/gtk/LoadReports.hpp"

namespace pagora {

namespace {

constexpr std::size_t maxRequestLength = 65536;
constexpr std::size_t maxRequests = 1000;

}

std::uint64_t LoadReports::begin(const Url& url)
{
    _url = url;
    _documentReported = false;
    _finished = false;
    _heldBack = 0;
    _requests.clear();
    ++_load;
    selectionDidChange(std::nullopt);
    return _load;
}

void LoadReports::documentComplete(std::uint64_t load)
{
    if (isCurrent(load) && !_documentReported)
        reportDocument();
}

void LoadReports::reportDocument()
{
    const std::uint64_t load = _load;
    _documentReported = true;
    _delegate->resourceDidFinishLoading(source(true));
    // A report may start another load.
    while (load == _load && _delegate && _heldBack > 0) {
        --_heldBack;
        _delegate->resourceDidFinishLoading(source(false));
    }
}

void LoadReports::resourceFinished(std::uint64_t load)
{
    if (!isCurrent(load))
        return;
    if (_documentReported)
        _delegate->resourceDidFinishLoading(source(false));
    else
        ++_heldBack;
}

void LoadReports::resourceFailed(std::uint64_t load)
{
    if (isCurrent(load))
        _delegate->resourceDidFailLoading(source(false));
}

void LoadReports::everythingFinished(std::uint64_t load)
{
    if (!isCurrent(load))
        return;
    const bool wasReported = _documentReported;
    _finished = true;
    if (!wasReported)
        reportDocument();
    else if (_closing == ClosingReport::Yes)
        _delegate->resourceDidFinishLoading(source(true));
    if (load == _load && _delegate)
        _delegate->didFinishLoadForFrame(source(true));
}

void LoadReports::documentFailed(std::uint64_t load)
{
    if (!isCurrent(load))
        return;
    _finished = true;
    _delegate->resourceDidFailLoading(source(true));
}

void LoadReports::pageFollowsLink()
{
    if (_delegate)
        _delegate->pageFollowsLink();
}

void LoadReports::pointsAtLink(const std::optional<PointedLink>& link)
{
    if (_delegate)
        _delegate->pointsAtLink(link);
}

void LoadReports::selectionDidChange(const std::optional<PageSelection>& selection)
{
    if (_delegate)
        _delegate->selectionDidChange(selection);
}

void LoadReports::pressesMark(const std::optional<PressedMark>& mark)
{
    if (_delegate && mark)
        _delegate->pressesMark(*mark);
}

void LoadReports::willSendRequest(const Url& url, RequestedBy requestedBy)
{
    // Requests of the page itself are reported up to a length and a number that books never reach.
    if (requestedBy == RequestedBy::Page && (url.text().size() > maxRequestLength || _requests.size() >= maxRequests))
        return;
    const bool isNew = _requests.insert(url.text()).second;
    if ((isNew || requestedBy == RequestedBy::User) && _delegate)
        _delegate->resourceWillSendRequest(url, requestedBy);
}

}
