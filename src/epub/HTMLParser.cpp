#include "epub/HTMLParser.hpp"

#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "base/Path.hpp"

#include <optional>

namespace pagora {

namespace {

struct Measure {
    std::string key;
    std::uint64_t value;
};

// Parses one measure of a viewport, such as "width=600"; nullopt if there is no "=". A negative number keeps its sign
// bits.
std::optional<Measure> measureIn(const std::string& piece)
{
    const auto parts = split(piece, '=');
    if (parts.size() < 2)
        return std::nullopt;
    return Measure { parts[0], static_cast<std::uint64_t>(static_cast<std::int64_t>(intValue(parts[1]))) };
}

}

void HTMLParser::parse()
{
    _outcome = parseXml(_htmlFile.path(), *this);
}

void HTMLParser::didStartElement(const std::string& name, const XmlAttributes& attributes)
{
    const auto* meta = attributes.find("name");
    const auto* content = attributes.find("content");
    if (lowercased(name) != "meta" || !meta || *meta != "viewport" || !content)
        return;
    const auto pieces = split(*content, ',');
    // The first measure is a height unless its key contains "width"; the second is a width unless its key contains
    // "height".
    if (const auto first = measureIn(pieces[0]))
        (first->key.find("width") != std::string::npos ? _viewportWidth : _viewportHeight) = first->value;
    const auto second = pieces.size() > 1 ? measureIn(pieces[1]) : std::nullopt;
    if (second)
        (second->key.find("height") != std::string::npos ? _viewportHeight : _viewportWidth) = second->value;
}

void HTMLParser::parseErrorOccurred(const std::string& description)
{
    log("FATAL ERROR: " + description);
}

}
