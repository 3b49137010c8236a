#pragma once

#include "base/Geometry.hpp"

#include <functional>
#include <sigc++/connection.h>

namespace pagora {

// Reports a new size of the page's frame once the page has it too, for only then do its measures fit the frame; or
// after a moment, where the page does not answer. Main thread.
class PageSizeReports {
public:
    explicit PageSizeReports(std::function<void()> report)
        : _report(std::move(report))
    {
    }
    ~PageSizeReports() { _timer.disconnect(); }

    // `pageFollows` says whether there is a page that will tell its size.
    void frameDidChange(const Rect& frame, bool pageFollows);
    // The page tells its size.
    void pageDidChange(const Rect& size, const Rect& frame);

private:
    void report();

    std::function<void()> _report;
    Rect _pageSize;
    bool _awaitsPage = false;
    sigc::connection _timer;
};

}
