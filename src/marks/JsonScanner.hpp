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

// How deep values may be nested, and how many one text may have.
inline constexpr std::size_t maxJsonDepth = 64;
inline constexpr std::size_t maxJsonNodes = 20'000;

// Missing where the text is no JSON, or past the bounds. Half a surrogate pair becomes U+FFFD.
std::optional<JsonNode> jsonNodeFrom(std::string_view text);
// The outermost members, or elements, of a text that is JSON, each as it is written there. Missing where the text is no
// JSON object, or array. Only the depth is bounded.
using JsonMembers = std::vector<std::pair<std::string, std::string_view>>;
std::optional<JsonMembers> jsonMembers(std::string_view text);
std::optional<std::vector<std::string_view>> jsonElements(std::string_view text);

// Walks through a JSON text once. One thread.
class JsonScanner {
public:
    // The text outlives it.
    explicit JsonScanner(std::string_view text);

    // Reads one value into the node; without a node it is only looked through. False where it is none, or is past the
    // bounds.
    bool read(JsonNode* node) { return value(node, 0); }
    // Looks through an object or an array and gives each element as it is written, with its name in an object.
    using Take = std::function<void(std::string name, std::string_view json)>;
    bool skipThrough(JsonNode::Kind kind, const Take& take);
    // Whether nothing but white space is left.
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
