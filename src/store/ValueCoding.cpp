#include "store/ValueCoding.hpp"

#include "store/EncodedBytes.hpp"

#include <bit>
#include <cstring>

namespace pagora {

namespace {

class Encoder {
public:
    explicit Encoder(const PlaceParts& place)
        : _place(place)
    {
    }

    void add(const Value& value, int depth)
    {
        if (auto* text = value.string())
            addTag(Tag::String).addText(*text);
        else if (auto* number = value.integer())
            addTag(Tag::Integer).addSigned(*number);
        else if (auto* real = value.real())
            addTag(Tag::Real).addReal(*real);
        else if (auto* flag = value.boolean())
            addTag(*flag ? Tag::True : Tag::False);
        else if (auto* date = value.date())
            addTag(Tag::Date).addReal(date->secondsSince1970);
        else if (auto* data = value.data())
            addData(*data);
        else if (const auto place = depth > 0 && _place.container ? _place.container(value) : std::nullopt)
            addTag(value.isArray() ? Tag::ArrayApart : Tag::DictionaryApart).addSigned(*place);
        else if (auto* array = value.array())
            addArray(*array, depth);
        else if (auto* dictionary = value.dictionary())
            addDictionary(*dictionary, depth);
    }

    std::string bytes { codingVersion };

private:
    Encoder& addTag(Tag tag)
    {
        bytes += static_cast<char>(tag);
        return *this;
    }

    void addCount(std::uint64_t count)
    {
        for (; count >= 0x80; count >>= 7)
            bytes += static_cast<char>((count & 0x7F) | 0x80);
        bytes += static_cast<char>(count);
    }

    void addSigned(std::int64_t number)
    {
        const auto bits = static_cast<std::uint64_t>(number);
        addCount(number < 0 ? ~(bits << 1) : bits << 1);
    }

    void addText(const std::string& text)
    {
        addCount(text.size());
        bytes += text;
    }

    void addReal(double real)
    {
        const auto bits = std::bit_cast<std::uint64_t>(real);
        for (int shift = 0; shift < 64; shift += 8)
            bytes += static_cast<char>(bits >> shift);
    }

    void addData(const Data& data)
    {
        const auto place = _place.data ? _place.data(data) : std::nullopt;
        if (place) {
            addTag(Tag::DataApart).addSigned(*place);
            addCount(data.size());
        } else
            addTag(Tag::Data).addText(data.bytes());
    }

    void addArray(const Value::Array& array, int depth)
    {
        addTag(Tag::Array);
        if (depth >= maxValueDepth)
            return addCount(0);
        addCount(array.size());
        for (const Value& element : array)
            add(element, depth + 1);
    }

    void addDictionary(const Value::Dictionary& dictionary, int depth)
    {
        addTag(Tag::Dictionary);
        if (depth >= maxValueDepth)
            return addCount(0);
        addCount(dictionary.size());
        for (const auto& [key, entry] : dictionary) {
            addText(key);
            add(entry, depth + 1);
        }
    }

    const PlaceParts& _place;
};

class Decoder : public EncodedBytes {
public:
    Decoder(std::string_view bytes, const FindParts& find)
        : EncodedBytes(bytes)
        , _find(find)
    {
    }

    std::optional<Value> value(int depth)
    {
        const auto tag = byte();
        if (!tag || depth > maxValueDepth)
            return std::nullopt;
        switch (static_cast<Tag>(*tag)) {
        case Tag::String:
            if (auto string = text())
                return Value(std::string(*string));
            return std::nullopt;
        case Tag::Integer:
            if (const auto number = signedNumber())
                return Value(*number);
            return std::nullopt;
        case Tag::Real:
            if (const auto number = real())
                return Value(*number);
            return std::nullopt;
        case Tag::False:
            return Value(false);
        case Tag::True:
            return Value(true);
        case Tag::Date:
            if (const auto seconds = real())
                return Value(Date { *seconds });
            return std::nullopt;
        case Tag::Data:
            if (auto string = text())
                return Value(Data(std::string(*string)));
            return std::nullopt;
        case Tag::DataApart:
            return dataApart();
        case Tag::Array:
            return array(depth);
        case Tag::Dictionary:
            return dictionary(depth);
        case Tag::ArrayApart:
            return containerApart(Value::Container::Array);
        case Tag::DictionaryApart:
            return containerApart(Value::Container::Dictionary);
        }
        return std::nullopt;
    }

private:
    std::optional<Value> dataApart()
    {
        const auto place = signedNumber();
        const auto size = count();
        if (!place || !size || !_find.data)
            return std::nullopt;
        if (auto data = _find.data(*place, *size))
            return Value(std::move(*data));
        return std::nullopt;
    }

    std::optional<Value> containerApart(Value::Container kind)
    {
        const auto place = signedNumber();
        return place && _find.container ? _find.container(*place, kind) : std::nullopt;
    }

    std::optional<Value> array(int depth)
    {
        const auto size = count();
        // Every element takes at least one byte, so a wrong count cannot reserve much memory.
        if (!size || *size > left().size())
            return std::nullopt;
        Value::Array array;
        array.reserve(*size);
        for (std::uint64_t i = 0; i < *size; ++i) {
            auto element = value(depth + 1);
            if (!element)
                return std::nullopt;
            array.push_back(std::move(*element));
        }
        return Value(std::move(array));
    }

    std::optional<Value> dictionary(int depth)
    {
        const auto size = count();
        if (!size || *size > left().size())
            return std::nullopt;
        Value::Dictionary dictionary;
        for (std::uint64_t i = 0; i < *size; ++i) {
            const auto key = text();
            if (!key)
                return std::nullopt;
            auto entry = value(depth + 1);
            if (!entry)
                return std::nullopt;
            dictionary.emplace_hint(dictionary.end(), *key, std::move(*entry));
        }
        if (dictionary.size() != *size)
            return std::nullopt;
        return Value(std::move(dictionary));
    }

    const FindParts& _find;
};

}

std::string encodeValue(const Value& value, const PlaceParts& place)
{
    Encoder encoder(place);
    encoder.add(value, 0);
    return std::move(encoder.bytes);
}

std::optional<Value> decodeValue(std::string_view bytes, const FindParts& find)
{
    Decoder decoder(bytes, find);
    if (decoder.byte() != codingVersion)
        return std::nullopt;
    auto value = decoder.value(0);
    if (!decoder.isAtEnd())
        return std::nullopt;
    return value;
}

std::optional<Value> decodePart(std::string_view encoded, const FindParts& find)
{
    Decoder decoder(encoded, find);
    auto value = decoder.value(1);
    if (!decoder.isAtEnd())
        return std::nullopt;
    return value;
}

std::uint64_t checksum(std::string_view bytes, std::uint64_t seed)
{
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;
    std::uint64_t sum = (seed + bytes.size()) * factor;
    const auto mix = [&](std::uint64_t word) { sum = (std::rotl(sum, 29) ^ word) * factor; };
    for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
        std::uint64_t word;
        std::memcpy(&word, bytes.data(), 8);
        mix(word);
    }
    std::uint64_t rest = 0;
    if (!bytes.empty())
        std::memcpy(&rest, bytes.data(), bytes.size());
    mix(rest);
    return sum ^ (sum >> 32);
}

}
