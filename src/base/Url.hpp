#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// A URL, kept as its text. Only file URLs and URLs without a scheme have a path that is looked into; their texts carry
// percent escapes (UTF-8).
class Url {
public:
    // The URL that `text` spells; missing when it holds characters that a URL cannot hold (blanks, quotes, angle
    // brackets, control characters, bytes above 127, a "%" without two hexadecimal digits).
    static std::optional<Url> fromString(std::string text);
    // The file URL of an absolute path, which may hold any bytes but NUL.
    static Url file(const std::string& path);

    const std::string& text() const { return _text; }
    // In lower case; empty when there is none.
    std::string scheme() const;
    bool isFile() const { return scheme() == "file"; }
    // Without scheme, host, query and fragment, percent escapes replaced.
    std::string path() const;
    // What follows the last "/" of `path()`, trailing slashes aside.
    std::string lastPathComponent() const;
    // What follows the first "#", percent escapes replaced; missing when there is no "#".
    std::optional<std::string> fragment() const;
    Url withoutFragment() const;

    bool operator==(const Url&) const = default;

private:
    explicit Url(std::string text)
        : _text(std::move(text))
    {
    }
    std::string _text;
};

// Every byte that a URL cannot hold, and "%", becomes an escape. "#" and the other delimiters stay as they are.
std::string addingPercentEscapes(std::string_view text);
// Every "%" with two hexadecimal digits becomes that byte; missing when the outcome is not UTF-8.
std::optional<std::string> replacingPercentEscapes(std::string_view text);

}
