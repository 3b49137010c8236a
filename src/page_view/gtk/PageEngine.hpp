#pragma once

#include "confinement/Confinement.hpp"
#include "page_view/gtk/PageView.hpp"

#include <memory>
#include <string>

namespace pagora {

// The rendering engine, configured for books: nothing is kept between runs, and no file outside the books' folder is
// read. There is one instance, which must outlive its page views. Main thread only.
class PageEngine {
public:
    struct Options {
        // The parent folder of all unpacked books. It is created if it does not exist.
        std::string booksFolder;
        // The parent folder of the folder for compiled filters.
        std::string cachesFolder;
        // Time limit of a script in a page, in seconds.
        double scriptTimeout = 10;
        // Without confinement, books are shown without their own scripts.
        Confinement confinement = Confinement::Full;
    };
    explicit PageEngine(Options options);
    ~PageEngine();
    PageEngine(const PageEngine&) = delete;
    PageEngine& operator=(const PageEngine&) = delete;

    // Creates a page view with its own session. With `beside`, a view for the same book, the new view shares its
    // cookies, storage and caches.
    std::unique_ptr<PageView> makePageView(PageKind kind, const PageView* beside = nullptr);
    // Starts the engine's processes in advance, so that the next view shows its first page sooner. Does nothing if a
    // view is ready.
    void prepareWarmView();

private:
    static void warmPageChanged(WebKitWebView* view, WebKitLoadEvent event, PageEngine* engine);
    static void warmPageEnded(WebKitWebView* view, WebKitWebProcessTerminationReason reason, PageEngine* engine);
    GObjectPtr<WebKitWebView> makeEngineView(WebKitNetworkSession* session) const;

    Options _options;
    GObjectPtr<WebKitWebContext> _context;
    BookFilter _filter;
    GObjectPtr<WebKitWebView> _warmView;
    // True if the warm-up page is loaded.
    bool _isWarm = false;
};

}
