#include "covers/gtk/DrawnCover.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <pango/pangocairo.h>

namespace pagora {

namespace {

// Proportions measured on printed books, in points of a cover that is 106 points wide.
constexpr double usualWidth = 106;
constexpr double spine = 7;
constexpr double margin = 10;
constexpr double titleTop = 18;
constexpr double titleHeight = 82;
constexpr double ruleLength = 22;
constexpr std::array titleSizes { 15.5, 14.0, 12.5, 11.0, 9.5 };
constexpr double authorSize = 8.5;
constexpr int authorLines = 2;

constexpr const char* face = "Georgia, serif";

using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;
using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Layout = std::unique_ptr<PangoLayout, decltype(&g_object_unref)>;

std::uint32_t hashOf(const std::string& title, const std::string& author)
{
    // FNV-1a gives the same colour on every computer. Its result is mixed, so that similar texts give different
    // colours.
    std::uint32_t hash = 2'166'136'261U;
    for (const char byte : title + '\n' + author)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 16'777'619U;
    hash = (hash ^ hash >> 16) * 0x85EBCA6BU;
    hash = (hash ^ hash >> 13) * 0xC2B2AE35U;
    return hash ^ hash >> 16;
}

// Converts a linear colour component to sRGB.
double gamma(double part)
{
    part = std::clamp(part, 0.0, 1.0);
    return part <= 0.0031308 ? 12.92 * part : 1.055 * std::pow(part, 1 / 2.4) - 0.055;
}

Layout makeLayout(cairo_t* context, const std::string& text, double size, PangoWeight weight, double width)
{
    Layout layout(pango_cairo_create_layout(context), &g_object_unref);
    pango_cairo_context_set_resolution(pango_layout_get_context(layout.get()), 72);
    PangoFontDescription* const font = pango_font_description_new();
    pango_font_description_set_family(font, face);
    pango_font_description_set_weight(font, weight);
    pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    pango_layout_set_width(layout.get(), static_cast<int>(width * PANGO_SCALE));
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD);
    return layout;
}

double heightOf(PangoLayout* layout)
{
    PangoRectangle extents;
    pango_layout_get_extents(layout, nullptr, &extents);
    return static_cast<double>(extents.height) / PANGO_SCALE;
}

bool fits(PangoLayout* layout, double width, double height)
{
    PangoRectangle extents;
    pango_layout_get_extents(layout, nullptr, &extents);
    return extents.width <= width * PANGO_SCALE && extents.height <= height * PANGO_SCALE;
}

// Lays out the title in the largest font size that fits. The smallest size breaks words and truncates the text.
Layout titleLayout(cairo_t* context, const std::string& title, double width)
{
    for (const double size : titleSizes) {
        auto layout = makeLayout(context, title, size, PANGO_WEIGHT_BOLD, width);
        if (fits(layout.get(), width, titleHeight))
            return layout;
    }
    auto layout = makeLayout(context, title, titleSizes.back(), PANGO_WEIGHT_BOLD, width);
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_height(layout.get(), static_cast<int>(titleHeight * PANGO_SCALE));
    pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
    return layout;
}

Layout authorLayout(cairo_t* context, const std::string& author, double width)
{
    auto layout = makeLayout(context, author, authorSize, PANGO_WEIGHT_NORMAL, width);
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_height(layout.get(), -authorLines);
    pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
    return layout;
}

// The side of the spine. Books that are written from right to left are bound on the right.
enum class Binding : bool { Left, Right };

Binding bindingOf(cairo_t* context, const std::string& title)
{
    const auto layout = makeLayout(context, title, titleSizes.front(), PANGO_WEIGHT_BOLD, usualWidth);
    return pango_layout_get_direction(layout.get(), 0) == PANGO_DIRECTION_RTL ? Binding::Right : Binding::Left;
}

void drawBoard(cairo_t* context, const std::array<double, 3>& color, Binding binding, double height)
{
    cairo_set_source_rgb(context, color[0], color[1], color[2]);
    cairo_paint(context);
    // The board is lit from above; the joint of the spine is dark.
    const std::unique_ptr<cairo_pattern_t, decltype(&cairo_pattern_destroy)> light(
        cairo_pattern_create_linear(0, 0, 0, height), &cairo_pattern_destroy);
    cairo_pattern_add_color_stop_rgba(light.get(), 0, 1, 1, 1, 0.07);
    cairo_pattern_add_color_stop_rgba(light.get(), 0.5, 1, 1, 1, 0);
    cairo_pattern_add_color_stop_rgba(light.get(), 1, 0, 0, 0, 0.1);
    cairo_set_source(context, light.get());
    cairo_paint(context);
    cairo_set_source_rgba(context, 0, 0, 0, 0.16);
    cairo_rectangle(context, binding == Binding::Left ? 0 : usualWidth - spine, 0, spine, height);
    cairo_fill(context);
    cairo_set_source_rgba(context, 1, 1, 1, 0.12);
    cairo_rectangle(context, binding == Binding::Left ? spine : usualWidth - spine - 1, 0, 1, height);
    cairo_fill(context);
}

void drawTexts(cairo_t* context, const std::string& title, const std::string& author, Binding binding, double height)
{
    const double left = binding == Binding::Left ? spine + margin : margin;
    const double room = usualWidth - spine - 2 * margin;
    const auto [red, green, blue] = boardLetters;
    cairo_set_source_rgb(context, red, green, blue);
    const auto titled = titleLayout(context, title, room);
    cairo_move_to(context, left, titleTop);
    pango_cairo_show_layout(context, titled.get());
    if (author.empty())
        return;
    const auto written = authorLayout(context, author, room);
    const double top = height - margin - heightOf(written.get());
    cairo_move_to(context, left, top);
    pango_cairo_show_layout(context, written.get());
    cairo_set_source_rgba(context, red, green, blue, 0.55);
    cairo_rectangle(
        context, binding == Binding::Left ? left : left + room - ruleLength, std::floor(top - 7), ruleLength, 1);
    cairo_fill(context);
}

Image imageOf(cairo_surface_t* surface)
{
    const int width = cairo_image_surface_get_width(surface);
    const int height = cairo_image_surface_get_height(surface);
    const std::shared_ptr<GdkPixbuf> pixbuf(
        gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, width, height), &g_object_unref);
    cairo_surface_flush(surface);
    const auto* const from = cairo_image_surface_get_data(surface);
    auto* const to = gdk_pixbuf_get_pixels(pixbuf.get());
    const int fromStride = cairo_image_surface_get_stride(surface);
    const int toStride = gdk_pixbuf_get_rowstride(pixbuf.get());
    for (int y = 0; y < height; ++y) {
        const auto* const row
            = reinterpret_cast<const std::uint32_t*>(from + static_cast<std::ptrdiff_t>(y) * fromStride);
        auto* pixel = to + static_cast<std::ptrdiff_t>(y) * toStride;
        for (int x = 0; x < width; ++x) {
            *pixel++ = static_cast<guchar>(row[x] >> 16);
            *pixel++ = static_cast<guchar>(row[x] >> 8);
            *pixel++ = static_cast<guchar>(row[x]);
        }
    }
    return { pixbuf, Size { static_cast<double>(width), static_cast<double>(height) } };
}

}

