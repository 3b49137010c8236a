#include "page/gtk/PageFrame.hpp"

#include "tests/engine/ToolkitTest.hpp"

#include <gtkmm/snapshot.h>
#include <gtkmm/window.h>

namespace pagora::test {

namespace {

// Draws a new texture in each frame, and counts the live ones.
class ChangingPicture final : public Gtk::Widget {
public:
    ChangingPicture()
        : Glib::ObjectBase("PagoraTestChangingPicture")
    {
    }
    int drawn = 0;
    // The number of live textures of all instances.
    static inline int kept = 0;

protected:
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override
    {
        static const std::uint32_t pixel = 0xFF336699;
        GBytes* const bytes = g_bytes_new_static(&pixel, sizeof pixel);
        GdkTexture* const picture = gdk_memory_texture_new(1, 1, GDK_MEMORY_DEFAULT, bytes, sizeof pixel);
        const graphene_rect_t place { { 0, 0 }, { 100, 100 } };
        gtk_snapshot_append_texture(snapshot->gobj(), picture, &place);
        ++drawn;
        ++kept;
        g_object_weak_ref(
            G_OBJECT(picture), [](gpointer, GObject*) { --kept; }, nullptr);
        g_object_unref(picture);
        g_bytes_unref(bytes);
    }
};

class PageFrameTest : public ToolkitTest {
protected:
    PageFrameTest()
    {
        picture.set_size_request(100, 100);
        frame = std::make_unique<PageFrame>(picture.Gtk::Widget::gobj());
        window.set_child(*frame);
        window.present();
    }
    ~PageFrameTest() override { window.unset_child(); }

    bool isDrawn(int times)
    {
        for (const int last = picture.drawn + times; picture.drawn < last;) {
            const int before = picture.drawn;
            picture.queue_draw();
            if (!waitUntil([&] { return picture.drawn > before; }))
                return false;
        }
        return true;
    }

    // Room for the shown texture and the next one.
    static constexpr int few = 4;
    ChangingPicture picture;
    std::unique_ptr<PageFrame> frame;
    Gtk::Window window;
};

}

TEST_F(PageFrameTest, PageThatIsShownKeepsItsLastDrawingOnly)
{
    ASSERT_TRUE(isDrawn(20));
    EXPECT_LE(ChangingPicture::kept, few);
}

TEST_F(PageFrameTest, ConcealedPageIsDrawnAndKeepsItsLastDrawingOnly)
{
    frame->setConcealed(true);
    ASSERT_TRUE(isDrawn(20));
    EXPECT_LE(ChangingPicture::kept, few);
}

TEST_F(PageFrameTest, APageInAWideWindowIsNoWiderThanAllowedAndInTheMiddle)
{
    int sizes = 0;
    frame->setResizeHandler([&] { ++sizes; });
    window.set_default_size(900, 300);
    frame->setMargins({ 16, 400 });
    ASSERT_TRUE(waitUntil([&] { return frame->pageWidth() == 400 && frame->get_width() > 600 && sizes > 0; }));
    graphene_rect_t place {};
    ASSERT_TRUE(gtk_widget_compute_bounds(picture.Gtk::Widget::gobj(), frame->Gtk::Widget::gobj(), &place));
    EXPECT_EQ(place.origin.x, (frame->get_width() - 400) / 2);
    EXPECT_EQ(place.size.width, 400);
}

TEST_F(PageFrameTest, APageInANarrowWindowLeavesTheMarginsFree)
{
    frame->setMargins({ 16, 4000 });
    ASSERT_TRUE(waitUntil([&] { return frame->get_width() > 0 && frame->pageWidth() == frame->get_width() - 32; }));
}

}
