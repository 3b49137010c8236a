#include "fixed/gtk/FixedWindowGtk.hpp"
#include "tests/engine/ReaderWindowTest.hpp"

namespace pagora::test {

// The bars of a reader window in full screen.
class ReaderFullScreenTest : public ReaderWindowTest {
protected:
    static const Gtk::Revealer& revealerOf(const Gtk::Widget& bar)
    {
        return dynamic_cast<const Gtk::Revealer&>(*bar.get_parent());
    }
};

TEST_F(ReaderFullScreenTest, TitleBarOfFullScreenTakesAtMostAFifthOfASecond)
{
    makeEpubWindow();
    epub->parts().header.setFullScreen(true);
    EXPECT_LE(revealerOf(widget<Gtk::HeaderBar>("headerBar")).get_transition_duration(), 200u);
    // Each window needs its own page.
    epub.reset();
    FixedWindowGtk fixed(toplevel, makePage());
    fixed.parts().header.setFullScreen(true);
    const auto& bar = fixed.parts().widget<Gtk::HeaderBar>("headerBar");
    EXPECT_LE(revealerOf(bar).get_transition_duration(), 200u);
}

TEST_F(ReaderFullScreenTest, HeaderBarComesInFullScreenOnlyWhenCalled)
{
    makeEpubWindow();
    auto& header = epub->parts().header;
    EXPECT_TRUE(header.isRevealed());
    header.setFullScreen(true);
    EXPECT_FALSE(header.isRevealed());
    header.setFullScreen(false);
    EXPECT_TRUE(header.isRevealed());
}

TEST_F(ReaderFullScreenTest, HeaderBarComesInFullScreenWhileThePointerIsAtTheTop)
{
    makeEpubWindow();
    epub->window().orderFront();
    auto& header = epub->parts().header;
    ASSERT_TRUE(waitUntil([this] { return area.get_mapped(); }));
    area.grab_focus();
    header.setFullScreen(true);
    moveTo(widget<Gtk::Overlay>("stage"), 1);
    EXPECT_TRUE(header.isRevealed());
    moveTo(widget<Gtk::Overlay>("stage"), 300);
    EXPECT_FALSE(header.isRevealed());
}

TEST_F(ReaderFullScreenTest, BothBarsComeInFullScreenAndGoWithAKey)
{
    makeEpubWindow();
    epub->window().orderFront();
    epub->window().toggleFullScreen();
    auto& parts = epub->parts();
    parts.header.setFullScreen(true);
    parts.footer.setFullScreen(true);
    EXPECT_TRUE(press(GDK_KEY_F10));
    EXPECT_TRUE(parts.header.isRevealed() && parts.footer.isRevealed());
    moveTo(widget<Gtk::Overlay>("stage"), 300);
    EXPECT_TRUE(parts.header.isRevealed());
    EXPECT_TRUE(press(GDK_KEY_F10));
    EXPECT_FALSE(parts.header.isRevealed() || parts.footer.isRevealed());
}

TEST_F(ReaderFullScreenTest, EscapeLeavesFullScreenAndDoesNothingElse)
{
    makeEpubWindow();
    epub->window().orderFront();
    EXPECT_FALSE(press(GDK_KEY_Escape));
    epub->window().toggleFullScreen();
    EXPECT_TRUE(press(GDK_KEY_Escape));
    ASSERT_TRUE(waitForDone(1));
    EXPECT_EQ(done, (Lines { "full screen" }));
}

}
