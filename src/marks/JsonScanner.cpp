#include "marks/JsonScanner.hpp"

#include "base/Unicode.hpp"

#include <glib.h>

#include <cstring>

namespace pagora {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr char32_t replacement = 0xFFFD;

void appendCharacter(std::string& text, char32_t character)
{
    char bytes[6];
    text.append(bytes, static_cast<std::size_t>(g_unichar_to_utf8(character, bytes)));
}

bool isFirstHalf(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isSecondHalf(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

// Returns whether the text has the syntax of a JSON number.
bool isNumber(std::string_view text)
{
    std::size_t at = text.starts_with('-') ? 1 : 0;
    const auto digits = [&text, &at] {
        const auto first = at;
        while (at < text.size() && g_ascii_isdigit(text[at]))
            ++at;
        return at - first;
    };
    const bool startsWithZero = at < text.size() && text[at] == '0';
    const auto whole = digits();
    if (whole == 0 || (startsWithZero && whole > 1))
        return false;
    if (at < text.size() && text[at] == '.') {
        ++at;
        if (digits() == 0)
            return false;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-'))
            ++at;
        if (digits() == 0)
            return false;
    }
    return at == text.size();
}

}

JsonScanner::JsonScanner(std::string_view text)
    : _text(text)
{
    if (_text.starts_with(byteOrderMark))
        _at = byteOrderMark.size();
}

bool JsonScanner::skipThrough(JsonNode::Kind kind, const Take& take)
{
    skipBlanks();
    const bool isObject = kind == JsonNode::Kind::Object;
    return this->take(isObject ? '{' : '[') && elements(isObject, nullptr, 1, &take);
}

bool JsonScanner::isAtEnd()
{
    skipBlanks();
    return _at == _text.size();
}

bool JsonScanner::value(JsonNode* node, std::size_t depth)
{
    skipBlanks();
    if (_at >= _text.size() || depth > maxJsonDepth || (node && ++_nodes > maxJsonNodes))
        return false;
    if (take('{')) {
        if (node)
            node->kind = JsonNode::Kind::Object;
        return elements(true, node, depth + 1, nullptr);
    }
    if (take('[')) {
        if (node)
            node->kind = JsonNode::Kind::Array;
        return elements(false, node, depth + 1, nullptr);
    }
    if (_text[_at] != '"')
        return literal(node);
    if (!node)
        return string(nullptr);
    node->kind = JsonNode::Kind::Text;
    return string(&node->text);
}

bool JsonScanner::elements(bool isObject, JsonNode* node, std::size_t depth, const Take* give)
{
    const char close = isObject ? '}' : ']';
    skipBlanks();
    if (take(close))
        return true;
    do {
        std::string name;
        skipBlanks();
        if (isObject && !string(node || give ? &name : nullptr))
            return false;
        skipBlanks();
        if (isObject && !take(':'))
            return false;
        skipBlanks();
        const auto start = _at;
        JsonNode* element = nullptr;
        if (node) {
            if (isObject)
                node->names.push_back(std::move(name));
            element = &node->elements.emplace_back();
        }
        if (!value(element, depth))
            return false;
        if (give)
            (*give)(std::move(name), _text.substr(start, _at - start));
        skipBlanks();
    } while (take(','));
    return take(close);
}

bool JsonScanner::literal(JsonNode* node)
{
    const auto start = _at;
    while (_at < _text.size() && (g_ascii_isalnum(_text[_at]) || std::strchr("+-.", _text[_at])) && _text[_at])
        ++_at;
    const auto text = _text.substr(start, _at - start);
    auto kind = JsonNode::Kind::Number;
    if (text == "null")
        kind = JsonNode::Kind::Null;
    else if (text == "true" || text == "false")
        kind = JsonNode::Kind::Boolean;
    else if (!isNumber(text))
        return false;
    if (node) {
        node->kind = kind;
        if (kind != JsonNode::Kind::Null)
            node->text = text;
    }
    return true;
}

bool JsonScanner::string(std::string* text)
{
    if (!take('"'))
        return false;
    while (_at < _text.size()) {
        const auto start = _at;
        while (_at < _text.size() && _text[_at] != '"' && _text[_at] != '\\') {
            if (static_cast<unsigned char>(_text[_at]) < 0x20)
                return false;
            ++_at;
        }
        if (text)
            text->append(_text.substr(start, _at - start));
        if (take('"')) {
            if (text && !isUtf8(*text))
                *text = validUtf8(*text);
            return true;
        }
        if (!take('\\') || !escape(text))
            return false;
    }
    return false;
}

bool JsonScanner::escape(std::string* text)
{
    if (_at >= _text.size())
        return false;
    const char letter = _text[_at++];
    constexpr std::string_view letters = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    if (const auto index = letters.find(letter); index != std::string_view::npos) {
        if (text)
            *text += meanings[index];
        return true;
    }
    auto character = letter == 'u' ? hexadecimal() : std::nullopt;
    if (!character)
        return false;
    if (isFirstHalf(*character) && _text.substr(_at).starts_with("\\u")) {
        const auto before = _at;
        _at += 2;
        const auto second = hexadecimal();
        if (!second)
            return false;
        if (isSecondHalf(*second))
            character = 0x10000 + ((*character - 0xD800) << 10) + (*second - 0xDC00);
        else
            _at = before;
    }
    if (isFirstHalf(*character) || isSecondHalf(*character))
        character = replacement;
    if (text)
        appendCharacter(*text, *character);
    return true;
}

std::optional<char32_t> JsonScanner::hexadecimal()
{
    if (_text.size() - _at < 4)
        return {};
    char32_t number = 0;
    for (int i = 0; i < 4; ++i) {
        const int digit = g_ascii_xdigit_value(_text[_at++]);
        if (digit < 0)
            return {};
        number = number * 16 + static_cast<char32_t>(digit);
    }
    return number;
}

bool JsonScanner::take(char character)
{
    if (_at >= _text.size() || _text[_at] != character)
        return false;
    ++_at;
    return true;
}

void JsonScanner::skipBlanks()
{
    while (_at < _text.size() && std::memchr(" \t\r\n", _text[_at], 4))
        ++_at;
}

std::optional<JsonNode> jsonNodeFrom(std::string_view text)
{
    JsonNode node;
    JsonScanner scanner(text);
    if (!scanner.read(&node) || !scanner.isAtEnd())
        return {};
    return node;
}

std::optional<JsonMembers> jsonMembers(std::string_view text)
{
    JsonMembers members;
    JsonScanner scanner(text);
    const auto take
        = [&members](std::string name, std::string_view json) { members.emplace_back(std::move(name), json); };
    if (!scanner.skipThrough(JsonNode::Kind::Object, take) || !scanner.isAtEnd())
        return {};
    return members;
}

std::optional<std::vector<std::string_view>> jsonElements(std::string_view text)
{
    std::vector<std::string_view> elements;
    JsonScanner scanner(text);
    const auto take = [&elements](const std::string&, std::string_view json) { elements.push_back(json); };
    if (!scanner.skipThrough(JsonNode::Kind::Array, take) || !scanner.isAtEnd())
        return {};
    return elements;
}

}
