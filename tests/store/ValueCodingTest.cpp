#include "store/ValueCoding.hpp"

#include <gtest/gtest.h>
#include <limits>

using namespace pagora;

namespace {

// Returns a dictionary of every kind of value, with a cover and a list that are stored elsewhere.
Value bookWithParts()
{
    return Value::Dictionary { { "CoverImage", Data("large") }, { "Files", Value::Array { "a", "b" } },
        { "LastInd", 3 }, { "LastPlace", 0.5 }, { "Seen", true }, { "Title", "Sea" },
        { "Tree", Value::Dictionary { { "small", Data("s") }, { "when", Date { 1 } } } } };
}

PlaceParts placesOfParts()
{
    return { [](const Data& data) { return data.size() > 1 ? std::optional<std::int64_t>(7) : std::nullopt; },
        [](const Value& container) { return container.isArray() ? std::optional<std::int64_t>(12) : std::nullopt; } };
}

Value everyKind()
{
    return Value::Dictionary {
        { "text", std::string("with \0 inside", 13) },
        { "least", std::numeric_limits<std::int64_t>::min() },
        { "greatest", std::numeric_limits<std::int64_t>::max() },
        { "real", 0.1 },
        { "flags", Value::Array { true, false } },
        { "date", Date { -1.5 } },
        { "data", Data(std::string(300, 'x')) },
        { "empty", Value::Dictionary {} },
    };
}

Value nested(int depth)
{
    Value value(Value::Array {});
    for (int i = 0; i < depth; ++i)
        value = Value::Array { value };
    return value;
}

}

TEST(ValueCoding, EveryKindComesBack)
{
    EXPECT_EQ(decodeValue(encodeValue(everyKind())), everyKind());
}

TEST(ValueCoding, EveryShorteningIsMalformed)
{
    const std::string bytes = encodeValue(everyKind());
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_EQ(decodeValue(bytes.substr(0, length)), std::nullopt) << length;
}

TEST(ValueCoding, MoreThanOneValueIsMalformed)
{
    EXPECT_EQ(decodeValue(encodeValue(Value(1)) + '\0'), std::nullopt);
}

TEST(ValueCoding, AnotherVersionIsMalformed)
{
    std::string bytes = encodeValue(Value(1));
    bytes[0] = 2;
    EXPECT_EQ(decodeValue(bytes), std::nullopt);
}

TEST(ValueCoding, AFalseCountIsMalformed)
{
    // The bytes declare an array of 2^63 elements.
    EXPECT_EQ(decodeValue("\x01\x09\x80\x80\x80\x80\x80\x80\x80\x80\x80\x01"), std::nullopt);
}

