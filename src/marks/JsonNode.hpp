#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pagora {

// A JSON value as it was written by whomever: members keep their order, numbers their digits. Any thread.
struct JsonNode {
    enum class Kind { Null, Boolean, Number, Text, Array, Object };
    Kind kind = Kind::Null;
    // The characters of a text, as UTF-8; of a number and a boolean, how it is spelt.
    std::string text;
    // Of an array and an object.
    std::vector<JsonNode> elements;
    // Of an object: the name of each element.
    std::vector<std::string> names;

    static JsonNode ofText(std::string text);
    static JsonNode ofNumber(std::size_t number);
    static JsonNode array() { return { Kind::Array, {}, {}, {} }; }
    static JsonNode object() { return { Kind::Object, {}, {}, {} }; }

    // The member of that name, the last one of several; null where there is none.
    const JsonNode* find(std::string_view name) const;
    JsonNode* find(std::string_view name);
    // The member's characters; empty unless it is a text.
    std::string textOf(std::string_view name) const;
    // Replaces the member in its place, or adds it at the end.
    void set(std::string_view name, JsonNode value);
    void remove(std::string_view name);
};

// The value as JSON, indented by two blanks a level from the given level on.
std::string jsonText(const JsonNode& node, std::size_t level = 0);

}
