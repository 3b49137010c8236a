#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace pagora {

// Immutable bytes, shared between copies. They are either in memory or still in the store, to be read when first asked
// for. Safe to use from any thread.
class Data {
public:
    // Reads the bytes from where they are stored; missing when they cannot be read. May be called on any thread.
    using Reader = std::function<std::optional<std::string>()>;

    explicit Data(std::string bytes);
    Data(std::size_t size, Reader reader);

    std::size_t size() const;
    // The bytes; empty when the store could not give them. Stored bytes are read at each call and not kept.
    std::string bytes() const;

    // Whether both are copies of one object, so that their bytes need not be compared.
    bool isSameAs(const Data& other) const { return _content == other._content; }
    bool operator==(const Data& other) const;

    // Names the shared bytes; equal for copies of one object, different for others that live at the same time.
    const void* identity() const { return _content.get(); }

    // Reads the bytes where they are stored; empty when they are in memory.
    Reader reader() const;
    // Releases the bytes in memory, for all copies. `reader` returns them from then on.
    void keepIn(Reader reader) const;

private:
    struct Content {
        Content(std::size_t size, std::string bytes, Reader reader);
        const std::size_t size;
        mutable std::mutex mutex;
        mutable std::string bytes;
        mutable Reader reader;
    };
    std::shared_ptr<const Content> _content;
};

}
