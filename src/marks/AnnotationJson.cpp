#include "marks/AnnotationJson.hpp"

#include "base/Numbers.hpp"
#include "base/Url.hpp"
#include "marks/JsonScanner.hpp"

#include <algorithm>

namespace pagora {

namespace {

// The maximum size of an item in bytes. Each character of a note may be escaped.
constexpr std::size_t maxItemBytes = 8 * maxMarkNoteBytes;
// The maximum number of selectors that are read per target.
constexpr std::size_t maxSelectors = 20;
// The nesting level of an item in a file.
constexpr std::size_t itemLevel = 2;
constexpr std::string_view textFragment = ":~:text=";

using Kind = JsonNode::Kind;

std::optional<std::size_t> numberOf(const JsonNode& node, std::string_view name)
{
    const auto* const member = node.find(name);
    if (!member || member->kind != Kind::Number || member->text.starts_with('-'))
        return {};
    return static_cast<std::size_t>(integerValue(member->text));
}

// Returns the identifier in a CSS selector that is or ends with "#id".
std::string elementOf(const std::string& selector)
{
    const auto mark = selector.rfind('#');
    if (mark == std::string::npos)
        return {};
    auto name = selector.substr(mark + 1);
    return name.find_first_of(" .:>[+~") == std::string::npos ? name : std::string();
}

void takePosition(const JsonNode& position, const std::string& element, MarkedText& text)
{
    // A position counted from the body takes precedence.
    if (text.start && text.element.empty())
        return;
    text.start = numberOf(position, "start");
    text.end = numberOf(position, "end");
    text.element = element;
}

// Parses "prefix-,start,end,-suffix" with percent escapes. Of a text with an end, only the start is used.
void takeTextFragment(std::string_view directive, MarkedText& text)
{
    std::vector<std::string> parts;
    for (std::size_t first = 0; first <= directive.size();) {
        const auto end = std::min(directive.find(',', first), directive.size());
        parts.push_back(replacingPercentEscapes(directive.substr(first, end - first)).value_or(""));
        first = end + 1;
    }
    if (!parts.empty() && parts.front().ends_with('-')) {
        text.before = parts.front().substr(0, parts.front().size() - 1);
        parts.erase(parts.begin());
    }
    if (!parts.empty() && parts.back().starts_with('-')) {
        text.after = parts.back().substr(1);
        parts.pop_back();
    }
    if (!parts.empty())
        text.exact = parts.front();
}

void takeSelector(const JsonNode& selector, MarkedText& text)
{
    const auto type = selector.textOf("type");
    const auto value = selector.textOf("value");
    const auto* const refined = selector.find("refinedBy");
    if (type == "TextQuoteSelector") {
        text.exact = selector.textOf("exact");
        text.before = selector.textOf("prefix");
        text.after = selector.textOf("suffix");
    } else if (type == "TextPositionSelector")
        takePosition(selector, {}, text);
    else if (type == "CssSelector") {
        if (refined && refined->textOf("type") == "TextPositionSelector")
            takePosition(*refined, elementOf(value), text);
        else if (refined && refined->textOf("type") == "TextQuoteSelector")
            takeSelector(*refined, text);
        else if (!text.start)
            text.element = elementOf(value);
    } else if (type == "FragmentSelector") {
        const auto directive = value.find(textFragment);
        if (directive != std::string::npos) {
            if (text.exact.empty())
                takeTextFragment(std::string_view(value).substr(directive + textFragment.size()), text);
        } else if (value.find_first_of("(=/") == std::string::npos && !text.start)
            text.element = value.substr(value.starts_with('#') ? 1 : 0);
    }
}

MarkedText targetFrom(const JsonNode& target)
{
    MarkedText text;
    if (target.kind == Kind::Text) {
        text.source = target.text;
    } else
        text.source = target.textOf("source");
    if (const auto* const selector = target.find("selector")) {
        if (selector->kind == Kind::Object)
            takeSelector(*selector, text);
        for (std::size_t i = 0; i < std::min(selector->elements.size(), maxSelectors); ++i) {
            if (selector->kind == Kind::Array)
                takeSelector(selector->elements[i], text);
        }
    }
    if (const auto fragment = text.source.find('#'); fragment != std::string::npos) {
        if (text.element.empty() && !text.start)
            text.element = text.source.substr(fragment + 1);
        text.source.erase(fragment);
    }
    return text;
}

void takeBody(const JsonNode& body, Mark& mark)
{
    if (body.kind == Kind::Text)
        mark.note = body.text;
    else if (body.kind == Kind::Object) {
        mark.note = body.textOf("value");
        mark.color = markColorFrom(body.textOf("color"));
        const auto* const tags = body.find("tags");
        for (std::size_t i = 0; tags && i < tags->elements.size(); ++i) {
            if (tags->elements[i].kind == Kind::Text)
                mark.tags.push_back(tags->elements[i].text);
        }
    } else if (body.kind == Kind::Array && !body.elements.empty() && body.elements[0].kind != Kind::Array)
        takeBody(body.elements[0], mark);
}

JsonNode positionNode(const MarkedText& text)
{
    auto position = JsonNode::object();
    position.set("type", JsonNode::ofText("TextPositionSelector"));
    position.set("start", JsonNode::ofNumber(*text.start));
    position.set("end", JsonNode::ofNumber(text.end.value_or(*text.start)));
    return position;
}

JsonNode targetNode(const MarkedText& text)
{
    auto selectors = JsonNode::array();
    if (text.start) {
        auto css = JsonNode::object();
        css.set("type", JsonNode::ofText("CssSelector"));
        css.set("value", JsonNode::ofText("body"));
        css.set("refinedBy", positionNode(text));
        selectors.elements.push_back(std::move(css));
    }
    auto quote = JsonNode::object();
    quote.set("type", JsonNode::ofText("TextQuoteSelector"));
    quote.set("exact", JsonNode::ofText(text.exact));
    quote.set("prefix", JsonNode::ofText(text.before));
    quote.set("suffix", JsonNode::ofText(text.after));
    selectors.elements.push_back(std::move(quote));
    if (text.start)
        selectors.elements.push_back(positionNode(text));
    auto target = JsonNode::object();
    target.set("source", JsonNode::ofText(text.source));
    target.set("selector", std::move(selectors));
    return target;
}

const char* motivationOf(const Mark& mark)
{
    switch (mark.kind()) {
    case Mark::Kind::Bookmark:
        return "bookmarking";
    case Mark::Kind::Highlight:
        return "highlighting";
    default:
        return "commenting";
    }
}

// Keeps the other members of an existing body of the item.
void setBody(JsonNode& item, const Mark& mark)
{
    auto* given = item.find("body");
    if (given && given->kind == Kind::Array && !given->elements.empty())
        given = &given->elements[0];
    auto body = given && given->kind == Kind::Object ? std::move(*given) : JsonNode::object();
    body.set("type", JsonNode::ofText("TextualBody"));
    body.set("value", JsonNode::ofText(mark.note));
    body.set("format", JsonNode::ofText("text/plain"));
    body.set("color", JsonNode::ofText(nameOf(mark.color)));
    if (!mark.tags.empty() || body.find("tags")) {
        auto tags = JsonNode::array();
        for (const auto& tag : mark.tags)
            tags.elements.push_back(JsonNode::ofText(tag));
        body.set("tags", std::move(tags));
    }
    if (given)
        *given = std::move(body);
    else
        item.set("body", std::move(body));
}

}

std::optional<Mark> markFrom(std::string_view item)
{
    if (item.size() > maxItemBytes)
        return {};
    const auto node = jsonNodeFrom(item);
    const auto* const target = node ? node->find("target") : nullptr;
    if (!target || (target->kind != Kind::Object && target->kind != Kind::Text))
        return {};
    Mark mark;
    mark.id = node->textOf("id");
    mark.created = node->textOf("created");
    mark.modified = node->textOf("modified");
    mark.text = targetFrom(*target);
    if (const auto* const body = node->find("body"))
        takeBody(*body, mark);
    if (mark.text.source.empty() || mark.note.size() > maxMarkNoteBytes)
        return {};
    const auto motivation = node->textOf("motivation");
    const bool spansText = !mark.text.exact.empty() || (mark.text.start && mark.text.end > mark.text.start);
    mark.isBookmark = motivation == "bookmarking"
        || (motivation != "highlighting" && motivation != "commenting" && !spansText && mark.note.empty());
    mark.written = item;
    if (mark.id.empty()) {
        mark.id = newMarkId();
        mark.written = markText(mark);
    }
    return mark;
}

std::string markText(const Mark& mark)
{
    auto item = jsonNodeFrom(mark.written).value_or(JsonNode::object());
    const bool isNew = !item.find("target");
    item.set("id", JsonNode::ofText(mark.id));
    item.set("type", JsonNode::ofText("Annotation"));
    item.set("created", JsonNode::ofText(mark.created.empty() ? timeNow() : mark.created));
    if (!mark.modified.empty())
        item.set("modified", JsonNode::ofText(mark.modified));
    item.set("motivation", JsonNode::ofText(motivationOf(mark)));
    if (isNew)
        item.set("target", targetNode(mark.text));
    if (!mark.note.empty() || item.find("body") || mark.color != MarkColor::Yellow || !mark.tags.empty())
        setBody(item, mark);
    return jsonText(item, itemLevel);
}

}
