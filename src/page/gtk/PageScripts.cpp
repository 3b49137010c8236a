#include "page/gtk/PageScripts.hpp"

#include <glibmm/main.h>

#include <algorithm>

namespace pagora {

namespace {

// Waits for two frames, because the second starts after the first was presented. A hidden page has no frames.
constexpr const char* waitForDrawing
    = "if (document.documentElement?.style) document.documentElement.style.setProperty('opacity', '1', 'important');"
      "await new Promise((done) => {"
      "requestAnimationFrame(() => requestAnimationFrame(done)); setTimeout(done, 2000); })";

// An answer that takes longer, in seconds, is slow.
constexpr double slowAnswer = 1;

double now()
{
    return static_cast<double>(g_get_monotonic_time()) / 1e6;
}

std::string textOf(JSCValue* value)
{
    if (jsc_value_is_undefined(value) || jsc_value_is_null(value))
        return {};
    char* text = jsc_value_to_string(value);
    std::string result = text ? text : "";
    g_free(text);
    return result;
}

}

std::string reportOfDrawing(const char* function, std::uint64_t number)
{
    // Newer engines present a frame only when the next one has begun. Measured with 2.50 and 2.54.
    const bool isPresentedAtOnce = webkit_get_major_version() == 2 && webkit_get_minor_version() <= 50;
    return std::string(function) + '(' + std::to_string(number) + ", " + (isPresentedAtOnce ? '0' : '1') + ')';
}

PageScripts::PageScripts(
    WebKitWebView* view, double timeout, std::function<void()> onTimeout, std::function<void()> onSlow)
    : _view(view)
    , _timeout(timeout)
    , _onTimeout(std::move(onTimeout))
    , _onSlow(std::move(onSlow))
    , _self(std::make_shared<PageScripts*>(this))
{
}

PageScripts::~PageScripts()
{
    for (auto& [number, pending] : _pending)
        pending.timer.disconnect();
}

std::pair<Reply<std::string>, std::unique_ptr<PageScripts::Call>> PageScripts::expect()
{
    Reply<std::string> reply;
    const unsigned long number = ++_lastNumber;
    // The callback may destroy the timer that owns it, or the page view.
    const auto giveUp = [owner = std::weak_ptr<PageScripts*>(_self), number] {
        const auto late = number;
        std::weak_ptr<PageScripts*> self;
        if (const auto scripts = owner.lock()) {
            self = scripts;
            const auto onTimeout = (*scripts)->_onTimeout;
            onTimeout();
        }
        if (const auto scripts = self.lock())
            (*scripts)->answer(late, {});
        return false;
    };
    auto timer = Glib::signal_timeout().connect(giveUp, static_cast<unsigned>(_timeout * 1000));
    _pending.emplace(number, Pending { reply.resolver(), timer, now() });
    return { std::move(reply), std::make_unique<Call>(Call { _self, number }) };
}

Reply<std::string> PageScripts::evaluate(const std::string& script)
{
    auto [reply, call] = expect();
    webkit_web_view_evaluate_javascript(_view, script.data(), static_cast<gssize>(script.size()), pageWorld, nullptr,
        nullptr, &PageScripts::finished, call.release());
    return std::move(reply);
}

Reply<std::string> PageScripts::waitUntilDrawn()
{
    auto [reply, call] = expect();
    webkit_web_view_call_async_javascript_function(
        _view, waitForDrawing, -1, nullptr, pageWorld, nullptr, nullptr, &PageScripts::wasDrawn, call.release());
    return std::move(reply);
}

void PageScripts::giveUpAll()
{
    const std::weak_ptr<PageScripts*> self = _self;
    const unsigned long last = _lastNumber;
    while (!self.expired() && !_pending.empty() && _pending.begin()->first <= last)
        answer(_pending.begin()->first, {});
}

void PageScripts::answer(unsigned long number, std::string text)
{
    auto found = _pending.extract(number);
    if (found.empty())
        return;
    found.mapped().timer.disconnect();
    found.mapped().resolver(std::move(text));
}

void PageScripts::finished(GObject* view, GAsyncResult* result, gpointer data)
{
    GError* error = nullptr;
    auto* value = webkit_web_view_evaluate_javascript_finish(reinterpret_cast<WebKitWebView*>(view), result, &error);
    complete(data, value, error);
}

void PageScripts::wasDrawn(GObject* view, GAsyncResult* result, gpointer data)
{
    GError* error = nullptr;
    auto* value
        = webkit_web_view_call_async_javascript_function_finish(reinterpret_cast<WebKitWebView*>(view), result, &error);
    complete(data, value, error);
}

void PageScripts::complete(gpointer data, JSCValue* value, GError* error)
{
    const std::unique_ptr<Call> call(static_cast<Call*>(data));
    g_clear_error(&error);
    std::string text = value ? textOf(value) : std::string();
    if (value)
        g_object_unref(value);
    if (const auto owner = call->owner.lock())
        (*owner)->noteAnswer(call->number);
    // The callback may have ended the page or destroyed the view.
    if (const auto owner = call->owner.lock())
        (*owner)->answer(call->number, std::move(text));
}

// A page that is busy for seconds between its answers delays a page turn, because a turn evaluates several scripts.
void PageScripts::noteAnswer(unsigned long number)
{
    const auto found = _pending.find(number);
    if (found == _pending.end())
        return;
    const double waited = now() - std::max(found->second.asked, _lastAnswer);
    _lastAnswer = now();
    _waited = waited < slowAnswer ? 0 : _waited + waited;
    if (_waited < _timeout || !_onSlow)
        return;
    _waited = 0;
    const auto onSlow = _onSlow;
    onSlow();
}

}
