#include "tests/engine/SeenFrame.hpp"

#include <gtk/gtk.h>

#include <gsk/gsk.h>

namespace pagora::test {

SeenFrame seenFrameOf(Gtk::Widget& widget)
{
    GtkWidget* const area = widget.gobj();
    const int width = gtk_widget_get_width(area);
    const int height = gtk_widget_get_height(area);
    SeenFrame frame { width, height, {} };
    frame.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    GdkPaintable* const paintable = gtk_widget_paintable_new(area);
    GtkSnapshot* const snapshot = gtk_snapshot_new();
    gdk_paintable_snapshot(paintable, snapshot, width, height);
    GskRenderNode* const node = gtk_snapshot_free_to_node(snapshot);
    g_object_unref(paintable);
    if (!node)
        return frame;
    GskRenderer* const renderer = gsk_cairo_renderer_new();
    gsk_renderer_realize(renderer, nullptr, nullptr);
    const graphene_rect_t place { { 0, 0 }, { static_cast<float>(width), static_cast<float>(height) } };
    GdkTexture* const picture = gsk_renderer_render_texture(renderer, node, &place);
    gsk_render_node_unref(node);
    gdk_texture_download(
        picture, reinterpret_cast<guchar*>(frame.pixels.data()), static_cast<gsize>(width) * sizeof(guint32));
    g_object_unref(picture);
    gsk_renderer_unrealize(renderer);
    g_object_unref(renderer);
    return frame;
}

}
