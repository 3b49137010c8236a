#include "page/gtk/PageView.hpp"

#include "base/Resource.hpp"
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

// How often a page that brings down the engine is loaded again, unless it has been shown for so many microseconds.
constexpr int recoveriesPerLoad = 3;
constexpr gint64 steadyTime = 20'000'000;
// Seconds that each megabyte of a page may take more, and how long the largest may take: laying out text in columns
// takes one to two for each on a machine of today.
constexpr double secondsPerMegabyte = 5;
constexpr double longestPatience = 180;
// How long the page may take to hear of its new size before it is reported regardless, in milliseconds.
constexpr unsigned resizePatience = 200;
// How long a page that is laid out may take to be painted, in milliseconds: one that nobody sees is not painted at all.
constexpr unsigned paintPatience = 2000;

std::string withoutFragment(const std::string& uri)
{
    return uri.substr(0, uri.find('#'));
}

// The URI as the engine spells it, which resolves "..", so that it can be told from the one that is shown.
std::string asTheEngineSpells(const std::string& uri)
{
    const auto request = GObjectPtr<WebKitURIRequest>::adopt(webkit_uri_request_new(uri.c_str()));
    const char* const spelled = webkit_uri_request_get_uri(request.get());
    return spelled && *spelled ? spelled : uri;
}

void addStyleSheet(WebKitWebView* view, const char* name)
{
    const auto text = resourceBytes(std::string("/org/pagora/Pagora/") + name).value();
    auto* sheet = webkit_user_style_sheet_new(
        text.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME, WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr);
    webkit_user_content_manager_add_style_sheet(webkit_web_view_get_user_content_manager(view), sheet);
    webkit_user_style_sheet_unref(sheet);
}

}

PageView::PageView(GObjectPtr<WebKitWebView> view, PageKind kind, BookFilter& filter, double scriptTimeout, Start start)
    : _view(std::move(view))
    , _kind(kind)
    , _filterMaker(filter)
    , _timeout(scriptTimeout)
    , _patience(scriptTimeout)
    , _reports(kind == PageKind::Fixed ? LoadReports::ClosingReport::Yes : LoadReports::ClosingReport::No)
    , _scripts(
          _view.get(), scriptTimeout, [this] { restartEngine(); },
          [this] {
              if (_allowsPageScripts)
                  restartEngine();
          })
    , _frame(GTK_WIDGET(_view.get()))
    , _spoken(_view.get())
    , _isWarmingUp(start == Start::WarmingUp)
    , _self(std::make_shared<PageView*>(this))
{
    // The page with which the engine is warmed up is not for anybody's eyes.
    coverUnprepared();
    if (kind == PageKind::Columns) {
        addStyleSheet(_view.get(), "page.css");
        addStyleSheet(_view.get(), "type.css");
    } else
        addStyleSheet(_view.get(), "fixed-page.css");
    _frame.setResizeHandler([this] { frameDidChange(); });
    _textScaleChanges = Gtk::Settings::get_default()->property_gtk_xft_dpi().signal_changed().connect(
        [this] { textScaleDidChange(); });
    allowPageScripts(true);
    connectEngine();
}

PageView::~PageView()
{
    for (auto* timer : { &_startTimer, &_loadTimer, &_resizeTimer, &_recovery, &_paintTimer, &_textScaleChanges })
        timer->disconnect();
    g_signal_handlers_disconnect_by_data(_view.get(), this);
    g_signal_handlers_disconnect_by_data(webkit_web_view_get_user_content_manager(_view.get()), this);
    setRefusalHandler(_view.get(), {});
    // A page that is busy would not hear that it is closed, and go on for as long as it likes.
    webkit_web_view_terminate_web_process(_view.get());
    if (_numberScript)
        webkit_user_script_unref(_numberScript);
    if (_pageStyles)
        webkit_user_style_sheet_unref(_pageStyles);
}

void PageView::setBookFolder(const std::string& path)
{
    auto* content = webkit_web_view_get_user_content_manager(_view.get());
    webkit_user_content_manager_remove_all_filters(content);
    allowPageScripts(true);
    _bookFolder = path;
    _filterFailed = false;
    _filterRequest.reset();
    if (auto* const filter = _filterMaker.made(path))
        return webkit_user_content_manager_add_filter(content, filter);
    _filterRequest = _filterMaker.compile(path, [this, content](WebKitUserContentFilter* filter) {
        _filterRequest.reset();
        _filterFailed = !filter;
        if (filter)
            webkit_user_content_manager_add_filter(content, filter);
        startWhenReady();
    });
}

bool PageView::isWithinPage(const Url& url)
{
    const std::string scheme = url.scheme();
    return scheme == "data" || scheme == "blob" || scheme == "about" || scheme == "javascript";
}

bool PageView::isInBook(const Url& url) const
{
    return isUrlInFolder(url, _bookFolder);
}

std::uint64_t PageView::loadRequest(const Url& url)
{
    _recoveriesLeft = recoveriesPerLoad;
    begin(url);
    return currentLoad();
}

