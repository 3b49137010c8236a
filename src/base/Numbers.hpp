#pragma once

#include "base/Value.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// Parses a number: leading white space, an optional sign, decimal digits up to the first other character. Returns 0 if
// there are no digits, and clamps numbers that are out of range.
std::int32_t intValue(std::string_view text);
std::int64_t integerValue(std::string_view text);
// Does the same for a decimal fraction with an optional exponent.
double doubleValue(std::string_view text);

// Converts a stored value to the requested type. Numbers, booleans and strings convert into each other; other values
// give 0, false or nullopt.
std::int64_t integerFrom(const Value* value);
double realFrom(const Value* value);
bool booleanFrom(const Value* value);
std::optional<std::string> stringFrom(const Value* value);

// Returns the low 32 bits of a number, as a signed number.
constexpr std::int32_t low32(std::uint64_t number)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
}

// Truncates toward zero. Defined for every input: NaN gives 0, and numbers out of range are clamped.
std::int64_t truncated(double number);
std::int32_t truncated32(double number);
// Returns the two's complement bits of `truncated(number)`: -1.5 gives 2^64 - 1.
std::uint64_t wrapped(double number);
// Truncates to an unsigned number and clamps: negative numbers give 0.
std::uint64_t clampedUnsigned(double number);

}
