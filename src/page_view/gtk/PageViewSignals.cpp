#include "base/Log.hpp"
#include "confinement/gtk/PageFile.hpp"
#include "confinement/gtk/PageMemoryWatch.hpp"
#include "confinement/gtk/PageRefusals.hpp"
#include "files/Files.hpp"
#include "page_view/gtk/PageView.hpp"
#include "xml/ForgivingPage.hpp"

#include <glibmm/main.h>

#include <cstring>
#include <filesystem>
#include <system_error>

namespace pagora {

namespace {

// Maximum size in bytes of a page that is rewritten by the forgiving parser, which blocks the main thread.
constexpr std::uintmax_t maxForgivenBytes = 32 << 20;

Url urlOf(const char* text)
{
    const std::string uri = text ? text : "";
    const auto url = Url::fromString(uri);
    return url ? *url : *Url::fromString(addingPercentEscapes(uri));
}

Url requestUrl(WebKitURIRequest* request)
{
    return urlOf(webkit_uri_request_get_uri(request));
}

// Longer locations, in bytes, are neither reported nor loaded.
constexpr std::size_t maxLocationLength = 65536;

// data: URLs have no length limit.
bool isData(const char* uri)
{
    return g_ascii_strncasecmp(uri, "data:", 5) == 0;
}

bool isTooLong(const char* uri)
{
    return std::strlen(uri) > maxLocationLength && !isData(uri);
}

struct WatchedResource {
    std::weak_ptr<PageView*> owner;
    std::uint64_t load;
    // True if the resource belongs to the page as rewritten by the forgiving parser.
    bool isForgiven;
    bool ended = false;
};

}

// The engine's C callbacks.
struct PageViewSignals {
    static PageView& view(gpointer data) { return *static_cast<PageView*>(data); }

    static void loadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer data) { view(data).loadChanged(event); }

    static gboolean loadFailed(WebKitWebView*, WebKitLoadEvent, char* uri, GError* error, gpointer data)
    {
        view(data).loadFailed(uri, error);
        // No error page replaces the shown one.
        return TRUE;
    }

    static void resourceStarted(WebKitWebView*, WebKitWebResource* resource, WebKitURIRequest* request, gpointer data)
    {
        view(data).resourceStarted(resource, request);
    }

    static gboolean decidePolicy(
        WebKitWebView*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type, gpointer data)
    {
        const auto answer = type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE
            ? view(data).decideResponse(WEBKIT_RESPONSE_POLICY_DECISION(decision))
            : view(data).decideNavigation(decision, type);
        if (answer == PageView::Answer::Use)
            webkit_policy_decision_use(decision);
        else if (answer == PageView::Answer::Ignore)
            webkit_policy_decision_ignore(decision);
        return TRUE;
    }

    static void locationChanged(WebKitWebView*, GParamSpec*, gpointer data) { view(data).locationChanged(); }

    static void titleChanged(WebKitWebView* engineView, GParamSpec*, gpointer data)
    {
        view(data).isWithinBudget(MessageBudget::Message::Notice, webkit_web_view_get_title(engineView));
    }

    static void terminated(WebKitWebView* engineView, WebKitWebProcessTerminationReason reason, gpointer data)
    {
        // A page that has exceeded its memory limit would do so again.
        if (PageMemoryWatch::takeEnded(webkit_web_view_get_context(engineView))
            || reason == WEBKIT_WEB_PROCESS_EXCEEDED_MEMORY_LIMIT)
            view(data)._content.allowScripts(false);
        view(data).recover();
    }

    static void closed(WebKitWebView*, gpointer data) { view(data).pageClosedItself(); }

    static void messageReceived(WebKitUserContentManager*, JSCValue* value, gpointer data)
    {
        char* text = jsc_value_to_string(value);
        view(data).messageReceived(text ? text : "");
        g_free(text);
    }

    static void end(WebKitWebResource* resource, WatchedResource& watched, bool failed)
    {
        // The engine emits "finished" after "failed".
        const auto owner = watched.owner.lock();
        if (!std::exchange(watched.ended, true) && owner && (*owner)->_document.isForgiven == watched.isForgiven)
            (*owner)->resourceEnded(resource, watched.load, failed);
    }
    static void resourceFinished(WebKitWebResource* resource, gpointer data)
    {
        end(resource, *static_cast<WatchedResource*>(data), false);
    }
    static void resourceFailed(WebKitWebResource* resource, GError*, gpointer data)
    {
        end(resource, *static_cast<WatchedResource*>(data), true);
    }
};