void PageView::begin(const Url& url)
{
    _reports.begin(url);
    _stage = Stage::Idle;
    _isForgiven = false;
    _startTimer.disconnect();
    _loadTimer.disconnect();
    _recovery.disconnect();

    const bool isFile = url.isFile() || url.scheme().empty();
    const auto target = isFile ? existingFile(url) : std::optional(url);
    // What is no place but text or a script of its own.
    if (isWithinPage(url))
        return failSoon();
    if (!target || (isFile && !_bookFolder.empty() && !isFileInFolder(target->path(), _bookFolder)))
        return failSoon();
    _target = asTheEngineSpells(target->text());
    std::error_code unknown;
    const auto bytes = isFile ? std::filesystem::file_size(target->path(), unknown) : 0;
    const double more = unknown ? 0 : secondsPerMegabyte * static_cast<double>(bytes) / 1e6;
    _patience = std::max(_timeout, std::min(_timeout + more, longestPatience));
    _scripts.setTimeout(_patience);
    coverUntilPrepared();
    _stage = Stage::Waiting;
    if (_isWarmingUp)
        warmUpNoLongerThan(_timeout);
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
    if (_stage == Stage::Waiting && !_filterRequest && !_isWarmingUp)
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
    pageIsPrepared();
    _reports.documentFailed(currentLoad());
}

void PageView::start()
{
    if (_filterFailed)
        return failSoon();
    _stage = Stage::Starting;
    numberScripts();
    stylePages();
    // A page whose scripts never end would keep the engine from even beginning with another one.
    _loadTimer.disconnect();
    if (_target.rfind("file:", 0) == 0)
        restartEngineAfter(_timeout);
    loadFresh();
}

void PageView::loadFresh()
{
    const bool isFragmentOfShown
        = _target.find('#') != std::string::npos && withoutFragment(_target) == withoutFragment(_shown);
    if (!isFragmentOfShown)
        return webkit_web_view_load_uri(_view.get(), _target.c_str());

    // The engine would only scroll the page that it shows. It is given the new URL and loaded anew.
    struct Reload {
        std::weak_ptr<PageView*> owner;
        std::uint64_t load;
    };
    const std::string script = "History.prototype.replaceState.call(history, null, '', '" + scriptText(_target) + "')";
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
            webkit_web_view_load_uri(reinterpret_cast<WebKitWebView*>(view), (*owner)->_target.c_str());
        if (value)
            g_object_unref(value);
    };
    webkit_web_view_evaluate_javascript(
        _view.get(), script.c_str(), -1, pageWorld, nullptr, nullptr, renamed, reload.release());
}

void PageView::numberScripts()
{
    auto* content = webkit_web_view_get_user_content_manager(_view.get());
    if (_numberScript) {
        webkit_user_content_manager_remove_script(content, _numberScript);
        webkit_user_script_unref(_numberScript);
    }
    const auto columns = _pageStart.columnCount;
    const std::string source = "var pagoraLoad = " + std::to_string(currentLoad())
        + ", pagoraLaysOut = " + (_kind == PageKind::Columns ? "true" : "false") + ", pagoraColumnCount = '"
        + (columns < 2 ? "auto" : std::to_string(columns)) + "'; pagoraMarkColumns('"
        + std::to_string(std::max(columns, 1)) + "');";
    _numberScript = webkit_user_script_new_for_world(source.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
        WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, pageWorld, nullptr, nullptr);
    webkit_user_content_manager_add_script(content, _numberScript);
}

void PageView::stylePages()
{
    // Putting one in place has the page that is still shown styled anew.
    if (_pageStart.styleSheet == _pageStylesText)
        return;
    _pageStylesText = _pageStart.styleSheet;
    auto* content = webkit_web_view_get_user_content_manager(_view.get());
    if (_pageStyles) {
        webkit_user_content_manager_remove_style_sheet(content, _pageStyles);
        webkit_user_style_sheet_unref(_pageStyles);
    }
    // Of the author's level, so that what scripts set in the elements themselves goes before it.
    _pageStyles = webkit_user_style_sheet_new(_pageStylesText.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
        WEBKIT_USER_STYLE_LEVEL_AUTHOR, nullptr, nullptr);
    webkit_user_content_manager_add_style_sheet(content, _pageStyles);
}

// The page has begun. One whose scripts never end, or never come, would not be completed.
void PageView::expectDocument()
{
    _loadTimer.disconnect();
    if (_allowsPageScripts)
        restartEngineAfter(_patience);
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
    // All that the reader does to a page, it does by scripts.
    _spoken.pageMayHaveChanged();
    return _scripts.evaluate(script);
}

void PageView::restartEngine()
{
    // Without a page there is none that could be to blame.
    if (!_shown.empty())
        allowPageScripts(false);
    webkit_web_view_terminate_web_process(_view.get());
}

