#pragma once

#include "base/GObjectPtr.hpp"
#include "kept_pages/PagePicture.hpp"
#include "page/gtk/PageFrame.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <optional>
#include <sigc++/connection.h>

namespace pagora {

// Takes the picture of an idle page, so that it can be shown when the book is opened there again. The picture is taken
// a moment after the page was drawn, or when it is requested. It is not taken while the page shows something that would
// be missing then, such as selected text. Main thread only.
class RestingPage {
public:
    // Both must outlive this object.
    RestingPage(WebKitWebView* view, PageFrame& frame);
    ~RestingPage();
    RestingPage(const RestingPage&) = delete;
    RestingPage& operator=(const RestingPage&) = delete;

    // Called when the page may change: the last picture becomes invalid.
    void disturb();
    // Called when nothing is pending and the page is completely loaded.
    void rest();
    // Called when the page was drawn unchanged for that request. `isAsOpened` is true if the page shows nothing that
    // would be missing when it is opened again.
    void isDrawn(std::uint64_t request, bool isAsOpened);

    // Returns nullopt if there is no such picture.
    std::optional<PagePicture> picture();

private:
    void take();
    void personTouches();

    WebKitWebView* _view;
    PageFrame& _frame;
    std::uint64_t _lastRequest = 0;
    // True if the page is drawn and was not touched since.
    bool _isDrawn = false;
    GObjectPtr<GdkTexture> _picture;
    int _scale = 1;
    sigc::connection _timer;
};

// Returns the conditions for the drawing of a page besides the book and its reader: the engine and the desktop's text
// settings.
std::string drawingConditions(WebKitWebView* view);

// Returns the texture of a picture.
GObjectPtr<GdkTexture> textureOf(const PagePicture& picture);

}
