#include "base/Path.hpp"

#include <glib.h>

#include <algorithm>

namespace pagora {

namespace {

std::string_view withoutTrailingSlashes(std::string_view path)
{
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

std::string_view lastComponentOf(std::string_view path)
{
    path = withoutTrailingSlashes(path);
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

// Returns the position of the "." before the extension; npos if there is none.
std::size_t extensionDot(std::string_view name)
{
    const auto dot = name.rfind('.');
    return dot == 0 ? std::string_view::npos : dot;
}

bool isSpace(gunichar c)
{
    return (c >= 0x09 && c <= 0x0D) || c == 0x85 || g_unichar_isspace(c);
}

// Returns whether the character set at the start of `pattern` (with its "[") contains `c`. Sets `length` to the length
// of the set, 0 if it is not closed. The first "]" closes it; a backslash escapes the next character.
bool setHolds(std::string_view pattern, unsigned char c, std::size_t& length)
{
    length = 0;
    std::size_t i = 1;
    const bool negated = i < pattern.size() && (pattern[i] == '!' || pattern[i] == '^');
    if (negated)
        ++i;
    bool found = false;
    const auto next = [&] {
        if (pattern[i] == '\\' && i + 1 < pattern.size())
            ++i;
        return static_cast<unsigned char>(pattern[i++]);
    };
    while (i < pattern.size() && pattern[i] != ']') {
        const auto low = next();
        auto high = low;
        if (i + 1 < pattern.size() && pattern[i] == '-' && pattern[i + 1] != ']') {
            ++i;
            high = next();
        }
        found = found || (low <= c && c <= high);
    }
    if (i < pattern.size())
        length = i + 1;
    return found != negated;
}

// Matches one byte against the start of the pattern, which must not be "*". Returns the number of pattern bytes used; 0
// if the byte does not match.
std::size_t lengthOfMatch(std::string_view pattern, char c)
{
    if (pattern.empty())
        return 0;
    std::size_t length = 0;
    if (pattern.front() == '[')
        return setHolds(pattern, static_cast<unsigned char>(c), length) ? length : 0;
    if (pattern.front() == '\\' && pattern.size() > 1)
        return pattern[1] == c ? 2 : 0;
    return pattern.front() == '?' || pattern.front() == c ? 1 : 0;
}

}

std::string lastPathComponent(std::string_view path)
{
    return std::string(path == "/" ? std::string_view() : lastComponentOf(path));
}

std::string deletingLastPathComponent(std::string_view path)
{
    path = withoutTrailingSlashes(path);
    const auto slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return {};
    return std::string(withoutTrailingSlashes(path.substr(0, std::max<std::size_t>(slash, 1))));
}

std::string deletingPathExtension(std::string_view path)
{
    const auto name = lastComponentOf(path);
    return std::string(name.substr(0, extensionDot(name)));
}

std::string pathExtension(std::string_view path)
{
    const auto name = lastComponentOf(path);
    const auto dot = extensionDot(name);
    return dot == std::string_view::npos ? std::string() : std::string(name.substr(dot + 1));
}

std::string appendingPathComponent(std::string_view path, std::string_view component)
{
    if (path.empty())
        return std::string(component);
    if (component.empty())
        return std::string(path);
    while (!path.empty() && path.back() == '/')
        path.remove_suffix(1);
    while (!component.empty() && component.front() == '/')
        component.remove_prefix(1);
    return std::string(path).append("/").append(component);
}

std::string normalizedPath(std::string_view path)
{
    const bool absolute = !path.empty() && path.front() == '/';
    std::vector<std::string> kept;
    for (auto& component : split(path, '/')) {
        if (component.empty() || component == ".")
            continue;
        if (component == ".." && !kept.empty() && kept.back() != "..")
            kept.pop_back();
        else if (component != ".." || !absolute)
            kept.push_back(std::move(component));
    }
    return (absolute ? "/" : "") + joined(kept, "/");
}

bool isPathInside(std::string_view path, std::string_view folder)
{
    const auto inner = normalizedPath(path);
    const auto outer = normalizedPath(folder) + "/";
    return inner.size() > outer.size() && inner.starts_with(outer) && inner.find('\0') == std::string::npos;
}

std::vector<std::string> split(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    for (;;) {
        const auto end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

std::string joined(const std::vector<std::string>& parts, std::string_view separator)
{
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0)
            text.append(separator);
        text.append(parts[i]);
    }
    return text;
}

std::string trimmed(std::string_view text)
{
    const char* begin = text.data();
    const char* end = begin + text.size();
    while (begin < end) {
        const auto c = g_utf8_get_char_validated(begin, end - begin);
        if (static_cast<gint32>(c) < 0 || !isSpace(c))
            break;
        begin = g_utf8_next_char(begin);
    }
    while (begin < end) {
        const char* last = g_utf8_find_prev_char(begin, end);
        if (!last)
            break;
        const auto c = g_utf8_get_char_validated(last, end - last);
        if (static_cast<gint32>(c) < 0 || !isSpace(c))
            break;
        end = last;
    }
    return { begin, end };
}

std::string lowercased(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return g_ascii_tolower(c); });
    return lower;
}

bool hasWildcards(std::string_view text)
{
    return text.find_first_of("*?[\\") != std::string_view::npos;
}

bool matchesWildcards(std::string_view text, std::string_view pattern)
{
    std::size_t t = 0;
    std::size_t p = 0;
    // Backtracking to the last "*" is sufficient, so there is no recursion.
    std::size_t star = std::string_view::npos;
    std::size_t starText = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            starText = t;
        } else if (const auto length = lengthOfMatch(pattern.substr(std::min(p, pattern.size())), text[t])) {
            p += length;
            ++t;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            t = ++starText;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

}
