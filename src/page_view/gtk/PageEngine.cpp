#include "page_view/gtk/PageEngine.hpp"

#include "base/Resource.hpp"
#include "base/Url.hpp"
#include "confinement/gtk/PageMemoryWatch.hpp"
#include "confinement/gtk/PageRefusals.hpp"
#include "desktop/gtk/BookFonts.hpp"

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>

namespace pagora {

namespace {

// Memory limit of a page process in megabytes, and the fractions of it at which the engine frees memory.
constexpr guint pageMemoryLimit = 1536;
// Memory limit of the network process, which loads files and stores blobs, in megabytes.
constexpr guint networkMemoryLimit = 512;
constexpr double conservativeFraction = 0.5;
constexpr double strictFrom = 0.75;
// The interval in seconds at which an engine process checks its own memory. A check takes 10 ms; `PageMemoryWatch`
// checks more often.
constexpr double memoryInterval = 30;

struct FreeMemorySettings {
    void operator()(WebKitMemoryPressureSettings* settings) const { webkit_memory_pressure_settings_free(settings); }
};
using MemorySettings = std::unique_ptr<WebKitMemoryPressureSettings, FreeMemorySettings>;

MemorySettings memorySettings(guint megabytes)
{
    MemorySettings settings(webkit_memory_pressure_settings_new());
    webkit_memory_pressure_settings_set_memory_limit(settings.get(), megabytes);
    webkit_memory_pressure_settings_set_kill_threshold(settings.get(), 1.0);
    webkit_memory_pressure_settings_set_strict_threshold(settings.get(), strictFrom);
    webkit_memory_pressure_settings_set_conservative_threshold(settings.get(), conservativeFraction);
    webkit_memory_pressure_settings_set_poll_interval(settings.get(), memoryInterval);
    return settings;
}

// Forbids all scripts of the page. Scripts in the reader's world are not affected.
constexpr const char* policyWithoutScripts = "script-src 'none'; worker-src 'none'";

GObjectPtr<WebKitWebContext> makeContext(Confinement confinement)
{
    std::optional<ConfinementSwitchedOff> off;
    if (confinement == Confinement::None)
        off.emplace();
    const auto memory = memorySettings(pageMemoryLimit);
    webkit_network_session_set_memory_pressure_settings(memorySettings(networkMemoryLimit).get());
    auto* context
        = WEBKIT_WEB_CONTEXT(g_object_new(WEBKIT_TYPE_WEB_CONTEXT, "memory-pressure-settings", memory.get(), nullptr));
    PageMemoryWatch::attach(context, { std::uint64_t(pageMemoryLimit) << 20, std::uint64_t(networkMemoryLimit) << 20 });
    webkit_web_context_set_cache_model(context, WEBKIT_CACHE_MODEL_DOCUMENT_VIEWER);
    webkit_web_context_set_spell_checking_enabled(context, FALSE);
    return GObjectPtr<WebKitWebContext>::adopt(context);
}

// Does nothing if this version of the engine does not have the feature.
void disableFeature(WebKitSettings* settings, std::string_view identifier)
{
    auto* const features = webkit_settings_get_all_features();
    for (gsize i = 0; i < webkit_feature_list_get_length(features); ++i) {
        auto* const feature = webkit_feature_list_get(features, i);
        if (webkit_feature_get_identifier(feature) == identifier)
            webkit_settings_set_feature_enabled(settings, feature, FALSE);
    }
    webkit_feature_list_unref(features);
}

GObjectPtr<WebKitSettings> makeSettings()
{
    auto* settings = webkit_settings_new();
    webkit_settings_set_enable_developer_extras(settings, FALSE);
    webkit_settings_set_enable_page_cache(settings, FALSE);
    // Its data would use memory of the network process, which all books share.
    webkit_settings_set_enable_html5_database(settings, FALSE);
    webkit_settings_set_enable_back_forward_navigation_gestures(settings, FALSE);
    webkit_settings_set_javascript_can_open_windows_automatically(settings, FALSE);
    webkit_settings_set_javascript_can_access_clipboard(settings, FALSE);
    webkit_settings_set_enable_fullscreen(settings, FALSE);
    webkit_settings_set_enable_media_stream(settings, FALSE);
    webkit_settings_set_enable_webrtc(settings, FALSE);
    webkit_settings_set_media_playback_requires_user_gesture(settings, TRUE);
    // With this feature, a page that navigates to a server is reloaded endlessly.
    disableFeature(settings, "NavigationAPI");
    // Software rendering is fastest for pages of text and uses the least memory.
    webkit_settings_set_hardware_acceleration_policy(settings, WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    webkit_settings_set_enable_smooth_scrolling(settings, FALSE);
    webkit_settings_set_enable_caret_browsing(settings, FALSE);
    webkit_settings_set_zoom_text_only(settings, TRUE);
    // The font of books that set none, and of the generic family serif.
    webkit_settings_set_default_font_family(settings, "Georgia");
    webkit_settings_set_serif_font_family(settings, "Georgia");
    // The encoding of books that do not declare one.
    webkit_settings_set_default_charset(settings, "utf-8");
    return GObjectPtr<WebKitSettings>::adopt(settings);
}

void addScript(WebKitUserContentManager* content, const char* name, WebKitUserScriptInjectionTime time)
{
    const auto text = resourceBytes(std::string("/org/pagora/Pagora/scripts/") + name).value();
    auto* script = webkit_user_script_new_for_world(
        text.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME, time, pageWorld, nullptr, nullptr);
    webkit_user_content_manager_add_script(content, script);
    webkit_user_script_unref(script);
}

void cancelDownload(WebKitNetworkSession*, WebKitDownload* download, gpointer)
{
    webkit_download_cancel(download);
}

// Creates an ephemeral session, which ends with the last view that uses it.
GObjectPtr<WebKitNetworkSession> makeSession()
{
    auto session = GObjectPtr<WebKitNetworkSession>::adopt(webkit_network_session_new_ephemeral());
    g_signal_connect(session.get(), "download-started", G_CALLBACK(cancelDownload), nullptr);
    return session;
}

}

PageEngine::PageEngine(Options options)
    : _options(std::move(options))
    , _context(makeContext(_options.confinement))
    , _filter(_options.cachesFolder + "/page-filters")
{
    std::error_code ignored;
    std::filesystem::create_directories(_options.booksFolder, ignored);
    // The engine rejects folders that do not exist.
    if (std::filesystem::is_directory(_options.booksFolder, ignored))
        webkit_web_context_add_path_to_sandbox(_context.get(), _options.booksFolder.c_str(), TRUE);
    if (!bookFontsFile().empty())
        webkit_web_context_add_path_to_sandbox(_context.get(), bookFontsFile().c_str(), TRUE);
}

PageEngine::~PageEngine()
{
    if (!_warmView)
        return;
    g_signal_handlers_disconnect_by_data(_warmView.get(), this);
    webkit_web_view_terminate_web_process(_warmView.get());
}

GObjectPtr<WebKitWebView> PageEngine::makeEngineView(WebKitNetworkSession* session) const
{
    auto* content = webkit_user_content_manager_new();
    webkit_user_content_manager_register_script_message_handler(content, "pagora", pageWorld);
    for (const char* const name : { "page-strip.js", "page-fit-breaks.js", "page-fit-ends.js", "page-fit-narrow.js",
             "page-fit-wide.js", "page-fit.js", "page-picture.js", "page-start.js", "page-shown.js",
             "page-highlights.js", "page-find.js", "page-marks.js", "page-notes.js", "page-select.js", "page-rest.js" })
        addScript(content, name, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START);
    addScript(content, "page-end.js", WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_END);
    const auto settings = makeSettings();
    const char* const policy = _options.confinement == Confinement::None ? policyWithoutScripts : nullptr;
    auto view = GObjectPtr<WebKitWebView>::adopt(WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "accessible-role",
        GTK_ACCESSIBLE_ROLE_DOCUMENT, "web-context", _context.get(), "network-session", session, "settings",
        settings.get(), "user-content-manager", content, "default-content-security-policy", policy, nullptr)));
    g_object_unref(content);
    refusePrivileges(view.get());
    return view;
}

