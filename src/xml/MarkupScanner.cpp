#include "xml/MarkupScanner.hpp"

#include "base/Unicode.hpp"

#include <glib.h>
#include <libxml/HTMLparser.h>

#include <algorithm>

namespace pagora {

namespace {

constexpr std::string_view blanks = " \t\n\f\r";
// Maximum length of a character reference, in bytes. A longer one is treated as text.
constexpr std::size_t maxReference = 32;
// The encoding is searched for in this many bytes at the start of the document.
constexpr std::size_t encodingReach = 1024;

bool equalIgnoringCase(std::string_view text, std::string_view lowerCase)
{
    return text.size() == lowerCase.size()
        && std::equal(text.begin(), text.end(), lowerCase.begin(),
            [](char given, char wanted) { return g_ascii_tolower(given) == wanted; });
}

void appendCharacter(std::string& result, gunichar character)
{
    // Invalid code points are shown as the replacement character, as the engine does.
    if (character == 0 || !g_unichar_validate(character))
        character = 0xFFFD;
    char bytes[6];
    result.append(bytes, static_cast<std::size_t>(g_unichar_to_utf8(character, bytes)));
}

std::optional<gunichar> numberedCharacter(std::string_view digits)
{
    const bool isHexadecimal = !digits.empty() && (digits[0] == 'x' || digits[0] == 'X');
    if (isHexadecimal)
        digits.remove_prefix(1);
    if (digits.empty())
        return std::nullopt;
    const gunichar base = isHexadecimal ? 16 : 10;
    gunichar value = 0;
    for (const char digit : digits) {
        const int number = isHexadecimal ? g_ascii_xdigit_value(digit) : g_ascii_digit_value(digit);
        if (number < 0)
            return std::nullopt;
        value = std::min<gunichar>(value * base + static_cast<gunichar>(number), 0x110000);
    }
    return value;
}

std::optional<gunichar> namedCharacter(std::string_view name)
{
    if (name == "apos")
        return '\'';
    const auto* const entity = htmlEntityLookup(reinterpret_cast<const xmlChar*>(std::string(name).c_str()));
    return entity ? std::optional<gunichar>(entity->value) : std::nullopt;
}

// Decodes the reference that starts with "&". Returns its length in bytes; 0 if it is not a reference.
std::size_t appendReference(std::string& result, std::string_view text)
{
    const auto end = text.substr(0, maxReference).find(';');
    if (end == std::string_view::npos || end < 2)
        return 0;
    const auto name = text.substr(1, end - 1);
    const auto character = name[0] == '#' ? numberedCharacter(name.substr(1)) : namedCharacter(name);
    if (!character)
        return 0;
    appendCharacter(result, *character);
    return end + 1;
}

std::string namedEncoding(std::string_view beginning)
{
    for (const std::string_view word : { "encoding", "charset" }) {
        auto at = beginning.find(word);
        if (at == std::string_view::npos)
            continue;
        at = beginning.find_first_not_of(" \t\n\r=\"'", at + word.size());
        if (at == std::string_view::npos)
            continue;
        return std::string(beginning.substr(at, beginning.find_first_of("\"' ;?/>\n", at) - at));
    }
    return {};
}

std::string converted(const std::string& bytes, const char* encoding)
{
    gsize length = 0;
    char* const text = g_convert_with_fallback(
        bytes.data(), static_cast<gssize>(bytes.size()), "UTF-8", encoding, "\xEF\xBF\xBD", nullptr, &length, nullptr);
    if (!text)
        return validUtf8(bytes);
    std::string result(text, length);
    g_free(text);
    return result;
}

}

bool MarkupToken::isNamed(std::string_view lowerCaseName) const
{
    return equalIgnoringCase(name, lowerCaseName);
}

std::optional<std::string> MarkupToken::attribute(std::string_view attributeName) const
{
    const std::string wanted = [attributeName] {
        std::string lower(attributeName);
        std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return g_ascii_tolower(c); });
        return lower;
    }();
    std::size_t at = 0;
    while ((at = attributes.find_first_not_of(" \t\n\f\r/", at)) != std::string_view::npos) {
        const auto nameEnd = std::min(attributes.find_first_of(" \t\n\f\r=/", at + 1), attributes.size());
        const auto given = attributes.substr(at, nameEnd - at);
        at = std::min(attributes.find_first_not_of(blanks, nameEnd), attributes.size());
        std::string_view value;
        if (at < attributes.size() && attributes[at] == '=') {
            at = std::min(attributes.find_first_not_of(blanks, at + 1), attributes.size());
            const char quote = at < attributes.size() ? attributes[at] : '\0';
            const bool isQuoted = quote == '"' || quote == '\'';
            const auto start = at + (isQuoted ? 1 : 0);
            const auto end = isQuoted ? attributes.find(quote, start) : attributes.find_first_of(blanks, start);
            const auto stop = std::min(end, attributes.size());
            value = attributes.substr(std::min(start, stop), stop - std::min(start, stop));
            at = std::min(stop + (isQuoted ? 1 : 0), attributes.size());
        }
        if (equalIgnoringCase(given, wanted)) {
            std::string result;
            appendReplacingReferences(result, value);
            return result;
        }
    }
    return std::nullopt;
}

