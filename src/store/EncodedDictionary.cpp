// Reads an encoded dictionary without decoding its values.

#include "store/EncodedBytes.hpp"
#include "store/ValueCoding.hpp"

namespace pagora {

namespace {

class Skipper : public EncodedBytes {
public:
    using PassPart = std::function<void(std::int64_t place)>;

    Skipper(std::string_view bytes, const PassPart& part)
        : EncodedBytes(bytes)
        , _part(part)
    {
    }

    // Skips a value. Returns false if it cannot be decoded or if its keys are not sorted.
    bool skip(int depth)
    {
        const auto tag = byte();
        if (!tag || depth > maxValueDepth)
            return false;
        switch (static_cast<Tag>(*tag)) {
        case Tag::String:
        case Tag::Data:
            return text().has_value();
        case Tag::Integer:
            return count().has_value();
        case Tag::Real:
        case Tag::Date:
            return real().has_value();
        case Tag::False:
        case Tag::True:
            return true;
        case Tag::DataApart:
            return skipPlace() && count();
        case Tag::ArrayApart:
        case Tag::DictionaryApart:
            return skipPlace();
        case Tag::Array:
            return skipElements(depth);
        case Tag::Dictionary:
            return skipEntries(depth);
        }
        return false;
    }

    // Skips the start of a dictionary up to the value of a key. Returns false if the key is missing.
    bool skipTo(std::string_view wanted)
    {
        const auto tag = byte();
        const auto size = tag && static_cast<Tag>(*tag) == Tag::Dictionary ? count() : std::nullopt;
        for (std::uint64_t i = 0; size && i < *size; ++i) {
            const auto key = text();
            if (!key || key == wanted)
                return key.has_value();
            if (!skip(1))
                return false;
        }
        return false;
    }

private:
    bool skipPlace()
    {
        const auto place = signedNumber();
        if (place && _part)
            _part(*place);
        return place.has_value();
    }

    bool skipElements(int depth)
    {
        const auto size = count();
        if (!size || *size > left().size())
            return false;
        for (std::uint64_t i = 0; i < *size; ++i) {
            if (!skip(depth + 1))
                return false;
        }
        return true;
    }

    bool skipEntries(int depth)
    {
        const auto size = count();
        if (!size || *size > left().size())
            return false;
        std::optional<std::string_view> last;
        for (std::uint64_t i = 0; i < *size; ++i) {
            const auto key = text();
            if (!key || (last && *key <= *last) || !skip(depth + 1))
                return false;
            last = key;
        }
        return true;
    }

    const PassPart& _part;
};

}

bool isEncodedDictionary(std::string_view bytes, const std::function<void(std::int64_t place)>& part)
{
    Skipper skipper(bytes, part);
    const bool isDictionary = bytes.size() > 1 && static_cast<Tag>(bytes[1]) == Tag::Dictionary;
    return skipper.byte() == codingVersion && isDictionary && skipper.skip(0) && skipper.isAtEnd();
}

void forEachEntry(
    std::string_view bytes, const std::function<void(std::string_view key, std::string_view encoded)>& entry)
{
    const Skipper::PassPart none;
    Skipper skipper(bytes, none);
    if (skipper.byte() != codingVersion || skipper.byte() != static_cast<std::uint8_t>(Tag::Dictionary))
        return;
    const auto size = skipper.count();
    for (std::uint64_t i = 0; size && i < *size; ++i) {
        const auto key = skipper.text();
        const auto start = skipper.left();
        if (!key || !skipper.skip(1))
            return;
        entry(*key, start.substr(0, start.size() - skipper.left().size()));
    }
}

std::optional<std::string_view> decodeString(std::string_view encoded)
{
    EncodedBytes bytes(encoded);
    return bytes.byte() == static_cast<std::uint8_t>(Tag::String) ? bytes.text() : std::nullopt;
}

std::optional<std::int64_t> decodeInteger(std::string_view encoded)
{
    EncodedBytes bytes(encoded);
    return bytes.byte() == static_cast<std::uint8_t>(Tag::Integer) ? bytes.signedNumber() : std::nullopt;
}

std::optional<Value> decodeEntry(std::string_view bytes, std::string_view key, const FindParts& find)
{
    const Skipper::PassPart none;
    Skipper skipper(bytes, none);
    if (skipper.byte() != codingVersion || !skipper.skipTo(key))
        return std::nullopt;
    const auto start = skipper.left();
    if (!skipper.skip(1))
        return std::nullopt;
    return decodePart(start.substr(0, start.size() - skipper.left().size()), find);
}

}
