#pragma once

#include "base/Data.hpp"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace pagora {

// A point in time, in seconds since 1970-01-01 00:00 UTC.
struct Date {
    double secondsSince1970 = 0;
    bool operator==(const Date&) const = default;
};

// A property-list value: a string, integer, real number, boolean, date, bytes, array or dictionary. Immutable; copies
// share the content, so copying is cheap and safe on any thread.
class Value {
public:
    using Array = std::vector<Value>;
    using Dictionary = std::map<std::string, Value>;

    // Reads the elements of an array or dictionary on first use.
    class Source {
    public:
        virtual ~Source() = default;
        // Missing when the elements cannot be read. Thread safe.
        virtual std::optional<Value> read() const = 0;
    };
    enum class Container : bool { Array, Dictionary };

    Value(std::string text);
    Value(const char* text);
    Value(int number);
    Value(std::int64_t number);
    Value(double number);
    Value(bool flag);
    Value(Date date);
    Value(Data data);
    Value(Array array);
    Value(Dictionary dictionary);
    // A container whose elements are read on first use; empty when reading fails.
    Value(Container kind, std::shared_ptr<const Source> source);

    // The content, or null when the value is of another kind.
    const std::string* string() const;
    const std::int64_t* integer() const;
    const double* real() const;
    const bool* boolean() const;
    const Date* date() const;
    const Data* data() const;
    const Array* array() const;
    const Dictionary* dictionary() const;

    // The same without reading the elements.
    bool isArray() const;
    bool isContainer() const;
    // Where the elements are read from; null for a value that was made in memory.
    const Source* source() const;

    // The entry of a dictionary; null when there is none or the value is no dictionary.
    const Value* find(const std::string& key) const;

    // Whether both are copies of the same value. Does not compare contents.
    bool isSameAs(const Value& other) const { return _content == other._content; }
    bool operator==(const Value& other) const;

    // Address of the shared content: equal for copies of one value, different for other live values.
    const void* identity() const { return _content.get(); }

private:
    struct Kept {
        bool operator==(const Kept& other) const { return source == other.source; }
        Container kind;
        std::shared_ptr<const Source> source;
        // Null until it is read.
        mutable std::shared_ptr<const Value> value;
    };
    using Content = std::variant<std::string, std::int64_t, double, bool, Date, Data, Array, Dictionary, Kept>;

    // The content, with its elements read.
    const Content& content() const;

    std::shared_ptr<const Content> _content;
};

}
