#include "covers/gtk/CoverCache.hpp"

namespace pagora {

namespace {

bool isSame(const std::optional<Data>& one, const std::optional<Data>& other)
{
    return one && other ? one->isSameAs(*other) : !one && !other;
}

}

Glib::RefPtr<Gdk::Texture> CoverCache::find(const BookInfo& book)
{
    const auto found = _byBook.find(&book);
    if (found == _byBook.end() || !isSame(found->second->data, book.imgData()))
        return {};
    _covers.splice(_covers.begin(), _covers, found->second);
    return found->second->texture;
}

void CoverCache::insert(const BookInfo* book, std::optional<Data> data, Glib::RefPtr<Gdk::Texture> texture)
{
    if (const auto found = _byBook.find(book); found != _byBook.end()) {
        _covers.erase(found->second);
        _byBook.erase(found);
    }
    _covers.push_front({ book, std::move(data), std::move(texture) });
    _byBook[book] = _covers.begin();
    if (_covers.size() > _capacity) {
        _byBook.erase(_covers.back().book);
        _covers.pop_back();
    }
}

}
