#pragma once

#include "base/Url.hpp"
#include "xml/Xml.hpp"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pagora {

// Reads a package document: metadata, reading order and images. Identifies elements by their names without regard to
// their position. Reports nothing and omits what it cannot use. Use each object on one thread at a time.
class OPFParser : private XmlDelegate {
public:
    explicit OPFParser(Url xmlFile)
        : _xmlFile(std::move(xmlFile))
    {
    }

    // Parses the whole document. The results are made at the end of the package element, so a document that is not
    // well-formed before it has none.
    void parse();
    // Parses bytes in memory instead of the file.
    void parseBytes(std::string_view bytes);
    // Returns whether the last parse ended because the document exceeds a limit.
    bool isPastBounds() const { return _outcome == XmlOutcome::PastBounds; }

    // "title", "creator", "isbn", "cover" (the image's path) and "tocfile" (the table of contents' path), each only if
    // it was found. Paths here and below are as written: relative to the package document's folder, with percent
    // escapes.
    const std::map<std::string, std::string>& metaDict() const { return _metaDict; }
    void setMetaDict(std::map<std::string, std::string> metaDict) { _metaDict = std::move(metaDict); }
    // The content documents in reading order.
    const std::vector<std::string>& fileList() const { return _fileList; }
    void setFileList(std::vector<std::string> fileList) { _fileList = std::move(fileList); }
    // The pictures in the order of the manifest.
    const std::vector<std::string>& imageList() const { return _imageList; }
    void setImageList(std::vector<std::string> imageList) { _imageList = std::move(imageList); }
    // Always nullopt; parsing does not set it.
    const std::optional<std::string>& tocFileID() const { return _tocFileID; }
    void setTocFileID(std::optional<std::string> tocFileID) { _tocFileID = std::move(tocFileID); }

private:
    // The part of the document that was read so far.
    struct State {
        bool inMetadata = false;
        bool inManifest = false;
        bool inSpine = false;
        // The spine's "toc" attribute.
        std::optional<std::string> tocID;
        // The metadata element whose text is being collected, without "dc:"; empty if there is none.
        std::string currentElement;
        std::string currentText;
        // The last value of each kind: "title", "creator" and "isbn" with their texts, "cover" with an item's id.
        std::map<std::string, std::string> metadata;
        std::vector<XmlAttributes> manifest;
        std::vector<XmlAttributes> spine;
        // Size in bytes of all paths of the reading order.
        std::size_t pathBytes = 0;
    };

    void didStartElement(const std::string& name, const XmlAttributes& attributes) override;
    void didEndElement(const std::string& name) override;
    void foundCharacters(const std::string& text) override;
    bool isFull() const override;

    void startMetadataElement(const std::string& name, const XmlAttributes& attributes);
    void buildResults();
    // Returns the id of the cover item.
    std::string buildMetadata();
    // Returns the paths of the items that a spine can refer to, by their ids.
    std::map<std::string, std::string> buildManifest(const std::string& coverID, const std::string& tocID);

    Url _xmlFile;
    XmlOutcome _outcome = XmlOutcome::Whole;
    std::map<std::string, std::string> _metaDict;
    std::vector<std::string> _fileList;
    std::vector<std::string> _imageList;
    std::optional<std::string> _tocFileID;
    State _state;
};

}