TEST(ValueCoding, NestingPastTheBoundIsMalformed)
{
    std::string bytes("\x01", 1);
    for (int i = 0; i < 100'000; ++i)
        bytes += std::string("\x09\x01", 2);
    EXPECT_EQ(decodeValue(bytes), std::nullopt);
}

TEST(ValueCoding, NestingPastTheBoundIsStoredEmpty)
{
    const auto value = decodeValue(encodeValue(nested(1000)));
    EXPECT_EQ(value, nested(maxValueDepth));
}

TEST(ValueCoding, PlacedDataAreFoundByTheirPlace)
{
    const Value value(Value::Array { Data("large"), Data("s") });
    const std::string bytes = encodeValue(value,
        { [](const Data& data) { return data.size() > 1 ? std::optional<std::int64_t>(-7) : std::nullopt; }, {} });
    EXPECT_EQ(bytes.find("large"), std::string::npos);
    const auto decoded = decodeValue(bytes,
        { [](std::int64_t place, std::size_t size) {
             return place == -7 && size == 5 ? std::optional(Data("large")) : std::nullopt;
         },
            {} });
    EXPECT_EQ(decoded, value);
}

TEST(ValueCoding, PlacedDataWithoutPlacesAreMalformed)
{
    const std::string bytes
        = encodeValue(Data("a"), { [](const Data&) { return std::optional<std::int64_t>(1); }, {} });
    EXPECT_EQ(decodeValue(bytes), std::nullopt);
}

TEST(ValueCoding, PlacedContainersAreFoundByTheirPlaceAndKind)
{
    const Value list(Value::Array { 1, 2 });
    const Value value(Value::Dictionary { { "files", list }, { "title", "Sea" } });
    const std::string bytes
        = encodeValue(value, { {}, [&](const Value& container) -> std::optional<std::int64_t> {
                                  return container.isSameAs(list) ? std::optional<std::int64_t>(12) : std::nullopt;
                              } });
    std::vector<Value::Container> kinds;
    const auto decoded = decodeValue(bytes, { {}, [&](std::int64_t place, Value::Container kind) {
                                                 kinds.push_back(kind);
                                                 return place == 12 ? std::optional(list) : std::nullopt;
                                             } });
    EXPECT_EQ(decoded, value);
    EXPECT_EQ(kinds, std::vector { Value::Container::Array });
    EXPECT_EQ(decodeValue(bytes), std::nullopt);
}

TEST(ValueCoding, ADictionaryIsRecognisedWithThePlacesOfItsParts)
{
    const std::string bytes = encodeValue(bookWithParts(), placesOfParts());
    std::vector<std::int64_t> places;
    EXPECT_TRUE(isEncodedDictionary(bytes, [&](std::int64_t place) { places.push_back(place); }));
    EXPECT_EQ(places, (std::vector<std::int64_t> { 7, 12 }));
    EXPECT_FALSE(isEncodedDictionary(encodeValue(Value::Array { 1 }), {}));
    EXPECT_FALSE(isEncodedDictionary(encodeValue("text"), {}));
    EXPECT_FALSE(isEncodedDictionary("", {}));
}

TEST(ValueCoding, EveryDictionaryThatIsRecognisedCanBeDecoded)
{
    const FindParts find { [](std::int64_t, std::size_t) { return Data("part"); },
        [](std::int64_t, Value::Container) { return Value(Value::Array {}); } };
    const std::string whole = encodeValue(bookWithParts(), placesOfParts());
    int recognised = 0;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        for (std::size_t bit = 0; bit < 8 * length; ++bit) {
            auto bytes = whole.substr(0, length);
            bytes[bit / 8] ^= static_cast<char>(1 << bit % 8);
            if (!isEncodedDictionary(bytes, {}))
                continue;
            ++recognised;
            EXPECT_TRUE(decodeValue(bytes, find).has_value()) << "length " << length << ", bit " << bit;
        }
    }
    EXPECT_GT(recognised, 0);
}

TEST(ValueCoding, AnEntryIsDecodedWithoutTheOthers)
{
    const std::string bytes = encodeValue(bookWithParts(), placesOfParts());
    EXPECT_EQ(decodeEntry(bytes, "LastInd", {}), Value(3));
    EXPECT_EQ(decodeEntry(bytes, "Title", {}), Value("Sea"));
    EXPECT_EQ(decodeEntry(bytes, "Isbn", {}), std::nullopt);
    EXPECT_EQ(decodeEntry(encodeValue(Value::Array { "Title" }), "Title", {}), std::nullopt);
}

TEST(ValueCoding, PassesTheEntriesOfADictionaryOneByOne)
{
    const Value::Dictionary dictionary { { "LastInd", 3 }, { "Spine", Value::Array { "a", "b" } }, { "Title", "Sea" } };
    Value::Dictionary passed;
    forEachEntry(encodeValue(dictionary), [&](std::string_view key, std::string_view encoded) {
        passed.emplace(key, decodePart(encoded, {}).value());
        EXPECT_EQ(decodeString(encoded).has_value(), key == "Title");
        EXPECT_EQ(decodeInteger(encoded).has_value(), key == "LastInd");
    });
    EXPECT_EQ(passed, dictionary);
    forEachEntry(encodeValue("text"), [](std::string_view, std::string_view) { FAIL(); });
}

TEST(ValueCoding, TheChecksumSeesEveryFlippedBitAndTheSeed)
{
    std::string bytes = "nineteen characters";
    const auto sum = checksum(bytes, 1);
    EXPECT_NE(checksum(bytes, 2), sum);
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
        bytes[bit / 8] ^= static_cast<char>(1 << bit % 8);
        EXPECT_NE(checksum(bytes, 1), sum);
        bytes[bit / 8] ^= static_cast<char>(1 << bit % 8);
    }
}

TEST(ValueCoding, SumOfNoBytesNeedsNoAddress)
{
    EXPECT_EQ(checksum(std::string_view(), 7), checksum(std::string_view("", 0), 7));
    EXPECT_NE(checksum(std::string_view(), 7), checksum(std::string_view(), 8));
}
