#pragma once

#include "files/Files.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace pagora::test {

inline constexpr const char* markedSentence = "Here the fourth lamp was broken by the gale that night.";

inline std::string markedPage(const std::string& body)
{
    return "<html xmlns='http://www.w3.org/1999/xhtml'><head><title>t</title></head><body>" + body + "</body></html>";
}

// Several pages of text with a sentence in the second half.
inline std::string longChapter(const std::string& before = {})
{
    std::string text = before;
    for (int i = 0; i < 60; ++i) {
        text += "<p id='p" + std::to_string(i) + "'>The lantern was lit and the keeper went up the stairs, slowly, "
            + "one after the other, while the wind pressed against the old glass and the sea was heard below.</p>";
        if (i == 40)
            text += std::string("<p id='here'>") + markedSentence + "</p>";
    }
    return markedPage(text);
}

// Reads a book and sets marks in it.
class MarkedReading : public ReadingTest {
protected:
    std::string write(const std::string& name, const std::vector<std::string>& chapters)
    {
        EpubBuilder builder;
        builder.chapters(static_cast<int>(chapters.size()));
        for (std::size_t i = 0; i < chapters.size(); ++i)
            builder.member("OEBPS/chapter" + std::to_string(i + 1) + ".xhtml", chapters[i]);
        return builder.write(_home.path(name));
    }
    void read(const std::vector<std::string>& chapters)
    {
        import(write("book.epub", chapters));
        ASSERT_EQ(bookCount(), 1u);
        openBook();
    }
    void openBook(std::size_t index = 0)
    {
        open(index);
        ASSERT_TRUE(waitUntil([this] { return marks().store() && marks().store()->isSaved(); }));
        settle();
    }

    BookMarks& marks() { return state().reading._epubWindowController->marks(); }
    const KeptMarks& kept() { return marks().store()->marks(); }
    std::string file() { return deletingEnd(*book()->epubPath()) + ".annotation"; }
    static std::string deletingEnd(const std::string& path) { return path.substr(0, path.rfind('.')); }
    void waitUntilSaved()
    {
        ASSERT_TRUE(waitUntil([this] { return marks().store()->isSaved(); }));
        settle();
    }

    void waitForLines(std::size_t count)
    {
        ASSERT_TRUE(waitUntil([&] { return window().marksPane().lines().size() == count; }));
    }

    void select(const std::string& id, int start, int end)
    {
        evaluate("(() => { const text = document.getElementById('" + id
            + "').firstChild;"
              "getSelection().setBaseAndExtent(text, "
            + std::to_string(start) + ", text, " + std::to_string(end) + "); })()");
    }
    // Highlights "fourth lamp" in the sentence, whose page is shown.
    void highlight(MarkColor color = MarkColor::Green)
    {
        evaluate("0");
        select("here", 9, 20);
        marks().highlight(color);
        ASSERT_TRUE(waitUntil([this] { return !kept().empty(); }));
        waitUntilSaved();
    }
    void showSentence()
    {
        reader().goTo({ reader().bookSplits().at(0), ElementInChapter { "here" } });
        settle();
    }
    void highlightAndClose()
    {
        read({ longChapter() });
        showSentence();
        highlight();
        close();
    }
    // Also deletes its archive.
    void removeBook()
    {
        const auto archive = *book()->epubPath();
        _program->controller.deleteItemsFromLibrary({ book() });
        ASSERT_TRUE(waitUntil([this] { return bookCount() == 0; }));
        removeItem(archive);
    }
    // The registered ranges that are on the page, as an expression of the page's language.
    static std::string rangesOnPage(const std::string& color = "green")
    {
        return "[...(CSS.highlights.get('pagora-mark-" + color
            + "') || [])].filter((range) => [...range.getClientRects()].some((box) => box.right > 0 && box.left < "
              "innerWidth))";
    }
    std::string painted(const std::string& color = "green")
    {
        return evaluate(rangesOnPage(color) + ".map(String).join('|')");
    }
    bool isOnPage(const std::string& color = "green")
    {
        return evaluate("(() => { const box = [...CSS.highlights.get('pagora-mark-" + color
                   + "')][0].getClientRects()[0];"
                     "return box.left >= 0 && box.right <= innerWidth && box.top >= 0 && box.bottom <= innerHeight;"
                     "})()")
            == "true";
    }
    // The mark is painted at its place, and a click in the list shows it.
    void expectFound()
    {
        marks().goTo(0);
        settle();
        EXPECT_EQ(painted(), "fourth lamp");
        EXPECT_TRUE(isOnPage());
    }
    bool hasRibbon() { return window().markSigns().ribbon().get_visible(); }
};

}
