#pragma once

#include "base/GObjectPtr.hpp"

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <sigc++/connection.h>
#include <string>
#include <utility>

namespace pagora {

// Offers the text that a page shows to assistive technology, as the description of the engine's widget, which has the
// keyboard focus; its name tells the book and the chapter. The text is collected when the page has come to rest, so
// that turning pages does not wait for it. Where the engine offers the page's own tree, the text is not offered a
// second time. Main thread.
class SpokenPage {
public:
    explicit SpokenPage(WebKitWebView* view);
    ~SpokenPage();
    SpokenPage(const SpokenPage&) = delete;
    SpokenPage& operator=(const SpokenPage&) = delete;

    // Names the page, by the title of its document; at once, and again with every text.
    void setNamer(std::function<std::string(const std::string& title)> namer);
    // What is read in place of the page, at once; an empty text gives the page back.
    void setNotice(const std::string& notice);
    // What is seen may have become different.
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
    // Something happened since the page was asked.
    bool _isOutdated = false;
    sigc::connection _rest;
    // Forgotten when the page goes, for what comes back later.
    std::shared_ptr<SpokenPage*> _self;
};

}
