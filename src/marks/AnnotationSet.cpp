#include "marks/AnnotationSet.hpp"

#include "marks/AnnotationJson.hpp"
#include "marks/JsonScanner.hpp"

#include <unordered_set>

namespace pagora {

namespace {

constexpr const char* context = "https://www.w3.org/ns/epub-anno.jsonld";
constexpr const char* program = "https://pagora.org/";

JsonNode arrayOf(const std::string& text)
{
    auto array = JsonNode::array();
    array.elements.push_back(JsonNode::ofText(text));
    return array;
}

JsonNode generator()
{
    auto software = JsonNode::object();
    software.set("id", JsonNode::ofText(program));
    software.set("type", JsonNode::ofText("Software"));
    software.set("name", JsonNode::ofText("Pagora"));
    return software;
}

}

AnnotationSet annotationSetAbout(const MarkedBook& book)
{
    auto about = JsonNode::object();
    if (!book.identifier.empty())
        about.set("dc:identifier", arrayOf(book.identifier));
    about.set("dc:format", JsonNode::ofText("application/epub+zip"));
    if (!book.title.empty())
        about.set("dc:title", JsonNode::ofText(book.title));
    if (!book.author.empty())
        about.set("dc:creator", arrayOf(book.author));
    AnnotationSet set { JsonNode::object(), {}, {} };
    set.head.set("@context", JsonNode::ofText(context));
    set.head.set("id", JsonNode::ofText(newMarkId()));
    set.head.set("type", JsonNode::ofText("AnnotationSet"));
    set.head.set("generator", generator());
    set.head.set("generated", JsonNode::ofText(timeNow()));
    set.head.set("about", std::move(about));
    return set;
}

std::optional<AnnotationSet> annotationSetFrom(std::string_view json)
{
    const auto members = jsonMembers(json);
    if (!members)
        return {};
    AnnotationSet set { JsonNode::object(), {}, {} };
    std::optional<std::vector<std::string_view>> items;
    for (const auto& [name, text] : *members) {
        if (name == "items")
            items = jsonElements(text);
        else if (auto node = jsonNodeFrom(text))
            set.head.set(name, std::move(*node));
        else
            return {};
    }
    if (!items)
        return {};
    std::unordered_set<std::string> ids;
    for (const auto item : *items) {
        auto mark = set.marks.size() < maxMarks ? markFrom(item) : std::nullopt;
        if (mark && ids.insert(mark->id).second)
            set.marks.push_back(std::move(*mark));
        else
            set.others.emplace_back(item);
    }
    return set;
}

std::string annotationText(const AnnotationSet& set)
{
    std::string text = "{";
    for (std::size_t i = 0; i < set.head.names.size(); ++i) {
        text += "\n  " + jsonText(JsonNode::ofText(set.head.names[i])) + ": ";
        text += jsonText(set.head.elements[i], 1) + ',';
    }
    text += "\n  \"items\": [";
    bool isFirst = true;
    const auto add = [&text, &isFirst](const std::string& item) {
        text += std::exchange(isFirst, false) ? "\n    " : ",\n    ";
        text += item;
    };
    for (const auto& mark : set.marks)
        add(mark.written.empty() ? markText(mark) : mark.written);
    for (const auto& other : set.others)
        add(other);
    return text + (isFirst ? "]\n}\n" : "\n  ]\n}\n");
}

std::vector<std::string> identifiersOf(const AnnotationSet& set)
{
    std::vector<std::string> identifiers;
    const auto* const about = set.head.find("about");
    const auto* const given = about ? about->find("dc:identifier") : nullptr;
    if (given && given->kind == JsonNode::Kind::Text)
        identifiers.push_back(given->text);
    for (std::size_t i = 0; given && given->kind == JsonNode::Kind::Array && i < given->elements.size(); ++i)
        identifiers.push_back(given->elements[i].text);
    return identifiers;
}

std::string titleOf(const AnnotationSet& set)
{
    const auto* const about = set.head.find("about");
    return about ? about->textOf("dc:title") : std::string();
}

}
