#include "page/gtk/SpokenPage.hpp"

#include "page/gtk/PageScripts.hpp"

#include <glibmm/main.h>

#include <dlfcn.h>
#include <string_view>

namespace pagora {

namespace {

// The text is collected after this time without changes, in milliseconds.
constexpr unsigned collectDelay = 250;

void setProperty(WebKitWebView* view, GtkAccessibleProperty property, const std::string& text)
{
    gtk_accessible_update_property(GTK_ACCESSIBLE(view), property, text.c_str(), -1);
}

// Returns whether assistive technology can access the page itself. From GTK 4.14 on, the engine puts the page's
// accessible tree below its widget when its process has one. The function is not in older versions of GTK, so it is
// looked up at run time.
bool hasOwnTree(WebKitWebView* view)
{
    using FirstChild = GtkAccessible* (*)(GtkAccessible*);
    static const auto firstChild
        = reinterpret_cast<FirstChild>(dlsym(RTLD_DEFAULT, "gtk_accessible_get_first_accessible_child"));
    if (!firstChild)
        return false;
    const auto child = GObjectPtr<GtkAccessible>::adopt(firstChild(GTK_ACCESSIBLE(view)));
    return child && G_OBJECT_TYPE_NAME(child.get()) == std::string_view("GtkAtSpiSocket");
}

}

SpokenPage::SpokenPage(WebKitWebView* view)
    : _view(view)
    , _self(std::make_shared<SpokenPage*>(this))
{
}

SpokenPage::~SpokenPage()
{
    _rest.disconnect();
}

void SpokenPage::setNamer(std::function<std::string(const std::string& title)> namer)
{
    _namer = std::move(namer);
    if (_namer)
        offerName();
}

void SpokenPage::setNotice(const std::string& notice)
{
    _notice = notice;
    if (_notice.empty())
        pageMayHaveChanged();
    else
        offerText(_notice);
}

void SpokenPage::pageMayHaveChanged()
{
    _rest.disconnect();
    _rest = Glib::signal_timeout().connect(
        [this] {
            collect();
            return false;
        },
        collectDelay);
}

void SpokenPage::collect()
{
    // Changes during a pending request lead to one more request.
    if (_isCollecting) {
        _isOutdated = true;
        return;
    }
    _isCollecting = true;
    auto owner = std::make_unique<std::weak_ptr<SpokenPage*>>(_self);
    const auto collected = [](GObject* view, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<std::weak_ptr<SpokenPage*>> owner(static_cast<std::weak_ptr<SpokenPage*>*>(data));
        JSCValue* value
            = webkit_web_view_evaluate_javascript_finish(reinterpret_cast<WebKitWebView*>(view), result, nullptr);
        char* text = value && jsc_value_is_string(value) ? jsc_value_to_string(value) : nullptr;
        if (const auto self = owner->lock()) {
            (*self)->_isCollecting = false;
            (*self)->offer(text ? text : "");
            if (std::exchange((*self)->_isOutdated, false))
                (*self)->collect();
        }
        g_free(text);
        if (value)
            g_object_unref(value);
    };
    webkit_web_view_evaluate_javascript(
        _view, "pagoraShownText()", -1, pageWorld, nullptr, nullptr, collected, owner.release());
}

// The first line is the document's title.
void SpokenPage::offer(const std::string& answer)
{
    const auto end = answer.find('\n');
    _title = answer.substr(0, end);
    offerName();
    if (_notice.empty())
        offerText(end == std::string::npos ? std::string() : answer.substr(end + 1));
}

void SpokenPage::offerText(std::string text)
{
    _text = std::move(text);
    auto description = _notice.empty() && hasOwnTree(_view) ? std::string() : _text;
    if (description == _description)
        return;
    _description = std::move(description);
    setProperty(_view, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, _description);
}

void SpokenPage::offerName()
{
    auto name = _namer ? _namer(_title) : _title;
    if (name == _name)
        return;
    _name = std::move(name);
    setProperty(_view, GTK_ACCESSIBLE_PROPERTY_LABEL, _name);
}

}
