#include "epub/NavigationDocument.hpp"

#include "base/Bounds.hpp"
#include "base/Path.hpp"
#include "base/Unicode.hpp"
#include "files/Files.hpp"
#include "xml/MarkupScanner.hpp"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace pagora {

namespace {

// Maximum length of one label, in bytes.
constexpr std::size_t maxLabel = 1'000;
// Maximum length of a file name and of a fragment, in bytes, including percent escapes. No valid name is longer.
constexpr std::size_t maxName = 3 * 4096;
constexpr std::size_t maxFragment = 65'536;
// Maximum size of one document, in bytes.
constexpr std::size_t maxDocument = 32u << 20;

// Returns whether a space-separated list contains the word.
bool hasWord(const std::optional<std::string>& words, std::string_view word)
{
    // A list can be as long as the document, so its words are not copied.
    std::string_view rest = words ? std::string_view(*words) : std::string_view();
    while (!rest.empty()) {
        const auto end = std::min(rest.find(' '), rest.size());
        if (rest.substr(0, end) == word)
            return true;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

class Reader {
public:
    Reader(const std::string& path, const std::string& bookFolder)
        : _path(path)
        , _bookFolder(bookFolder)
    {
    }

    NavigationLists read(std::string_view document)
    {
        MarkupScanner scanner(document);
        while (const auto token = scanner.next()) {
            if (token->kind == MarkupToken::Kind::StartTag)
                start(*token);
            else if (token->kind == MarkupToken::Kind::EndTag)
                end(*token);
            else if (_isInLabel)
                addText(*token);
        }
        if (_lists.contents.empty())
            _lists.contents = std::move(_untyped);
        return std::move(_lists);
    }

private:
    struct Heading {
        std::string text;
        std::int32_t level;
    };

    void start(const MarkupToken& tag)
    {
        if (tag.isNamed("nav")) {
            startList(tag);
        } else if (!_list || tag.isEmpty) {
            if (_isInLabel && tag.isNamed("img"))
                addWord(tag.attribute("alt").value_or(""));
        } else if (tag.isNamed("ol")) {
            endLabel();
            ++_level;
        } else if (tag.isNamed("a") || (tag.isNamed("span") && !_isInLabel)) {
            endLabel();
            _isInLabel = true;
            _href = tag.isNamed("a") ? tag.attribute("href") : std::nullopt;
        } else if (_isInLabel && tag.isNamed("img"))
            addWord(tag.attribute("alt").value_or(""));
    }

    void startList(const MarkupToken& tag)
    {
        endLabel();
        _level = 0;
        _headings.clear();
        const auto type = tag.attribute("epub:type");
        const auto role = tag.attribute("role");
        if (hasWord(type, "toc") || hasWord(role, "doc-toc"))
            _list = _lists.contents.empty() ? &_lists.contents : nullptr;
        else if (hasWord(type, "page-list") || hasWord(role, "doc-pagelist"))
            _list = _lists.pages.empty() ? &_lists.pages : nullptr;
        else
            _list = !type && _untyped.empty() ? &_untyped : nullptr;
    }

    void end(const MarkupToken& tag)
    {
        if (tag.isNamed("nav")) {
            endLabel();
            _list = nullptr;
        } else if (tag.isNamed("ol")) {
            endLabel();
            _level = std::max(_level - 1, 0);
        } else if (tag.isNamed("a") || tag.isNamed("li") || (tag.isNamed("span") && !_href))
            endLabel();
    }

    void addText(const MarkupToken& token)
    {
        if (_label.size() > maxLabel)
            return;
        std::string text;
        if (token.isCharacterData)
            text = token.text;
        else
            appendReplacingReferences(text, token.text.substr(0, 4 * maxLabel));
        for (const char c : text) {
            const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
            if (!isBlank)
                _label += c;
            else if (!_label.empty() && _label.back() != ' ')
                _label += ' ';
        }
    }

    void addWord(const std::string& word)
    {
        if (_label.size() <= maxLabel)
            _label += word.substr(0, maxLabel);
    }

    void endLabel()
    {
        if (!_isInLabel)
            return;
        _isInLabel = false;
        auto text = validUtf8(trimmed(std::exchange(_label, {})));
        const auto href = std::exchange(_href, std::nullopt);
        if (!_list || text.empty())
            return;
        const auto level = std::max(_level, 1);
        if (!href) {
            if (_headings.size() + _list->size() < BookLimits().contentsEntries)
                _headings.push_back({ std::move(text), level });
            return;
        }
        const auto target = targetOf(*href);
        if (!target)
            return;
        for (auto& heading : std::exchange(_headings, {}))
            add({ std::move(heading.text), *target, heading.level });
        add({ std::move(text), *target, level });
    }

    void add(NavigationPoint point)
    {
        if (_list->size() < BookLimits().contentsEntries)
            _list->push_back(std::move(point));
    }

    // Returns nullopt if the target is outside the book.
    std::optional<Url> targetOf(const std::string& href) const
    {
        const auto hash = href.find('#');
        if (std::min(hash, href.size()) > maxName || (hash != std::string::npos && href.size() - hash > maxFragment))
            return std::nullopt;
        const auto reference = href.substr(0, hash);
        // The reference has a scheme or is an absolute path.
        if (reference.starts_with('/') || reference.substr(0, reference.find('/')).find(':') != std::string::npos)
            return std::nullopt;
        const auto name = replacingPercentEscapes(reference).value_or(reference);
        const auto path
            = name.empty() ? _path : normalizedPath(appendingPathComponent(deletingLastPathComponent(_path), name));
        if (!isPathInside(path, _bookFolder))
            return std::nullopt;
        auto text = Url::file(path).text();
        if (hash != std::string::npos) {
            const auto fragment = href.substr(hash + 1);
            text += "#" + addingPercentEscapes(replacingPercentEscapes(fragment).value_or(fragment));
        }
        return Url::fromString(text);
    }

    const std::string& _path;
    const std::string& _bookFolder;
    NavigationLists _lists;
    // The list of a nav element without a type.
    std::vector<NavigationPoint> _untyped;
    // The list that is being read; null for none.
    std::vector<NavigationPoint>* _list = nullptr;
    std::int32_t _level = 0;
    bool _isInLabel = false;
    std::string _label;
    std::optional<std::string> _href;
    // Entries without a target. They get the target of the next entry.
    std::vector<Heading> _headings;
};

// Returns the text of a file below the folder, after resolving links; nullopt if there is none.
std::optional<std::string> documentAt(const std::string& path, const std::string& bookFolder)
{
    std::error_code error;
    const auto file = std::filesystem::canonical(path, error);
    if (error)
        return std::nullopt;
    const auto folder = std::filesystem::canonical(bookFolder, error);
    if (error || !isPathInside(file.string(), folder.string()))
        return std::nullopt;
    auto bytes = readFile(file.string(), maxDocument);
    return bytes ? std::optional(markupFrom(std::move(*bytes))) : std::nullopt;
}

// Returns the attribute of the first element with that name for which `isWanted` returns true.
template <typename Predicate>
std::optional<std::string> firstAttribute(
    const std::string& document, std::string_view element, std::string_view attribute, Predicate isWanted)
{
    MarkupScanner scanner(document);
    while (const auto token = scanner.next()) {
        if (token->kind == MarkupToken::Kind::StartTag && token->isNamed(element) && isWanted(*token))
            return token->attribute(attribute);
    }
    return std::nullopt;
}

// Returns an empty path if the reference is longer than a file name can be.
std::string resolved(const std::string& folder, const std::string& reference)
{
    if (reference.size() > maxName)
        return {};
    const auto name = replacingPercentEscapes(reference).value_or(reference);
    return normalizedPath(appendingPathComponent(folder, name));
}

}

NavigationLists navigationLists(const std::string& document, const std::string& path, const std::string& bookFolder)
{
    return Reader(path, bookFolder).read(document);
}

NavigationLists navigationListsOf(const std::string& bookFolder)
{
    // Only one document at a time is in memory.
    const auto attributeOf = [&](const std::string& path, auto... arguments) -> std::optional<std::string> {
        const auto document = documentAt(path, bookFolder);
        return document ? firstAttribute(*document, arguments...) : std::nullopt;
    };
    const auto package = attributeOf(appendingPathComponent(bookFolder, "META-INF/container.xml"), "rootfile",
        "full-path", [](const MarkupToken& file) { return file.attribute("full-path").has_value(); });
    if (!package)
        return {};
    const auto packagePath = resolved(bookFolder, *package);
    const auto item = attributeOf(packagePath, "item", "href",
        [](const MarkupToken& tag) { return hasWord(tag.attribute("properties"), "nav"); });
    if (!item)
        return {};
    const auto path = resolved(deletingLastPathComponent(packagePath), *item);
    const auto document = documentAt(path, bookFolder);
    return document ? navigationLists(*document, path, bookFolder) : NavigationLists();
}

}
