#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace pagora {

// Looks at a document's bytes before the XML library sees them. It counts the attributes within one tag, because the
// library's search for duplicates takes the square of their number, and the bytes from a document type on, because the
// library waits for the whole of its declarations and takes the square of their number for some.
class XmlScanner {
public:
    // The document's first bytes, as the library tells encodings apart by them.
    void begin(std::string_view start);
    // The bytes that follow. False when a tag has more attributes than `limit`.
    bool count(std::string_view bytes, std::size_t limit);
    std::size_t bytesOfDocumentType() const { return _bytesOfDocumentType; }

private:
    bool countCharacter(std::uint32_t c, std::size_t limit);

    // How a character lies in the bytes.
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
