#include "reader/gtk/SearchResultRow.hpp"

#include "desktop/gtk/DisplayText.hpp"

#include <glibmm/markup.h>

namespace pagora {

namespace {

// Soft hyphens would be shown where the line is broken elsewhere than in the book.
std::string withoutSoftHyphens(std::string text)
{
    constexpr std::string_view softHyphen = "\xC2\xAD";
    for (auto at = text.find(softHyphen); at != std::string::npos; at = text.find(softHyphen, at))
        text.erase(at, softHyphen.size());
    return text;
}

Glib::ustring markup(const std::string& text)
{
    return Glib::Markup::escape_text(displayText(withoutSoftHyphens(text)));
}

}

SearchResultRow::SearchResultRow()
{
    _text.set_xalign(0);
    _text.set_hexpand(true);
    _text.set_ellipsize(Pango::EllipsizeMode::END);
    append(_text);
    // The list's item around it has the role and the name.
    g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr);
}

void SearchResultRow::showChapter(const std::string& name)
{
    set_css_classes({ "search-chapter" });
    set_cursor();
    _text.set_wrap(false);
    _text.set_lines(1);
    _text.set_text(displayText(name, 200));
}

void SearchResultRow::showResult(const FoundText& found)
{
    set_css_classes({ "search-result" });
    set_cursor("pointer");
    _text.set_wrap(true);
    _text.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    _text.set_lines(3);
    _text.set_markup(markup(found.before) + "<b>" + markup(found.match) + "</b>" + markup(found.after));
}

std::string spokenResult(const FoundText& found)
{
    return withoutSoftHyphens(found.before + found.match + found.after);
}

}
