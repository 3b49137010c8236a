#include "base/Json.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "store/ValueCoding.hpp"
#include "tests/fuzz/FuzzRun.hpp"

using namespace pagora;
using test::require;

namespace {

// Stands in for separately stored parts of limited size.
const FindParts parts {
    [](std::int64_t place, std::size_t size) -> std::optional<Data> {
        return place >= 0 && size < 16 ? std::optional(Data(std::string(size, 'x'))) : std::nullopt;
    },
    [](std::int64_t, Value::Container kind) -> std::optional<Value> {
        return kind == Value::Container::Array ? Value(Value::Array {}) : Value(Value::Dictionary {});
    },
};

// Uses the value as the program uses a catalogue entry.
void readEntry(const Value& entry)
{
    const auto book = bookFromEntry(entry);
    book->files();
    book->content();
    entryFromBook(*book);
    entryWithPosition(entry, book->lastIndex(), book->lastCap(), book->lastPlace());
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const test::FuzzRun run;
    const auto bytes = test::inputBytes(data, size);
    require(checksum(bytes) == checksum(std::string(bytes)));
    const auto value = decodeValue(bytes, parts);
    if (!value)
        return 0;
    // A decoded value is always encoded as the same bytes.
    const auto stored = encodeValue(*value);
    const auto again = decodeValue(stored);
    require(again && encodeValue(*again) == stored);
    jsonText(*value);
    readEntry(*value);
    return 0;
}
