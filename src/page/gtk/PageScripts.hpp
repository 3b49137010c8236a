#pragma once

#include "running/Reply.hpp"

#include <webkit/webkit.h>

#include <functional>
#include <map>
#include <memory>
#include <sigc++/sigc++.h>
#include <string>
#include <utility>

namespace pagora {

// The name of the script world that the page's own scripts do not see.
inline constexpr const char* pageWorld = "pagora";

// Evaluates scripts in a page view and keeps count of those that have not answered yet. Main thread.
class PageScripts {
public:
    // When a script takes more than `timeout` seconds, `onTimeout` is called and the script is given up with an empty
    // text.
    // When the page answers, but its slow answers to one script after another add up to that, `onSlow` is called.
    PageScripts(
        WebKitWebView* view, double timeout, std::function<void()> onTimeout, std::function<void()> onSlow = {});
    // The coroutines that still wait are not resumed.
    ~PageScripts();
    PageScripts(const PageScripts&) = delete;
    PageScripts& operator=(const PageScripts&) = delete;

    // For the scripts from now on.
    void setTimeout(double timeout) { _timeout = timeout; }
    Reply<std::string> evaluate(const std::string& script);
    // Lets the page be seen and answers when it has been drawn as it is now, or soon where it is not drawn at all.
    Reply<std::string> drawn();
    // Answers all that are pending with an empty text.
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

    // The reply to a call that is about to be made, and what the engine hands back with its result.
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
    // When the page answered last, and how long it has kept the reader waiting since it last answered soon.
    double _lastAnswer = 0;
    double _waited = 0;
    unsigned long _lastNumber = 0;
    std::map<unsigned long, Pending> _pending;
    // Tells calls that come back whether there is still someone to answer to.
    std::shared_ptr<PageScripts*> _self;
};

}
