#include "desktop/gtk/BookFonts.hpp"

#include "tests/engine/PageViewTest.hpp"

#include <algorithm>
#include <pangomm/fontfamily.h>

namespace pagora::test {

namespace {

class BookFontsTest : public PageViewTest {
protected:
    // Returns the width of a line of text in the engine, in the given family at 100 pixels.
    std::string widthIn(const std::string& family, const std::string& style = {})
    {
        loadDocument(
            "<p><span id=\"t\" style=\"font: " + style + " 100px " + family + "\">Hamburgefonstiv 1876</span></p>");
        return evaluate("document.getElementById('t').getBoundingClientRect().width");
    }
    bool isInstalled(const std::string& family)
    {
        const auto families = _window.get_pango_context()->list_families();
        return std::ranges::any_of(families, [&](const auto& each) { return each->get_name().raw() == family; });
    }
    // Returns the first installed font of a list of alternatives.
    std::string faceOf(const MenuFont& font)
    {
        if (isInstalled(font.name))
            return font.name;
        const auto found
            = std::ranges::find_if(font.relatives, [&](const char* family) { return isInstalled(family); });
        return found == font.relatives.end() ? "none" : *found;
    }
};

}

TEST_F(BookFontsTest, EachFontOfTheMenuIsShownAsItsNearestRelative)
{
    for (const auto& font : menuFonts()) {
        const std::string family = "'" + std::string(font.name) + "'";
        EXPECT_EQ(widthIn(family), widthIn("'" + faceOf(font) + "'")) << font.name;
        EXPECT_NE(widthIn(family), widthIn(family, "bold")) << font.name;
    }
}

TEST_F(BookFontsTest, TheInterfaceShowsTheSameFaces)
{
    for (const auto& font : menuFonts()) {
        const auto widthOf = [this](const std::string& family) {
            const auto layout = Pango::Layout::create(_window.get_pango_context());
            Pango::FontDescription font;
            font.set_family(family);
            font.set_absolute_size(100 * Pango::SCALE);
            layout->set_font_description(font);
            layout->set_text("Hamburgefonstiv 1876");
            return layout->get_pixel_logical_extents().get_width();
        };
        EXPECT_EQ(widthOf(font.name), widthOf(faceOf(font))) << font.name;
    }
}

TEST_F(BookFontsTest, TheSixFacesDiffer)
{
    std::vector<std::string> faces;
    for (const auto& font : menuFonts())
        faces.push_back(faceOf(font));
    std::ranges::sort(faces);
    EXPECT_EQ(std::ranges::adjacent_find(faces), faces.end());
    EXPECT_EQ(std::ranges::count(faces, std::string("none")), 0);
}

TEST_F(BookFontsTest, APageWithoutAFontIsSetInAGoodSerif)
{
    loadDocument("<p style=\"font-size: 100px\"><span id=\"t\">Hamburgefonstiv 1876</span></p>");
    const auto plain = evaluate("document.getElementById('t').getBoundingClientRect().width");
    EXPECT_EQ(plain, widthIn("Georgia"));
    EXPECT_EQ(widthIn("serif"), widthIn("Georgia"));
    EXPECT_EQ(widthIn("'A Font That Nobody Has', serif"), widthIn("Georgia"));
    EXPECT_NE(widthIn("sans-serif"), widthIn("Georgia"));
}

TEST_F(BookFontsTest, ALineBreakInTheSourceIsASpaceInEachFontOfTheMenu)
{
    for (const auto& font : menuFonts()) {
        const auto widthOf = [&](const std::string& text) {
            loadDocument(
                "<p><span id=\"t\" style=\"font: 100px '" + std::string(font.name) + "'\">" + text + "</span></p>");
            return evaluate("document.getElementById('t').getBoundingClientRect().width");
        };
        EXPECT_EQ(widthOf("the\n\tprice"), widthOf("the price")) << font.name;
    }
}

}
