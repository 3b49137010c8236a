#include "page/gtk/PageCover.hpp"

#include <utility>

namespace pagora {

namespace {

graphene_rect_t placeOf(GtkWidget* page)
{
    graphene_rect_t place;
    return gtk_widget_compute_bounds(page, gtk_widget_get_parent(page), &place) ? place : graphene_rect_t {};
}

// Renders the drawing to a texture at full resolution; null if the page is not on a screen.
GObjectPtr<GdkTexture> pictureOf(GtkWidget* page, GskRenderNode* drawing, const graphene_rect_t& place)
{
    GtkNative* const native = gtk_widget_get_native(page);
    GskRenderer* const renderer = native ? gtk_native_get_renderer(native) : nullptr;
    if (!renderer)
        return {};
    const auto scale = static_cast<float>(gtk_widget_get_scale_factor(page));
    GtkSnapshot* const snapshot = gtk_snapshot_new();
    gtk_snapshot_scale(snapshot, scale, scale);
    gtk_snapshot_append_node(snapshot, drawing);
    GskRenderNode* const scaled = gtk_snapshot_free_to_node(snapshot);
    if (!scaled)
        return {};
    const graphene_rect_t area { { place.origin.x * scale, place.origin.y * scale },
        { place.size.width * scale, place.size.height * scale } };
    auto picture = GObjectPtr<GdkTexture>::adopt(gsk_renderer_render_texture(renderer, scaled, &area));
    gsk_render_node_unref(scaled);
    return picture;
}

}

PageCover::~PageCover()
{
    forgetDrawing();
}

void PageCover::forgetDrawing()
{
    if (auto* const drawing = std::exchange(_drawing, nullptr))
        gsk_render_node_unref(drawing);
}

void PageCover::put(GtkWidget* page, Show show)
{
    if (std::exchange(_isOn, true))
        return;
    if (show == Show::LastPicture && _drawing) {
        _place = placeOf(page);
        _picture = pictureOf(page, _drawing, _place);
    }
    forgetDrawing();
}

void PageCover::remove()
{
    _isOn = false;
    _picture = {};
    _given = {};
}

void PageCover::give(GObjectPtr<GdkTexture> picture, int scale)
{
    if (!_isOn)
        return;
    _given = std::move(picture);
    _givenScale = scale;
}

bool PageCover::drawsGiven(GtkWidget* page) const
{
    if (!_isOn || !_given || gtk_widget_get_scale_factor(page) != _givenScale)
        return false;
    const auto size = placeOf(page).size;
    return static_cast<int>(size.width) * _givenScale == gdk_texture_get_width(_given.get())
        && static_cast<int>(size.height) * _givenScale == gdk_texture_get_height(_given.get());
}

GObjectPtr<GdkTexture> PageCover::pictureNow(GtkWidget* frame, GtkWidget* page)
{
    if (!gtk_widget_get_mapped(page))
        return {};
#if GTK_CHECK_VERSION(4, 12, 0)
    GdkSurface* const surface = gtk_native_get_surface(gtk_widget_get_native(page));
    if (gdk_surface_get_scale(surface) != gtk_widget_get_scale_factor(page))
        return {};
#endif
    GtkSnapshot* const snapshot = gtk_snapshot_new();
    gtk_widget_snapshot_child(frame, page, snapshot);
    GskRenderNode* const drawing = gtk_snapshot_free_to_node(snapshot);
    if (!drawing)
        return {};
    auto picture = pictureOf(page, drawing, placeOf(page));
    gsk_render_node_unref(drawing);
    return picture;
}

void PageCover::draw(GtkWidget* frame, GtkWidget* page, GtkSnapshot* snapshot)
{
    // The engine stops drawing unless its widget is drawn.
    GtkSnapshot* const own = gtk_snapshot_new();
    gtk_widget_snapshot_child(frame, page, own);
    GskRenderNode* const drawing = gtk_snapshot_free_to_node(own);
    if (_isOn) {
        if (drawing)
            gsk_render_node_unref(drawing);
        if (drawsGiven(page)) {
            const auto place = placeOf(page);
            gtk_snapshot_append_texture(snapshot, _given.get(), &place);
        } else if (_picture)
            gtk_snapshot_append_texture(snapshot, _picture.get(), &_place);
        return;
    }
    forgetDrawing();
    _drawing = drawing;
    if (_drawing)
        gtk_snapshot_append_node(snapshot, _drawing);
}

}
