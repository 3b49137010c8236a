#pragma once

#include "base/Value.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// Encodes values: one version byte, then the value. Arrays and dictionaries nested deeper than `maxValueDepth` are
// encoded as empty. Thread-safe.
constexpr int maxValueDepth = 256;

// Decides which parts of a value are stored in rows of their own. Each function returns the row's id, or nullopt to
// encode the part in place. Called for containers from the outside in, not for the value itself.
struct PlaceParts {
    std::function<std::optional<std::int64_t>(const Data& data)> data;
    std::function<std::optional<std::int64_t>(const Value& container)> container;
};
// Return the part stored under `place`; data are checked against their `size`. Return nullopt if there cannot be such a
// part.
struct FindParts {
    std::function<std::optional<Data>(std::int64_t place, std::size_t size)> data;
    std::function<std::optional<Value>(std::int64_t place, Value::Container kind)> container;
};

std::string encodeValue(const Value& value, const PlaceParts& place = {});
// Returns nullopt unless the bytes are exactly one encoded value.
std::optional<Value> decodeValue(std::string_view bytes, const FindParts& find = {});

// Returns whether the bytes are exactly one encoded dictionary in which the keys of all dictionaries are sorted, as the
// encoder writes them. Passes the row ids of parts that are stored elsewhere to `part`.
bool isEncodedDictionary(std::string_view bytes, const std::function<void(std::int64_t place)>& part);
// Decodes the value under `key` of such a dictionary; nullopt if there is none.
std::optional<Value> decodeEntry(std::string_view bytes, std::string_view key, const FindParts& find);

// Calls `entry` with each key of such a dictionary, in order, and with the encoded value, which has no version byte.
void forEachEntry(
    std::string_view bytes, const std::function<void(std::string_view key, std::string_view encoded)>& entry);
// Decodes such a value. The other two return nullopt unless it is a string or an integer.
std::optional<Value> decodePart(std::string_view encoded, const FindParts& find);
std::optional<std::string_view> decodeString(std::string_view encoded);
std::optional<std::int64_t> decodeInteger(std::string_view encoded);

// Returns the checksum of stored bytes; `seed` identifies their row.
std::uint64_t checksum(std::string_view bytes, std::uint64_t seed = 0);

}
