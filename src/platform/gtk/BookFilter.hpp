#pragma once

#include "platform/gtk/GObjectPtr.hpp"

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <string>

namespace pagora {

// Makes the content filters that keep a book from reading files outside its folder: sub-resources are read by a process
// that no sandbox confines. Main thread.
class BookFilter {
public:
    // Receives the filter, or null when there is none to be had.
    using Receiver = std::function<void(WebKitUserContentFilter* filter)>;

    // `folder` receives the compiled filters.
    explicit BookFilter(const std::string& folder);

    // Compiles the filter for a book's folder; `receive` is called later, unless the returned token is gone by then.
    [[nodiscard]] std::shared_ptr<void> compile(const std::string& bookFolder, Receiver receive);

    // The rules as the engine takes them: JSON that blocks every file but those in the folder.
    static std::string rules(const std::string& bookFolder);

private:
    GObjectPtr<WebKitUserContentFilterStore> _store;
};

}
