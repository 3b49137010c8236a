#include "catalogue/CatalogueEntry.hpp"

#include "base/Numbers.hpp"
#include "store/RowsInMemory.hpp"

#include <optional>
#include <string_view>
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

std::uint64_t storedNumber(std::int64_t stored)
{
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(low32(static_cast<std::uint64_t>(stored))));
}

// An entry that is in memory, with the operations of a `StoredField`.
class FieldInMemory {
public:
    explicit FieldInMemory(const Value& value)
        : _value(value)
    {
    }
    std::optional<Value> value() const { return _value; }
    std::optional<std::string> text() const { return stringFrom(&_value); }
    std::int64_t integer() const { return integerFrom(&_value); }

private:
    const Value& _value;
};

template <typename Field>
void setField(BookInfo& book, std::string_view key, const Field& field)
{
    using namespace entry_keys;
    if (key == Type)
        book.setType(field.text());
    else if (key == ePubPath)
        book.setEpubPath(field.text());
    else if (key == Title)
        book.setTitle(field.text());
    else if (key == Author)
        book.setAuthor(field.text());
    else if (key == ISBN)
        book.setIsbn(field.text());
    else if (key == BookLoc)
        book.setBookPath(field.text());
    else if (key == LastInd)
        book.setLastIndex(storedNumber(field.integer()));
    else if (key == LastCap)
        book.setLastCap(storedNumber(field.integer()));
    else if (key == fixedWidth)
        book.setFixedWidth(storedNumber(field.integer()));
    else if (key == fixedHeight)
        book.setFixedHeight(storedNumber(field.integer()));
    else if (const auto value = field.value(); !value)
        return;
    else if (key == LastPlace)
        book.setLastPlace(realFrom(&*value));
    else if (key == CoverImage && value->data())
        book.setImgData(*value->data());
    else if (key == Content && value->isArray())
        book.setContent(*value);
    else if (key == Files)
        book.setFilePaths(*value);
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
    auto book = std::make_shared<BookInfo>();
    book->setType(std::nullopt);
    book->setContent(std::nullopt);
    // Stored entries stay encoded. The record has what is read often.
    if (const auto* entry = dynamic_cast<const StoredEntry*>(stored.source())) {
        entry->forEach([&book](std::string_view key, const StoredField& field) { setField(*book, key, field); });
        return book;
    }
    const auto read = stored.source() ? stored.source()->read() : std::nullopt;
    if (const auto* entry = (read ? *read : stored).dictionary()) {
        for (const auto& [key, value] : *entry)
            setField(*book, key, FieldInMemory(value));
    }
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
