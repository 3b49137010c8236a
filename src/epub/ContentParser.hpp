#pragma once

#include "base/Url.hpp"
#include "base/Value.hpp"
#include "xml/Xml.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace pagora {

// Reads an NCX table of contents into a flat list. Use each object on one thread at a time.
class ContentParser : private XmlDelegate {
public:
    explicit ContentParser(Url xmlFile)
        : _xmlFile(std::move(xmlFile))
    {
    }

    // Parses the whole file. If the document is not well-formed, the entries found before the error are kept.
    void parse();
    // Returns whether the last parse ended because the document exceeds a limit.
    bool isPastBounds() const { return _outcome == XmlOutcome::PastBounds; }

    // The entries in document order, each a dictionary: "src" (the target as written, relative to the file's folder),
    // "text" (the label) and "level" (1 for the outermost). An entry without a target is an empty dictionary.
    const Value::Array& contentList() const { return _contentList; }
    void setContentList(Value::Array contentList) { _contentList = std::move(contentList); }

private:
    void didStartElement(const std::string& name, const XmlAttributes& attributes) override;
    void didEndElement(const std::string& name) override;
    void foundCharacters(const std::string& text) override;
    void foundCDATA(const std::string& text) override;
    bool isFull() const override;

    Url _xmlFile;
    XmlOutcome _outcome = XmlOutcome::Whole;
    Value::Array _contentList;
    std::int32_t _navLevel = 0;
    std::optional<std::string> _currentSrc;
    std::string _currentLabel;
    // Size of all labels and targets.
    std::size_t _textBytes = 0;
};

}
