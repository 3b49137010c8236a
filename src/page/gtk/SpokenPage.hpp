#pragma once

#include "base/GObjectPtr.hpp"

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <sigc++/connection.h>
#include <string>

namespace pagora {

// Provides the visible text of a page to assistive technology as the description of the engine's widget, which has the
// keyboard focus. The widget's name holds book and chapter. The text is collected when the page is idle, so that it
// does not delay page turns. Not used where the engine provides the accessible tree of the page. Main thread only.
class SpokenPage {
public:
    explicit SpokenPage(WebKitWebView* view);
    ~SpokenPage();
    SpokenPage(const SpokenPage&) = delete;
    SpokenPage& operator=(const SpokenPage&) = delete;

    // Sets the function that makes the accessible name from the document's title. It is called immediately and with
    // every new text.
    void setNamer(std::function<std::string(const std::string& title)> namer);
    // Replaces the text of the page; an empty text restores it.
    void setNotice(const std::string& notice);
    // Called when the visible text may have changed.
    void pageMayHaveChanged();
    const std::string& name() const { return _name; }
    const std::string& text() const { return _text; }

private:
    void collect();
    void offer(const std::string& answer);
    void offerName();
    void offerText(std::string text);

    WebKitWebView* _view;
    std::function<std::string(const std::string& title)> _namer;
    std::string _title;
    std::string _notice;
    std::string _name;
    std::string _text;
    std::string _description;
    bool _isCollecting = false;
    // True if the page may have changed since the last request.
    bool _isOutdated = false;
    sigc::connection _rest;
    // Expires with this object. Used by replies that arrive later.
    std::shared_ptr<SpokenPage*> _self;
};

}
