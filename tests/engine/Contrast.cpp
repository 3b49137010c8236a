#include "tests/engine/Contrast.hpp"

#include <gtkmm/label.h>
#include <gtkmm/text.h>
#include <gtkmm/textview.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>

namespace pagora::test {

namespace {

constexpr int scale = 4;
// The minimum number of pixels of a colour that is considered. Excludes the antialiased edges of letters.
constexpr int minPixels = 12;

double luminance(std::uint32_t pixel)
{
    const auto linear = [](std::uint32_t channel) {
        const double value = static_cast<double>(channel & 0xFF) / 255;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(pixel >> 16) + 0.7152 * linear(pixel >> 8) + 0.0722 * linear(pixel);
}

double contrastOf(std::uint32_t one, std::uint32_t other)
{
    const auto [darker, lighter] = std::minmax({ luminance(one), luminance(other) });
    return (lighter + 0.05) / (darker + 0.05);
}

Cairo::RefPtr<Cairo::ImageSurface> pictureOf(Gtk::Widget& widget)
{
    const int width = widget.get_width();
    const int height = widget.get_height();
    auto picture = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, width * scale, height * scale);
    g_autoptr(GdkPaintable) paintable = gtk_widget_paintable_new(widget.gobj());
    GtkSnapshot* snapshot = gtk_snapshot_new();
    gtk_snapshot_scale(snapshot, scale, scale);
    gdk_paintable_snapshot(paintable, snapshot, width, height);
    if (GskRenderNode* node = gtk_snapshot_free_to_node(snapshot)) {
        const auto context = Cairo::Context::create(picture);
        gsk_render_node_draw(node, context->cobj());
        gsk_render_node_unref(node);
    }
    picture->flush();
    return picture;
}

// Returns the text that the widget itself draws; empty if there is none.
std::string textOf(Gtk::Widget& widget)
{
    if (auto* const label = dynamic_cast<Gtk::Label*>(&widget))
        return label->get_text();
    if (auto* const entry = dynamic_cast<Gtk::Text*>(&widget))
        return entry->get_text();
    if (auto* const view = dynamic_cast<Gtk::TextView*>(&widget))
        return view->get_buffer()->get_text();
    return widget.has_css_class("contents-row") ? "an entry of the contents" : "";
}

// Returns the visible part of the widget, in coordinates of the window; empty if it is clipped or transparent.
Gdk::Rectangle placeIn(Gtk::Widget& window, Gtk::Widget& widget)
{
    graphene_rect_t bounds;
    if (widget.get_opacity() == 0)
        return {};
    // The bounds of a widget include its padding; its width does not.
    for (auto* around = widget.get_parent(); around; around = around->get_parent()) {
        if (around->get_opacity() == 0 || !gtk_widget_compute_bounds(widget.gobj(), around->gobj(), &bounds))
            return {};
        const bool isWithin = bounds.origin.x >= -1 && bounds.origin.y >= -1
            && bounds.origin.x + bounds.size.width <= static_cast<float>(around->get_width()) + 1
            && bounds.origin.y + bounds.size.height <= static_cast<float>(around->get_height()) + 1;
        if (!isWithin)
            return {};
        if (around == &window)
            break;
    }
    return { static_cast<int>(bounds.origin.x), static_cast<int>(bounds.origin.y), static_cast<int>(bounds.size.width),
        static_cast<int>(bounds.size.height) };
}

void measure(Gtk::Widget& window, Gtk::Widget& widget, const Cairo::RefPtr<Cairo::ImageSurface>& picture,
    std::vector<SeenText>& texts)
{
    if (!widget.get_mapped() || !widget.is_sensitive())
        return;
    const auto text = textOf(widget);
    const auto place = text.empty() ? Gdk::Rectangle() : placeIn(window, widget);
    if (place.get_width() > 0 && place.get_height() > 0) {
        texts.push_back({ text,
            contrastWithin(picture, place.get_x() * scale, place.get_y() * scale, place.get_width() * scale,
                place.get_height() * scale) });
    }
    for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling()) {
        if (!dynamic_cast<Gtk::Native*>(child))
            measure(window, *child, picture, texts);
    }
}

}

double contrastWithin(const Cairo::RefPtr<Cairo::ImageSurface>& picture, int x, int y, int width, int height)
{
    const auto* const bytes = picture->get_data();
    const int right = std::min(x + width, picture->get_width());
    const int bottom = std::min(y + height, picture->get_height());
    std::map<std::uint32_t, int> points;
    for (int row = std::max(y, 0); row < bottom; ++row) {
        const auto* const pixels = reinterpret_cast<const std::uint32_t*>(bytes + row * picture->get_stride());
        for (int column = std::max(x, 0); column < right; ++column)
            ++points[pixels[column]];
    }
    const auto isRarer = [](const auto& one, const auto& other) { return one.second < other.second; };
    const auto ground = std::max_element(points.begin(), points.end(), isRarer);
    double maxContrast = 1;
    for (const auto& [pixel, count] : points) {
        if (count >= minPixels)
            maxContrast = std::max(maxContrast, contrastOf(pixel, ground->first));
    }
    return maxContrast;
}

double contrastWithin(Gtk::Widget& window, Gtk::Widget& widget)
{
    graphene_rect_t bounds;
    if (!gtk_widget_compute_bounds(widget.gobj(), window.gobj(), &bounds))
        return 1;
    const auto scaled = [](float length) { return static_cast<int>(length) * scale; };
    return contrastWithin(pictureOf(window), scaled(bounds.origin.x), scaled(bounds.origin.y),
        scaled(bounds.size.width), scaled(bounds.size.height));
}

std::vector<SeenText> seenTexts(Gtk::Widget& window)
{
    std::vector<SeenText> texts;
    measure(window, window, pictureOf(window), texts);
    return texts;
}

}
