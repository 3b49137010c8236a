#pragma once

#include "page/gtk/PageFrame.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <sigc++/connection.h>

namespace pagora {

// Covers a page until it is laid out and painted. Main thread only.
class PageCurtain {
public:
    // Both must outlive this object.
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
    // Same with a timeout in seconds, after which the page is shown as it is.
    void cover(PageCover::Show show, double seconds);
    // Called when the page is laid out. Uncovers it when it is painted, or after a timeout if it is not visible. If a
    // picture of the page is shown, waits until the page is complete, because late pictures would change it visibly.
    enum class Whole : bool { No, Yes };
    void pageIsPrepared(Whole whole);
    // Shows the page as soon as it is laid out, even if it is still loading.
    void hurry();
    // Called when the page reports that it was painted for this request.
    void pageIsPainted(std::uint64_t request);
    // Uncovers a page that may be shown as soon as its start is drawn.
    void uncoverBeginning();

private:
    void uncover();

    WebKitWebView* _view;
    PageFrame& _frame;
    // True if the page that is loading is not laid out yet.
    bool _isUnprepared = false;
    bool _isInHurry = false;
    // Number of the last request to report the painting.
    std::uint64_t _lastRequest = 0;
    sigc::connection _timer;
};

}
