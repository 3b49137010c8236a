#pragma once

#include "catalogue/BookInfo.hpp"

#include <gdkmm/texture.h>

#include <list>
#include <optional>
#include <unordered_map>

namespace pagora {

// A cache of the covers shown last, as textures. A cover is found by its book while the book's cover data, or its lack
// of any, is unchanged. Main thread.
class CoverCache {
public:
    explicit CoverCache(std::size_t capacity)
        : _capacity(capacity)
    {
    }

    // Null when it is not there.
    Glib::RefPtr<Gdk::Texture> find(const BookInfo& book);
    void insert(const BookInfo* book, std::optional<Data> data, Glib::RefPtr<Gdk::Texture> texture);
    std::size_t size() const { return _covers.size(); }

private:
    struct Cover {
        // Identifies the book; never dereferenced.
        const BookInfo* book;
        std::optional<Data> data;
        Glib::RefPtr<Gdk::Texture> texture;
    };

    std::size_t _capacity;
    // The one used last is first.
    std::list<Cover> _covers;
    std::unordered_map<const BookInfo*, std::list<Cover>::iterator> _byBook;
};

}
