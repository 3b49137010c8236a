#include "reader/gtk/MissingFontNote.hpp"

#include "base/Translation.hpp"
#include "controls/gtk/FontLetters.hpp"
#include "desktop/gtk/AccessibleNames.hpp"

#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <set>

namespace pagora {

MissingFontNote::MissingFontNote(const std::string& language, std::function<void()> whenDone)
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, 6)
{
    add_css_class("confinement-note");

    auto* const line = Gtk::make_managed<Gtk::Label>(formatted(
        _("No installed font has the letters of this book’s language (%s). They show as boxes until one is installed."),
        language.c_str()));
    line->set_wrap(true);
    line->set_xalign(0);
    line->set_hexpand(true);
    line->set_margin_start(12);
    append(*line);

    auto* const close = Gtk::make_managed<Gtk::Button>();
    close->set_icon_name("window-close-symbolic");
    close->set_has_frame(false);
    close->set_valign(Gtk::Align::CENTER);
    close->set_tooltip_text(_("Close"));
    setAccessibleName(*close, _("Close"));
    close->signal_clicked().connect([this, whenDone] {
        set_visible(false);
        whenDone();
    });
    append(*close);
}

bool isMissingFontUntold(const std::string& language)
{
    static std::set<std::string> told;
    return !isWrittenByAnyFont(language) && told.insert(language).second;
}

}
