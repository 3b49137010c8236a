#include "base/Numbers.hpp"

#include <glib.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace pagora {

namespace {

constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::string_view withoutLeadingSpace(std::string_view text)
{
    const auto start = text.find_first_not_of(" \t\n\v\f\r");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

// Returns the number of digits at the start of `text`.
std::size_t digits(std::string_view text)
{
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
}

// Parses a boolean: true for a word that begins with "y" or "t", or a number other than 0.
bool booleanValue(std::string_view text)
{
    text = withoutLeadingSpace(text);
    if (!text.empty() && (text.front() == '+' || text.front() == '-'))
        text.remove_prefix(1);
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

}

std::int64_t integerValue(std::string_view text)
{
    text = withoutLeadingSpace(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    // Counted downwards, because the minimum has no positive counterpart.
    constexpr std::int64_t minimum = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t maximum = std::numeric_limits<std::int64_t>::max();
    std::int64_t number = 0;
    for (const char character : text.substr(0, digits(text))) {
        const int digit = character - '0';
        if (number < (minimum + digit) / 10)
            return negative ? minimum : maximum;
        number = number * 10 - digit;
    }
    if (negative)
        return number;
    return number == minimum ? maximum : -number;
}

std::int32_t intValue(std::string_view text)
{
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        integerValue(text), std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

double doubleValue(std::string_view text)
{
    text = withoutLeadingSpace(text);
    std::size_t end = !text.empty() && (text.front() == '+' || text.front() == '-') ? 1 : 0;
    const std::size_t whole = digits(text.substr(end));
    end += whole;
    std::size_t fraction = 0;
    if (end < text.size() && text[end] == '.') {
        fraction = digits(text.substr(end + 1));
        end += 1 + fraction;
    }
    if (whole + fraction == 0)
        return 0;
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        std::size_t exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-'))
            ++exponent;
        if (const std::size_t count = digits(text.substr(exponent)))
            end = exponent + count;
    }
    constexpr double maximum = std::numeric_limits<double>::max();
    return std::clamp(g_ascii_strtod(std::string(text.substr(0, end)).c_str(), nullptr), -maximum, maximum);
}

std::int64_t integerFrom(const Value* value)
{
    if (!value)
        return 0;
    if (auto* number = value->integer())
        return *number;
    if (auto* number = value->real())
        return truncated(*number);
    if (auto* flag = value->boolean())
        return *flag;
    if (auto* text = value->string())
        return integerValue(*text);
    return 0;
}

double realFrom(const Value* value)
{
    if (!value)
        return 0;
    if (auto* number = value->real())
        return *number;
    if (auto* text = value->string())
        return doubleValue(*text);
    return static_cast<double>(integerFrom(value));
}

bool booleanFrom(const Value* value)
{
    if (!value)
        return false;
    if (auto* number = value->real())
        return *number != 0;
    if (auto* text = value->string())
        return booleanValue(*text);
    return integerFrom(value) != 0;
}

std::optional<std::string> stringFrom(const Value* value)
{
    if (!value)
        return std::nullopt;
    if (auto* text = value->string())
        return *text;
    if (auto* number = value->real()) {
        char buffer[32];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, *number).ptr;
        return std::string(buffer, end);
    }
    if (value->integer() || value->boolean())
        return std::to_string(integerFrom(value));
    return std::nullopt;
}

std::int64_t truncated(double number)
{
    if (std::isnan(number))
        return 0;
    if (number >= twoTo63)
        return std::numeric_limits<std::int64_t>::max();
    if (number < -twoTo63)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(number);
}

std::int32_t truncated32(double number)
{
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        truncated(number), std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

std::uint64_t wrapped(double number)
{
    return static_cast<std::uint64_t>(truncated(number));
}

std::uint64_t clampedUnsigned(double number)
{
    if (!(number > 0))
        return 0;
    return number >= twoTo64 ? std::numeric_limits<std::uint64_t>::max() : static_cast<std::uint64_t>(number);
}

}
