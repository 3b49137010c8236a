#pragma once

#include "base/Geometry.hpp"

#include <functional>
#include <sigc++/connection.h>

namespace pagora {

// Reports a new size of the page's frame once the page has the same size, or after a timeout if the page does not
// answer. Main thread only.
class PageSizeReports {
public:
    explicit PageSizeReports(std::function<void()> report)
        : _report(std::move(report))
    {
    }
    ~PageSizeReports() { _timer.disconnect(); }

    // `pageFollows` is true if a page is shown, which will report its size.
    void frameDidChange(const Rect& frame, bool pageFollows);
    // Called when the page reports its size.
    void pageDidChange(const Rect& size, const Rect& frame);

private:
    void report();

    std::function<void()> _report;
    Rect _pageSize;
    bool _awaitsPage = false;
    sigc::connection _timer;
};

}
