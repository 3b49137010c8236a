#include "xml/ForgivingPage.hpp"

#include "base/Unicode.hpp"

#include <glib.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace pagora {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view dataStart = "<![CDATA[";
constexpr std::string_view dataEnd = "]]>";

// Void elements, which get no end tag.
constexpr std::array<std::string_view, 16> voidElements = { "area", "base", "basefont", "br", "col", "embed", "frame",
    "hr", "img", "input", "link", "meta", "param", "source", "track", "wbr" };
// Elements whose content holds no tags.
constexpr std::array<std::string_view, 2> rawElements = { "script", "style" };

template <std::size_t count>
bool contains(const std::array<std::string_view, count>& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string lowercase(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](unsigned char c) { return g_ascii_tolower(c); });
    return result;
}

bool isLetter(char character)
{
    return g_ascii_isalpha(character);
}

bool isSpace(char character)
{
    return g_ascii_isspace(character);
}

// Copies a document from its root element on, tag by tag.
class Rewriter {
public:
    explicit Rewriter(std::string_view text)
        : _text(text)
    {
    }

    std::string rewritten()
    {
        skipProlog();
        _result.reserve(_text.size() + 64);
        _result = "<!DOCTYPE html>\n";
        while (_at < _text.size()) {
            const auto next = std::min(_text.find('<', _at), _text.size());
            copyTo(next);
            if (next < _text.size())
                copyMarkup();
        }
        return std::move(_result);
    }

private:
    bool startsWith(std::string_view what) const { return _text.compare(_at, what.size(), what) == 0; }
    // Returns the position after the next `what`, or the end of the text.
    std::size_t behind(std::string_view what, std::size_t from) const
    {
        const auto found = _text.find(what, from);
        return found == std::string_view::npos ? _text.size() : found + what.size();
    }
    void copyTo(std::size_t end)
    {
        _result += _text.substr(_at, end - _at);
        _at = end;
    }

    void skipProlog();
    void skipDocumentType();
    void copyMarkup();
    void copyData();
    void copyTag();
    void copyRawContent(const std::string& name);
    std::size_t endOfTag() const;

    std::string_view _text;
    std::size_t _at = 0;
    std::string _result;
};

// Skips to the first start tag, the root's. A text without a start tag is left unchanged.
void Rewriter::skipProlog()
{
    while (_at < _text.size() && !(_text[_at] == '<' && _at + 1 < _text.size() && isLetter(_text[_at + 1]))) {
        if (startsWith("<!--"))
            _at = behind("-->", _at + 4);
        else if (startsWith("<?"))
            _at = behind("?>", _at + 2);
        else if (startsWith("<!"))
            skipDocumentType();
        else
            ++_at;
    }
    if (_at >= _text.size())
        _at = 0;
}

// Skips the document type with its internal subset.
void Rewriter::skipDocumentType()
{
    const auto end = behind(">", _at);
    const auto declarations = _text.substr(_at, end - _at).find('[');
    _at = declarations == std::string_view::npos ? end : behind(">", _text.find(']', _at + declarations));
}

void Rewriter::copyMarkup()
{
    if (startsWith("<!--"))
        copyTo(behind("-->", _at + 4));
    else if (startsWith(dataStart))
        copyData();
    else if (startsWith("<?"))
        _at = behind("?>", _at + 2);
    else if (_at + 1 < _text.size() && isLetter(_text[_at + 1]))
        copyTag();
    else
        copyTo(_at + 1);
}

void Rewriter::copyData()
{
    const auto start = _at + dataStart.size();
    const auto end = std::min(_text.find(dataEnd, start), _text.size());
    for (const char character : _text.substr(start, end - start)) {
        if (character == '<')
            _result += "&lt;";
        else if (character == '&')
            _result += "&amp;";
        else
            _result += character;
    }
    _at = std::min(end + dataEnd.size(), _text.size());
}

