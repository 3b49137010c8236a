#pragma once

#include "base/Url.hpp"
#include "xml/Xml.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// Reads an archive's META-INF/container.xml for where the package document is. Any thread; one thread an object.
class ContainerParser : private XmlDelegate {
public:
    explicit ContainerParser(Url xmlFile)
        : _xmlFile(std::move(xmlFile))
    {
    }

    // Reads the whole file. A document that is not well-formed ends early; what was found until then stands.
    void parse();
    // The same with the document's bytes instead of the file.
    void parseBytes(std::string_view bytes);
    // Whether the last parse ended because the document is past a bound.
    bool isPastBounds() const { return _outcome == XmlOutcome::PastBounds; }

    // The package document's path inside the archive, as the last rootfile gives it; missing when there is none.
    const std::optional<std::string>& opfFile() const { return _opfFile; }
    void setOpfFile(std::optional<std::string> opfFile) { _opfFile = std::move(opfFile); }

private:
    void didStartElement(const std::string& name, const XmlAttributes& attributes) override;

    Url _xmlFile;
    XmlOutcome _outcome = XmlOutcome::Whole;
    std::optional<std::string> _opfFile;
};

}
