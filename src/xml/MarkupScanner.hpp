#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// A piece of markup. The views point into the scanned document.
struct MarkupToken {
    enum class Kind { Text, StartTag, EndTag };
    Kind kind = Kind::Text;
    // For text: the text as written. Character references are not decoded; character data (CDATA) contains none.
    std::string_view text;
    bool isCharacterData = false;
    // For a tag: the name as written without its prefix, and the text between the name and the end of the tag.
    std::string_view name;
    std::string_view attributes;
    // For a start tag: true if it is an empty-element tag.
    bool isEmpty = false;

    // Returns whether the tag has this name, which is given in lower case.
    bool isNamed(std::string_view lowerCaseName) const;
    // Returns the value of the first attribute of that name, with character references decoded. The name includes the
    // prefix and is compared without regard to case.
    std::optional<std::string> attribute(std::string_view attributeName) const;
};

// Scans XHTML and HTML piece by piece and tolerates any error. Skips comments, processing instructions, declarations
// and the content of scripts and styles. Allocates no memory for the scan and takes linear time. Use each object on one
// thread at a time.
class MarkupScanner {
public:
    // `document` is UTF-8 and must outlive the scanner.
    explicit MarkupScanner(std::string_view document)
        : _document(document)
    {
    }

    // Returns the next piece; nullopt at the end.
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

// Appends a piece of markup text with its character references decoded. Unknown references stay as they are.
void appendReplacingReferences(std::string& result, std::string_view text);

// Decodes a document's bytes by the byte order mark, by the encoding that the document declares, or as UTF-8. Returns
// UTF-8; invalid bytes become replacement characters.
std::string markupFrom(std::string bytes);

}
