#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pagora {

// A JSON value that preserves the order of members and the digits of numbers. Thread-safe.
struct JsonNode {
    enum class Kind { Null, Boolean, Number, Text, Array, Object };
    Kind kind = Kind::Null;
    // The characters of a string, as UTF-8; the source text of a number or boolean.
    std::string text;
    // The values of an array or object.
    std::vector<JsonNode> elements;
    // The names of an object's elements.
    std::vector<std::string> names;

    static JsonNode ofText(std::string text);
    static JsonNode ofNumber(std::size_t number);
    static JsonNode array() { return { Kind::Array, {}, {}, {} }; }
    static JsonNode object() { return { Kind::Object, {}, {}, {} }; }

    // Returns the last member of that name; null if there is none.
    const JsonNode* find(std::string_view name) const;
    JsonNode* find(std::string_view name);
    // Returns the member's text; empty unless it is a string.
    std::string textOf(std::string_view name) const;
    // Replaces the member, or appends it.
    void set(std::string_view name, JsonNode value);
    void remove(std::string_view name);
};

// Returns the value as JSON, indented by two spaces a level, starting at the given level.
std::string jsonText(const JsonNode& node, std::size_t level = 0);

}
