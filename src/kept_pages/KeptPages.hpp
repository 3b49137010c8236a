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

    // Without a folder nothing is kept.
    KeptPages() = default;
    explicit KeptPages(std::string folder);

    // The picture of that key. Returns nullopt if there is none, or its file is damaged.
    std::optional<PagePicture> read(const PageKey& key) const;

    // The work that stores a picture in place of the book's last one, for a thread in the background. One that is too
    // large is not stored, and the last one goes. A removal after this call prevails, whenever the work is done.
    [[nodiscard]] std::function<void()> storing(PageKey key, PagePicture picture);

    // Of the book with that archive.
    void remove(const std::string& archive);
    void removeAll();

private:
    struct Changes;

    std::string fileOf(const std::string& archive) const;

    std::string _folder;
    // Shared with work that may outlive this.
    std::shared_ptr<Changes> _changes;
};

}
