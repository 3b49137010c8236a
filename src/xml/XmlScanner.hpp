#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace pagora {

// Scans a document's bytes before the XML library does. Counts the attributes of each tag, because the library's
// duplicate check is quadratic, and the bytes of the internal subset, because the library buffers all of it and parts
// of its processing are quadratic.
class XmlScanner {
public:
    // Takes the document's first bytes, from which the library detects the encoding.
    void begin(std::string_view start);
    // Takes the bytes that follow. Returns false if a tag has more attributes than `limit`.
    bool count(std::string_view bytes, std::size_t limit);
    std::size_t bytesOfDocumentType() const { return _bytesOfDocumentType; }

private:
    bool countCharacter(std::uint32_t c, std::size_t limit);

    // Bytes per character, and the position of the significant byte.
    int _characterBytes = 1;
    bool _lowestFirst = true;
    std::uint32_t _character = 0;
    int _place = 0;
    std::uint32_t _last = 0;
    std::uint32_t _lastButOne = 0;
    std::size_t _attributes = 0;
    bool _afterEquals = false;
    bool _hasDocumentType = false;
    std::size_t _bytesOfDocumentType = 0;
};

}
