#pragma once

#include "kept_pages/PageKey.hpp"
#include "kept_pages/PagePicture.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace pagora {

// A picture of the last page read in each book, as one file for each book in a folder. At most 200 pictures are kept;
// the oldest are deleted. Main thread unless stated otherwise.
class KeptPages {
public:
    static constexpr std::size_t maxPages = 200;

    // Without a folder nothing is stored.
    KeptPages() = default;
    explicit KeptPages(std::string folder);

    // Returns the picture with that key; nullopt if there is none or its file is damaged.
    std::optional<PagePicture> read(const PageKey& key) const;

    // Returns a function that replaces the book's picture, for a background thread. If the picture is too large, the
    // function only removes the old one. A removal after this call takes precedence, whenever the function runs.
    [[nodiscard]] std::function<void()> storing(PageKey key, PagePicture picture);

    // Removes the picture of the book with that archive.
    void remove(const std::string& archive);
    void removeAll();

private:
    struct Changes;

    std::string fileOf(const std::string& archive) const;

    std::string _folder;
    // Shared with work that may outlive this object.
    std::shared_ptr<Changes> _changes;
};

}
