// Popovers of notes in the real program.

#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/popover.h>

namespace pagora::test {

namespace {

// The first descendant of that type for which `isWanted` is true.
template <typename Kind, typename Predicate>
Kind* below(Gtk::Widget& widget, Predicate isWanted)
{
    for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling()) {
        if (auto* const found = dynamic_cast<Kind*>(child); found && isWanted(*found))
            return found;
        if (auto* const found = below<Kind>(*child, isWanted))
            return found;
    }
    return nullptr;
}

class Notes : public ReadingTest {
protected:
    Notes()
    {
        EpubBuilder book;
        book.chapters(3);
        book.member("OEBPS/chapter1.xhtml",
            chapterOf(10,
                "<p>See<a id='typed' epub:type='noteref' href='notes.xhtml#n1'>one</a> <a id='role' role='doc-noteref' "
                "href='notes.xhtml#n2'>two</a> <sup><a id='raised' href='#own'>3</a></sup> <a id='plain' "
                "href='#own'>text</a> <sup><a id='chapter' href='chapter2.xhtml'>2</a></sup> <a id='none' "
                "epub:type='noteref' href='notes.xhtml#none'>x</a> <a id='out' epub:type='noteref' "
                "href='../../../etc/passwd#x'>x</a></p>",
                "<aside id='own'><p>Its <i>own</i> note.<script>document.title = 'run'</script></p></aside>",
                " xmlns:epub='http://www.idpf.org/2007/ops'"));
        book.member("OEBPS/notes.xhtml",
            "<html xmlns='http://www.w3.org/1999/xhtml'><body><p id='n1'>The first note.</p>"
            "<p id='n2'>The second leads to <a href='#n2'>itself</a>.</p></body></html>");
        import(book.write(_home.path("book.epub")));
        open();
    }

    Gtk::Popover& popover()
    {
        return *below<Gtk::Popover>(window().parts().widget<Gtk::Widget>("pagePlace"),
            [](const Gtk::Popover& each) { return each.has_css_class("note"); });
    }
    std::string text()
    {
        return below<Gtk::Label>(popover(), [](const Gtk::Label&) { return true; })->get_text();
    }
    bool ask(const std::string& id)
    {
        return evaluate("pagoraAskForNote(document.getElementById('" + id + "'))") == "true";
    }
    void show(const std::string& id)
    {
        popover().popdown();
        ASSERT_TRUE(ask(id)) << id;
        ASSERT_TRUE(waitUntil([this] { return popover().get_visible(); })) << id;
    }
};

}

TEST_F(Notes, AreShownBesideTheirReferences)
{
    const auto before = place();
    show("typed");
    EXPECT_EQ(text(), "The first note.");
    show("role");
    EXPECT_EQ(text(), "The second leads to itself.");
    show("raised");
    EXPECT_EQ(text(), "Its own note.");
    EXPECT_EQ(place(), before);
}

TEST_F(Notes, AreNotMadeOfOtherLinks)
{
    EXPECT_FALSE(ask("plain"));
    EXPECT_FALSE(ask("chapter"));
}

TEST_F(Notes, ThatAreMissingOrOutsideTheBookAreNotShown)
{
    ask("out");
    ask("none");
    show("typed");
    EXPECT_EQ(text(), "The first note.");
}

TEST_F(Notes, AreGoneToAndBackLeadsToTheReference)
{
    turn(0);
    const auto left = place();
    show("typed");
    below<Gtk::Button>(popover(), [](const Gtk::Button& button) {
        return button.get_label() == "Go there";
    })->activate();
    ASSERT_TRUE(waitUntil([this] { return evaluate("document.getElementById('n1') ? 1 : 0") == "1"; }));
    settle();
    reader().goBack();
    settle();
    EXPECT_EQ(place(), left);
}

}
