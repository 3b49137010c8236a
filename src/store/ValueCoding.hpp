#pragma once

#include "base/Value.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// Encodes values: one version byte, then the value. Arrays and dictionaries nested deeper than `maxValueDepth` are
// encoded as empty. Thread safe.
constexpr int maxValueDepth = 256;

// Decide which parts of a value are stored in rows of their own. Each returns the row's id, or nothing when the part is
// encoded in place. Called for containers from the outside in, not for the value itself.
struct PlaceParts {
    std::function<std::optional<std::int64_t>(const Data& data)> data;
    std::function<std::optional<std::int64_t>(const Value& container)> container;
};
// The part at a place, data with their size; missing when there cannot be such a place.
struct FindParts {
    std::function<std::optional<Data>(std::int64_t place, std::size_t size)> data;
    std::function<std::optional<Value>(std::int64_t place, Value::Container kind)> container;
};

std::string encodeValue(const Value& value, const PlaceParts& place = {});
// Missing unless the bytes are exactly one encoded value.
std::optional<Value> decodeValue(std::string_view bytes, const FindParts& find = {});

// Whether the bytes are exactly one encoded dictionary, with the keys of all dictionaries in order, as they are
// written. Passes the places of parts that are stored elsewhere to `part`.
bool isEncodedDictionary(std::string_view bytes, const std::function<void(std::int64_t place)>& part);
// The entry of such a dictionary; missing where there is none.
std::optional<Value> decodeEntry(std::string_view bytes, std::string_view key, const FindParts& find);

// Checksum of the stored bytes; `seed` identifies the row that they belong to.
std::uint64_t checksum(std::string_view bytes, std::uint64_t seed = 0);

}
