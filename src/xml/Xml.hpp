#pragma once

#include "base/Bounds.hpp"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pagora {

struct XmlAttribute {
    std::string name;
    std::string value;
};

// An element's attributes in document order, by qualified name. Namespace declarations are included.
class XmlAttributes {
public:
    void add(std::string name, std::string value) { _attributes.push_back({ std::move(name), std::move(value) }); }
    // Returns the value of exactly this name; null if there is none.
    const std::string* find(const std::string& name) const;
    bool empty() const { return _attributes.empty(); }
    auto begin() const { return _attributes.begin(); }
    auto end() const { return _attributes.end(); }

private:
    std::vector<XmlAttribute> _attributes;
};

// Receives the content of a document in document order. Names are qualified names as written. Character data arrives in
// pieces that end at line breaks and element boundaries, with entity and character references replaced. CDATA sections
// are reported separately.
class XmlDelegate {
public:
    virtual ~XmlDelegate() = default;
    virtual void didStartElement(const std::string& name, const XmlAttributes& attributes) { }
    virtual void didEndElement(const std::string& name) { }
    virtual void foundCharacters(const std::string& text) { }
    virtual void foundCDATA(const std::string& text) { }
    virtual void didEndDocument() { }
    // Returns whether the delegate's limits are exceeded. Checked after each report; if true, parsing ends with
    // `PastBounds`.
    virtual bool isFull() const { return false; }
    // Reports that the document is not well-formed, exceeds a limit or cannot be read. Nothing is reported afterwards.
    virtual void parseErrorOccurred(const std::string& description) { }
};

enum class XmlOutcome {
    // The document is well-formed to its end.
    Whole,
    // The document is not well-formed or cannot be read.
    NotWellFormed,
    PastBounds,
};

// Parses the file at `path` on the calling thread and reports to `delegate`. Reads nothing but the file: no network, no
// external entity, no external DTD. Entity expansion is limited.
XmlOutcome parseXml(const std::string& path, XmlDelegate& delegate, const XmlLimits& limits = {});

// Parses a document in memory.
XmlOutcome parseXmlBytes(std::string_view bytes, XmlDelegate& delegate, const XmlLimits& limits = {});

}
