#include "panels/gtk/LargePicture.hpp"

#include "running/GLibRunLoop.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/window.h>

#include <fstream>

namespace pagora::test {

namespace {

class LargePictureTest : public ToolkitTest {
protected:
    LargePictureTest()
    {
        window.set_child(stage);
        window.set_default_size(640, 400);
        window.present();
        large = std::make_unique<LargePicture>(stage, runLoop);
        large->setCloseHandler([this] { ++closed; });
    }
    std::string write(const std::string& name, const std::string& bytes)
    {
        std::ofstream(folder.path(name), std::ios::binary) << bytes;
        return folder.path(name);
    }
    void showPicture()
    {
        large->show(write("picture.png", picture(120, 60, "png", 0)), "A harbour", [this] { ++failed; });
        EXPECT_TRUE(waitUntil([this] { return large->isShown(); }));
    }
    Gtk::Widget& shown() { return *stage.get_last_child(); }
    template <typename Controller>
    Glib::RefPtr<Controller> controller()
    {
        const auto controllers = shown().observe_controllers();
        for (guint i = 0; i < controllers->get_n_items(); ++i) {
            if (auto found = std::dynamic_pointer_cast<Controller>(controllers->get_object(i)))
                return found;
        }
        return {};
    }

    TemporaryFolder folder;
    GLibRunLoop runLoop;
    Gtk::Overlay stage;
    Gtk::Window window;
    std::unique_ptr<LargePicture> large;
    int closed = 0;
    int failed = 0;
};

}

TEST_F(LargePictureTest, IsAsLargeAsTheWindow)
{
    ASSERT_TRUE(waitUntil([this] { return stage.get_width() > 0; }));
    showPicture();
    EXPECT_TRUE(waitUntil([this] { return shown().get_width() == stage.get_width(); }));
    EXPECT_EQ(shown().get_height(), stage.get_height());
    EXPECT_EQ(failed, 0);
}

TEST_F(LargePictureTest, GoesWithEachKey)
{
    showPicture();
    gboolean isTaken = FALSE;
    g_signal_emit_by_name(
        controller<Gtk::EventControllerKey>()->gobj(), "key-pressed", GDK_KEY_Escape, 0U, GdkModifierType(0), &isTaken);
    EXPECT_TRUE(isTaken);
    EXPECT_FALSE(large->isShown());
    EXPECT_EQ(closed, 1);
}

TEST_F(LargePictureTest, GoesWithAPress)
{
    showPicture();
    g_signal_emit_by_name(controller<Gtk::GestureClick>()->gobj(), "released", 1, 10.0, 10.0);
    EXPECT_FALSE(large->isShown());
    EXPECT_EQ(closed, 1);
}

TEST_F(LargePictureTest, ThatCannotBeDecodedIsLeftToThePage)
{
    large->show(write("picture.png", "no picture"), "A harbour", [this] { ++failed; });
    EXPECT_TRUE(waitUntil([this] { return failed == 1; }));
    EXPECT_FALSE(large->isShown());
}

TEST_F(LargePictureTest, ThatIsClosedWhileItIsDecodedDoesNotCome)
{
    large->show(write("picture.png", picture(120, 60, "png", 0)), "A harbour", [this] { ++failed; });
    EXPECT_TRUE(large->close());
    large->show(write("broken.png", "no picture"), "A harbour", [this] { ++failed; });
    EXPECT_TRUE(waitUntil([this] { return failed == 1; }));
    EXPECT_FALSE(large->isShown());
    EXPECT_FALSE(large->close());
}

}
