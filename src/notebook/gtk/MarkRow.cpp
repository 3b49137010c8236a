#include "notebook/gtk/MarkRow.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "notebook/PlainText.hpp"

namespace pagora {

namespace {

constexpr std::size_t maxTextLength = 300;

void prepare(Gtk::Label& label, int lines)
{
    label.set_xalign(0);
    label.set_hexpand(true);
    label.set_wrap(true);
    label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    label.set_lines(lines);
    label.set_ellipsize(Pango::EllipsizeMode::END);
}

}

MarkRow::MarkRow()
    : Gtk::Box(Gtk::Orientation::VERTICAL)
{
    prepare(_text, 3);
    prepare(_note, 3);
    _note.add_css_class("mark-note");
    append(_text);
    append(_note);
    // The list item around this widget has the role and the accessible name.
    g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr);
}

void MarkRow::show(const MarkLine& line)
{
    const bool isHeading = line.kind == MarkLine::Kind::Heading;
    const auto text = line.text.empty() ? std::string(_("A page without text")) : plainText(line.text);
    _text.set_text(displayText(text, maxTextLength));
    _note.set_text(displayText(plainText(line.note), maxTextLength));
    _note.set_visible(!isHeading && !line.note.empty());
    set_cursor(isHeading ? "default" : "pointer");
    if (isHeading)
        return set_css_classes({ "search-chapter" });
    std::vector<Glib::ustring> classes { "mark-row" };
    classes.push_back(line.kind == MarkLine::Kind::Bookmark ? "mark-bookmark" : "mark-" + line.color);
    if (line.isLost)
        classes.push_back("mark-lost");
    set_css_classes(classes);
}

std::string spokenMark(const MarkLine& line)
{
    const auto text = isolatedText(line.text.empty() ? _("A page without text") : line.text);
    switch (line.kind) {
    case MarkLine::Kind::Heading:
        return plainText(line.text);
    case MarkLine::Kind::Bookmark:
        return formatted(_("Bookmark: %s"), text.c_str());
    case MarkLine::Kind::Highlight:
        return formatted(_("Highlight, %s: %s"), colorTitle(line.color).c_str(), text.c_str());
    default:
        return formatted(_("Note: %s. On: %s"), isolatedText(line.note).c_str(), text.c_str());
    }
}

std::string colorTitle(const std::string& color)
{
    if (color == "orange")
        return _("Orange");
    if (color == "pink")
        return _("Pink");
    if (color == "purple")
        return _("Purple");
    if (color == "blue")
        return _("Blue");
    if (color == "green")
        return _("Green");
    return _("Yellow");
}

}