// Returns the position after the tag. Attribute values may contain ">".
std::size_t Rewriter::endOfTag() const
{
    char quote = 0;
    char before = 0;
    for (auto at = _at; at < _text.size(); ++at) {
        const char character = _text[at];
        if (quote)
            quote = character == quote ? 0 : quote;
        else if (character == '>')
            return at + 1;
        else if ((character == '"' || character == '\'') && before == '=')
            quote = character;
        if (!isSpace(character))
            before = character;
    }
    return _text.size();
}

void Rewriter::copyTag()
{
    auto nameEnd = _at + 1;
    while (nameEnd < _text.size() && !isSpace(_text[nameEnd]) && _text[nameEnd] != '/' && _text[nameEnd] != '>')
        ++nameEnd;
    const auto name = _text.substr(_at + 1, nameEnd - _at - 1);
    const auto plainName = lowercase(name);
    const auto end = endOfTag();
    const bool isEmpty = end - _at > 2 && _text[end - 1] == '>' && _text[end - 2] == '/';
    if (isEmpty && !contains(voidElements, plainName)) {
        copyTo(end - 2);
        _at = end;
        _result.append("></").append(name).append(">");
        return;
    }
    copyTo(end);
    if (contains(rawElements, plainName))
        copyRawContent(plainName);
}

// Parsers of scripts and styles do not know CDATA marks.
void Rewriter::copyRawContent(const std::string& name)
{
    const auto close = "</" + name;
    auto end = std::min(_text.find("</", _at), _text.size());
    while (end < _text.size() && lowercase(_text.substr(end, close.size())) != close)
        end = std::min(_text.find("</", end + 1), _text.size());
    while (_at < end) {
        copyTo(std::min(_text.find_first_of("<]", _at), end));
        if (startsWith(dataStart))
            _at += dataStart.size();
        else if (startsWith(dataEnd))
            _at += dataEnd.size();
        else if (_at < end)
            copyTo(_at + 1);
    }
}

// Returns the encoding that the XML declaration names; empty if there is none.
std::string declaredEncoding(std::string_view text)
{
    if (text.substr(0, 5) != "<?xml")
        return {};
    const auto declaration = text.substr(0, text.find("?>"));
    const auto found = declaration.find("encoding");
    if (found == std::string_view::npos)
        return {};
    const auto open = declaration.find_first_of("'\"", found);
    if (open == std::string_view::npos)
        return {};
    const auto close = declaration.find(declaration[open], open + 1);
    return close == std::string_view::npos ? std::string()
                                           : std::string(declaration.substr(open + 1, close - open - 1));
}

std::optional<std::string> fromWideCharacters(const std::string& bytes)
{
    char* text
        = g_convert(bytes.data(), static_cast<gssize>(bytes.size()), "UTF-8", "UTF-16", nullptr, nullptr, nullptr);
    if (!text)
        return std::nullopt;
    std::string result = text;
    g_free(text);
    return result;
}

}

std::optional<ForgivingPage> forgivingPage(std::string xhtml)
{
    std::string encoding = "utf-8";
    if (xhtml.compare(0, 2, "\xFF\xFE") == 0 || xhtml.compare(0, 2, "\xFE\xFF") == 0) {
        auto text = fromWideCharacters(xhtml);
        if (!text)
            return std::nullopt;
        xhtml = std::move(*text);
    } else if (xhtml.compare(0, byteOrderMark.size(), byteOrderMark) == 0)
        xhtml.erase(0, byteOrderMark.size());
    else if (const auto declared = lowercase(declaredEncoding(xhtml));
             !declared.empty() && declared.rfind("utf", 0) != 0)
        encoding = declared;
    else if (!isUtf8(xhtml))
        // Text without a usable declaration that is not UTF-8 is usually Windows-1252.
        encoding = "windows-1252";
    return ForgivingPage { Rewriter(xhtml).rewritten(), encoding };
}

}
