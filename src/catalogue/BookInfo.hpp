#pragma once

#include "base/Data.hpp"
#include "base/Url.hpp"
#include "base/Value.hpp"
#include "pictures/Image.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// One book. Records are shared and compared by identity. Inspection fills a record on its own thread; when the record
// is in the catalogue, only the main thread uses it. Its title, author and identifier do not change from then on, so
// any thread may read these three.
class BookInfo {
public:
    // Absolute path of the EPUB archive.
    const std::optional<std::string>& epubPath() const { return _epubPath; }
    void setEpubPath(std::optional<std::string> path) { _epubPath = std::move(path); }

    // "default" (reflowable), "fixed" (fixed layout) or "x-ibook".
    const std::optional<std::string>& type() const { return _type; }
    void setType(std::optional<std::string> type) { _type = std::move(type); }

    const std::optional<std::string>& title() const { return _title; }
    void setTitle(std::optional<std::string> title) { _title = std::move(title); }

    const std::optional<std::string>& author() const { return _author; }
    void setAuthor(std::optional<std::string> author) { _author = std::move(author); }

    // ISBN or another identifier.
    const std::optional<std::string>& isbn() const { return _isbn; }
    void setIsbn(std::optional<std::string> isbn) { _isbn = std::move(isbn); }

    // Decodes the picture in `imgData` at each call; nullopt if there is none or it cannot be decoded.
    std::optional<Image> cover() const;

    // The cover as JPEG bytes.
    const std::optional<Data>& imgData() const { return _imgData; }
    void setImgData(std::optional<Data> data) { _imgData = std::move(data); }

    // The content documents in reading order, as file URLs below `bookPath`. The URLs are created at each call.
    std::vector<Url> files() const;
    void setFiles(const std::vector<Url>& files);
    // The paths of the content documents. Elements that are not strings do not name a file.
    Value::Array filePaths() const;
    // Takes an array of paths, whose elements may be read on first use.
    void setFilePaths(Value paths) { _files = std::move(paths); }
    // The number of elements, including those that are not strings.
    std::size_t fileCount() const;

    // The table of contents: dictionaries with "src" (absolute path with fragment), "text" and "level". Nullopt if a
    // stored entry had none.
    std::optional<Value::Array> content() const;
    // `content` must be an array.
    void setContent(std::optional<Value> content) { _content = std::move(content); }

    // Reading position: index of the content document last shown, and the position in it, truncated.
    std::uint64_t lastIndex() const { return _lastIndex; }
    void setLastIndex(std::uint64_t index) { _lastIndex = index; }
    std::uint64_t lastCap() const { return _lastCap; }
    void setLastCap(std::uint64_t cap) { _lastCap = cap; }

    // The fraction of that document before the middle of the page last shown; nullopt if it is not known.
    std::optional<double> lastPlace() const { return _lastPlace; }
    void setLastPlace(std::optional<double> place) { _lastPlace = place; }

    // Page size of a fixed-layout book in CSS pixels; 0 for others.
    std::uint64_t fixedWidth() const { return _fixedWidth; }
    void setFixedWidth(std::uint64_t width) { _fixedWidth = width; }
    std::uint64_t fixedHeight() const { return _fixedHeight; }
    void setFixedHeight(std::uint64_t height) { _fixedHeight = height; }

    // True if the archive has been unpacked into `bookPath` in this run. Never stored.
    bool unPacked() const { return _unPacked; }
    void setUnPacked(bool unPacked) { _unPacked = unPacked; }

    // Folder of the unpacked copy.
    const std::optional<std::string>& bookPath() const { return _bookPath; }
    void setBookPath(std::optional<std::string> path) { _bookPath = std::move(path); }

    // True if the inspection found an error. Never stored.
    bool errors() const { return _errors; }
    void setErrors(bool errors) { _errors = errors; }

private:
    std::optional<std::string> _epubPath;
    std::optional<std::string> _type = "default";
    std::optional<std::string> _title;
    std::optional<std::string> _author;
    std::optional<std::string> _isbn;
    std::optional<Data> _imgData;
    Value _files = Value::Array {};
    std::optional<Value> _content = Value::Array {};
    std::uint64_t _lastIndex = 0;
    std::uint64_t _lastCap = 0;
    std::optional<double> _lastPlace;
    std::uint64_t _fixedWidth = 0;
    std::uint64_t _fixedHeight = 0;
    bool _unPacked = false;
    std::optional<std::string> _bookPath;
    bool _errors = false;
};

using BookInfoPtr = std::shared_ptr<BookInfo>;

}
