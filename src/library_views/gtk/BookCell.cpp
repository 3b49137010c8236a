#include "library_views/gtk/BookCell.hpp"

#include "base/Translation.hpp"
#include "catalogue/BookTexts.hpp"
#include "covers/gtk/CellText.hpp"
#include "desktop/gtk/TextScale.hpp"
#include "desktop/gtk/Tooltip.hpp"

#include <gtkmm/stylecontext.h>

#include <algorithm>
#include <cmath>
#include <pango/pangocairo.h>
#include <vector>

namespace pagora {

namespace {

constexpr int titleLines = 2;

Glib::ustring spoken(const Glib::ustring& title, const Glib::ustring& author)
{
    return author.empty() ? title : Glib::ustring(formatted(_("%s, %s"), title.c_str(), author.c_str()));
}

// Returns the height of a line in the label's font, in points. Cached, because measuring is slow and all cells share
// the fonts.
int lineHeight(const Gtk::Label& label)
{
    struct Line {
        Pango::FontDescription font;
        double resolution;
        int height;
    };
    static std::vector<Line> lines;
    const auto context = const_cast<Gtk::Label&>(label).get_pango_context();
    const auto font = context->get_font_description();
    const double resolution = pango_cairo_context_get_resolution(context->gobj());
    for (const auto& line : lines) {
        if (line.font == font && line.resolution == resolution)
            return line.height;
    }
    const auto metrics = context->get_metrics(font);
    const int height = PANGO_PIXELS_CEIL(metrics.get_ascent() + metrics.get_descent());
    lines.push_back({ font, resolution, height });
    return height;
}

// The height with margins.
int heightOf(const Gtk::Label& label, int lines)
{
    const auto margin = label.get_style_context()->get_margin();
    return lines * lineHeight(label) + margin.get_top() + margin.get_bottom();
}

}

Glib::ustring spokenBook(const BookInfo& book)
{
    const auto name = spoken(cellText(book.title()), cellText(book.author()));
    const auto read = readFraction(book);
    if (!read)
        return name;
    return formatted(_("%s, %d %% read"), name.c_str(), static_cast<int>(std::lround(*read * 100)));
}

void showText(Gtk::Label& label, const std::optional<std::string>& text)
{
    label.set_text(cellText(text));
    const char* const dimmed = "says-little";
    saysLittle(text) ? label.add_css_class(dimmed) : label.remove_css_class(dimmed);
}

void showWholeTextOnHover(Gtk::Label& label)
{
    showOnHover(label, [&label] { return label.get_layout()->is_ellipsized() ? label.get_text() : Glib::ustring(); });
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
    _book = book;
    showProgress();
    if (book)
        _ticket = _loader.load(book, get_scale_factor(), [this](const auto& cover) { setCover(cover); });
}

void CoverCell::showProgress()
{
    setProgress(_book ? readFraction(*_book) : std::nullopt);
}

Glib::ustring CoverCell::spokenName(const BookInfo&)
{
    return name();
}

Glib::ustring CoverCell::name()
{
    return _("Cover");
}

BookCell::BookCell(CoverLoader& loader)
    : _cover(loader, CoverLoader::coverSize)
{
    add_css_class("book");
    g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_GROUP, nullptr);
    set_halign(Gtk::Align::CENTER);

    _title.add_css_class("title");
    _title.set_wrap(true);
    _title.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    _title.set_lines(titleLines);
    _title.set_justify(Gtk::Justification::CENTER);
    _title.set_yalign(0);
    _author.add_css_class("author");
    for (auto* const label : { &_title, &_author }) {
        label->set_ellipsize(Pango::EllipsizeMode::END);
        label->set_max_width_chars(1);
        showWholeTextOnHover(*label);
    }
    for (auto* const part : parts())
        part->set_parent(*this);
    // The C widget is disposed before the C++ object is destroyed.
    _letGo = signal_destroy().connect([this] { letGoOfParts(); });
}

BookCell::~BookCell()
{
    _letGo.disconnect();
    letGoOfParts();
}

int BookCell::width()
{
    constexpr double usual = 138;
    return static_cast<int>(std::lround(usual * (1 + std::max(1.0, textScale())) / 2));
}

std::array<Gtk::Widget*, 3> BookCell::parts()
{
    return { &_cover, &_title, &_author };
}

void BookCell::letGoOfParts()
{
    for (auto* const part : parts()) {
        if (part->get_parent())
            part->unparent();
    }
}

void BookCell::measure_vfunc(
    Gtk::Orientation orientation, int, int& minimum, int& natural, int& minimumBaseline, int& naturalBaseline) const
{
    constexpr int coverHeight = static_cast<int>(CoverLoader::coverSize.height);
    minimum = natural = orientation == Gtk::Orientation::HORIZONTAL
        ? width()
        : coverHeight + heightOf(_title, titleLines) + heightOf(_author, 1);
    minimumBaseline = naturalBaseline = -1;
}

// Excess height stays empty below the texts.
void BookCell::size_allocate_vfunc(int width, int, int)
{
    int top = 0;
    for (auto* const part : parts()) {
        int height = 0;
        int ignored = 0;
        part->measure(Gtk::Orientation::VERTICAL, width, ignored, height, ignored, ignored);
        part->size_allocate({ 0, top, width, height }, -1);
        top += height;
    }
}

void BookCell::setBook(const BookInfoPtr& book)
{
    _cover.setBook(book);
    showText(_title, book ? book->title() : std::nullopt);
    showText(_author, book ? book->author() : std::nullopt);
}

}
