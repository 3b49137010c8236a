#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/ReadingFixture.hpp"

#include <webkit/webkit.h>

namespace pagora::test {

namespace {

class ReadingType : public ReadingTest {
protected:
    void import(const std::string& madeBook)
    {
        ReadingTest::import(writeMadeBook(madeBook, _home.path()));
        ASSERT_EQ(bookCount(), 1u);
    }
    // As it is drawn: some engines leave the reader's text size out of the computed font size.
    double textSize()
    {
        return std::atof(
            evaluate("(() => { const em = document.createElement('span');"
                     "em.style = 'display:inline-block; width:1em';"
                     "document.querySelector('p').append(em); const { width } = em.getBoundingClientRect();"
                     "em.remove(); return width; })()")
                .c_str());
    }
};

}

TEST_F(ReadingType, TextIsOfTheSizeOfABookUnlessChosen)
{
    import("LongChapters");
    open();
    EXPECT_GE(textSize(), 16);
    EXPECT_LE(textSize(), 18);
}

TEST_F(ReadingType, LinesOfTheDefaultWindowAreAsLongAsABooks)
{
    import("LongChapters");
    open();
    // The last line of a paragraph is half a line on average.
    const auto length = number("(() => { let letters = 0, lines = 0; for (const p of document.querySelectorAll('p')) {"
                               "const range = document.createRange(); range.selectNodeContents(p);"
                               "const tops = new Set(Array.from(range.getClientRects(),"
                               "(box) => Math.round(box.left / 100) + ' ' + Math.round(box.top)));"
                               "letters += p.textContent.length; lines += tops.size - 0.5; }"
                               "return Math.round(letters / lines); })()");
    EXPECT_GE(length, 42);
    EXPECT_LE(length, 70);
}

TEST_F(ReadingType, AStoredSizeOutsideTheRangeIsAppliedAndSavedUnchanged)
{
    import("LongChapters");
    state().settings.curFontSize = 2.75F;
    open();
    EXPECT_EQ(reader().currentFontSize(), 2.75F);
    EXPECT_EQ(webkit_web_view_get_zoom_level(engineView()), 2.75);
    EXPECT_EQ(textSize(), 44);
    close();
    EXPECT_EQ(_program->defaults.realForKey("FontSize"), 2.75);
}

}
