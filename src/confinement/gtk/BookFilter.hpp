#pragma once

#include "base/GObjectPtr.hpp"

#include <webkit/webkit.h>

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <utility>

namespace pagora {

// Makes the content filters that keep a book from reading files outside its folder: sub-resources are read by a process
// that no sandbox confines. Main thread.
class BookFilter {
public:
    // Receives the filter, or null when there is none to be had.
    using Receiver = std::function<void(WebKitUserContentFilter* filter)>;

    // `folder` receives the compiled filters; it is made when one is, and may be removed in between.
    explicit BookFilter(const std::string& folder);

    // The filter for a book's folder if it is one of those that were made last; null otherwise.
    WebKitUserContentFilter* made(const std::string& bookFolder) const;

    // Compiles the filter for a book's folder; `receive` is called later, unless the returned token is gone by then.
    [[nodiscard]] std::shared_ptr<void> compile(const std::string& bookFolder, Receiver receive);

    // The rules as the engine takes them: JSON that blocks every file but those in the folder.
    static std::string rules(const std::string& bookFolder);

private:
    struct Release {
        void operator()(WebKitUserContentFilter* filter) const { webkit_user_content_filter_unref(filter); }
    };
    using Filter = std::unique_ptr<WebKitUserContentFilter, Release>;
    struct Request;
    void keep(const std::string& bookFolder, WebKitUserContentFilter* filter);

    // Those of the books that were opened last, the newest first.
    std::list<std::pair<std::string, Filter>> _made;
    std::shared_ptr<BookFilter*> _self;
    std::string _folder;
    GObjectPtr<WebKitUserContentFilterStore> _store;
};

}
