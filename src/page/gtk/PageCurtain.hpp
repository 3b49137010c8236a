#pragma once

#include "page/gtk/PageFrame.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <sigc++/connection.h>

namespace pagora {

// Covers a page until it is laid out and painted. Main thread only.
class PageCurtain {
public:
    // Both outlive it.
    PageCurtain(WebKitWebView* view, PageFrame& frame)
        : _view(view)
        , _frame(frame)
    {
    }
    ~PageCurtain() { _timer.disconnect(); }
    PageCurtain(const PageCurtain&) = delete;
    PageCurtain& operator=(const PageCurtain&) = delete;

    // Covers the page until it is prepared.
    void cover(PageCover::Show show);
    // The same with a timeout in seconds, after which the page is shown as it is.
    void cover(PageCover::Show show, double seconds);
    // The page is laid out. Uncovers it once it is painted, or after a timeout if it is not visible. In place of a
    // picture of it, it is shown when it is whole, because pictures that arrive late would change it in sight.
    enum class Whole : bool { No, Yes };
    void pageIsPrepared(Whole whole);
    // It is shown as soon as it is prepared, whatever is still to come.
    void hurry();
    // The page reports that it was painted for this request.
    void pageIsPainted(std::uint64_t request);
    // Uncovers a page that may be seen as soon as its beginning is drawn.
    void uncoverBeginning();

private:
    void uncover();

    WebKitWebView* _view;
    PageFrame& _frame;
    // True if the page that is loaded is not laid out yet.
    bool _isUnprepared = false;
    bool _isInHurry = false;
    // Counts the requests to report the painting.
    std::uint64_t _lastRequest = 0;
    sigc::connection _timer;
};

}
