#include "catalogue/BookInfo.hpp"

namespace pagora {

std::optional<Image> BookInfo::cover() const
{
    return _imgData ? Image::fromBytes(_imgData->bytes()) : std::nullopt;
}

std::vector<Url> BookInfo::files() const
{
    if (const auto* urls = std::get_if<std::vector<Url>>(&_files))
        return *urls;
    std::vector<Url> urls;
    if (const auto* paths = std::get<Value>(_files).array()) {
        for (const auto& path : *paths) {
            if (const auto* text = path.string())
                urls.push_back(Url::file(*text));
        }
    }
    return urls;
}

std::size_t BookInfo::fileCount() const
{
    if (const auto* urls = std::get_if<std::vector<Url>>(&_files))
        return urls->size();
    const auto* paths = std::get<Value>(_files).array();
    return paths ? paths->size() : 0;
}

std::optional<Value::Array> BookInfo::content() const
{
    const auto* entries = _content ? _content->array() : nullptr;
    return entries ? std::optional(*entries) : std::nullopt;
}

}
