#include "page_view/gtk/PageView.hpp"

#include "confinement/gtk/PageFile.hpp"
#include "confinement/gtk/PageRefusals.hpp"
#include "desktop/gtk/TextScale.hpp"

#include <glibmm/main.h>
#include <gtkmm/settings.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

namespace pagora {

namespace {

// Additional seconds for each megabyte of a document, and their maximum. Laying out a megabyte of text in columns takes
// one to two seconds.
constexpr double secondsPerMegabyte = 5;
constexpr double maxDocumentTimeout = 180;

// Returns the URL in the engine's normal form, which resolves "..", for comparison with the shown one.
Url asTheEngineSpells(const Url& url)
{
    const auto request = GObjectPtr<WebKitURIRequest>::adopt(webkit_uri_request_new(url.text().c_str()));
    const char* const spelled = webkit_uri_request_get_uri(request.get());
    return Url::fromString(spelled && *spelled ? spelled : url.text()).value_or(url);
}

}

PageView::PageView(GObjectPtr<WebKitWebView> view, PageKind kind, BookFilter& filter, double scriptTimeout, Start start)
    : _view(std::move(view))
    , _timeouts { scriptTimeout, scriptTimeout }
    , _reports(kind == PageKind::Fixed ? LoadReports::ClosingReport::Yes : LoadReports::ClosingReport::No)
    , _scripts(
          _view.get(), scriptTimeout, [this] { restartEngine(); },
          [this] {
              if (_content.allowsScripts())
                  restartEngine();
          })
    , _frame(GTK_WIDGET(_view.get()))
    , _spoken(_view.get())
    , _content(_view.get(), kind, filter)
    , _curtain(_view.get(), _frame)
    , _resting(_view.get(), _frame)
    , _sizes([this] {
        if (auto* delegate = _reports.delegate())
            delegate->didResize();
    })
    , _isWarmingUp(start == Start::WarmingUp)
    , _self(std::make_shared<PageView*>(this))
{
    // The warm-up page is never visible.
    if (kind == PageKind::Columns)
        _curtain.cover(PageCover::Show::Nothing);
    _frame.setResizeHandler([this] { frameDidChange(); });
    _textScaleChanges = Gtk::Settings::get_default()->property_gtk_xft_dpi().signal_changed().connect(
        [this] { textScaleDidChange(); });
    connectEngine();
}

PageView::~PageView()
{
    for (auto* timer : { &_startTimer, &_loadTimer, &_textScaleChanges })
        timer->disconnect();
    g_signal_handlers_disconnect_by_data(_view.get(), this);
    g_signal_handlers_disconnect_by_data(webkit_web_view_get_user_content_manager(_view.get()), this);
    setRefusalHandler(_view.get(), {});
    // A busy page would not notice that it is closed and would keep running.
    endProcesses();
}

void PageView::setBookFolder(const std::string& path)
{
    _content.setBookFolder(path, [this] { startWhenReady(); });
}

bool PageView::isWithinPage(const Url& url)
{
    const std::string scheme = url.scheme();
    return scheme == "data" || scheme == "blob" || scheme == "about" || scheme == "javascript";
}

bool PageView::isInBook(const Url& url) const
{
    return isUrlInFolder(url, _content.bookFolder());
}

bool PageView::mayBeRead(const std::string& path) const
{
    return _content.bookFolder().empty() || isFileInFolder(path, _content.bookFolder());
}

std::uint64_t PageView::loadRequest(const Url& url)
{
    _recovery.reset();
    begin(url);
    return currentLoad();
}

void PageView::begin(const Url& url)
{
    _reports.begin(url);
    _resting.disturb();
    _stage = Stage::Idle;
    _document.isForgiven = false;
    _startTimer.disconnect();
    _loadTimer.disconnect();
    _steps.ignoreAll();
    _recovery.callOff();

    // data:, blob:, about: and javascript: URLs are not documents.
    if (isWithinPage(url))
        return failSoon();
    const bool isFile = url.isFile() || url.scheme().empty();
    const auto file = isFile ? existingFile(url) : std::nullopt;
    if (isFile && !(file && mayBeRead(file->path)))
        return failSoon();
    _target = asTheEngineSpells(file ? file->url : url);
    std::error_code unknown;
    const auto bytes = file ? std::filesystem::file_size(file->path, unknown) : 0;
    const double more = unknown ? 0 : secondsPerMegabyte * static_cast<double>(bytes) / 1e6;
    _timeouts.document = std::max(_timeouts.script, std::min(_timeouts.script + more, maxDocumentTimeout));
    _scripts.setTimeout(_timeouts.document);
    coverUntilPrepared();
    _stage = Stage::Waiting;
    if (_isWarmingUp)
        warmUpNoLongerThan(_timeouts.script);
    startWhenReady();
}

void PageView::warmUpNoLongerThan(double seconds)
{
    _loadTimer = Glib::signal_timeout().connect(
        [this] {
            _isWarmingUp = false;
            startWhenReady();
            return false;
        },
        static_cast<unsigned>(seconds * 1000));
}

void PageView::startWhenReady()
{
    if (_stage == Stage::Waiting && !_content.awaitsFilter() && !_isWarmingUp)
        start();
}

void PageView::failSoon()
{
    _startTimer = Glib::signal_idle().connect([this] {
        reportFailure();
        return false;
    });
}

void PageView::reportFailure()
{
    _frame.withdrawPicture();
    pageIsPrepared();
    _reports.documentFailed(currentLoad());
}

void PageView::start()
{
    if (_content.filterFailed())
        return failSoon();
    _stage = Stage::Starting;
    numberScripts();
    _content.setStartStyle(_pageStart.styleSheet);
    // A page with endless scripts would block the next load.
    _loadTimer.disconnect();
    if (_target->isFile())
        restartEngineAfter(_timeouts.script);
    loadFresh();
}

void PageView::loadFresh()
{
    const bool isFragmentOfShown
        = _target->fragment() && _shown && _target->withoutFragment() == _shown->withoutFragment();
    if (!isFragmentOfShown)
        return webkit_web_view_load_uri(_view.get(), _target->text().c_str());

    // The engine would only scroll within the shown page, so the script sets the new URL and reloads.
    struct Reload {
        std::weak_ptr<PageView*> owner;
        std::uint64_t load;
    };
    const std::string script
        = "History.prototype.replaceState.call(history, null, '', '" + scriptText(_target->text()) + "')";
    auto reload = std::make_unique<Reload>(Reload { _self, currentLoad() });
    const auto renamed = [](GObject* view, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Reload> reload(static_cast<Reload*>(data));
        JSCValue* value
            = webkit_web_view_evaluate_javascript_finish(reinterpret_cast<WebKitWebView*>(view), result, nullptr);
        const auto owner = reload->owner.lock();
        const bool isWanted = owner && (*owner)->currentLoad() == reload->load && (*owner)->_stage == Stage::Starting;
        if (isWanted && value)
            webkit_web_view_reload(reinterpret_cast<WebKitWebView*>(view));
        else if (isWanted)
            webkit_web_view_load_uri(reinterpret_cast<WebKitWebView*>(view), (*owner)->_target->text().c_str());
        if (value)
            g_object_unref(value);
    };
    webkit_web_view_evaluate_javascript(
        _view.get(), script.c_str(), -1, pageWorld, nullptr, nullptr, renamed, reload.release());
}

// The page is committed. Without a timeout, endless or missing scripts would keep it from being completed.
void PageView::expectDocument()
{
    _loadTimer.disconnect();
    if (_content.allowsScripts())
        restartEngineAfter(_timeouts.document);
}

void PageView::restartEngineAfter(double seconds)
{
    _loadTimer.disconnect();
    _loadTimer = Glib::signal_timeout().connect(
        [this] {
            restartEngine();
            return false;
        },
        static_cast<unsigned>(seconds * 1000));
}

Reply<std::string> PageView::evaluateScript(const std::string& script)
{
    // Only the reader's scripts change a page.
    _spoken.pageMayHaveChanged();
    _resting.disturb();
    return _scripts.evaluate(script);
}

void PageView::restartEngine()
{
    // The book's scripts are responsible only if a page is shown.
    if (_shown)
        _content.allowScripts(false);
    endProcesses();
}

// Also ends the process of a navigation to a server, which is a separate one.
void PageView::endProcesses()
{
    _steps.ignoreAll();
    webkit_web_view_stop_loading(_view.get());
    webkit_web_view_terminate_web_process(_view.get());
}

// The page is still visible, but its frames and timers have stopped.
void PageView::pageClosedItself()
{
    _recovery.performSoon([this] { restartEngine(); });
}

void PageView::recover()
{
    _stage = Stage::Idle;
    _steps.ignoreAll();
    _shown.reset();
    _isWarmingUp = false;
    _loadTimer.disconnect();
    const std::weak_ptr<PageView*> self = _self;
    const std::uint64_t lost = currentLoad();
    if (auto* delegate = _reports.delegate())
        delegate->webProcessDidTerminate();
    if (!self.expired())
        _scripts.giveUpAll();
    // The replies may have started another load.
    if (self.expired() || lost != currentLoad())
        return;
    _recovery.performSoon([this, lost] {
        if (lost != currentLoad() || !_reports.url())
            return;
        const Url url = *_reports.url();
        const auto attempt = _recovery.nextAttempt();
        if (!attempt.allowsScripts)
            _content.allowScripts(false);
        pageStartIsOver();
        if (attempt.isAllowed)
            return begin(url);
        _reports.begin(url);
        reportFailure();
    });
}

void PageView::textScaleDidChange()
{
    applyMargins();
    frameDidChange();
}

void PageView::setMargins(const PageMargins& margins)
{
    _margins = margins;
    applyMargins();
}

void PageView::applyMargins()
{
    if (_margins)
        _frame.setMargins({ _margins->minSide, static_cast<int>(std::lround(_margins->maxWidth * pixelSize())) });
}

void PageView::frameDidChange()
{
    _resting.disturb();
    _sizes.frameDidChange(frame(), _stage == Stage::Shown);
}

void PageView::setTextSizeMultiplier(double multiplier)
{
    webkit_web_view_set_zoom_level(_view.get(), multiplier);
    _resting.disturb();
    if (_content.kind() == PageKind::Columns)
        webkit_web_view_evaluate_javascript(
            _view.get(), "pagoraFollowStrip()", -1, pageWorld, nullptr, nullptr, nullptr, nullptr);
    _spoken.pageMayHaveChanged();
}

Rect PageView::frame() const
{
    const double pixel = pixelSize();
    return { 0, 0, std::floor(_frame.pageWidth() / pixel), std::floor(_frame.pageHeight() / pixel) };
}

double PageView::pixelSize() const
{
    // The engine scales the whole page with the text, so fewer CSS pixels fit into it.
    return textScale();
}

void PageView::setHidden(bool hidden)
{
    // The view keeps its size and keeps drawing, so that its page can be prepared.
    _frame.setConcealed(hidden);
    _frame.set_can_target(!hidden);
}

void PageView::coverUntilPrepared()
{
    if (_content.kind() == PageKind::Columns)
        _curtain.cover(_shown ? PageCover::Show::LastPicture : PageCover::Show::Nothing, _timeouts.document);
}

void PageView::numberScripts()
{
    _content.numberScripts(currentLoad(), { _pageStart.columnCount, _pageStart.language, _onPicture != nullptr });
}

// The page start applies only to the load for which it was set.
void PageView::pageStartIsOver()
{
    _pageStart.isShownAtOnce = false;
    _pageStart.columnCount = 1;
}

void PageView::setPictureHandler(std::function<void(const std::string& file)> handler)
{
    _onPicture = std::move(handler);
}

void PageView::setBackground(const Color& color)
{
    const GdkRGBA background { static_cast<float>(color.red), static_cast<float>(color.green),
        static_cast<float>(color.blue), static_cast<float>(color.alpha) };
    webkit_web_view_set_background_color(_view.get(), &background);
}

void PageView::setGroundHandler(std::function<void(const std::optional<Color>& ground)> handler)
{
    _frame.setPaperHandler(std::move(handler));
}

void PageView::makeFirstResponder()
{
    gtk_widget_grab_focus(GTK_WIDGET(_view.get()));
}

}
