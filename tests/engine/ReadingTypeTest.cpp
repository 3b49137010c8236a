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
    double textSize(const std::string& element = "document.querySelector('p')")
    {
        return std::atof(evaluate("parseFloat(getComputedStyle(" + element + ").fontSize)").c_str());
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
