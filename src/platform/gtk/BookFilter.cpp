#include "platform/gtk/BookFilter.hpp"

#include "platform/Url.hpp"

#include <cstring>

namespace pagora {

namespace {

// `text` as part of a regular expression inside a JSON string.
std::string literalPattern(const std::string& text)
{
    std::string pattern;
    for (const char character : text) {
        if (std::strchr("\\^$.|?*+()[]{}", character))
            pattern += "\\\\";
        else if (character == '"')
            pattern += '\\';
        pattern += character;
    }
    return pattern;
}

std::string rule(const std::string& pattern, const std::string& action)
{
    return R"({"trigger":{"url-filter":")" + pattern + R"(","url-filter-is-case-sensitive":true},"action":{"type":")"
        + action + R"("}})";
}

}

BookFilter::BookFilter(const std::string& folder)
    : _store(GObjectPtr<WebKitUserContentFilterStore>::adopt(webkit_user_content_filter_store_new(folder.c_str())))
{
}

std::string BookFilter::rules(const std::string& bookFolder)
{
    std::string prefix = Url::file(bookFolder).text();
    if (prefix.back() != '/')
        prefix += '/';
    // An escaped slash would be a way up that the engine does not see.
    return "[" + rule("^[fF][iI][lL][eE]:", "block") + "," + rule("^" + literalPattern(prefix), "ignore-previous-rules")
        + "," + rule("^file:.*%2[fF]", "block") + "]";
}

std::shared_ptr<void> BookFilter::compile(const std::string& bookFolder, Receiver receive)
{
    auto request = std::make_shared<Receiver>(std::move(receive));
    const std::string source = rules(bookFolder);
    GBytes* bytes = g_bytes_new(source.data(), source.size());
    auto waiting = std::make_unique<std::weak_ptr<Receiver>>(request);
    const auto finished = [](GObject* store, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<std::weak_ptr<Receiver>> waiting(static_cast<std::weak_ptr<Receiver>*>(data));
        GError* error = nullptr;
        auto* filter = webkit_user_content_filter_store_save_finish(
            reinterpret_cast<WebKitUserContentFilterStore*>(store), result, &error);
        g_clear_error(&error);
        if (auto receiver = waiting->lock())
            (*receiver)(filter);
        if (filter)
            webkit_user_content_filter_unref(filter);
    };
    webkit_user_content_filter_store_save(_store.get(), "book", bytes, nullptr, finished, waiting.release());
    g_bytes_unref(bytes);
    return request;
}

}
