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

    // The stored elements of an array or dictionary, read on first use.
    class Source {
    public:
        virtual ~Source() = default;
        // Returns nullopt if the elements cannot be read. Thread-safe.
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

    // Returns the content; null if the value has another type.
    const std::string* string() const;
    const std::int64_t* integer() const;
    const double* real() const;
    const bool* boolean() const;
    const Date* date() const;
    const Data* data() const;
    const Array* array() const;
    const Dictionary* dictionary() const;

    // Type checks that do not read the elements.
    bool isArray() const;
    bool isContainer() const;
    // Returns the source of the elements; null for a value that was created in memory.
    const Source* source() const;

    // Returns the dictionary's value for `key`; null if there is none or if this value is not a dictionary.
    const Value* find(const std::string& key) const;

    // Returns whether both are copies of the same value. Does not compare contents.
    bool isSameAs(const Value& other) const { return _content == other._content; }
    bool operator==(const Value& other) const;

    // Address of the shared content: equal for copies of one value, different for other live values.
    const void* identity() const { return _content.get(); }

private:
    struct Kept {
        bool operator==(const Kept& other) const { return source == other.source; }
        Container kind;
        std::shared_ptr<const Source> source;
        // Null until the elements are read.
        mutable std::shared_ptr<const Value> value;
    };
    using Content = std::variant<std::string, std::int64_t, double, bool, Date, Data, Array, Dictionary, Kept>;

    // Returns the content; reads the elements if needed.
    const Content& content() const;

    std::shared_ptr<const Content> _content;
};

}
