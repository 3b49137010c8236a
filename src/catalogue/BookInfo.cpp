#include "catalogue/BookInfo.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pagora {

std::optional<Image> BookInfo::cover() const
{
    return _imgData ? Image::fromBytes(_imgData->bytes()) : std::nullopt;
}

std::vector<Url> BookInfo::files() const
{
    std::vector<Url> urls;
    for (const auto& path : filePaths())
        urls.push_back(Url::file(*path.string()));
    return urls;
}

void BookInfo::setFiles(const std::vector<Url>& files)
{
    Value::Array paths;
    for (const auto& file : files)
        paths.emplace_back(file.path());
    _files = std::move(paths);
}

Value::Array BookInfo::filePaths() const
{
    Value::Array paths;
    if (const auto* stored = _files.array())
        std::copy_if(
            stored->begin(), stored->end(), std::back_inserter(paths), [](const Value& path) { return path.string(); });
    return paths;
}

std::size_t BookInfo::fileCount() const
{
    const auto* paths = _files.array();
    return paths ? paths->size() : 0;
}

std::optional<Value::Array> BookInfo::content() const
{
    const auto* entries = _content ? _content->array() : nullptr;
    return entries ? std::optional(*entries) : std::nullopt;
}

}
