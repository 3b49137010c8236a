#pragma once

#include "base/Value.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// A text read as a number: leading white space, an optional sign, decimal digits up to the first other character; no
// digits give 0, numbers out of range the nearest one.
std::int32_t intValue(std::string_view text);
std::int64_t integerValue(std::string_view text);
// The same for a decimal fraction with an optional exponent.
double doubleValue(std::string_view text);

// A stored value as the kind that is asked for. Numbers, booleans and texts convert into each other; others read as 0,
// false or missing.
std::int64_t integerFrom(const Value* value);
double realFrom(const Value* value);
bool booleanFrom(const Value* value);
std::optional<std::string> stringFrom(const Value* value);

// The low 32 bits of a number, as a signed number.
constexpr std::int32_t low32(std::uint64_t number)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
}

// Truncation toward zero that is defined for every input: not-a-number gives 0, numbers out of range the nearest one.
std::int64_t truncated(double number);
std::int32_t truncated32(double number);
// The two's complement bits of `truncated(number)`: -1.5 gives 2^64 - 1.
std::uint64_t wrapped(double number);
// The nearest unsigned number after truncation: negative numbers give 0.
std::uint64_t clampedUnsigned(double number);

}