std::unique_ptr<PageView> PageEngine::makePageView(PageKind kind, const PageView* beside)
{
    if (beside) {
        auto view = makeEngineView(webkit_web_view_get_network_session(beside->engineView()));
        return std::make_unique<PageView>(std::move(view), kind, _filter, _options.scriptTimeout);
    }
    if (!_warmView)
        return std::make_unique<PageView>(makeEngineView(makeSession().get()), kind, _filter, _options.scriptTimeout);
    g_signal_handlers_disconnect_by_data(_warmView.get(), this);
    const auto start = _isWarm ? PageView::Start::Ready : PageView::Start::WarmingUp;
    return std::make_unique<PageView>(std::move(_warmView), kind, _filter, _options.scriptTimeout, start);
}

void PageEngine::warmPageChanged(WebKitWebView*, WebKitLoadEvent event, PageEngine* engine)
{
    engine->_isWarm = event == WEBKIT_LOAD_FINISHED;
}

// The process starts again with the first page of a book.
void PageEngine::warmPageEnded(WebKitWebView*, WebKitWebProcessTerminationReason, PageEngine* engine)
{
    engine->_isWarm = true;
}

void PageEngine::prepareWarmView()
{
    if (_warmView)
        return;
    _warmView = makeEngineView(makeSession().get());
    _isWarm = false;
    g_signal_connect(_warmView.get(), "load-changed", G_CALLBACK(warmPageChanged), this);
    g_signal_connect(_warmView.get(), "web-process-terminated", G_CALLBACK(warmPageEnded), this);
    // The engine's processes start with the first page, not with the view. Loading a file also does one-time work: file
    // access, fonts, the reader's scripts.
    const std::string page = _options.cachesFolder + "/warm-page.xhtml";
    std::error_code ignored;
    std::filesystem::create_directories(_options.cachesFolder, ignored);
    // The file is temporary, so it is not flushed.
    std::ofstream(page) << resourceBytes("/org/pagora/Pagora/warm-page.xhtml").value();
    webkit_web_view_load_uri(_warmView.get(), Url::file(page).text().c_str());
}

}