std::array<double, 3> boardColor(const std::string& title, const std::string& author)
{
    // The colour is defined in OKLCH, whose lightness is perceptual.
    constexpr double chroma = 0.075;
    const auto hash = hashOf(title, author);
    const double hue = (hash % 360) * std::numbers::pi / 180;
    const double lightness = 0.38 + 0.07 * (hash / 360 % 3) / 2;
    const double a = chroma * std::cos(hue);
    const double b = chroma * std::sin(hue);
    const double l = std::pow(lightness + 0.3963377774 * a + 0.2158037573 * b, 3);
    const double m = std::pow(lightness - 0.1055613458 * a - 0.0638541728 * b, 3);
    const double s = std::pow(lightness - 0.0894841775 * a - 1.2914855480 * b, 3);
    return { gamma(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s),
        gamma(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s),
        gamma(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s) };
}

Image drawnCover(const std::string& title, const std::string& author, Size size, int pixelsInPoint)
{
    const double scale = size.width / usualWidth;
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(size.width * pixelsInPoint),
                              static_cast<int>(size.height * pixelsInPoint)),
        &cairo_surface_destroy);
    cairo_surface_set_device_scale(surface.get(), scale * pixelsInPoint, scale * pixelsInPoint);
    const Context context(cairo_create(surface.get()), &cairo_destroy);
    const double height = size.height / scale;
    const auto binding = bindingOf(context.get(), title);
    drawBoard(context.get(), boardColor(title, author), binding, height);
    drawTexts(context.get(), title, author, binding, height);
    return imageOf(surface.get());
}

}
