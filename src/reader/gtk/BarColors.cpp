#include "reader/gtk/BarColors.hpp"

#include <gdkmm/display.h>
#include <gdkmm/rgba.h>
#include <gtkmm/stylecontext.h>

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {

// The style classes of the three page colours. reader.css has a text colour for each.
constexpr const char* white = "paper-white";
constexpr const char* black = "paper-black";
constexpr const char* sepia = "paper-sepia";
constexpr const char* own = "own-paper";

constexpr Color darkText = Color::white(0.22);
constexpr Color lightText = Color::white(0.78);
// The minimum contrast of text, which some labels reduce by transparency. With less, the bars keep the theme's colours.
constexpr double minContrast = 6.5;

const char* themeOf(const Color& background)
{
    if (background.red < 0.5)
        return black;
    return background.blue < 0.95 ? sepia : white;
}

double luminance(const Color& color)
{
    const auto linear
        = [](double value) { return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

double contrast(const Color& one, const Color& other)
{
    const auto [darker, lighter] = std::minmax({ luminance(one), luminance(other) });
    return (lighter + 0.05) / (darker + 0.05);
}

std::string cssText(const Color& color)
{
    Gdk::RGBA value;
    value.set_rgba(static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue));
    return value.to_string().raw();
}

}

BarColors::BarColors(Gtk::Widget& whole)
    : _whole(whole)
{
    Gtk::StyleContext::add_provider_for_display(
        _whole.get_display(), _style, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION + 1);
}

BarColors::~BarColors()
{
    Gtk::StyleContext::remove_provider_for_display(_whole.get_display(), _style);
}

void BarColors::setTheme(const Color& background)
{
    if (_theme && *_theme != background)
        _ground.reset();
    _theme = background;
    apply();
}

void BarColors::setGround(const std::optional<Color>& ground)
{
    if (_ground == ground)
        return;
    _ground = ground;
    apply();
}

void BarColors::apply()
{
    if (!_theme)
        return;
    const char* text = themeOf(*_theme);
    bool isOwn = text == white && _ground && _ground->alpha == 1;
    if (isOwn && contrast(*_ground, darkText) < minContrast) {
        isOwn = contrast(*_ground, lightText) >= minContrast;
        text = isOwn ? black : white;
    }
    for (const auto* const name : { white, black, sepia, own })
        _whole.remove_css_class(name);
    _whole.add_css_class(text);
    if (!isOwn)
        return;
    _style->load_from_data(".own-paper, .own-paper headerbar, .own-paper .location-bar, .own-paper .nothing-to-show,"
                           ".own-paper .large-picture { background: "
        + cssText(*_ground) + "; }");
    _whole.add_css_class(own);
}

}
