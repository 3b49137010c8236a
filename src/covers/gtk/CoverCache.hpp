#pragma once

#include "catalogue/BookInfo.hpp"

#include <gdkmm/texture.h>

#include <list>
#include <optional>
#include <unordered_map>

namespace pagora {

// A least-recently-used cache of covers as textures. An entry is valid while the book's cover data is unchanged. Main
// thread only.
class CoverCache {
public:
    explicit CoverCache(std::size_t capacity)
        : _capacity(capacity)
    {
    }

    // Returns null if there is no valid entry.
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
    // Most recently used first.
    std::list<Cover> _covers;
    std::unordered_map<const BookInfo*, std::list<Cover>::iterator> _byBook;
};

}
