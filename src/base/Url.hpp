#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pagora {

// A URL, kept as its text. Only the paths of file URLs and of URLs without a scheme are decoded; their texts contain
// percent escapes (UTF-8).
class Url {
public:
    // Parses a URL. Returns nullopt if the text contains characters that a URL cannot contain: blanks, quotes, angle
    // brackets, control characters, bytes above 127, or a "%" without two hexadecimal digits.
    static std::optional<Url> fromString(std::string text);
    // Returns the file URL of an absolute path, which may contain any bytes but NUL.
    static Url file(const std::string& path);

    const std::string& text() const { return _text; }
    // Returns the scheme in lower case; empty if there is none.
    std::string scheme() const;
    bool isFile() const { return scheme() == "file"; }
    // Returns the path with percent escapes decoded, without scheme, host, query and fragment.
    std::string path() const;
    // Returns the part after the last "/" of `path()`, ignoring trailing slashes.
    std::string lastPathComponent() const;
    // Returns the part after the first "#" with percent escapes decoded; nullopt if there is no "#".
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

// Escapes "%" and every byte that a URL cannot contain. "#" and the other delimiters stay as they are.
std::string addingPercentEscapes(std::string_view text);
// Decodes every "%" with two hexadecimal digits. Returns nullopt if the result is not UTF-8.
std::optional<std::string> replacingPercentEscapes(std::string_view text);

}
