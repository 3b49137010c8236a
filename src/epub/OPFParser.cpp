#include "epub/OPFParser.hpp"

#include "base/Path.hpp"

#include <initializer_list>

namespace pagora {

namespace {

std::string normalized(const std::string& name)
{
    constexpr std::string_view prefix = "opf:";
    auto lower = lowercased(name);
    const auto at = lower.find(prefix);
    return at == std::string::npos ? lower : lower.substr(at + prefix.size());
}

bool isImage(const XmlAttributes& item)
{
    constexpr std::string_view image = "image";
    const auto* type = item.find("media-type");
    return type && type->size() > image.size() && type->starts_with(image);
}

// Returns only the attributes of those names, because there may be thousands.
XmlAttributes only(const XmlAttributes& attributes, std::initializer_list<const char*> names)
{
    XmlAttributes kept;
    for (const auto* name : names) {
        if (const auto* value = attributes.find(name))
            kept.add(name, *value);
    }
    return kept;
}

}

void OPFParser::parse()
{
    _state = {};
    _outcome = parseXml(_xmlFile.path(), *this);
    _state = {};
}

void OPFParser::parseBytes(std::string_view bytes)
{
    _state = {};
    _outcome = parseXmlBytes(bytes, *this);
    _state = {};
}

void OPFParser::didStartElement(const std::string& elementName, const XmlAttributes& attributes)
{
    const auto name = normalized(elementName);
    if (name == "package")
        return;
    if (name == "metadata") {
        _state.inMetadata = true;
    } else if (name == "manifest") {
        _state.inManifest = true;
    } else if (name == "spine") {
        const auto* toc = attributes.find("toc");
        _state.tocID = toc ? std::optional(*toc) : std::nullopt;
        _state.inSpine = true;
    } else {
        if (_state.inMetadata)
            startMetadataElement(name, attributes);
        // Any element in a manifest is an item, and any element in a spine an item reference.
        if (!_state.inMetadata && attributes.empty())
            return;
        if (_state.inManifest)
            _state.manifest.push_back(only(attributes, { "id", "href", "media-type" }));
        else if (_state.inSpine)
            _state.spine.push_back(only(attributes, { "idref" }));
    }
}

void OPFParser::startMetadataElement(const std::string& name, const XmlAttributes& attributes)
{
    constexpr std::string_view prefix = "dc:";
    auto& element = _state.currentElement;
    element.clear();
    if (const auto at = name.find(prefix); at != std::string::npos) {
        const auto* scheme = attributes.find("opf:scheme");
        if (!scheme || lowercased(*scheme) != "uuid")
            element = name.substr(at + prefix.size());
    } else {
        const auto* meta = attributes.find("name");
        const auto* content = attributes.find("content");
        if (meta && content && lowercased(*meta) == "cover")
            _state.metadata["cover"] = *content;
    }
    if (element != "creator" && element != "title" && element != "identifier")
        element.clear();
}

void OPFParser::foundCharacters(const std::string& text)
{
    if (_state.inMetadata && !_state.currentElement.empty())
        _state.currentText += text;
}

bool OPFParser::isFull() const
{
    constexpr BookLimits limits;
    return _state.manifest.size() > limits.manifestItems || _state.spine.size() > limits.spineEntries
        || _state.currentText.size() > limits.textBytes || _state.pathBytes > limits.entryBytes;
}

void OPFParser::didEndElement(const std::string& elementName)
{
    const auto name = normalized(elementName);
    if (name == "package") {
        buildResults();
    } else if (name == "metadata") {
        _state.inMetadata = false;
    } else if (name == "manifest") {
        _state.inManifest = false;
    } else if (name == "spine") {
        _state.inSpine = false;
    } else if (_state.inMetadata && !_state.currentElement.empty()) {
        _state.metadata[_state.currentElement == "identifier" ? "isbn" : _state.currentElement] = _state.currentText;
        _state.currentText.clear();
        _state.currentElement.clear();
    }
}

void OPFParser::buildResults()
{
    const auto coverID = buildMetadata();
    const auto tocID = _state.tocID && !_state.tocID->empty() ? *_state.tocID : "ncx";
    const auto files = buildManifest(coverID, tocID);
    for (const auto& reference : _state.spine) {
        const auto* id = reference.find("idref");
        const auto file = id ? files.find(*id) : files.end();
        if (file == files.end())
            continue;
        _state.pathBytes += file->second.size();
        if (isFull())
            return;
        _fileList.push_back(file->second);
    }
    std::erase_if(_metaDict, [](const auto& entry) { return entry.second.empty() && entry.first != "tocfile"; });
}

std::string OPFParser::buildMetadata()
{
    std::string coverID;
    for (const auto& [key, value] : _state.metadata) {
        if (key == "cover")
            coverID = value;
        else
            _metaDict[key] = value;
    }
    return coverID;
}

std::map<std::string, std::string> OPFParser::buildManifest(const std::string& coverID, const std::string& tocID)
{
    std::map<std::string, std::string> files;
    for (const auto& item : _state.manifest) {
        const auto* id = item.find("id");
        const auto* href = item.find("href");
        if (!href)
            continue;
        if (isImage(item)) {
            _imageList.push_back(*href);
            if (id && *id == coverID)
                _metaDict["cover"] = *href;
        } else if (id && *id == tocID) {
            _metaDict["tocfile"] = *href;
        } else if (id) {
            files[*id] = *href;
        }
    }
    return files;
}

}