std::optional<MarkupToken> MarkupScanner::next()
{
    while (_at < _document.size()) {
        if (_document[_at] != '<') {
            const auto end = std::min(_document.find('<', _at), _document.size());
            MarkupToken token;
            token.text = _document.substr(_at, end - _at);
            _at = end;
            return token;
        }
        if (startsWith("<!--")) {
            skipBehind("-->", _at + 4);
        } else if (startsWith("<![CDATA[")) {
            const auto start = _at + 9;
            const auto end = std::min(_document.find("]]>", start), _document.size());
            MarkupToken token;
            token.text = _document.substr(start, end - start);
            token.isCharacterData = true;
            _at = std::min(end + 3, _document.size());
            return token;
        } else if (startsWith("<?")) {
            skipBehind("?>", _at + 2);
        } else if (startsWith("<!")) {
            skipDeclaration();
        } else if (_at + 1 < _document.size() && (_document[_at + 1] == '/' || g_ascii_isalpha(_document[_at + 1]))) {
            return tag();
        } else {
            // A "<" that does not start markup is text.
            MarkupToken token;
            token.text = _document.substr(_at++, 1);
            return token;
        }
    }
    return std::nullopt;
}

void MarkupScanner::skipBehind(std::string_view what, std::size_t from)
{
    const auto found = _document.find(what, from);
    _at = found == std::string_view::npos ? _document.size() : found + what.size();
}

// Skips a declaration; a document type with its internal subset.
void MarkupScanner::skipDeclaration()
{
    if (!equalIgnoringCase(_document.substr(_at, 9), "<!doctype"))
        return skipBehind(">", _at);
    bool isWithin = false;
    char quote = '\0';
    for (; _at < _document.size(); ++_at) {
        const char c = _document[_at];
        if (quote != '\0')
            quote = c == quote ? '\0' : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (startsWith("<!--")) {
            skipBehind("-->", _at + 4);
            --_at;
        } else if (c == '[' || c == ']')
            isWithin = c == '[';
        else if (c == '>' && !isWithin) {
            ++_at;
            return;
        }
    }
}

MarkupToken MarkupScanner::tag()
{
    MarkupToken token;
    const bool isEnd = _document[_at + 1] == '/';
    token.kind = isEnd ? MarkupToken::Kind::EndTag : MarkupToken::Kind::StartTag;
    const auto nameStart = _at + (isEnd ? 2 : 1);
    const auto nameEnd = std::min(_document.find_first_of(" \t\n\f\r/>", nameStart), _document.size());
    token.name = _document.substr(nameStart, nameEnd - nameStart);
    if (const auto colon = token.name.rfind(':'); colon != std::string_view::npos)
        token.name.remove_prefix(colon + 1);

    auto end = nameEnd;
    for (char quote = '\0'; end < _document.size(); ++end) {
        const char c = _document[end];
        if (quote != '\0')
            quote = c == quote ? '\0' : quote;
        else if (c == '>')
            break;
        else if ((c == '"' || c == '\'') && _document[_document.find_last_not_of(blanks, end - 1)] == '=')
            quote = c;
    }
    token.attributes = _document.substr(nameEnd, end - nameEnd);
    token.isEmpty = !isEnd && !token.attributes.empty() && token.attributes.back() == '/';
    _at = std::min(end + 1, _document.size());
    if (!isEnd && !token.isEmpty) {
        for (const std::string_view raw : { "script", "style" }) {
            if (token.isNamed(raw))
                token.isEmpty = skipRest(raw);
        }
    }
    return token;
}

// Skips the raw content of an element and its end tag.
bool MarkupScanner::skipRest(std::string_view name)
{
    while (_at < _document.size()) {
        skipBehind("</", _at);
        if (!equalIgnoringCase(_document.substr(_at, name.size()), name))
            continue;
        skipBehind(">", _at);
        break;
    }
    return true;
}

void appendReplacingReferences(std::string& result, std::string_view text)
{
    while (!text.empty()) {
        const auto next = std::min(text.find('&'), text.size());
        result += text.substr(0, next);
        text.remove_prefix(next);
        if (text.empty())
            return;
        const auto length = appendReference(result, text);
        if (length == 0)
            result += '&';
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

std::string markupFrom(std::string bytes)
{
    using namespace std::string_view_literals;
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.erase(0, 3);
    else if (bytes.starts_with("\xFF\xFE"sv))
        return converted(bytes.substr(2), "UTF-16LE");
    else if (bytes.starts_with("\xFE\xFF"sv))
        return converted(bytes.substr(2), "UTF-16BE");
    else if (bytes.starts_with("<\0"sv))
        return converted(bytes, "UTF-16LE");
    else if (bytes.starts_with("\0<"sv))
        return converted(bytes, "UTF-16BE");
    else {
        const auto name = namedEncoding(std::string_view(bytes).substr(0, encodingReach));
        const bool isUtf = name.empty() || equalIgnoringCase(name, "utf-8") || equalIgnoringCase(name, "utf8");
        if (!isUtf) {
            // As in HTML, these names mean Windows-1252.
            const bool isLatin = equalIgnoringCase(name, "iso-8859-1") || equalIgnoringCase(name, "us-ascii");
            return converted(bytes, isLatin ? "WINDOWS-1252" : name.c_str());
        }
    }
    return isUtf8(bytes) ? std::move(bytes) : validUtf8(bytes);
}

}
