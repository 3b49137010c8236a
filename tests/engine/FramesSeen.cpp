#include "tests/engine/FramesSeen.hpp"

#include <gtk/gtk.h>

#include <algorithm>
#include <gsk/gsk.h>
#include <vector>

namespace pagora::test {

namespace {
constexpr int nearlyWhite = 240;
}

FramesSeen::FramesSeen(Gtk::Widget& area)
    : _area(area.gobj())
    , _paintable(gtk_widget_paintable_new(_area))
    , _renderer(gsk_cairo_renderer_new())
    , _clock(GDK_FRAME_CLOCK(g_object_ref(gtk_widget_get_frame_clock(_area))))
{
    gsk_renderer_realize(_renderer, nullptr, nullptr);
    const auto painted = [](GdkFrameClock*, gpointer self) { static_cast<FramesSeen*>(self)->look(); };
    _painted = g_signal_connect(
        _clock, "after-paint", G_CALLBACK(static_cast<void (*)(GdkFrameClock*, gpointer)>(painted)), this);
}

FramesSeen::~FramesSeen()
{
    g_signal_handler_disconnect(_clock, _painted);
    gsk_renderer_unrealize(_renderer);
    g_object_unref(_renderer);
    g_object_unref(_paintable);
    g_object_unref(_clock);
}

void FramesSeen::look()
{
    const int width = gtk_widget_get_width(_area);
    const int height = gtk_widget_get_height(_area);
    if (!gtk_widget_get_mapped(_area) || width < 1 || height < 1)
        return;
    GtkSnapshot* const snapshot = gtk_snapshot_new();
    gdk_paintable_snapshot(_paintable, snapshot, width, height);
    GskRenderNode* const node = gtk_snapshot_free_to_node(snapshot);
    if (!node)
        return;
    const graphene_rect_t place { { 0, 0 }, { static_cast<float>(width), static_cast<float>(height) } };
    GdkTexture* const picture = gsk_renderer_render_texture(_renderer, node, &place);
    gsk_render_node_unref(node);
    const std::size_t stride = static_cast<std::size_t>(width) * 4;
    std::vector<guchar> pixels(stride * static_cast<std::size_t>(height));
    gdk_texture_download(picture, pixels.data(), stride);
    g_object_unref(picture);
    ++_count;
    int all = 0;
    int white = 0;
    // The margins are 20 points wide at the sides and 40 above and below.
    for (int y = 4; y < height - 4; y += 8) {
        for (const int x : { 4, 12, width - 12, width - 4 }) {
            const guchar* const pixel = &pixels[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) * 4];
            ++all;
            white += std::min({ pixel[0], pixel[1], pixel[2] }) > nearlyWhite;
        }
    }
    _maxWhite = std::max(_maxWhite, all > 0 ? static_cast<double>(white) / all : 0);
}

}
