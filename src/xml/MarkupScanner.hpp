#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// A piece of markup. The views are into the scanned document.
struct MarkupToken {
    enum class Kind { Text, StartTag, EndTag };
    Kind kind = Kind::Text;
    // Of a text: as it stands, character references included unless it is character data.
    std::string_view text;
    bool isCharacterData = false;
    // Of a tag: the name without its prefix, as it is spelled, and what stands between the name and the end of the tag.
    std::string_view name;
    std::string_view attributes;
    // Of a start tag: whether the element ends where it begins.
    bool isEmpty = false;

    // Whether the tag has that name, which is in lower case.
    bool isNamed(std::string_view lowerCaseName) const;
    // The value of the first attribute of that name, prefix included, without regard to case, its character references
    // replaced.
    std::optional<std::string> attribute(std::string_view attributeName) const;
};

// Reads XHTML and HTML piece by piece, whatever the faults of it are. Comments, instructions, declarations and the
// content of scripts and styles are passed over. It needs no memory beside the document, and time that grows with its
// length. Any thread; one thread an object.
class MarkupScanner {
public:
    // The document, as UTF-8, outlives the scanner.
    explicit MarkupScanner(std::string_view document)
        : _document(document)
    {
    }

    // The next piece; missing at the end.
    std::optional<MarkupToken> next();

private:
    bool startsWith(std::string_view what) const { return _document.compare(_at, what.size(), what) == 0; }
    void skipBehind(std::string_view what, std::size_t from);
    void skipDeclaration();
    bool skipRest(std::string_view name);
    MarkupToken tag();

    std::string_view _document;
    std::size_t _at = 0;
};

// Appends a text of markup with its character references replaced. References that nobody knows stay as they are.
void appendReplacingReferences(std::string& result, std::string_view text);

// The text of a document's bytes as UTF-8: by its byte order mark, by the encoding that its beginning names, or as
// UTF-8. Bytes that are none of that encoding become replacement characters.
std::string markupFrom(std::string bytes);

}
