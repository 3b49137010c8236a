#include "reader/gtk/MissingFontNote.hpp"

#include "controls/gtk/FontLetters.hpp"
#include "tests/engine/ToolkitTest.hpp"

#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <fontconfig/fontconfig.h>

namespace pagora::test {

namespace {

// Hides all fonts from fontconfig during its lifetime.
class NoFonts {
public:
    NoFonts()
        : _usual(FcConfigReference(nullptr))
    {
        FcConfigSetCurrent(FcConfigCreate());
    }
    ~NoFonts() { FcConfigSetCurrent(_usual); }
    NoFonts(const NoFonts&) = delete;
    NoFonts& operator=(const NoFonts&) = delete;

private:
    FcConfig* _usual;
};

class MissingFontNoteTest : public ToolkitTest { };

}

TEST_F(MissingFontNoteTest, ALanguageIsWrittenWhereAFontHasItsLetters)
{
    EXPECT_TRUE(isWrittenByAnyFont("el"));
    const NoFonts none;
    EXPECT_FALSE(isWrittenByAnyFont("el"));
    EXPECT_FALSE(isWrittenByAnyFont("ja-JP"));
    EXPECT_FALSE(isWrittenByAnyFont("zh-Hant"));
}

TEST_F(MissingFontNoteTest, LatinLettersAndUnknownLanguagesAreTakenAsWritten)
{
    const NoFonts none;
    EXPECT_TRUE(isWrittenByAnyFont("pt-BR"));
    EXPECT_TRUE(isWrittenByAnyFont("x-unknown"));
}

TEST_F(MissingFontNoteTest, EachLanguageIsToldOnce)
{
    EXPECT_FALSE(isMissingFontUntold("el"));
    const NoFonts none;
    EXPECT_TRUE(isMissingFontUntold("el"));
    EXPECT_FALSE(isMissingFontUntold("el"));
}

TEST_F(MissingFontNoteTest, NamesTheLanguageAndCanBeClosed)
{
    int done = 0;
    MissingFontNote note("ja", [&] { ++done; });
    const auto* const line = dynamic_cast<Gtk::Label*>(note.get_first_child());
    ASSERT_TRUE(line);
    EXPECT_NE(line->get_text().raw().find("(ja)"), std::string::npos);
    auto* const close = dynamic_cast<Gtk::Button*>(note.get_last_child());
    ASSERT_TRUE(close);
    g_signal_emit_by_name(close->gobj(), "clicked");
    EXPECT_FALSE(note.get_visible());
    EXPECT_EQ(done, 1);
}

}
