#include "paging/PageScripts.hpp"

#include "page/WebView.hpp"

#include <algorithm>
#include <cctype>

namespace pagora::scripts {

namespace {

constexpr const char* forEachImage
    = "var images = document.getElementsByTagName('img');for (var i = 0; i < images.length; i++) {";

std::string points(std::int32_t number)
{
    return std::to_string(number) + "px";
}

std::string columnWidth(std::int32_t pageWidth)
{
    return "document.body.style.webkitColumnWidth = '" + points(pageWidth) + "';";
}

std::string bodyHeight(std::int32_t height)
{
    return "document.body.style.height = '" + points(height) + "';";
}

// Returns whether a font family can be written without quotes in a style sheet. Its words must not begin with a digit.
bool isPlainName(const std::string& family)
{
    return !family.empty() && std::isalpha(static_cast<unsigned char>(family.front()))
        && std::all_of(
            family.begin(), family.end(), [](unsigned char c) { return std::isalnum(c) || c == ' ' || c == '-'; });
}

bool hasWordOfDigits(const std::string& family)
{
    const auto startsOne = [](unsigned char space, unsigned char c) { return space == ' ' && !std::isalpha(c); };
    return std::adjacent_find(family.begin(), family.end(), startsOne) != family.end();
}

}

std::string scrollTo(std::int64_t offset)
{
    return "window.scrollTo(" + std::to_string(offset) + ", 0);";
}

std::string setHash(const std::string& anchor)
{
    // The text is enclosed in double quotes.
    std::string text;
    for (const char character : scriptText(anchor))
        text += character == '"' ? std::string("\\x22") : std::string(1, character);
    return "window.location.hash = \"#" + text + "\";";
}

std::string offsetTopOf(const std::string& elementId)
{
    return "document.getElementById('" + scriptText(elementId) + "').offsetTop;";
}

std::string columns(std::int32_t count, std::int32_t pageWidth)
{
    if (count < 2)
        return columnWidth(pageWidth);
    return "document.body.style.webkitColumnWidth = 'auto';document.body.style.webkitColumnCount = '"
        + std::to_string(count) + "';";
}

std::string textFont(const std::string& family)
{
    return "document.body.style.fontFamily = '" + scriptText(family) + "';";
}

std::string colors(const char* text, const char* background)
{
    return std::string("var all = document.all;for (var i = 0; i < all.length; i++) {all[i].style.background = "
                       "'none';all[i].style.color = '")
        + text + "'; }document.body.style.backgroundColor = '" + background + "';document.body.style.color = '" + text
        + "';";
}

std::string layout(const Layout& layout)
{
    std::string script;
    if (layout.text)
        script += colors(layout.text, layout.background);
    script += "document.body.style.webkitColumnGap = '40px';";
    script += "document.body.style.margin = '0px';";
    script += "document.body.style.padding = '40px 20px';";
    script += textFont(layout.font);
    script += "document.body.style.overflow = 'hidden';";
    script += bodyHeight(layout.columnHeight);
    script += forEachImage;
    script += "images[i].style.float = 'left';images[i].style.height = 'auto';images[i].style.maxWidth = '"
        + points(layout.pageWidth) + "';images[i].style.maxHeight = '" + points(layout.imageHeight) + "'; }";
    return script;
}

std::string styleSheet(const Layout& layout, std::int32_t columns)
{
    std::string sheet;
    std::string body
        = "column-gap:40px!important;margin:0!important;padding:40px 20px!important;overflow:hidden!important;";
    if (columns < 2)
        body += "column-width:" + points(layout.pageWidth) + "!important;column-count:auto!important;";
    else
        body += "column-width:auto!important;column-count:" + std::to_string(columns) + "!important;";
    body += "height:" + points(layout.columnHeight) + "!important;";
    if (isPlainName(layout.font)) {
        const std::string quote = hasWordOfDigits(layout.font) ? "\"" : "";
        body += "font-family:" + quote + layout.font + quote + "!important;";
    }
    if (layout.text) {
        const auto text = std::string("color:") + layout.text + "!important;";
        sheet += "*{background:none!important;" + text + "}";
        body += text + "background-color:" + layout.background + "!important;";
    }
    sheet += "body{" + body + "}";
    sheet += "img{float:left!important;height:auto!important;max-width:min(" + points(layout.pageWidth)
        + ",100%)!important;max-height:" + points(layout.imageHeight) + "!important}";
    return sheet;
}

std::string imageWidth(std::int32_t pageWidth)
{
    return forEachImage + ("images[i].style.maxWidth = '" + points(pageWidth) + "'; }");
}

std::string relayout(std::int32_t columns, std::int32_t pageWidth, std::int32_t columnHeight, std::int32_t imageHeight)
{
    std::string script;
    if (columns == 1)
        script += columnWidth(pageWidth);
    script += bodyHeight(columnHeight);
    script += forEachImage;
    script += "images[i].style.float = 'left';images[i].style.maxWidth = '" + points(pageWidth)
        + "';images[i].style.maxHeight = '" + points(imageHeight) + "'; }";
    return script;
}

}
