#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace pagora {

// Immutable bytes, shared between copies. They are in memory, or are read from the store on each access. Thread-safe.
class Data {
public:
    // Reads the stored bytes. Returns nullopt if they cannot be read. May be called on any thread.
    using Reader = std::function<std::optional<std::string>()>;

    explicit Data(std::string bytes);
    Data(std::size_t size, Reader reader);

    std::size_t size() const;
    // Returns the bytes; empty if the store cannot read them. Stored bytes are read at each call and not cached.
    std::string bytes() const;

    // Returns whether both are copies of one object, in which case their bytes need not be compared.
    bool isSameAs(const Data& other) const { return _content == other._content; }
    bool operator==(const Data& other) const;

    // Address of the shared bytes: equal for copies of one object, different for other live objects.
    const void* identity() const { return _content.get(); }

    // Returns the function that reads the stored bytes; empty if the bytes are in memory.
    Reader reader() const;
    // Releases the bytes in memory, for all copies. Later accesses read them with `reader`.
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