// It is still seen, but its frames and timers have ended.
void PageView::pageClosedItself()
{
    _recovery.disconnect();
    _recovery = Glib::signal_idle().connect([this] {
        restartEngine();
        return false;
    });
}

void PageView::allowPageScripts(bool allowed)
{
    // A view that was made for pages without scripts stays so.
    _allowsPageScripts = allowed && !webkit_web_view_get_default_content_security_policy(_view.get());
    webkit_settings_set_enable_javascript_markup(webkit_web_view_get_settings(_view.get()), _allowsPageScripts);
}

void PageView::recover()
{
    _stage = Stage::Idle;
    _shown.clear();
    _isWarmingUp = false;
    _loadTimer.disconnect();
    const std::weak_ptr<PageView*> self = _self;
    const std::uint64_t lost = currentLoad();
    if (auto* delegate = _reports.delegate())
        delegate->webProcessDidTerminate();
    if (!self.expired())
        _scripts.giveUpAll();
    // Answers may have started another load by then.
    if (self.expired() || lost != currentLoad())
        return;
    _recovery.disconnect();
    _recovery = Glib::signal_idle().connect([this, lost] {
        if (lost != currentLoad() || !_reports.url())
            return false;
        const Url url = *_reports.url();
        const gint64 now = g_get_monotonic_time();
        if (now - std::exchange(_lastRecovery, now) > steadyTime)
            _recoveriesLeft = recoveriesPerLoad;
        else if (_recoveriesLeft < recoveriesPerLoad)
            allowPageScripts(false);
        pageStartIsOver();
        if (_recoveriesLeft-- > 0)
            begin(url);
        else {
            _reports.begin(url);
            reportFailure();
        }
        return false;
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
        _frame.setMargins({ _margins->least, static_cast<int>(std::lround(_margins->largestWidth * pixelSize())) });
}

void PageView::frameDidChange()
{
    _awaitsPageSize = _stage == Stage::Shown && _pageSize != frame();
    if (!_awaitsPageSize)
        return reportSize();
    // The page script tells when the page has the new size too; only then do its measures fit the frame.
    _resizeTimer.disconnect();
    _resizeTimer = Glib::signal_timeout().connect(
        [this] {
            reportSize();
            return false;
        },
        resizePatience);
}

void PageView::reportSize()
{
    _resizeTimer.disconnect();
    if (auto* delegate = _reports.delegate())
        delegate->didResize();
}

void PageView::setTextSizeMultiplier(double multiplier)
{
    webkit_web_view_set_zoom_level(_view.get(), multiplier);
    if (_kind == PageKind::Columns)
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
    // The engine enlarges the whole page with the text, so that fewer of the page's own pixels are in view.
    return textScale();
}

void PageView::setHidden(bool hidden)
{
    // It stays laid out at its size and goes on drawing, so that the page in it can be prepared.
    _isHidden = hidden;
    _frame.setConcealed(hidden);
    _frame.set_can_target(!hidden);
}

// Not for ever: a page that never comes to an end is shown as it is.
void PageView::coverUntilPrepared()
{
    coverUnprepared();
    if (!_isUnprepared)
        return;
    _paintTimer = Glib::signal_timeout().connect(
        [this] {
            pageIsPrepared();
            return false;
        },
        static_cast<unsigned>(_patience * 1000));
}

void PageView::coverUnprepared()
{
    if (_kind != PageKind::Columns)
        return;
    _isUnprepared = true;
    _paintTimer.disconnect();
    ++_lastPaint;
    _frame.cover(_shown.empty() ? PageCover::Show::Nothing : PageCover::Show::LastPicture);
}

// What the reader said of a page's start holds for the load that it asked for.
void PageView::pageStartIsOver()
{
    _pageStart.isShownAtOnce = false;
    _pageStart.columnCount = 1;
}

void PageView::pageIsPrepared()
{
    _isUnprepared = false;
    uncoverWhenPainted();
}

void PageView::uncoverWhenPainted()
{
    if (_isUnprepared || !_frame.isCovered())
        return;
    // The engine draws the page a moment after it has laid it out.
    const auto request = "pagoraReportPaint(" + std::to_string(++_lastPaint) + ")";
    webkit_web_view_evaluate_javascript(
        _view.get(), request.c_str(), -1, pageWorld, nullptr, nullptr, nullptr, nullptr);
    _paintTimer.disconnect();
    _paintTimer = Glib::signal_timeout().connect(
        [this] {
            uncover();
            return false;
        },
        paintPatience);
}

void PageView::uncover()
{
    _paintTimer.disconnect();
    if (!_isUnprepared)
        _frame.uncover();
}

void PageView::setBackground(const Color& color)
{
    const GdkRGBA background { static_cast<float>(color.red), static_cast<float>(color.green),
        static_cast<float>(color.blue), static_cast<float>(color.alpha) };
    webkit_web_view_set_background_color(_view.get(), &background);
}

void PageView::makeFirstResponder()
{
    gtk_widget_grab_focus(GTK_WIDGET(_view.get()));
}

}
