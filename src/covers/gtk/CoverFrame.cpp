#include "covers/gtk/CoverFrame.hpp"

#include <cmath>
#include <map>
#include <memory>
#include <tuple>

namespace pagora {

namespace {

// The maximum number of cached sizes. Each takes about 100 kB.
constexpr std::size_t maxPictures = 96;

// Returns whether the widget is rendered in software, which would blur the shadows of every cover in every frame. That
// takes four times as long as the rest of the cover.
bool isDrawnByProcessor(GtkWidget* widget)
{
    GtkNative* const native = gtk_widget_get_native(widget);
    return native && GSK_IS_CAIRO_RENDERER(gtk_native_get_renderer(native));
}

}

struct CoverFrame::Picture {
    std::shared_ptr<cairo_surface_t> pixels;
    // The extent beyond the outline, in points.
    float reach = 0;
};

void CoverFrame::append(GtkSnapshot* snapshot, GtkWidget* widget) const
{
    if (!isDrawnByProcessor(widget)) {
        appendNodes(snapshot);
        return;
    }
    const auto& [pixels, reach] = picture(gtk_widget_get_scale_factor(widget));
    const auto bounds = graphene_rect_t { { _outline.bounds.origin.x - reach, _outline.bounds.origin.y - reach },
        { _outline.bounds.size.width + 2 * reach, _outline.bounds.size.height + 2 * reach } };
    cairo_t* const context = gtk_snapshot_append_cairo(snapshot, &bounds);
    cairo_set_source_surface(context, pixels.get(), bounds.origin.x, bounds.origin.y);
    cairo_paint(context);
    cairo_destroy(context);
}

void CoverFrame::appendNodes(GtkSnapshot* snapshot) const
{
    // A near shadow for the edge and a far one for the elevation.
    constexpr GdkRGBA edge { 0, 0, 0, 0.22F };
    constexpr GdkRGBA shadow { 0, 0, 0, 0.24F };
    gtk_snapshot_append_outset_shadow(snapshot, &_outline, &edge, 0, _lift, 0, 2 * _lift);
    gtk_snapshot_append_outset_shadow(snapshot, &_outline, &shadow, 0, 3 * _lift, 0, 9 * _lift);
    // The edge line separates white covers from a white page, and black ones from a black page.
    constexpr float widths[4] = { 1, 1, 1, 1 };
    const GdkRGBA lines[4] = { _line, _line, _line, _line };
    gtk_snapshot_append_border(snapshot, &_outline, widths, lines);
}

const CoverFrame::Picture& CoverFrame::picture(int pixelsInPoint) const
{
    using Key = std::tuple<float, float, float, float, float, float, float, int>;
    static std::map<Key, Picture> pictures;
    const auto& size = _outline.bounds.size;
    const Key key { size.width, size.height, _lift, _line.red, _line.green, _line.blue, _line.alpha, pixelsInPoint };
    if (const auto known = pictures.find(key); known != pictures.end())
        return known->second;
    if (pictures.size() >= maxPictures)
        pictures.clear();
    return pictures[key] = drawn(pixelsInPoint);
}

CoverFrame::Picture CoverFrame::drawn(int pixelsInPoint) const
{
    GtkSnapshot* const snapshot = gtk_snapshot_new();
    appendNodes(snapshot);
    GskRenderNode* const node = gtk_snapshot_free_to_node(snapshot);
    const float reach = std::ceil(12 * _lift);
    const auto pixels = [&](float length) { return static_cast<int>(length + 2 * reach) * pixelsInPoint; };
    cairo_surface_t* const surface = cairo_image_surface_create(
        CAIRO_FORMAT_ARGB32, pixels(_outline.bounds.size.width), pixels(_outline.bounds.size.height));
    cairo_surface_set_device_scale(surface, pixelsInPoint, pixelsInPoint);
    cairo_t* const context = cairo_create(surface);
    cairo_translate(context, reach - _outline.bounds.origin.x, reach - _outline.bounds.origin.y);
    gsk_render_node_draw(node, context);
    cairo_destroy(context);
    gsk_render_node_unref(node);
    return { std::shared_ptr<cairo_surface_t>(surface, &cairo_surface_destroy), reach };
}

}
