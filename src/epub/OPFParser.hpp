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

// Reads a package document: metadata, reading order and images. Elements are told by their names alone. It reports
// nothing; what it cannot use it leaves out. Any thread; one thread an object.
class OPFParser : private XmlDelegate {
public:
    explicit OPFParser(Url xmlFile)
        : _xmlFile(std::move(xmlFile))
    {
    }

    // Reads the whole document. The results are made where the package element ends, so a document that is not
    // well-formed before that gives none.
    void parse();
    // The same with the document's bytes instead of the file.
    void parseBytes(std::string_view bytes);
    // Whether the last parse ended because the document is past a bound.
    bool isPastBounds() const { return _outcome == XmlOutcome::PastBounds; }

    // "title", "creator", "isbn", "cover" (the image's path) and "tocfile" (the table of contents' path), each only
    // when found. Paths here and below are as written: relative to the package document's folder, percent escapes kept.
    const std::map<std::string, std::string>& metaDict() const { return _metaDict; }
    void setMetaDict(std::map<std::string, std::string> metaDict) { _metaDict = std::move(metaDict); }
    // The content documents in reading order.
    const std::vector<std::string>& fileList() const { return _fileList; }
    void setFileList(std::vector<std::string> fileList) { _fileList = std::move(fileList); }
    // The pictures, in the manifest's order.
    const std::vector<std::string>& imageList() const { return _imageList; }
    void setImageList(std::vector<std::string> imageList) { _imageList = std::move(imageList); }
    // Parsing leaves it missing.
    const std::optional<std::string>& tocFileID() const { return _tocFileID; }
    void setTocFileID(std::optional<std::string> tocFileID) { _tocFileID = std::move(tocFileID); }

private:
    // What was read of the document so far.
    struct State {
        bool inMetadata = false;
        bool inManifest = false;
        bool inSpine = false;
        // The spine's "toc" attribute.
        std::optional<std::string> tocID;
        // The metadata element whose text is being gathered, without "dc:"; empty when none is.
        std::string currentElement;
        std::string currentText;
        // The last finding of each kind: "title", "creator" and "isbn" with their texts, "cover" with an item's id.
        std::map<std::string, std::string> metadata;
        std::vector<XmlAttributes> manifest;
        std::vector<XmlAttributes> spine;
        // The bytes of all paths of the reading order.
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
    // Returns the paths of the items that a spine can name, by their ids.
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
