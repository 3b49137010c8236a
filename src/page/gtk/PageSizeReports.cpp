#include "page/gtk/PageSizeReports.hpp"

#include <glibmm/main.h>

#include <utility>

namespace pagora {

namespace {

// In milliseconds.
constexpr unsigned resizeTimeout = 200;

}

void PageSizeReports::frameDidChange(const Rect& frame, bool pageFollows)
{
    _awaitsPage = pageFollows && _pageSize != frame;
    if (!_awaitsPage)
        return report();
    _timer.disconnect();
    _timer = Glib::signal_timeout().connect(
        [this] {
            report();
            return false;
        },
        resizeTimeout);
}

void PageSizeReports::pageDidChange(const Rect& size, const Rect& frame)
{
    _pageSize = size;
    // Reports again if the page answered too late for the first report.
    if (size == frame && std::exchange(_awaitsPage, false))
        report();
}

void PageSizeReports::report()
{
    _timer.disconnect();
    _report();
}

}
