#include "panels/gtk/SearchResultRow.hpp"

#include "desktop/gtk/DisplayText.hpp"

#include <glibmm/markup.h>
#include <gtkmm/snapshot.h>
#include <gtkmm/stylecontext.h>

namespace pagora {

namespace {

// Removes soft hyphens, which would be visible where the row breaks lines differently from the book.
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
    : _layout(create_pango_layout(""))
{
    set_hexpand(true);
    _layout->set_ellipsize(Pango::EllipsizeMode::END);
    _layout->set_wrap(Pango::WrapMode::WORD_CHAR);
    // The list item around this widget has the role and the name.
    g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr);
}

void SearchResultRow::show(const Glib::ustring& markup, int maxLines)
{
    _layout->set_markup(markup);
    // Pango takes a negative height as a number of lines.
    _layout->set_height(-maxLines);
    queue_resize();
}

void SearchResultRow::showChapter(const std::string& name)
{
    set_css_classes({ "search-chapter" });
    set_cursor();
    show(Glib::Markup::escape_text(displayText(name, 200)), 1);
}

void SearchResultRow::showResult(const FoundText& found)
{
    set_css_classes({ "search-result" });
    set_cursor("pointer");
    show("<span line_height=\"1.3\">" + markup(found.before) + "<b>" + markup(found.match) + "</b>"
            + markup(found.after) + "</span>",
        3);
}

void SearchResultRow::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
    int& minimumBaseline, int& naturalBaseline) const
{
    minimum = natural = 0;
    minimumBaseline = naturalBaseline = -1;
    if (orientation == Gtk::Orientation::HORIZONTAL || forSize < 0)
        return;
    _layout->set_width(forSize * Pango::SCALE);
    int width = 0;
    _layout->get_pixel_size(width, natural);
    minimum = natural;
}

void SearchResultRow::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot)
{
    _layout->set_width(get_width() * Pango::SCALE);
    snapshot->append_layout(_layout, get_style_context()->get_color());
}

std::string spokenResult(const FoundText& found)
{
    return withoutSoftHyphens(found.before + found.match + found.after);
}

}
