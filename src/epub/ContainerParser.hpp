#pragma once

#include "base/Url.hpp"
#include "xml/Xml.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// Reads the path of the package document from an archive's META-INF/container.xml. Use each object on one thread at a
// time.
class ContainerParser : private XmlDelegate {
public:
    explicit ContainerParser(Url xmlFile)
        : _xmlFile(std::move(xmlFile))
    {
    }

    // Parses the whole file. If the document is not well-formed, the results found before the error are kept.
    void parse();
    // Parses bytes in memory instead of the file.
    void parseBytes(std::string_view bytes);
    // Returns whether the last parse ended because the document exceeds a limit.
    bool isPastBounds() const { return _outcome == XmlOutcome::PastBounds; }

    // The path of the package document inside the archive, from the last rootfile; nullopt if there is none.
    const std::optional<std::string>& opfFile() const { return _opfFile; }
    void setOpfFile(std::optional<std::string> opfFile) { _opfFile = std::move(opfFile); }

private:
    void didStartElement(const std::string& name, const XmlAttributes& attributes) override;

    Url _xmlFile;
    XmlOutcome _outcome = XmlOutcome::Whole;
    std::optional<std::string> _opfFile;
};

}
