#include "find/TextElements.hpp"

#include <algorithm>
#include <array>

namespace pagora {

namespace {

constexpr std::array<std::string_view, 11> leftOut
    = { "annotation", "desc", "head", "metadata", "noscript", "rp", "rt", "script", "style", "template", "title" };
constexpr std::array<std::string_view, 43> blocks = { "address", "article", "aside", "blockquote", "caption", "center",
    "col", "dd", "details", "dialog", "dir", "div", "dl", "dt", "fieldset", "figcaption", "figure", "footer", "form",
    "h1", "h2", "h3", "h4", "h5", "h6", "header", "hgroup", "hr", "legend", "li", "main", "menu", "nav", "ol", "p",
    "pre", "section", "summary", "table", "tbody", "td", "th", "tr" };

static_assert(std::is_sorted(leftOut.begin(), leftOut.end()) && std::is_sorted(blocks.begin(), blocks.end()));

}

bool isLeftOut(std::string_view name)
{
    return std::binary_search(leftOut.begin(), leftOut.end(), name);
}

bool isBlock(std::string_view name)
{
    return std::binary_search(blocks.begin(), blocks.end(), name);
}

}
