#pragma once

#include "confinement/gtk/BookFilter.hpp"

#include <webkit/webkit.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace pagora {

// The kind of a page view: for text that the reader lays out in columns, or for fixed-layout pages.
enum class PageKind { Columns, Fixed };

// The style sheets, scripts and content filter that a page view adds to its pages. Also controls whether pages run
// scripts of their own. Main thread only.
class PageContent {
public:
    // The view and the filters must outlive this object.
    PageContent(WebKitWebView* view, PageKind kind, BookFilter& filters);
    ~PageContent();
    PageContent(const PageContent&) = delete;
    PageContent& operator=(const PageContent&) = delete;

    PageKind kind() const { return _kind; }
    // Installs the filter for the book's folder and allows scripts again. `whenFiltered` is called if the filter must
    // be compiled first.
    void setBookFolder(const std::string& path, std::function<void()> whenFiltered);
    const std::string& bookFolder() const { return _bookFolder; }
    bool awaitsFilter() const { return _filterRequest != nullptr; }
    bool filterFailed() const { return _filterFailed; }

    // Facts for the scripts of a document: the number of columns that the reader will request, the language of text
    // without a declared one, and whether the program shows pressed pictures.
    struct ForScripts {
        std::int32_t columnCount = 1;
        std::string language;
        bool showsPictures = false;
    };
    // Passes the load number and the facts to the scripts of the next document.
    void numberScripts(std::uint64_t load, const ForScripts& facts);
    // Sets CSS that applies to pages from their first layout on.
    void setStartStyle(const std::string& css);

    // Has no effect on a view that was created without scripts.
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
