#include "page/WebView.hpp"

#include "base/Numbers.hpp"

#include <cstdio>

namespace pagora {

Task<std::int64_t> evaluateInteger(WebView& webView, std::string script)
{
    const std::string result = co_await webView.evaluateScript(script);
    co_return integerValue(result);
}

Task<void> evaluate(WebView& webView, std::string script)
{
    co_await webView.evaluateScript(script);
}

std::optional<PointedLink> pointedLinkFrom(std::istream& words)
{
    std::string input;
    Rect place;
    std::string uri;
    words >> input >> place.x >> place.y >> place.width >> place.height >> uri;
    const auto url = Url::fromString(uri);
    if (!words || !url)
        return std::nullopt;
    using Input = PointedLink::Input;
    return PointedLink { *url, place, input == "key" ? Input::Key : input == "touch" ? Input::Touch : Input::Pointer };
}

std::optional<PressedMark> pressedMarkFrom(std::istream& words)
{
    PressedMark mark;
    auto& place = mark.place;
    words >> mark.number >> place.x >> place.y >> place.width >> place.height;
    return words ? std::optional(mark) : std::nullopt;
}

std::string scriptText(const std::string& text)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        // U+2028 and U+2029 are line terminators in scripts.
        if (byte == 0xE2 && text.compare(i, 2, "\xE2\x80") == 0 && i + 2 < text.size()
            && (text[i + 2] == '\xA8' || text[i + 2] == '\xA9')) {
            escaped += text[i + 2] == '\xA8' ? "\\u2028" : "\\u2029";
            i += 2;
        } else if (byte == '\'' || byte == '\\' || byte < 0x20 || byte == 0x7F) {
            char buffer[8];
            std::snprintf(buffer, sizeof buffer, "\\x%02X", byte);
            escaped += buffer;
        } else
            escaped += text[i];
    }
    return escaped;
}

}
