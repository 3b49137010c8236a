// Real pointer and keyboard input in a page.

#include "tests/engine/PointedReading.hpp"

#include "tests/engine/MadeBooks.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <gtkmm/label.h>
#include <gtkmm/popover.h>

namespace pagora::test {

namespace {

class PointedReadingTest : public PointedReading {
protected:
    void read(const std::string& first)
    {
        EpubBuilder book;
        book.chapters(3);
        book.member("OEBPS/chapter1.xhtml", first);
        import(book.write(_home.path("book.epub")));
        open();
        webView().makeFirstResponder();
    }
    // Returns the popover of a note and its text, found in the parent widget of the page.
    Gtk::Popover* note()
    {
        auto& place = window().parts().widget<Gtk::Widget>("pagePlace");
        for (auto* child = place.get_first_child(); child; child = child->get_next_sibling()) {
            if (auto* const popover = dynamic_cast<Gtk::Popover*>(child); popover && popover->has_css_class("note"))
                return popover;
        }
        return nullptr;
    }
    static std::string textBelow(Gtk::Widget& widget)
    {
        if (const auto* const label = dynamic_cast<Gtk::Label*>(&widget))
            return label->get_text();
        for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling()) {
            if (const auto text = textBelow(*child); !text.empty())
                return text;
        }
        return {};
    }
    bool waitForNote()
    {
        return waitUntil([this] { return note()->get_visible(); }, 60);
    }
};

constexpr const char* reference = "<p>A word<a id='mark' epub:type='noteref' href='#note'>1</a> with a note.</p>";
constexpr const char* itsNote = "<aside id='note'><p>The note itself.</p></aside>";
constexpr const char* names = " xmlns:epub='http://www.idpf.org/2007/ops'";

}

TEST_F(PointedReadingTest, TheSideButtonsOfTheMouseLeadBackAndOnAgain)
{
    read(chapterOf(60));
    const auto left = place();
    goToChapter(2);
    const auto reached = place();
    const double x = static_cast<double>(number("innerWidth / 2"));
    const double y = static_cast<double>(number("innerHeight / 2"));
    press(x, y, 8);
    ASSERT_TRUE(waitUntil([this] { return reader().activeSplitIndex() == 0; }, 60));
    settle();
    EXPECT_EQ(place(), left);
    press(x, y, 9);
    ASSERT_TRUE(waitUntil([this] { return reader().activeSplitIndex() == 2; }, 60));
    settle();
    EXPECT_EQ(place(), reached);
}

TEST_F(PointedReadingTest, APointerThatRestsOnAReferenceShowsItsNote)
{
    read(chapterOf(10, reference, itsNote, names));
    const auto line = lineOf("mark");
    xdotool("mousemove " + onDisplay(line.left - 40, line.middle) + " mousemove "
        + onDisplay((line.left + line.right) / 2, line.middle));
    ASSERT_TRUE(waitForNote());
    EXPECT_EQ(textBelow(*note()), "The note itself.");
}

TEST_F(PointedReadingTest, ShiftAndEnterOnAReferenceShowItsNote)
{
    read(chapterOf(10, reference, itsNote, names));
    evaluate("document.getElementById('mark').focus(); 0");
    const auto before = place();
    // Without a window manager, keys are sent to the window below the pointer.
    const auto line = lineOf("p5");
    xdotool("mousemove " + onDisplay(line.left + 5, line.middle) + " key --clearmodifiers shift+Return");
    ASSERT_TRUE(waitForNote());
    EXPECT_EQ(textBelow(*note()), "The note itself.");
    EXPECT_EQ(place(), before);
}

// The engine parses such a page as HTML, in which names with a colon have no namespace.
TEST_F(PointedReadingTest, AReferenceInAPageThatIsNotWellFormedShowsItsNote)
{
    read(chapterOf(10, std::string("<p>open <b>without an end") + reference, itsNote, names));
    evaluate("pagoraAskForNote(document.getElementById('mark')); 0");
    ASSERT_TRUE(waitForNote());
    EXPECT_EQ(textBelow(*note()), "The note itself.");
}

}
