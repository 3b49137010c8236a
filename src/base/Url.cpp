#include "base/Url.hpp"

#include "base/Path.hpp"
#include "base/Unicode.hpp"

#include <glib.h>

namespace pagora {

namespace {

bool isUnreserved(unsigned char c)
{
    return g_ascii_isalnum(c) || c == '-' || c == '.' || c == '_' || c == '~';
}

bool isDelimiter(unsigned char c)
{
    return c != 0 && std::string_view(":/?#@!$&'()*+,;=").find(c) != std::string_view::npos;
}

template <typename Predicate>
std::string escaped(std::string_view text, Predicate keeps)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (keeps(byte))
            result += c;
        else
            result.append({ '%', digits[byte >> 4], digits[byte & 15] });
    }
    return result;
}

bool isEscape(std::string_view text, std::size_t at)
{
    return text[at] == '%' && at + 2 < text.size() && g_ascii_isxdigit(text[at + 1]) && g_ascii_isxdigit(text[at + 2]);
}

std::string unescapedBytes(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isEscape(text, i)) {
            result += static_cast<char>(g_ascii_xdigit_value(text[i + 1]) << 4 | g_ascii_xdigit_value(text[i + 2]));
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

// Returns the position of the ":" after the scheme; npos if there is no scheme.
std::size_t schemeEnd(std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ':')
            return i > 0 ? i : std::string_view::npos;
        if (!g_ascii_isalpha(c) && (i == 0 || !(g_ascii_isdigit(c) || c == '+' || c == '-' || c == '.')))
            break;
    }
    return std::string_view::npos;
}

}

std::optional<Url> Url::fromString(std::string text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        // Brackets are part of numeric (IPv6) host names.
        if (!isUnreserved(c) && !isDelimiter(c) && c != '[' && c != ']' && !isEscape(text, i))
            return std::nullopt;
    }
    return Url(std::move(text));
}

Url Url::file(const std::string& path)
{
    return Url("file://" + escaped(path, [](unsigned char c) {
        return isUnreserved(c) || (isDelimiter(c) && c != '?' && c != '#' && c != ';');
    }));
}

std::string Url::scheme() const
{
    const auto end = schemeEnd(_text);
    return end == std::string::npos ? std::string() : lowercased(std::string_view(_text).substr(0, end));
}

std::string Url::path() const
{
    std::string_view rest = _text;
    if (const auto end = schemeEnd(rest); end != std::string_view::npos)
        rest.remove_prefix(end + 1);
    rest = rest.substr(0, rest.find_first_of("?#"));
    if (rest.starts_with("//")) {
        const auto slash = rest.find('/', 2);
        rest = slash == std::string_view::npos ? std::string_view() : rest.substr(slash);
    }
    return unescapedBytes(rest);
}

std::string Url::lastPathComponent() const
{
    return pagora::lastPathComponent(path());
}

std::optional<std::string> Url::fragment() const
{
    const auto hash = _text.find('#');
    if (hash == std::string::npos)
        return std::nullopt;
    const auto fragment = _text.substr(hash + 1);
    return replacingPercentEscapes(fragment).value_or(fragment);
}

Url Url::withoutFragment() const
{
    return Url(_text.substr(0, _text.find('#')));
}

std::string addingPercentEscapes(std::string_view text)
{
    return escaped(text, [](unsigned char c) { return isUnreserved(c) || isDelimiter(c); });
}

std::optional<std::string> replacingPercentEscapes(std::string_view text)
{
    auto bytes = unescapedBytes(text);
    if (!isUtf8(bytes))
        return std::nullopt;
    return bytes;
}

}