void PageView::connectEngine()
{
    auto* view = _view.get();
    g_signal_connect(view, "load-changed", G_CALLBACK(PageViewSignals::loadChanged), this);
    g_signal_connect(view, "load-failed", G_CALLBACK(PageViewSignals::loadFailed), this);
    g_signal_connect(view, "resource-load-started", G_CALLBACK(PageViewSignals::resourceStarted), this);
    g_signal_connect(view, "decide-policy", G_CALLBACK(PageViewSignals::decidePolicy), this);
    g_signal_connect(view, "notify::uri", G_CALLBACK(PageViewSignals::locationChanged), this);
    g_signal_connect(view, "notify::title", G_CALLBACK(PageViewSignals::titleChanged), this);
    setRefusalHandler(view, [this] { isWithinBudget(MessageBudget::Message::Notice, nullptr); });
    g_signal_connect(view, "web-process-terminated", G_CALLBACK(PageViewSignals::terminated), this);
    g_signal_connect(view, "close", G_CALLBACK(PageViewSignals::closed), this);
    auto* content = webkit_web_view_get_user_content_manager(view);
    g_signal_connect(content, "script-message-received::pagora", G_CALLBACK(PageViewSignals::messageReceived), this);
}

void PageView::loadChanged(WebKitLoadEvent event)
{
    if (_isWarmingUp) {
        _isWarmingUp = event != WEBKIT_LOAD_FINISHED;
        return startWhenReady();
    }
    if (event == WEBKIT_LOAD_COMMITTED) {
        if (!isPageOfTarget())
            return;
        _stage = Stage::Shown;
        _budget.startDocument();
        expectDocument();
        _frame.setPageTakesKeys(false);
        _document.takesEscape = false;
        _shown = urlOf(webkit_web_view_get_uri(_view.get()));
        if (auto* delegate = _reports.delegate(); delegate && !_document.isForgiven)
            delegate->didCommitLoad({ *_reports.url(), currentLoad(), true, true });
    } else if (event == WEBKIT_LOAD_FINISHED && _stage == Stage::Shown) {
        _loadTimer.disconnect();
        _reports.everythingFinished(currentLoad());
    }
}

// A cancelled load can still be committed after the next one was requested.
bool PageView::isPageOfTarget() const
{
    auto* resource = webkit_web_view_get_main_resource(_view.get());
    return _stage != Stage::Starting || !resource || isTarget(urlOf(webkit_web_resource_get_uri(resource)));
}

// Pages of a server may have been redirected.
bool PageView::isTarget(const Url& url) const
{
    return !_target->isFile() || url.withoutFragment() == _target->withoutFragment();
}

void PageView::loadFailed(const char* uri, const GError* error)
{
    // Ignores cancelled loads, and the warm-up page, which the book's filter may block.
    if (_isWarmingUp || g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED))
        return;
    stepFailed(urlOf(uri));
}

void PageView::stepFailed(const Url& url)
{
    if (_stage == Stage::Starting && isTarget(url)) {
        _stage = Stage::Idle;
        _loadTimer.disconnect();
        reportFailure();
    } else if (auto* delegate = _reports.delegate()) {
        // This was a link of the shown page, which stays.
        delegate->resourceDidFailLoading({ url, currentLoad(), false, !_reports.isFinished() });
    }
}

// Closes a page that floods the program with messages, because they would be handled before the user's next key.
bool PageView::isWithinBudget(MessageBudget::Message message, const char* text)
{
    const double now = static_cast<double>(g_get_monotonic_time()) / 1e6;
    const bool isWithin = _budget.take(message, text ? std::strlen(text) : 0, now);
    if (!isWithin)
        endFlood();
    return isWithin;
}

void PageView::endFlood()
{
    // A page without its scripts sends only a limited number of messages.
    if (!_content.allowsScripts() || _isWarmingUp)
        return;
    log("a page sends messages without end");
    restartEngine();
}

// Navigations to servers are allowed one after another.
PageView::Answer PageView::letGoInTurn(WebKitPolicyDecision* decision, const Url& url, bool byUser)
{
    // The engine would start a process, show nothing and report a failure.
    if (url.scheme() != "http" && url.scheme() != "https") {
        stepFailed(url);
        return Answer::Ignore;
    }
    if (_steps.use(decision, byUser))
        return Answer::Given;
    endFlood();
    return Answer::Ignore;
}

void PageView::resourceStarted(WebKitWebResource* resource, WebKitURIRequest* request)
{
    const char* const uri = webkit_uri_request_get_uri(request);
    if (!isWithinBudget(MessageBudget::Message::Resource, isData(uri) ? nullptr : uri) || isTooLong(uri))
        return;
    if (!isData(uri)) {
        const Url url = urlOf(uri);
        if (!url.isFile() && !isWithinPage(url))
            _reports.willSendRequest(url, RequestedBy::Page);
    }
    auto watched = std::make_unique<WatchedResource>(WatchedResource { _self, currentLoad(), _document.isForgiven });
    g_signal_connect(resource, "finished", G_CALLBACK(PageViewSignals::resourceFinished), watched.get());
    g_signal_connect(resource, "failed", G_CALLBACK(PageViewSignals::resourceFailed), watched.get());
    g_object_set_data_full(G_OBJECT(resource), "pagora-watched", watched.release(),
        [](gpointer data) { std::default_delete<WatchedResource>()(static_cast<WatchedResource*>(data)); });
}

void PageView::resourceEnded(WebKitWebResource* resource, std::uint64_t load, bool failed)
{
    // The document is reported separately, when it is complete.
    if (resource == webkit_web_view_get_main_resource(_view.get()))
        return;
    if (failed)
        _reports.resourceFailed(load);
    else
        _reports.resourceFinished(load);
}

