#include "find/NoteText.hpp"

#include "files/Files.hpp"
#include "find/ChapterText.hpp"
#include "find/TextElements.hpp"
#include "xml/MarkupScanner.hpp"

#include <glib.h>

#include <algorithm>

namespace pagora {

namespace {

// The maximum size in bytes of attributes that are searched before they are parsed.
constexpr std::size_t maxUnparsedBytes = 1'000;

std::string lowerCase(std::string_view name)
{
    std::string result(name);
    std::transform(result.begin(), result.end(), result.begin(), [](char c) { return g_ascii_tolower(c); });
    return result;
}

// Returns whether the text has letters besides numbers and punctuation.
bool hasWords(const std::string& text)
{
    for (const char* at = text.c_str(); *at; at = g_utf8_next_char(at)) {
        if (g_unichar_isalpha(g_utf8_get_char(at)))
            return true;
    }
    return false;
}

class NoteReader {
public:
    explicit NoteReader(const std::string& id)
        : _id(id)
    {
    }

    std::optional<std::string> read(std::string_view document)
    {
        MarkupScanner scanner(document);
        while (const auto token = scanner.next()) {
            if (token->kind == MarkupToken::Kind::Text)
                addText(*token);
            else
                follow(*token);
            if (_isOver || _text.size() > maxNoteBytes)
                break;
        }
        while (!_text.empty() && (_text.back() == '\n' || _text.back() == ' '))
            _text.pop_back();
        return _text.empty() ? std::nullopt : std::optional(_text);
    }

private:
    void follow(const MarkupToken& tag)
    {
        const auto name = lowerCase(tag.name);
        const bool isStart = tag.kind == MarkupToken::Kind::StartTag;
        if (!_leftOut.empty()) {
            if (name == _leftOut && !tag.isEmpty)
                _depthLeftOut += isStart ? 1 : -1;
            if (_depthLeftOut == 0)
                _leftOut.clear();
            return;
        }
        if (!_hasBegun)
            return beginAt(tag, name);
        if (isStart && !tag.isEmpty && isLeftOut(name)) {
            _leftOut = name;
            _depthLeftOut = 1;
            return;
        }
        // This is the end of the element, or of the paragraph around an inline target.
        if (!_element.empty() && name == _element && !tag.isEmpty)
            _depth += isStart ? 1 : -1;
        const bool ends = _element.empty() ? isBlock(name) : _depth <= 0;
        if (ends && hasWords(_text))
            _isOver = true;
        else if (ends)
            _element.clear();
        if (isBlock(name) && !_text.empty() && _text.back() != '\n')
            _text += '\n';
        else if (name == "br")
            _text += '\n';
    }

    void beginAt(const MarkupToken& tag, const std::string& name)
    {
        if (tag.kind != MarkupToken::Kind::StartTag)
            return;
        // This quick test excludes most elements. It would be slow for long attributes.
        if (tag.attributes.size() <= maxUnparsedBytes && tag.attributes.find(_id) == std::string_view::npos)
            return;
        const bool isNamed = name == "a" && tag.attribute("name") == _id;
        if (tag.attribute("id") != _id && !isNamed)
            return;
        _hasBegun = true;
        if (isBlock(name) && !tag.isEmpty) {
            _element = name;
            _depth = 1;
        }
    }

    void addText(const MarkupToken& token)
    {
        if (!_hasBegun || !_leftOut.empty())
            return;
        std::string text;
        if (token.isCharacterData)
            text = token.text.substr(0, 2 * maxNoteBytes);
        else
            appendReplacingReferences(text, token.text.substr(0, 2 * maxNoteBytes));
        for (const char c : text) {
            if (!isBlank(static_cast<unsigned char>(c)))
                _text += c;
            else if (!_text.empty() && _text.back() != ' ' && _text.back() != '\n')
                _text += ' ';
        }
    }

    const std::string& _id;
    bool _hasBegun = false;
    bool _isOver = false;
    // The block element of the note; empty for an inline target.
    std::string _element;
    int _depth = 0;
    std::string _leftOut;
    int _depthLeftOut = 0;
    std::string _text;
};

// Truncates the text at a character boundary.
std::string shortened(std::string text)
{
    if (text.size() <= maxNoteBytes)
        return text;
    auto end = maxNoteBytes;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return text.substr(0, end) + "…";
}

}

std::optional<std::string> noteText(std::string_view document, const std::string& id)
{
    if (id.empty())
        return std::nullopt;
    auto text = NoteReader(id).read(document);
    return text ? std::optional(shortened(std::move(*text))) : std::nullopt;
}

std::optional<std::string> noteTextOf(const std::string& path, const std::string& folder, const std::string& id)
{
    if (!isWithinFolder(path, folder))
        return std::nullopt;
    auto bytes = readFile(path, maxChapterBytes);
    return bytes ? noteText(markupFrom(std::move(*bytes)), id) : std::nullopt;
}

}
