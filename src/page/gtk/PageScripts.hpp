#pragma once

#include "running/Reply.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <sigc++/sigc++.h>
#include <string>
#include <utility>

namespace pagora {

// The name of the script world that the page's own scripts cannot access.
inline constexpr const char* pageWorld = "pagora";

// The script that calls this function of the page: it reports, with this number, when the present layout has been
// drawn.
std::string reportOfDrawing(const char* function, std::uint64_t number);

// Evaluates scripts in a page view and tracks the pending ones. Main thread only.
class PageScripts {
public:
    // If a script takes longer than `timeout` seconds, `onTimeout` is called and the script returns an empty text.
    // `onSlow` is called if consecutive slow answers add up to that time.
    PageScripts(
        WebKitWebView* view, double timeout, std::function<void()> onTimeout, std::function<void()> onSlow = {});
    // Coroutines that are still waiting are not resumed.
    ~PageScripts();
    PageScripts(const PageScripts&) = delete;
    PageScripts& operator=(const PageScripts&) = delete;

    // Applies to scripts that are evaluated later.
    void setTimeout(double timeout) { _timeout = timeout; }
    Reply<std::string> evaluate(const std::string& script);
    // Makes the page visible. Replies when it has been drawn, or after a short time if it is not drawn.
    Reply<std::string> waitUntilDrawn();
    // Replies to all pending scripts with an empty text.
    void giveUpAll();

private:
    using Resolver = Reply<std::string>::Resolver;
    struct Pending {
        Resolver resolver;
        sigc::connection timer;
        // In seconds, on the monotonic clock.
        double asked;
    };
    struct Call {
        std::weak_ptr<PageScripts*> owner;
        unsigned long number;
    };

    // Registers a call. Returns its reply, and the data that the engine passes back with the result.
    std::pair<Reply<std::string>, std::unique_ptr<Call>> expect();
    void answer(unsigned long number, std::string text);
    void noteAnswer(unsigned long number);
    static void finished(GObject* view, GAsyncResult* result, gpointer call);
    static void wasDrawn(GObject* view, GAsyncResult* result, gpointer call);
    static void complete(gpointer call, JSCValue* value, GError* error);

    WebKitWebView* _view;
    double _timeout;
    std::function<void()> _onTimeout;
    std::function<void()> _onSlow;
    // The time of the last answer, and the sum of consecutive slow answers.
    double _lastAnswer = 0;
    double _waited = 0;
    unsigned long _lastNumber = 0;
    std::map<unsigned long, Pending> _pending;
    // Expires with this object. Used by results that arrive later.
    std::shared_ptr<PageScripts*> _self;
};

}