PageView::Answer PageView::decideNavigation(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type)
{
    if (_isWarmingUp)
        return Answer::Use;
    auto* navigation
        = webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    const char* const uri = webkit_uri_request_get_uri(webkit_navigation_action_get_request(navigation));
    // Loads that the reader requested are not counted.
    if (_stage != Stage::Starting && (!isWithinBudget(MessageBudget::Message::Navigation, uri) || isTooLong(uri)))
        return Answer::Ignore;
    const Url url = requestUrl(webkit_navigation_action_get_request(navigation));
    if (url.isFile()) {
        const bool isOurs = _stage == Stage::Starting && url == _target;
        if (!isOurs && !isInBook(url))
            return Answer::Ignore;
        const auto type = webkit_navigation_action_get_navigation_type(navigation);
        const bool isLink = type == WEBKIT_NAVIGATION_TYPE_LINK_CLICKED;
        if (!isOurs && isLink && webkit_navigation_action_is_user_gesture(navigation))
            _reports.pageFollowsLink();
    } else if (!isWithinPage(url)) {
        const bool byUser = webkit_navigation_action_is_user_gesture(navigation);
        if (byUser)
            _reports.pageFollowsLink();
        _reports.willSendRequest(url, byUser ? RequestedBy::User : RequestedBy::Page);
        if (type == WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION)
            return letGoInTurn(decision, url, byUser);
    }
    if (type == WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION)
        return Answer::Use;
    if (url.isFile())
        webkit_web_view_load_uri(_view.get(), url.text().c_str());
    return Answer::Ignore;
}

PageView::Answer PageView::decideResponse(WebKitResponsePolicyDecision* decision)
{
    if (_isWarmingUp)
        return Answer::Use;
    const bool isPage = webkit_response_policy_decision_is_main_frame_main_resource(decision);
    const bool isReadAgain = isPage && _document.isForgiven && _stage == Stage::Starting;
    if (auto* delegate = _reports.delegate(); delegate && !isReadAgain) {
        const char* type = webkit_uri_response_get_mime_type(webkit_response_policy_decision_get_response(decision));
        delegate->decidePolicyForMIMEType(type ? type : "");
    }
    // The engine would download a type that it cannot show.
    if (!webkit_response_policy_decision_is_mime_type_supported(decision))
        return Answer::Ignore;
    if (isPage && _stage != Stage::Starting) {
        // The page navigated by itself.
        _reports.begin(requestUrl(webkit_response_policy_decision_get_request(decision)));
        _document.isForgiven = false;
        pageStartIsOver();
        coverUntilPrepared();
        _target = _reports.url();
        _stage = Stage::Starting;
        numberScripts();
    }
    return Answer::Use;
}

void PageView::locationChanged()
{
    const char* uri = webkit_web_view_get_uri(_view.get());
    // The page stays if the load of another one has failed.
    const bool isShown = _stage == Stage::Shown || _stage == Stage::Idle;
    if (!isShown || !uri || (_shown && _shown->text() == uri))
        return;
    if (!isWithinBudget(MessageBudget::Message::Notice, uri) || isTooLong(uri))
        return;
    const Url url = urlOf(uri);
    if (!_shown || url.withoutFragment() != _shown->withoutFragment())
        return;
    _shown = url;
    if (auto* delegate = _reports.delegate())
        delegate->didChangeLocationWithinPage(url);
}

void PageView::documentComplete()
{
    const auto load = currentLoad();
    _loadTimer.disconnect();
    // A fixed page is shown when nothing is loading. The timeout limits the wait for servers that do not answer.
    if (_content.kind() == PageKind::Fixed) {
        _loadTimer = Glib::signal_timeout().connect(
            [this, load] {
                _reports.everythingFinished(load);
                return false;
            },
            static_cast<unsigned>(_timeouts.script * 1000));
    }
    _reports.documentComplete(load);
}

// Called if the page is not well-formed, in which case the engine shows only the part before the first error. Loads the
// page again as HTML with the same URL, before anything of the load is reported.
void PageView::showForgivingly()
{
    if (_stage != Stage::Shown || _document.isForgiven)
        return;
    const auto path = _target->path();
    std::error_code unknown;
    const bool isReadable
        = _target->isFile() && mayBeRead(path) && std::filesystem::file_size(path, unknown) <= maxForgivenBytes;
    auto text = isReadable ? readFile(path) : std::nullopt;
    const auto page = text ? forgivingPage(std::move(*text)) : std::nullopt;
    if (!page)
        return documentComplete();
    _document.isForgiven = true;
    _stage = Stage::Starting;
    _reports.forgetResources();
    _pageStart.isShownAtOnce = false;
    coverUntilPrepared();
    restartEngineAfter(_timeouts.script);
    GBytes* bytes = g_bytes_new(page->html.data(), page->html.size());
    webkit_web_view_load_bytes(_view.get(), bytes, "text/html", page->encoding.c_str(), _target->text().c_str());
    g_bytes_unref(bytes);
}

}
