#include "platform/Value.hpp"

#include <utility>

namespace pagora {

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
    return std::get_if<Array>(_content.get());
}

const Value::Dictionary* Value::dictionary() const
{
    return std::get_if<Dictionary>(_content.get());
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
    return isSameAs(other) || *_content == *other._content;
}

}
