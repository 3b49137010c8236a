#include "library_views/gtk/BookCell.hpp"

#include "platform/Translation.hpp"
#include "platform/gtk/DisplayText.hpp"

#include <gtkmm/tooltip.h>

#include <algorithm>

namespace pagora {

namespace {

Glib::ustring spoken(const Glib::ustring& title, const Glib::ustring& author)
{
    return author.empty() ? title : Glib::ustring(formatted(_("%s, %s"), title.c_str(), author.c_str()));
}

}

Glib::ustring cellText(const std::optional<std::string>& text)
{
    if (!text)
        return {};
    constexpr std::size_t longest = 300;
    auto line = text->substr(0, longest);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return displayText(text->size() > longest ? line + "…" : line, longest + 8);
}

Glib::ustring spokenBook(const BookInfo& book)
{
    return spoken(cellText(book.title()), cellText(book.author()));
}

void showWholeTextOnHover(Gtk::Label& label)
{
    label.set_has_tooltip(true);
    label.signal_query_tooltip().connect(
        [&label](int, int, bool, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
            if (!label.get_layout()->is_ellipsized())
                return false;
            tooltip->set_text(label.get_text());
            return true;
        },
        false);
}

CoverCell::CoverCell(CoverLoader& loader, Size box)
    : CoverView(box)
    , _loader(loader)
{
}

void CoverCell::setBook(const BookInfoPtr& book)
{
    _ticket.reset();
    setCover({});
    if (book)
        _ticket = _loader.load(book, [this](const auto& cover) { setCover(cover); });
}

Glib::ustring CoverCell::spokenName()
{
    return _("Cover");
}

BookCell::BookCell(CoverLoader& loader)
    : Gtk::Box(Gtk::Orientation::VERTICAL)
    , _cover(loader, CoverLoader::coverSize)
{
    add_css_class("book");
    set_size_request(width, -1);
    set_halign(Gtk::Align::CENTER);

    _title.add_css_class("title");
    _title.set_wrap(true);
    _title.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    _title.set_lines(2);
    _title.set_justify(Gtk::Justification::CENTER);
    _title.set_yalign(0);
    _author.add_css_class("author");
    for (auto* const label : { &_title, &_author }) {
        label->set_ellipsize(Pango::EllipsizeMode::END);
        label->set_max_width_chars(1);
        label->set_hexpand(true);
        showWholeTextOnHover(*label);
    }
    // What is left of the height goes below the texts.
    _cover.set_valign(Gtk::Align::START);
    _author.set_valign(Gtk::Align::START);
    _author.set_vexpand(true);
    append(_cover);
    append(_title);
    append(_author);
}

void BookCell::setBook(const BookInfoPtr& book)
{
    _cover.setBook(book);
    _title.set_text(book ? cellText(book->title()) : Glib::ustring());
    _author.set_text(book ? cellText(book->author()) : Glib::ustring());
}

Glib::ustring BookCell::spokenName() const
{
    return spoken(title(), author());
}

}
