#include "paging/ColorThemes.hpp"

namespace pagora {

namespace {

struct Theme {
    std::int32_t number;
    const char* text;
    const char* background;
    Color native;
};

constexpr Theme themes[] = {
    { 1, "#000", "#FFF", Color::white(1) },
    { 2, "#FFF", "#000", Color::white(0) },
    { 3, "#5F4B32", "#FBF0D9", { 0.98, 0.94, 0.85, 1 } },
};

const Theme& themeOr(std::int32_t number, const Theme& fallback)
{
    for (const auto& theme : themes) {
        if (theme.number == number)
            return theme;
    }
    return fallback;
}

}

const char* cssColorForTheme(std::int32_t theme)
{
    return themeOr(theme, themes[2]).text;
}

const char* cssBackgroundColorForTheme(std::int32_t theme)
{
    return themeOr(theme, themes[2]).background;
}

Color backgroundColorForTheme(std::int32_t theme)
{
    return themeOr(theme, themes[0]).native;
}

}
