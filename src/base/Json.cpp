#include "base/Json.hpp"

#include <glib.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <utility>

namespace pagora {

namespace {

class Writer {
public:
    void add(const Value& value)
    {
        if (auto* string = value.string())
            addString(*string);
        else if (auto* number = value.integer())
            text += std::to_string(*number);
        else if (auto* real = value.real())
            addReal(*real);
        else if (auto* flag = value.boolean())
            text += *flag ? "true" : "false";
        else if (auto* date = value.date()) {
            text += "{\"date\": ";
            addReal(date->secondsSince1970);
            text += '}';
        } else if (auto* data = value.data())
            addData(data->bytes());
        else if (auto* array = value.array())
            addAll('[', *array, ']', [this](const Value& element) { add(element); });
        else if (auto* dictionary = value.dictionary())
            addAll('{', *dictionary, '}', [this](const auto& entry) {
                addString(entry.first);
                text += ": ";
                add(entry.second);
            });
    }

    std::string text;

private:
    template <typename Container, typename AddOne>
    void addAll(char open, const Container& container, char close, AddOne addOne)
    {
        text += open;
        ++_level;
        bool first = true;
        for (const auto& item : container) {
            if (!std::exchange(first, false))
                text += ',';
            addLineBreak();
            addOne(item);
        }
        --_level;
        if (!first)
            addLineBreak();
        text += close;
    }

    void addLineBreak()
    {
        text += '\n';
        text.append(2 * _level, ' ');
    }

    void addReal(double real)
    {
        if (!std::isfinite(real)) {
            text += "null";
            return;
        }
        char buffer[32];
        const std::string digits(buffer, std::to_chars(buffer, buffer + sizeof buffer, real).ptr);
        text += digits;
        if (digits.find_first_of(".e") == std::string::npos)
            text += ".0";
    }

    void addData(const std::string& bytes)
    {
        char* encoded = g_base64_encode(reinterpret_cast<const guchar*>(bytes.data()), bytes.size());
        text += std::string("{\"data\": \"") + encoded + "\"}";
        g_free(encoded);
    }

    void addString(const std::string& string)
    {
        text += '"';
        for (std::size_t start = 0; start <= string.size();) {
            const std::size_t end = std::min(string.find('\0', start), string.size());
            addPiece(string.data() + start, end - start);
            if (end < string.size())
                addCharacter('\0');
            start = end + 1;
        }
        text += '"';
    }

    void addPiece(const char* bytes, std::size_t size)
    {
        char* valid = g_utf8_make_valid(bytes, static_cast<gssize>(size));
        for (const char* next = valid; *next; ++next)
            addCharacter(*next);
        g_free(valid);
    }

    void addCharacter(char character)
    {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\')
            text += '\\';
        if (byte >= 0x20 && byte != 0x7F) {
            text += character;
            return;
        }
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04X", byte);
        text += escape;
    }

    std::size_t _level = 0;
};

}

std::string jsonText(const Value& value)
{
    Writer writer;
    writer.add(value);
    return std::move(writer.text);
}

}
