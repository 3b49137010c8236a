#pragma once

#include "platform/Value.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// The stored form of a value: one byte that says the version, then the value. Arrays and dictionaries that are nested
// deeper than `maxValueDepth` are stored empty. Any thread.
constexpr int maxValueDepth = 256;

// Where parts of a value are stored apart from it: each gives the number of the place, or nothing when the part is to
// be stored within. Containers are asked for from the outside in, the value itself is not.
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
// Missing for everything but the stored form of one value.
std::optional<Value> decodeValue(std::string_view bytes, const FindParts& find = {});

// A number that tells damaged bytes from the ones that were stored; `seed` says where they belong.
std::uint64_t checksum(std::string_view bytes, std::uint64_t seed = 0);

}
