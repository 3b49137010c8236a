#pragma once

#include "confinement/Confinement.hpp"
#include "page_view/gtk/PageView.hpp"

#include <memory>
#include <string>

namespace pagora {

// The rendering engine, set up for books: nothing is kept from one run to the next, and nothing beyond the books'
// folder is read. One for the program; it outlives its page views. Main thread.
class PageEngine {
public:
    struct Options {
        // The folder below which all books are unpacked. It is created when it is missing.
        std::string booksFolder;
        // Receives what the engine compiles, in a folder of its own.
        std::string cachesFolder;
        // How long a script in a page may take, in seconds.
        double scriptTimeout = 10;
        // Where the page processes cannot be shut in, books are shown without their own scripts.
        Confinement confinement = Confinement::Full;
    };
    explicit PageEngine(Options options);
    ~PageEngine();
    PageEngine(const PageEngine&) = delete;
    PageEngine& operator=(const PageEngine&) = delete;

    // A view that keeps nothing of what other views load. One that is made beside another one, for the same book, has
    // what that one has: cookies, storage, caches.
    std::unique_ptr<PageView> makePageView(PageKind kind, const PageView* beside = nullptr);
    // Starts the engine's processes ahead of the next page view, which then shows its first page several times sooner.
    // Does nothing while one is ready.
    void prepareWarmView();

private:
    static void warmPageChanged(WebKitWebView* view, WebKitLoadEvent event, PageEngine* engine);
    static void warmPageEnded(WebKitWebView* view, WebKitWebProcessTerminationReason reason, PageEngine* engine);
    GObjectPtr<WebKitWebView> makeEngineView(WebKitNetworkSession* session) const;

    Options _options;
    GObjectPtr<WebKitWebContext> _context;
    BookFilter _filter;
    GObjectPtr<WebKitWebView> _warmView;
    // Whether its first page is there.
    bool _isWarm = false;
};

}
