#pragma once

#include "base/GObjectPtr.hpp"
#include "kept_pages/PagePicture.hpp"
#include "page/gtk/PageFrame.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <optional>
#include <sigc++/connection.h>

namespace pagora {

// Takes the picture of a page that rests, so that it can be shown when the book is opened there again. The picture is
// taken a moment after the page was drawn, or when it is asked for; not while the page shows what would not be there
// again, such as selected text. Main thread only.
class RestingPage {
public:
    // Both outlive it.
    RestingPage(WebKitWebView* view, PageFrame& frame);
    ~RestingPage();
    RestingPage(const RestingPage&) = delete;
    RestingPage& operator=(const RestingPage&) = delete;

    // The page may change: its last picture does not count any more.
    void disturb();
    // Nothing is under way, and all of the page has arrived.
    void rest();
    // The page was drawn as it was for that request, and whether it shows nothing that would not be there again.
    void isDrawn(std::uint64_t request, bool isAsOpened);

    // Missing without such a picture.
    std::optional<PagePicture> picture();

private:
    void take();
    void personTouches();

    WebKitWebView* _view;
    PageFrame& _frame;
    std::uint64_t _lastRequest = 0;
    // True if it is drawn and was not touched since.
    bool _isDrawn = false;
    GObjectPtr<GdkTexture> _picture;
    int _scale = 1;
    sigc::connection _timer;
};

// What the drawing of a page depends on besides the book and its reader: the engine and the desktop's text settings.
std::string drawingConditions(WebKitWebView* view);

// The texture of a picture.
GObjectPtr<GdkTexture> textureOf(const PagePicture& picture);

}
