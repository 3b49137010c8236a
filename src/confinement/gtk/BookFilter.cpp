#include "confinement/gtk/BookFilter.hpp"

#include "base/Url.hpp"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace pagora {

namespace {

// The number of filters that are kept, because compiling one takes as long as showing a page.
constexpr std::size_t maxKept = 8;

// Escapes `text` for a regular expression inside a JSON string.
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

// A pending compilation. The filter maker and the receiver may be destroyed before it ends.
struct BookFilter::Request {
    std::weak_ptr<BookFilter*> maker;
    std::weak_ptr<Receiver> receiver;
    std::string bookFolder;
};

BookFilter::BookFilter(const std::string& folder)
    : _self(std::make_shared<BookFilter*>(this))
    , _folder(folder)
    , _store(GObjectPtr<WebKitUserContentFilterStore>::adopt(webkit_user_content_filter_store_new(folder.c_str())))
{
}

WebKitUserContentFilter* BookFilter::made(const std::string& bookFolder) const
{
    const auto found
        = std::find_if(_made.begin(), _made.end(), [&](const auto& filter) { return filter.first == bookFolder; });
    return found == _made.end() ? nullptr : found->second.get();
}

void BookFilter::keep(const std::string& bookFolder, WebKitUserContentFilter* filter)
{
    _made.remove_if([&](const auto& kept) { return kept.first == bookFolder; });
    _made.emplace_front(bookFolder, webkit_user_content_filter_ref(filter));
    if (_made.size() > maxKept)
        _made.pop_back();
}

std::string BookFilter::rules(const std::string& bookFolder)
{
    std::string prefix = Url::file(bookFolder).text();
    if (prefix.back() != '/')
        prefix += '/';
    // An escaped slash would allow a path traversal that the engine does not detect.
    return "[" + rule("^[fF][iI][lL][eE]:", "block") + "," + rule("^" + literalPattern(prefix), "ignore-previous-rules")
        + "," + rule("^file:.*%2[fF]", "block") + "]";
}

std::shared_ptr<void> BookFilter::compile(const std::string& bookFolder, Receiver receive)
{
    std::error_code ignored;
    std::filesystem::create_directories(_folder, ignored);
    auto receiver = std::make_shared<Receiver>(std::move(receive));
    auto request = std::make_unique<Request>(Request { _self, receiver, bookFolder });
    const std::string source = rules(bookFolder);
    GBytes* bytes = g_bytes_new(source.data(), source.size());
    const auto finished = [](GObject* store, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Request> request(static_cast<Request*>(data));
        GError* error = nullptr;
        auto* filter = webkit_user_content_filter_store_save_finish(
            reinterpret_cast<WebKitUserContentFilterStore*>(store), result, &error);
        g_clear_error(&error);
        if (const auto maker = request->maker.lock(); maker && filter)
            (*maker)->keep(request->bookFolder, filter);
        if (const auto receiver = request->receiver.lock())
            (*receiver)(filter);
        if (filter)
            webkit_user_content_filter_unref(filter);
    };
    webkit_user_content_filter_store_save(_store.get(), "book", bytes, nullptr, finished, request.release());
    g_bytes_unref(bytes);
    return receiver;
}

}
