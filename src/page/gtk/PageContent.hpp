#pragma once

#include "confinement/gtk/BookFilter.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace pagora {

// The kind of a page view: for text that the reader lays out in columns, or for pages with a fixed layout.
enum class PageKind { Columns, Fixed };

// What a page view adds to its pages: style sheets, scripts and the book's content filter. It also decides whether
// pages run scripts of their own. Main thread only.
class PageContent {
public:
    // The view and the filters outlive it.
    PageContent(WebKitWebView* view, PageKind kind, BookFilter& filters);
    ~PageContent();
    PageContent(const PageContent&) = delete;
    PageContent& operator=(const PageContent&) = delete;

    PageKind kind() const { return _kind; }
    // Installs the filter for the book's folder and allows scripts again. `whenFiltered` is called if the filter has to
    // be compiled first.
    void setBookFolder(const std::string& path, std::function<void()> whenFiltered);
    const std::string& bookFolder() const { return _bookFolder; }
    bool awaitsFilter() const { return _filterRequest != nullptr; }
    bool filterFailed() const { return _filterFailed; }

    // What the scripts of a document are told: how many columns the reader will ask for, the language of a text that
    // does not say it, and whether the program shows pictures that are pressed.
    struct ForScripts {
        std::int32_t columnCount = 1;
        std::string language;
        bool showsPictures = false;
    };
    // Tells the scripts of the next document their load, and that.
    void numberScripts(std::uint64_t load, const ForScripts& facts);
    // CSS that applies to pages from their first line on.
    void setStartStyle(const std::string& css);

    // Has no effect on a view that was made without scripts.
    void allowScripts(bool allowed);
    bool allowsScripts() const { return _allowsScripts; }

private:
    void addStyleSheet(const char* name);

    WebKitWebView* _view;
    WebKitUserContentManager* _content;
    PageKind _kind;
    BookFilter& _filters;
    std::string _bookFolder;
    std::shared_ptr<void> _filterRequest;
    bool _filterFailed = false;
    bool _allowsScripts = true;
    WebKitUserScript* _numberScript = nullptr;
    WebKitUserStyleSheet* _startStyle = nullptr;
    std::string _startStyleText;
};

}
