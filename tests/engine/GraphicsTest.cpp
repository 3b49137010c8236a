#include "page_view/gtk/PageEngine.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtkmm/label.h>
#include <gtkmm/window.h>

namespace pagora::test {

namespace {

class GraphicsTest : public ToolkitTest {
protected:
    GraphicsTest()
    {
        _window.set_child(_label);
        _window.present();
    }

    // Renders a part of the window to a texture, as the toolkit does for shadows and opacity.
    void drawOffScreen()
    {
        const graphene_rect_t area = GRAPHENE_RECT_INIT(0, 0, 40, 40);
        const GdkRGBA red { 1, 0, 0, 1 };
        GtkSnapshot* const snapshot = gtk_snapshot_new();
        gtk_snapshot_push_blur(snapshot, 4);
        gtk_snapshot_append_color(snapshot, &red, &area);
        gtk_snapshot_pop(snapshot);
        GskRenderNode* const node = gtk_snapshot_free_to_node(snapshot);
        GdkTexture* const texture
            = gsk_renderer_render_texture(gtk_native_get_renderer(GTK_NATIVE(_window.gobj())), node, &area);
        EXPECT_EQ(gdk_texture_get_width(texture), 40);
        g_object_unref(texture);
        gsk_render_node_unref(node);
    }

    TemporaryFolder _folder;
    Gtk::Window _window;
    Gtk::Label _label { "Text" };
};

}

TEST_F(GraphicsTest, ToolkitDrawsOffScreenWhileTheEngineStarts)
{
    ASSERT_TRUE(waitUntil([this] { return _label.get_mapped(); }));
    PageEngine engine({ _folder.path("books"), _folder.path("caches") });
    // The toolkit's GL context is current, so the toolkit does not make it current again.
    drawOffScreen();
    engine.prepareWarmView();
    drawOffScreen();
    const auto view = engine.makePageView(PageKind::Columns);
    ASSERT_TRUE(waitUntil([&] {
        drawOffScreen();
        return !webkit_web_view_is_loading(view->engineView());
    }));
}

}
