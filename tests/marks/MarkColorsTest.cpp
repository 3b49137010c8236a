#include "base/Resource.hpp"
#include "marks/Mark.hpp"
#include "paging/ColorThemes.hpp"

#include <array>
#include <cmath>
#include <gtest/gtest.h>

namespace pagora {

namespace {

using Channels = std::array<double, 3>;

double luminance(const Channels& color)
{
    const auto linear
        = [](double value) { return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color[0]) + 0.7152 * linear(color[1]) + 0.0722 * linear(color[2]);
}

double contrast(const Channels& first, const Channels& second)
{
    const double a = luminance(first);
    const double b = luminance(second);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

// A colour of a theme, "#abc" or "#aabbcc".
Channels themeColor(const std::string& text)
{
    Channels color {};
    const std::size_t digits = text.size() == 4 ? 1 : 2;
    for (std::size_t i = 0; i < 3; ++i) {
        const auto value = std::stoi(text.substr(1 + i * digits, digits), nullptr, 16);
        color[i] = digits == 1 ? value / 15.0 : value / 255.0;
    }
    return color;
}

// The background colour of marks in the style sheet.
Channels paint(const std::string& color, bool isDark)
{
    static const auto css = resourceBytes("/org/pagora/Pagora/marks.css").value();
    const auto rule
        = (isDark ? ":root[data-pagora-dark] " : "\n") + std::string("::highlight(pagora-mark-") + color + ")";
    const auto at = css.find("rgb(", css.find(rule));
    int red = 0;
    int green = 0;
    int blue = 0;
    EXPECT_EQ(std::sscanf(css.c_str() + at, "rgb(%d, %d, %d)", &red, &green, &blue), 3) << rule;
    return { red / 255.0, green / 255.0, blue / 255.0 };
}

}

TEST(MarkColors, LeaveTheTextOfEachThemeItsContrast)
{
    for (const std::int32_t theme : { 1, 2, 3 }) {
        const auto text = themeColor(cssColorForTheme(theme));
        const auto paper = themeColor(cssBackgroundColorForTheme(theme));
        for (const auto color : markColors) {
            const auto painted = paint(nameOf(color), luminance(paper) < 0.2);
            EXPECT_GE(contrast(text, painted), 4.5) << nameOf(color) << " in theme " << theme;
            EXPECT_GE(contrast(paper, painted), 1.03) << nameOf(color) << " in theme " << theme;
        }
    }
}

TEST(MarkColors, LeaveBlackAndWhiteTextOfFixedPagesItsContrast)
{
    const auto css = resourceBytes("/org/pagora/Pagora/fixed-page.css").value();
    for (const auto color : markColors) {
        const auto at
            = css.find("rgba(", css.find(std::string(":root ::highlight(pagora-mark-") + nameOf(color) + ")"));
        int red = 0;
        int green = 0;
        int blue = 0;
        double alpha = 0;
        ASSERT_EQ(std::sscanf(css.c_str() + at, "rgba(%d, %d, %d, %lf)", &red, &green, &blue, &alpha), 4);
        for (const double paper : { 0.0, 1.0 }) {
            Channels painted { red / 255.0, green / 255.0, blue / 255.0 };
            for (auto& channel : painted)
                channel = alpha * channel + (1 - alpha) * paper;
            const double text = 1 - paper;
            EXPECT_GE(contrast({ text, text, text }, painted), 4.5) << nameOf(color) << " on " << paper;
            EXPECT_GE(contrast({ paper, paper, paper }, painted), 1.15) << nameOf(color) << " on " << paper;
        }
    }
}

}
