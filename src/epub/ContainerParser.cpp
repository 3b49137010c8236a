#include "epub/ContainerParser.hpp"

#include "base/Path.hpp"

namespace pagora {

void ContainerParser::parse()
{
    _outcome = parseXml(_xmlFile.path(), *this);
}

void ContainerParser::parseBytes(std::string_view bytes)
{
    _outcome = parseXmlBytes(bytes, *this);
}

void ContainerParser::didStartElement(const std::string& name, const XmlAttributes& attributes)
{
    if (lowercased(name) != "rootfile")
        return;
    const auto* path = attributes.find("full-path");
    _opfFile = path ? std::optional(*path) : std::nullopt;
}

}
