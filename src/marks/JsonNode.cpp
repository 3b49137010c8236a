#include "marks/JsonNode.hpp"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace pagora {

namespace {

void appendText(std::string& json, std::string_view text)
{
    json += '"';
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            json += '\\';
            json += character;
        } else if (character == '\n')
            json += "\\n";
        else if (byte < 0x20 || byte == 0x7F) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04X", byte);
            json += escape;
        } else
            json += character;
    }
    json += '"';
}

void appendLine(std::string& json, std::size_t level)
{
    json += '\n';
    json.append(2 * level, ' ');
}

void append(std::string& json, const JsonNode& node, std::size_t level)
{
    using Kind = JsonNode::Kind;
    if (node.kind == Kind::Null)
        json += "null";
    else if (node.kind == Kind::Text)
        appendText(json, node.text);
    else if (node.kind == Kind::Array || node.kind == Kind::Object) {
        const bool isObject = node.kind == Kind::Object;
        json += isObject ? '{' : '[';
        for (std::size_t i = 0; i < node.elements.size(); ++i) {
            if (i > 0)
                json += ',';
            appendLine(json, level + 1);
            if (isObject) {
                appendText(json, node.names[i]);
                json += ": ";
            }
            append(json, node.elements[i], level + 1);
        }
        if (!node.elements.empty())
            appendLine(json, level);
        json += isObject ? '}' : ']';
    } else
        json += node.text;
}

}

JsonNode JsonNode::ofText(std::string text)
{
    return { Kind::Text, std::move(text), {}, {} };
}

JsonNode JsonNode::ofNumber(std::size_t number)
{
    return { Kind::Number, std::to_string(number), {}, {} };
}

const JsonNode* JsonNode::find(std::string_view name) const
{
    const auto found = std::find(names.rbegin(), names.rend(), name);
    return found == names.rend() ? nullptr : &elements[static_cast<std::size_t>(names.rend() - found) - 1];
}

JsonNode* JsonNode::find(std::string_view name)
{
    return const_cast<JsonNode*>(std::as_const(*this).find(name));
}

std::string JsonNode::textOf(std::string_view name) const
{
    const auto* const member = find(name);
    return member && member->kind == Kind::Text ? member->text : std::string();
}

void JsonNode::set(std::string_view name, JsonNode value)
{
    if (auto* const member = find(name)) {
        *member = std::move(value);
        return;
    }
    names.emplace_back(name);
    elements.push_back(std::move(value));
}

void JsonNode::remove(std::string_view name)
{
    for (std::size_t i = names.size(); i-- > 0;) {
        if (names[i] != name)
            continue;
        names.erase(names.begin() + static_cast<std::ptrdiff_t>(i));
        elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

std::string jsonText(const JsonNode& node, std::size_t level)
{
    std::string json;
    append(json, node, level);
    return json;
}

}
