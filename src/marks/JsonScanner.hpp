#pragma once

#include "marks/JsonNode.hpp"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pagora {

// The maximum depth and number of values of one text.
inline constexpr std::size_t maxJsonDepth = 64;
inline constexpr std::size_t maxJsonNodes = 20'000;

// Returns nullopt if the text is not JSON or exceeds the limits. Unpaired surrogates become U+FFFD.
std::optional<JsonNode> jsonNodeFrom(std::string_view text);
// Returns the source texts of the outermost members of a JSON object, or elements of a JSON array; nullopt if the text
// is neither. Only the depth is limited.
using JsonMembers = std::vector<std::pair<std::string, std::string_view>>;
std::optional<JsonMembers> jsonMembers(std::string_view text);
std::optional<std::vector<std::string_view>> jsonElements(std::string_view text);

// Parses a JSON text in one pass. Use each object on one thread only.
class JsonScanner {
public:
    // `text` must outlive this object.
    explicit JsonScanner(std::string_view text);

    // Parses one value into the node, or skips it if the node is null. Returns false if it is malformed or exceeds the
    // limits.
    bool read(JsonNode* node) { return value(node, 0); }
    // Skips an object or an array and calls `take` with the source text of each element and its name in an object.
    using Take = std::function<void(std::string name, std::string_view json)>;
    bool skipThrough(JsonNode::Kind kind, const Take& take);
    // Returns whether only white space is left.
    bool isAtEnd();

private:
    bool value(JsonNode* node, std::size_t depth);
    bool elements(bool isObject, JsonNode* node, std::size_t depth, const Take* take);
    bool literal(JsonNode* node);
    bool string(std::string* text);
    bool escape(std::string* text);
    std::optional<char32_t> hexadecimal();
    bool take(char character);
    void skipBlanks();

    std::string_view _text;
    std::size_t _at = 0;
    std::size_t _nodes = 0;
};

}
