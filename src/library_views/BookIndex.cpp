#include "library_views/BookIndex.hpp"

#include "base/SearchText.hpp"
#include "base/Unicode.hpp"
#include "catalogue/BookTexts.hpp"

#include <glib.h>

#include <algorithm>
#include <numeric>
#include <string_view>
#include <unordered_map>

namespace pagora {

namespace {

// Separates the texts of a book. No search word contains it.
constexpr char separator = '\n';

// The number of books between two calls of `isWanted`.
constexpr std::size_t booksBetweenChecks = 512;

// Returns the collation key of a text. Keys are compared bytewise; the key of a missing text sorts last.
std::string collationKey(const std::optional<std::string>& text)
{
    if (standsForNone(text))
        return "\xFF";
    const auto valid = validUtf8(*text);
    gchar* const key = g_utf8_collate_key(valid.data(), static_cast<gssize>(valid.size()));
    std::string result = key;
    g_free(key);
    return result;
}

std::string titleKey(const BookInfo& book)
{
    return collationKey(book.title());
}

std::string authorKey(const BookInfo& book)
{
    return collationKey(book.author()) + '\0' + titleKey(book);
}

}

void BookIndex::prepare()
{
    if (!_ends.empty())
        return;
    _ends.reserve(_books->size());
    for (const auto& book : *_books) {
        for (const auto* const text : { &book->title(), &book->author(), &book->isbn() }) {
            if (*text)
                _texts += searchText(**text);
            _texts += separator;
        }
        _ends.push_back(_texts.size());
    }
    _texts.shrink_to_fit();
}

bool BookIndex::hasAll(std::size_t index, const std::vector<std::string>& words) const
{
    const auto start = index == 0 ? 0 : _ends[index - 1];
    const auto text = std::string_view(_texts).substr(start, _ends[index] - start);
    return std::all_of(words.begin(), words.end(),
        [text](const std::string& word) { return text.find(word) != std::string_view::npos; });
}

BookIndex::Indexes BookIndex::sorted(const Key& key) const
{
    std::vector<std::string> keys;
    keys.reserve(_books->size());
    for (const auto& book : *_books)
        keys.push_back(key(*book));
    Indexes indexes(_books->size());
    std::iota(indexes.begin(), indexes.end(), 0U);
    std::stable_sort(indexes.begin(), indexes.end(), [&](auto a, auto b) { return keys[a] < keys[b]; });
    return indexes;
}

BookIndex::Indexes BookIndex::byLastReading(const std::vector<BookInfoPtr>& lastRead) const
{
    std::unordered_map<const BookInfo*, std::size_t> ranks;
    for (std::size_t rank = 0; rank < lastRead.size(); ++rank)
        ranks.try_emplace(lastRead[rank].get(), rank);
    constexpr auto none = static_cast<std::uint32_t>(-1);
    Indexes read(lastRead.size(), none);
    Indexes others;
    for (std::uint32_t index = 0; index < _books->size(); ++index) {
        const auto found = ranks.find((*_books)[index].get());
        if (found == ranks.end())
            others.push_back(index);
        else
            read[found->second] = index;
    }
    std::erase(read, none);
    read.insert(read.end(), others.begin(), others.end());
    return read;
}

const BookIndex::Indexes* BookIndex::ordered(const BookQuery& query)
{
    switch (query.order) {
    case BookOrder::Title:
        if (_byTitle.empty())
            _byTitle = sorted(titleKey);
        return &_byTitle;
    case BookOrder::Author:
        if (_byAuthor.empty())
            _byAuthor = sorted(authorKey);
        return &_byAuthor;
    case BookOrder::LastRead:
        _byLastReading = byLastReading(query.lastRead);
        return &_byLastReading;
    case BookOrder::AsAdded:
        break;
    }
    return nullptr;
}

std::optional<ShownBooks> BookIndex::find(const BookQuery& query, const std::function<bool()>& isWanted)
{
    const auto* const order = ordered(query);
    if (query.asksForAll())
        return order ? ShownBooks(_books, *order) : ShownBooks(_books);
    prepare();
    Indexes found;
    for (std::size_t position = 0; position < _books->size(); ++position) {
        if (position % booksBetweenChecks == 0 && !isWanted())
            return std::nullopt;
        const auto index = order ? (*order)[position] : static_cast<std::uint32_t>(position);
        if (hasAll(index, query.words))
            found.push_back(index);
    }
    return ShownBooks(_books, std::move(found));
}

}
