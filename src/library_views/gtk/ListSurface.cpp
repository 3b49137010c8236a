#include "library_views/gtk/ListSurface.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/TextScale.hpp"
#include "library_views/gtk/BookCell.hpp"

#include <gtkmm/columnviewcolumn.h>

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {

constexpr Size smallCover { 28, 40 };
// Column widths in points. The identifier column fits the longest common identifiers with margins.
constexpr double identifierWidth = 220;
constexpr double thirteenDigits = 130;

using Text = const std::optional<std::string>& (BookInfo::*)() const;

// A cell with one of a book's texts.
class TextCell : public Gtk::Label {
public:
    TextCell(Text text, const char* style)
        : _text(text)
    {
        set_xalign(0);
        set_ellipsize(Pango::EllipsizeMode::END);
        add_css_class(style);
        showWholeTextOnHover(*this);
    }
    void setBook(const BookInfoPtr& book) { showText(*this, book ? (*book.*_text)() : std::nullopt); }
    void showProgress() { }
    Glib::ustring spokenName(const BookInfo&) const { return get_text(); }

private:
    Text _text;
};

}

ListSurface::ListSurface(ArrayController& books, LibraryFinder& finder, CoverLoader& loader)
    : BooksSurface(books, finder)
    , _layout(Gtk::Builder::create_from_resource("/org/pagora/Pagora/ui/TableView.ui"))
    , _tableView(_layout->get_widget<Gtk::Widget>("tableView"))
    , _bookTable(_layout->get_widget<Gtk::ColumnView>("bookTable"))
{
    const auto column = [this](const char* id) { return _layout->get_object<Gtk::ColumnViewColumn>(id); };
    const auto texts = [](Text text, const char* style) {
        return makeFactory<TextCell>([text, style] { return Gtk::make_managed<TextCell>(text, style); });
    };
    column("coverColumn")->set_factory(makeFactory<CoverCell>([&loader] {
        return Gtk::make_managed<CoverCell>(loader, smallCover);
    }));
    column("titleColumn")->set_factory(texts(&BookInfo::title, "title"));
    column("authorColumn")->set_factory(texts(&BookInfo::author, "author"));
    column("identifierColumn")->set_factory(texts(&BookInfo::isbn, "identifier"));
    column("identifierColumn")
        ->set_fixed_width(static_cast<int>(std::lround(std::max(identifierWidth, thirteenDigits * textScale()))));
    _bookTable->set_model(sharedSelection());
    _bookTable->signal_activate().connect([this](guint position) { activate(position); });
    leaveUnnamed(*_tableView);
    auto& header = *_bookTable->get_first_child();
    setAccessibleName(header, {});
    auto* title = header.get_first_child();
    for (const auto* const id : { "coverColumn", "titleColumn", "authorColumn", "identifierColumn" }) {
        const auto name = column(id)->get_title();
        setAccessibleName(*title, name.empty() ? CoverCell::name() : name);
        title = title->get_next_sibling();
    }
    setAccessibleName(*_bookTable->get_last_child(), _("Books"));
    watchInput(*_bookTable, *_bookTable->get_last_child());
}

ListSurface::~ListSurface()
{
    stopWatching();
    _bookTable->set_model({});
}

}
