#pragma once

#include "base/GObjectPtr.hpp"

#include <webkit/webkit.h>

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <utility>

namespace pagora {

// Compiles the content filters that keep a book from reading files outside its folder. The process that loads
// sub-resources is not sandboxed. Main thread only.
class BookFilter {
public:
    // Receives the filter, or null on failure.
    using Receiver = std::function<void(WebKitUserContentFilter* filter)>;

    // `folder` is for compiled filters. It is created when needed and may be removed in between.
    explicit BookFilter(const std::string& folder);

    // Returns the filter for a book's folder if it is still kept; otherwise null.
    WebKitUserContentFilter* made(const std::string& bookFolder) const;

    // Compiles the filter for a book's folder and calls `receive` later. Destroying the returned token cancels the
    // call.
    [[nodiscard]] std::shared_ptr<void> compile(const std::string& bookFolder, Receiver receive);

    // Returns the rules in the engine's JSON format: they block every file outside the folder.
    static std::string rules(const std::string& bookFolder);

private:
    struct Release {
        void operator()(WebKitUserContentFilter* filter) const { webkit_user_content_filter_unref(filter); }
    };
    using Filter = std::unique_ptr<WebKitUserContentFilter, Release>;
    struct Request;
    void keep(const std::string& bookFolder, WebKitUserContentFilter* filter);

    // The filters of the last opened books, newest first.
    std::list<std::pair<std::string, Filter>> _made;
    std::shared_ptr<BookFilter*> _self;
    std::string _folder;
    GObjectPtr<WebKitUserContentFilterStore> _store;
};

}
