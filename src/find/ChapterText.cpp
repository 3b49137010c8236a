#include "find/ChapterText.hpp"

#include "files/Files.hpp"
#include "find/TextElements.hpp"
#include "xml/MarkupScanner.hpp"

#include <glib.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace pagora {

namespace {

// Ends a line within a paragraph.
constexpr std::string_view lineBreak = "br";
// No relevant element has a longer name.
constexpr std::size_t maxName = 16;

class Extraction {
public:
    std::string textOf(std::string_view document)
    {
        MarkupScanner scanner(document);
        _text.reserve(document.size() / 2);
        while (const auto token = scanner.next()) {
            if (token->kind == MarkupToken::Kind::Text)
                addText(*token);
            else
                follow(*token);
        }
        return std::move(_text);
    }

private:
    void follow(const MarkupToken& token)
    {
        if (token.name.size() > maxName || token.name.empty())
            return;
        char lower[maxName];
        std::transform(token.name.begin(), token.name.end(), lower, [](char c) { return g_ascii_tolower(c); });
        const std::string_view name(lower, token.name.size());
        const bool isStart = token.kind == MarkupToken::Kind::StartTag;
        if (!_skipped.empty()) {
            if (name == _skipped && !token.isEmpty)
                _depth += isStart ? 1 : -1;
            if (_depth == 0)
                _skipped.clear();
            return;
        }
        if (isStart && !token.isEmpty && isLeftOut(name)) {
            _skipped = name;
            _depth = 1;
        } else if (isBlock(name))
            separate('\n');
        else if (name == lineBreak)
            separate(' ');
    }

    // A line feed replaces adjacent spaces.
    void separate(char separator)
    {
        if (_text.empty() || _text.back() == '\n')
            return;
        if (_text.back() == ' ')
            _text.back() = separator;
        else
            _text += separator;
    }

    void addText(const MarkupToken& token)
    {
        if (!_skipped.empty())
            return;
        std::string_view text = token.text;
        if (!token.isCharacterData && text.find('&') != std::string_view::npos) {
            _replaced.clear();
            appendReplacingReferences(_replaced, text);
            text = _replaced;
        }
        while (!text.empty()) {
            const auto length = static_cast<std::size_t>(std::find_if(text.begin(), text.end(), [](char c) {
                return isBlank(static_cast<unsigned char>(c));
            }) - text.begin());
            _text += text.substr(0, length);
            text.remove_prefix(length);
            if (text.empty())
                return;
            if (!_text.empty() && _text.back() != ' ' && _text.back() != '\n')
                _text += ' ';
            const auto rest = text.find_first_not_of(" \t\n\f\r");
            text.remove_prefix(std::min(rest, text.size()));
        }
    }

    std::string _text;
    std::string _replaced;
    // The skipped element, and the number of open elements of its name.
    std::string _skipped;
    int _depth = 0;
};

}

bool isWithinFolder(const std::string& path, const std::string& folder)
{
    std::error_code error;
    const auto file = std::filesystem::canonical(path, error);
    if (error)
        return false;
    const auto root = std::filesystem::canonical(folder, error);
    if (error)
        return false;
    const auto [end, ignored] = std::mismatch(root.begin(), root.end(), file.begin(), file.end());
    return end == root.end();
}

ChapterText chapterText(std::string bytes)
{
    const std::string markup = markupFrom(std::move(bytes));
    return { Extraction().textOf(markup) };
}

std::optional<ChapterText> chapterTextOf(const std::string& path, const std::string& folder)
{
    if (!isWithinFolder(path, folder))
        return std::nullopt;
    auto bytes = readFile(path, maxChapterBytes);
    if (!bytes)
        return std::nullopt;
    return chapterText(std::move(*bytes));
}

}
