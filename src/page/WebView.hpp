#pragma once

#include "base/Geometry.hpp"
#include "base/Url.hpp"
#include "desktop/RequestedBy.hpp"
#include "kept_pages/PagePicture.hpp"
#include "page/PageSelection.hpp"
#include "running/Reply.hpp"
#include "running/Task.hpp"

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Identifies a resource of one load of the main frame.
struct DataSource {
    Url url;
    // Number of the main frame's load, from 1. A report of a load before the page view's current one is stale.
    std::uint64_t load = 0;
    // True if the resource is the page's document, not one of the resources that it uses.
    bool isMainResource = true;
    // True if other resources of the load are still awaited.
    bool isLoading = false;
};

// How a page is shown before the reader has laid it out.
struct PageStart {
    // CSS that applies from the first layout on, in addition to later settings by scripts.
    std::string styleSheet;
    // True if the page is shown as soon as its start is drawn, because the reader opens it there.
    bool isShownAtOnce = false;
    // The number of columns that the scripts will set. For a single column they set only the width.
    std::int32_t columnCount = 1;
    // Language of text without a declared one, such as "en" or "pt-BR"; empty if it is not known.
    std::string language = {};
};

// A reference to a note that the user wants to see without following the link.
struct PointedLink {
    enum class Input { Pointer, Key, Touch };
    Url url;
    // In the page's own pixels, from its upper left corner.
    Rect place;
    Input input = Input::Pointer;
};

// A mark in the page that the user presses.
struct PressedMark {
    // The number that the program gave to the mark.
    std::size_t number = 0;
    // The first visible line of the mark, in the page's own pixels, from its upper left corner.
    Rect place;
};

// Receives the reports of a page view. Main thread only.
class WebViewDelegate {
public:
    virtual ~WebViewDelegate() = default;
    // Called when the document is complete, and then for each of its style sheets, images and fonts. `source.url` is
    // the URL of the page with its fragment.
    virtual void resourceDidFinishLoading(const DataSource& source) = 0;
    // Called when all resources of the page have arrived or failed.
    virtual void didFinishLoadForFrame(const DataSource& source) = 0;
    virtual void resourceDidFailLoading(const DataSource& source) = 0;
    // Called before a request is sent. The request cannot be changed.
    virtual void resourceWillSendRequest(const Url& url, RequestedBy requestedBy) = 0;
    virtual void decidePolicyForMIMEType(const std::string& type) = 0;
    // Called when the load's page replaces the previous one. It has not been drawn yet.
    virtual void didCommitLoad(const DataSource& source) { }
    // Called before the navigation when the user has clicked a link to another place in the book.
    virtual void pageFollowsLink() { }
    // Called when the user points at a reference to a note; nullopt when the user no longer does.
    virtual void pointsAtLink(const std::optional<PointedLink>& link) { }
    // Called when the user has selected text and requests actions for it; nullopt when the text is no longer selected
    // or visible.
    virtual void selectionDidChange(const std::optional<PageSelection>& selection) { }
    // Called when the user presses a mark.
    virtual void pressesMark(const PressedMark& mark) { }
    // Called when the fragment of the URL has changed within the shown page.
    virtual void didChangeLocationWithinPage(const Url& url) = 0;
    // Called when the size of the page view's frame has changed.
    virtual void didResize() = 0;
    // Called when the engine has stopped, by a crash or because the page did not respond. Pending scripts return an
    // empty text. The page is loaded again as a new load, or fails.
    virtual void webProcessDidTerminate() { }
};

// The page view: one document at a time, shown by the rendering engine. The user cannot scroll a page; only evaluated
// scripts can. They run in a separate script world, which the page's scripts cannot access. Main thread only.
class WebView {
public:
    virtual ~WebView() = default;

    virtual void setDelegate(WebViewDelegate* delegate) = 0;

    // Sets the folder of the book: pages can read no other files. Called before the first load.
    virtual void setBookFolder(const std::string& path) = 0;

    // Applies to the next load.
    virtual void setPageStart(const PageStart& start) { }

    // Loads the document into the main frame. A URL without a scheme that is an absolute path is a file. If the file
    // does not exist, its escapes are decoded once more, then the other Unicode normal form is tried. Returns the
    // number of the load. A load that cannot start is reported as failed.
    virtual std::uint64_t loadRequest(const Url& url) = 0;
    virtual std::uint64_t currentLoad() const = 0;

    // Evaluates the script in the shown document. The reply is its result as a text; empty if the script fails or times
    // out.
    virtual Reply<std::string> evaluateScript(const std::string& script) = 0;

    // Makes a fixed-layout page visible. Replies when it has been drawn, or after a moment if it is not drawn.
    virtual Reply<std::string> waitUntilDrawn() { return Reply<std::string>::of(); }

    // Hints that this page is likely to be loaded next. It may be prepared off screen, with the scripts evaluated in
    // it.
    virtual void prepareRequest(const Url& url, const std::vector<std::string>& scripts) { }

    // Called when the page is laid out and may be shown. Until then the previous page stays visible, unless the page is
    // shown at once or fails.
    virtual void pageIsPrepared() { }

    // Shows a picture of the first page until the page is loaded and drawn. Called before the first load. Ignored if
    // the page would be drawn differently from the picture.
    virtual void showUntilDrawn(const PagePicture& picture) { }
    // Called when nothing is pending: the page now looks as it will when it is opened again.
    virtual void pageRests() { }
    // Returns a picture of the idle page; nullopt if it is not drawn yet or has changed from how it is opened again.
    virtual std::optional<PagePicture> pictureAtRest() { return std::nullopt; }
    // Called before an action of the user changes the page. The page is then shown, even if it is still loading.
    virtual void prepareForUserAction() { }

    virtual void setTextSizeMultiplier(double multiplier) = 0;
    // The page's visible area, in the page's own pixels: points, enlarged by the desktop's text scale.
    virtual Rect frame() const = 0;
    // The number of points in one of the page's own pixels.
    virtual double pixelSize() const { return 1; }
    virtual void setHidden(bool hidden) = 0;
    virtual bool isHidden() const = 0;
    // Moves the keyboard focus to the page.
    virtual void makeFirstResponder() = 0;
};

// Parses a page's message about a reference: how it was pointed at, its box and its URL. Returns nullopt if it is
// incomplete.
std::optional<PointedLink> pointedLinkFrom(std::istream& words);

// Parses a page's message about a pressed mark: its number and its place. Returns nullopt if it is incomplete.
std::optional<PressedMark> pressedMarkFrom(std::istream& words);

// Evaluates the script and returns its result as a whole number; 0 if it is not a number.
Task<std::int64_t> evaluateInteger(WebView& webView, std::string script);
// Evaluates the script and ignores its result.
Task<void> evaluate(WebView& webView, std::string script);

// Escapes `text` for a string literal in single quotes.
std::string scriptText(const std::string& text);

}
