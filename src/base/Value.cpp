#include "base/Value.hpp"

#include <mutex>
#include <utility>

namespace pagora {

namespace {

// One lock for all values, because containers are read rarely and briefly.
std::mutex reading;

}

Value::Value(std::string text)
    : _content(std::make_shared<const Content>(std::move(text)))
{
}
Value::Value(const char* text)
    : Value(std::string(text))
{
}
Value::Value(int number)
    : Value(std::int64_t { number })
{
}
Value::Value(std::int64_t number)
    : _content(std::make_shared<const Content>(number))
{
}
Value::Value(double number)
    : _content(std::make_shared<const Content>(number))
{
}
Value::Value(bool flag)
    : _content(std::make_shared<const Content>(flag))
{
}
Value::Value(Date date)
    : _content(std::make_shared<const Content>(date))
{
}
Value::Value(Data data)
    : _content(std::make_shared<const Content>(std::move(data)))
{
}
Value::Value(Array array)
    : _content(std::make_shared<const Content>(std::move(array)))
{
}
Value::Value(Dictionary dictionary)
    : _content(std::make_shared<const Content>(std::move(dictionary)))
{
}

Value::Value(Container kind, std::shared_ptr<const Source> source)
    : _content(std::make_shared<const Content>(Kept { kind, std::move(source), nullptr }))
{
}

const Value::Content& Value::content() const
{
    const auto* kept = std::get_if<Kept>(_content.get());
    if (!kept)
        return *_content;
    const std::lock_guard lock(reading);
    if (!kept->value) {
        auto value = kept->source->read();
        const bool isArray = kept->kind == Container::Array;
        if (!value || !(isArray ? value->array() != nullptr : value->dictionary() != nullptr))
            value = isArray ? Value(Array()) : Value(Dictionary());
        kept->value = std::make_shared<const Value>(std::move(*value));
    }
    return *kept->value->_content;
}

const std::string* Value::string() const
{
    return std::get_if<std::string>(_content.get());
}

const std::int64_t* Value::integer() const
{
    return std::get_if<std::int64_t>(_content.get());
}

const double* Value::real() const
{
    return std::get_if<double>(_content.get());
}

const bool* Value::boolean() const
{
    return std::get_if<bool>(_content.get());
}

const Date* Value::date() const
{
    return std::get_if<Date>(_content.get());
}

const Data* Value::data() const
{
    return std::get_if<Data>(_content.get());
}

const Value::Array* Value::array() const
{
    return std::get_if<Array>(&content());
}

const Value::Dictionary* Value::dictionary() const
{
    return std::get_if<Dictionary>(&content());
}

bool Value::isArray() const
{
    const auto* kept = std::get_if<Kept>(_content.get());
    return kept ? kept->kind == Container::Array : std::holds_alternative<Array>(*_content);
}

bool Value::isContainer() const
{
    return isArray() || source() || std::holds_alternative<Dictionary>(*_content);
}

const Value::Source* Value::source() const
{
    const auto* kept = std::get_if<Kept>(_content.get());
    return kept ? kept->source.get() : nullptr;
}

const Value* Value::find(const std::string& key) const
{
    const Dictionary* entries = dictionary();
    if (!entries)
        return nullptr;
    const auto entry = entries->find(key);
    return entry == entries->end() ? nullptr : &entry->second;
}

bool Value::operator==(const Value& other) const
{
    return isSameAs(other) || content() == other.content();
}

}
