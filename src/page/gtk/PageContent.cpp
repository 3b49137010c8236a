#include "page/gtk/PageContent.hpp"

#include "base/Resource.hpp"
#include "page/WebView.hpp"
#include "page/gtk/PageScripts.hpp"

#include <algorithm>
#include <utility>

namespace pagora {

PageContent::PageContent(WebKitWebView* view, PageKind kind, BookFilter& filters)
    : _view(view)
    , _content(webkit_web_view_get_user_content_manager(view))
    , _kind(kind)
    , _filters(filters)
{
    if (kind == PageKind::Columns) {
        addStyleSheet("page.css");
        addStyleSheet("type.css");
        addStyleSheet("find.css");
    } else
        addStyleSheet("fixed-page.css");
    addStyleSheet("marks.css");
    allowScripts(true);
}

PageContent::~PageContent()
{
    if (_numberScript)
        webkit_user_script_unref(_numberScript);
    if (_startStyle)
        webkit_user_style_sheet_unref(_startStyle);
}

void PageContent::addStyleSheet(const char* name)
{
    const auto text = resourceBytes(std::string("/org/pagora/Pagora/") + name).value();
    auto* sheet = webkit_user_style_sheet_new(
        text.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME, WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr);
    webkit_user_content_manager_add_style_sheet(_content, sheet);
    webkit_user_style_sheet_unref(sheet);
}

void PageContent::setBookFolder(const std::string& path, std::function<void()> whenFiltered)
{
    webkit_user_content_manager_remove_all_filters(_content);
    allowScripts(true);
    _bookFolder = path;
    _filterFailed = false;
    _filterRequest.reset();
    if (auto* const filter = _filters.made(path))
        return webkit_user_content_manager_add_filter(_content, filter);
    const auto receive = [this, whenFiltered = std::move(whenFiltered)](WebKitUserContentFilter* filter) {
        _filterRequest.reset();
        _filterFailed = !filter;
        if (filter)
            webkit_user_content_manager_add_filter(_content, filter);
        whenFiltered();
    };
    _filterRequest = _filters.compile(path, receive);
}

void PageContent::numberScripts(std::uint64_t load, const ForScripts& facts)
{
    if (_numberScript) {
        webkit_user_content_manager_remove_script(_content, _numberScript);
        webkit_user_script_unref(_numberScript);
    }
    const std::string source = "var pagoraLoad = " + std::to_string(load)
        + ", pagoraLaysOut = " + (_kind == PageKind::Columns ? "true" : "false") + ", pagoraColumnCount = '"
        + (facts.columnCount < 2 ? "auto" : std::to_string(facts.columnCount)) + "'; pagoraMarkColumns('"
        + std::to_string(std::max(facts.columnCount, 1)) + "'); pagoraSetLanguage('" + scriptText(facts.language)
        + "'); pagoraHandsPicturesOver = " + (facts.showsPictures ? "true;" : "false;");
    _numberScript = webkit_user_script_new_for_world(source.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
        WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, pageWorld, nullptr, nullptr);
    webkit_user_content_manager_add_script(_content, _numberScript);
}

void PageContent::setStartStyle(const std::string& css)
{
    // An equal style is not set again, because that would restyle the page that is still shown.
    if (css == _startStyleText)
        return;
    _startStyleText = css;
    if (_startStyle) {
        webkit_user_content_manager_remove_style_sheet(_content, _startStyle);
        webkit_user_style_sheet_unref(_startStyle);
    }
    // The author level lets styles that scripts set on elements override it.
    _startStyle = webkit_user_style_sheet_new(
        css.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME, WEBKIT_USER_STYLE_LEVEL_AUTHOR, nullptr, nullptr);
    webkit_user_content_manager_add_style_sheet(_content, _startStyle);
}

void PageContent::allowScripts(bool allowed)
{
    _allowsScripts = allowed && !webkit_web_view_get_default_content_security_policy(_view);
    webkit_settings_set_enable_javascript_markup(webkit_web_view_get_settings(_view), _allowsScripts);
}

}
