#pragma once

#include "kept_pages/PageKey.hpp"
#include "kept_pages/PagePicture.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace pagora {

// The pictures of the pages on which books were left, one file a book, in a folder of their own. At most 200 are kept;
// the oldest go. Main thread, except where it says so.
class KeptPages {
public:
    static constexpr std::size_t maxPages = 200;

    // Without a folder nothing is kept.
    KeptPages() = default;
    explicit KeptPages(std::string folder);

    // The picture of that key. Missing when there is none, or its file is damaged.
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
