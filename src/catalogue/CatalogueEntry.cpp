#include "catalogue/CatalogueEntry.hpp"

#include "base/Numbers.hpp"

#include <optional>
#include <utility>

namespace pagora {

namespace {

std::optional<Value> number(std::uint64_t field)
{
    return Value(static_cast<std::int64_t>(low32(field)));
}

template <typename Field>
std::optional<Value> present(const std::optional<Field>& field)
{
    if (!field)
        return std::nullopt;
    return Value(*field);
}

std::uint64_t storedNumber(const Value& entry, const char* key)
{
    const auto bits = static_cast<std::uint64_t>(integerFrom(entry.find(key)));
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(low32(bits)));
}

}

Value entryFromBook(const BookInfo& book)
{
    using namespace entry_keys;
    const std::pair<const char*, std::optional<Value>> fields[] = {
        { Type, present(book.type()) },
        { ePubPath, present(book.epubPath()) },
        { Title, present(book.title()) },
        { Author, present(book.author()) },
        { ISBN, present(book.isbn()) },
        { CoverImage, present(book.imgData()) },
        { LastInd, number(book.lastIndex()) },
        { LastCap, number(book.lastCap()) },
        { fixedWidth, number(book.fixedWidth()) },
        { fixedHeight, number(book.fixedHeight()) },
    };
    Value::Dictionary entry;
    for (const auto& [key, value] : fields) {
        if (!value)
            break;
        entry.emplace(key, *value);
    }
    entry.emplace(Files, book.filePaths());
    entry.emplace(Content, book.content().value_or(Value::Array {}));
    if (book.bookPath())
        entry.emplace(BookLoc, *book.bookPath());
    return entry;
}

BookInfoPtr bookFromEntry(const Value& stored)
{
    using namespace entry_keys;
    // The stored entry stays encoded, because the record contains the values that are read often.
    const auto read = stored.source() ? stored.source()->read() : std::nullopt;
    const Value& entry = read ? *read : stored;
    auto book = std::make_shared<BookInfo>();
    book->setType(stringFrom(entry.find(Type)));
    book->setEpubPath(stringFrom(entry.find(ePubPath)));
    book->setTitle(stringFrom(entry.find(Title)));
    book->setAuthor(stringFrom(entry.find(Author)));
    book->setIsbn(stringFrom(entry.find(ISBN)));
    const auto* cover = entry.find(CoverImage);
    if (cover && cover->data())
        book->setImgData(*cover->data());
    book->setLastIndex(storedNumber(entry, LastInd));
    book->setLastCap(storedNumber(entry, LastCap));
    const auto* place = entry.find(LastPlace);
    if (place)
        book->setLastPlace(realFrom(place));
    const auto* content = entry.find(Content);
    book->setContent(content && content->isArray() ? std::optional(*content) : std::nullopt);
    if (const auto* files = entry.find(Files))
        book->setFilePaths(*files);
    book->setBookPath(stringFrom(entry.find(BookLoc)));
    book->setFixedWidth(storedNumber(entry, fixedWidth));
    book->setFixedHeight(storedNumber(entry, fixedHeight));
    return book;
}

Value entryWithPosition(
    const Value& entry, std::uint64_t lastIndex, std::uint64_t lastCap, std::optional<double> lastPlace)
{
    using namespace entry_keys;
    Value::Dictionary changed;
    if (const auto* stored = entry.dictionary())
        changed = *stored;
    changed.insert_or_assign(LastInd, static_cast<std::int64_t>(lastIndex));
    changed.insert_or_assign(LastCap, static_cast<std::int64_t>(lastCap));
    if (lastPlace)
        changed.insert_or_assign(LastPlace, *lastPlace);
    return changed;
}

}
