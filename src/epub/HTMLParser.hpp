#pragma once

#include "base/Url.hpp"
#include "xml/Xml.hpp"

#include <cstdint>
#include <string>

namespace pagora {

// Reads the size of a fixed-layout page from its viewport. Use each object on one thread at a time.
class HTMLParser : private XmlDelegate {
public:
    explicit HTMLParser(Url htmlFile)
        : _htmlFile(std::move(htmlFile))
    {
    }

    // Parses the whole page. If it is not well-formed, the error is logged and the results found before it are kept.
    void parse();
    // Returns whether the last parse ended because the document exceeds a limit.
    bool isPastBounds() const { return _outcome == XmlOutcome::PastBounds; }

    // In CSS pixels.
    std::uint64_t viewportWidth() const { return _viewportWidth; }
    void setViewportWidth(std::uint64_t width) { _viewportWidth = width; }
    std::uint64_t viewportHeight() const { return _viewportHeight; }
    void setViewportHeight(std::uint64_t height) { _viewportHeight = height; }

private:
    void didStartElement(const std::string& name, const XmlAttributes& attributes) override;
    void parseErrorOccurred(const std::string& description) override;

    Url _htmlFile;
    XmlOutcome _outcome = XmlOutcome::Whole;
    std::uint64_t _viewportWidth = 600;
    std::uint64_t _viewportHeight = 800;
};

}
