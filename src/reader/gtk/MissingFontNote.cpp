#include "reader/gtk/MissingFontNote.hpp"

#include "base/Translation.hpp"
#include "controls/gtk/FontLetters.hpp"

#include <gtkmm/label.h>

#include <set>

namespace pagora {

MissingFontNote::MissingFontNote(const std::string& language, std::function<void()> whenDone)
{
    auto* const line = Gtk::make_managed<Gtk::Label>(formatted(
        _("No installed font has the letters of this book’s language (%s). They show as boxes until one is installed."),
        language.c_str()));
    line->set_wrap(true);
    line->set_xalign(0);
    line->set_hexpand(true);
    line->set_margin_start(12);
    append(*line);

    addCloseButton(whenDone).set_valign(Gtk::Align::CENTER);
}

bool isMissingFontUntold(const std::string& language)
{
    static std::set<std::string> told;
    return !isWrittenByAnyFont(language) && told.insert(language).second;
}

}
