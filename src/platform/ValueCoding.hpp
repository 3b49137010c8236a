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

// The number of the place where `data` is stored apart from the value; missing when it is to be part of it.
using PlaceData = std::function<std::optional<std::int64_t>(const Data& data)>;
// The data of `size` bytes at a place; missing when there cannot be such a place.
using FindData = std::function<std::optional<Data>(std::int64_t place, std::size_t size)>;

std::string encodeValue(const Value& value, const PlaceData& placeData = {});
// Missing for everything but the stored form of one value.
std::optional<Value> decodeValue(std::string_view bytes, const FindData& findData = {});

// A number that tells damaged bytes from the ones that were stored; `seed` says where they belong.
std::uint64_t checksum(std::string_view bytes, std::uint64_t seed = 0);

}
