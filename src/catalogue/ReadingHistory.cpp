#include "catalogue/ReadingHistory.hpp"

#include "catalogue/Settings.hpp"

#include <string_view>
#include <unordered_map>

namespace pagora {

namespace {

bool wasRead(const BookInfo& book)
{
    return book.type() == "default" && (book.lastPlace() || book.lastIndex() > 0 || book.lastCap() > 0);
}

}

std::vector<std::string> ReadingHistory::archives() const
{
    std::vector<std::string> archives;
    const auto stored = _defaults.objectForKey(defaults_keys::LastRead);
    if (!stored || !stored->array())
        return archives;
    for (const auto& archive : *stored->array()) {
        if (const auto* path = archive.string())
            archives.push_back(*path);
    }
    return archives;
}

void ReadingHistory::add(const std::string& archive)
{
    const auto stored = _defaults.objectForKey(defaults_keys::LastRead);
    Value::Array kept;
    if (stored && stored->array())
        kept = *stored->array();
    std::erase_if(kept, [&archive](const Value& each) { return !each.string() || *each.string() == archive; });
    kept.insert(kept.begin(), archive);
    if (kept.size() > maxCount)
        kept.erase(kept.begin() + maxCount, kept.end());
    _defaults.setObject(defaults_keys::LastRead, std::move(kept));
}

ReadingHistory::Books ReadingHistory::books(const std::vector<BookInfoPtr>& library) const
{
    const auto known = archives();
    std::unordered_map<std::string_view, std::size_t> ranks;
    for (std::size_t rank = 0; rank < known.size(); ++rank)
        ranks.try_emplace(known[rank], rank);
    Books books { std::vector<BookInfoPtr>(known.size()), {} };
    for (const auto& book : library) {
        if (!wasRead(*book))
            continue;
        const auto rank = book->epubPath() ? ranks.find(*book->epubPath()) : ranks.end();
        if (rank != ranks.end() && !books.known[rank->second])
            books.known[rank->second] = book;
        else
            books.others.push_back(book);
    }
    std::erase(books.known, nullptr);
    return books;
}

BookInfoPtr ReadingHistory::last(const std::vector<BookInfoPtr>& library) const
{
    if (!_defaults.hasKey(defaults_keys::LastRead))
        return nullptr;
    const auto read = books(library);
    return read.known.empty() ? nullptr : read.known.front();
}

std::vector<BookInfoPtr> ReadingHistory::all(const std::vector<BookInfoPtr>& library) const
{
    auto [all, others] = books(library);
    all.insert(all.end(), others.begin(), others.end());
    return all;
}

}
