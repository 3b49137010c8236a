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

// What a page view loads: one resource of one load of the main frame.
struct DataSource {
    Url url;
    // Counts the loads of the main frame from 1. A report of an earlier load than the page view's current one is stale.
    std::uint64_t load = 0;
    // True if the resource is the page's document, not one of the resources that it uses.
    bool isMainResource = true;
    // True if other resources of the load are still awaited.
    bool isLoading = false;
};

// How a page is shown before the reader has prepared it.
struct PageStart {
    // CSS that applies from the page's first line on, in addition to what scripts set later.
    std::string styleSheet;
    // True if the page is shown as soon as its beginning is drawn, because the reader opens it there.
    bool isShownAtOnce = false;
    // The number of columns that the scripts will set; below two, they set only the width.
    std::int32_t columnCount = 1;
    // Of the text where the page does not say, as "en" or "pt-BR"; empty if it is not known.
    std::string language = {};
};

// A reference to a note, which the user wants to see without following the link.
struct PointedLink {
    enum class Way { Pointer, Key, Touch };
    Url url;
    // In the page's own pixels, from its upper left corner.
    Rect place;
    Way way = Way::Pointer;
};

// A mark that was painted in the page and that the person presses.
struct PressedMark {
    // As the program numbered it.
    std::size_t number = 0;
    // The first line of it that is shown, in the page's own pixels, from its upper left corner.
    Rect place;
};

// Receives the reports of a load. Main thread only.
class WebViewDelegate {
public:
    virtual ~WebViewDelegate() = default;
    // The document is complete; after that, called for each of its style sheets, images and fonts. `source.url` is the
    // URL of the page with its fragment.
    virtual void resourceDidFinishLoading(const DataSource& source) = 0;
    // All resources of the page have arrived or failed.
    virtual void didFinishLoadForFrame(const DataSource& source) = 0;
    virtual void resourceDidFailLoading(const DataSource& source) = 0;
    // A request is about to be sent. It cannot be changed.
    virtual void resourceWillSendRequest(const Url& url, RequestedBy requestedBy) = 0;
    virtual void decidePolicyForMIMEType(const std::string& type) = 0;
    // The load's page replaces the one that was shown. Nothing of it has been drawn yet.
    virtual void didCommitLoad(const DataSource& source) { }
    // The user has clicked a link to another place of the book. Called before the navigation.
    virtual void pageFollowsLink() { }
    // The user points at a reference to a note; nullopt if the user no longer does.
    virtual void pointsAtLink(const std::optional<PointedLink>& link) { }
    // The person has selected text and asks what can be done with it, or the text is no longer selected or seen.
    virtual void selectionDidChange(const std::optional<PageSelection>& selection) { }
    // The person presses a mark.
    virtual void pressesMark(const PressedMark& mark) { }
    // The location's fragment changed within the page that is shown.
    virtual void didChangeLocationWithinPage(const Url& url) = 0;
    // The frame of the page view took another size.
    virtual void didResize() = 0;
    // The engine stopped, by a crash or because the page did not respond. Pending scripts return an empty text. The
    // page is loaded again as a new load, or fails.
    virtual void webProcessDidTerminate() { }
};

// The page view: one document at a time, shown by the rendering engine. A page cannot be scrolled by the user, only by
// evaluated scripts. Scripts run in a world of their own, which the page's scripts do not see. Main thread only.
class WebView {
public:
    virtual ~WebView() = default;

    virtual void setDelegate(WebViewDelegate* delegate) = 0;

    // The folder of the book that is shown: pages read no other file. Before the first load.
    virtual void setBookFolder(const std::string& path) = 0;

    // For the next load.
    virtual void setPageStart(const PageStart& start) { }

    // Loads the document into the main frame. A URL without a scheme that is an absolute path is a file; a file that is
    // not there is tried with its escapes replaced once more, then in the other Unicode normal form. Returns the number
    // of the load; a load that cannot start is reported as failed.
    virtual std::uint64_t loadRequest(const Url& url) = 0;
    virtual std::uint64_t currentLoad() const = 0;

    // Runs the script in the shown document. The reply is its result as a text; empty if the script fails or times out.
    virtual Reply<std::string> evaluateScript(const std::string& script) = 0;

    // Makes a fixed-layout page visible and answers when it has been drawn, or after a moment if it is not drawn.
    virtual Reply<std::string> waitUntilDrawn() { return Reply<std::string>::of(); }

    // A hint that this page is likely to be loaded next. It may be prepared off screen, with the scripts evaluated in
    // it.
    virtual void prepareRequest(const Url& url, const std::vector<std::string>& scripts) { }

    // The page is laid out and may be shown. Until then the previous page stays visible, unless the page is shown at
    // once or fails.
    virtual void pageIsPrepared() { }

    // Shows a picture of the first page in its place until that is loaded and drawn. Before the first load. Ignored
    // where the page would be drawn otherwise than the picture.
    virtual void showUntilDrawn(const PagePicture& picture) { }
    // Nothing is under way: the page is as it would be opened again.
    virtual void pageRests() { }
    // A picture of the page that rests. Returns nullopt if it is not drawn yet, or no longer as it would be opened
    // again.
    virtual std::optional<PagePicture> pictureAtRest() { return std::nullopt; }
    // An action of the person is about to change the page: it is shown, whatever of it is still to come.
    virtual void personActs() { }

    virtual void setTextSizeMultiplier(double multiplier) = 0;
    // The page's visible area, in the page's own pixels: these are points, enlarged by the desktop's text scale.
    virtual Rect frame() const = 0;
    // Points to one of the page's own pixels.
    virtual double pixelSize() const { return 1; }
    virtual void setHidden(bool hidden) = 0;
    virtual bool isHidden() const = 0;
    // Gives it the keyboard focus.
    virtual void makeFirstResponder() = 0;
};

// Parses a page's message about a reference: how it was pointed at, its box and its URL. Returns nullopt if it is
// incomplete.
std::optional<PointedLink> pointedLinkFrom(std::istream& words);

// What a page tells of a mark that is pressed: its number and the place, in words. Returns nullopt if that is not all
// there.
std::optional<PressedMark> pressedMarkFrom(std::istream& words);

// The result of the script as a whole number; 0 if it is not a number.
Task<std::int64_t> evaluateInteger(WebView& webView, std::string script);
// Runs the script and ignores its result.
Task<void> evaluate(WebView& webView, std::string script);

// Escapes `text` for a string literal in single quotes.
std::string scriptText(const std::string& text);

}
