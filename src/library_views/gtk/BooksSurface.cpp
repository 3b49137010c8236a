#include "library_views/gtk/BooksSurface.hpp"

#include "library_views/gtk/BookItem.hpp"

#include <glibmm/main.h>
#include <gtkmm/bitset.h>
#include <gtkmm/eventcontrollerlegacy.h>
#include <gtkmm/gestureclick.h>

namespace pagora {

BooksSurface::BooksSurface(ArrayController& books)
    : _books(books)
    , _model(BookModel::create())
    , _selection(Gtk::MultiSelection::create(_model))
{
    _model->setBooks(books.contentArray());
    _selectionChanged = _selection->signal_selection_changed().connect([this](guint, guint) {
        if (!_isFollowing)
            userDidChangeSelection();
    });
    _books.setObserver(this);
}

BooksSurface::~BooksSurface()
{
    _selectionChanged.disconnect();
    _clickReport.disconnect();
}

void BooksSurface::contentDidChange()
{
    _isFollowing = true;
    _model->setBooks(_books.contentArray());
    _isFollowing = false;
    if (_contentAction)
        _contentAction();
}

void BooksSurface::selectionDidChange()
{
    if (_isFollowing)
        return;
    const auto selected = Gtk::Bitset::create();
    for (const auto index : _books.selectionIndexes())
        selected->add(static_cast<guint>(index));
    const auto all = Gtk::Bitset::create();
    all->add_range(0, static_cast<guint>(_books.content().size()));
    _isFollowing = true;
    _selection->set_selection(selected, all);
    _isFollowing = false;
}

void BooksSurface::userDidChangeSelection()
{
    std::vector<std::size_t> indexes;
    const auto selected = _selection->get_selection();
    indexes.reserve(selected->get_size());
    for (const auto index : *selected)
        indexes.push_back(index);
    _isFollowing = true;
    _books.setSelectionIndexes(std::move(indexes));
    _isFollowing = false;
    if (_handler)
        _handler->userDidSelect();
}

void BooksSurface::activate(guint position)
{
    if (!_selection->is_selected(position))
        _selection->select_item(position, true);
    if (_handler)
        _handler->userDidClick(2);
}

void BooksSurface::watchClicks(Gtk::Widget& view)
{
    // The items take clicks for themselves, so single clicks are seen on their way down and reported on the way up.
    const auto events = Gtk::EventControllerLegacy::create();
    events->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    events->signal_event().connect(
        [this](const Glib::RefPtr<const Gdk::Event>& event) {
            if (event->get_event_type() == Gdk::Event::Type::BUTTON_RELEASE
                && event->get_button() == GDK_BUTTON_PRIMARY) {
                _clickReport.disconnect();
                _clickReport = Glib::signal_idle().connect(
                    [this] {
                        if (_handler)
                            _handler->userDidClick(1);
                        return false;
                    },
                    Glib::PRIORITY_HIGH_IDLE);
            }
            return false;
        },
        false);
    view.add_controller(events);

    const auto beside = Gtk::GestureClick::create();
    beside->set_button(GDK_BUTTON_PRIMARY);
    beside->signal_pressed().connect([this, &view](int, double x, double y) {
        if (view.pick(x, y) == &view)
            _selection->unselect_all();
    });
    view.add_controller(beside);
}

BookInfoPtr BooksSurface::bookOf(const Gtk::ListItem& item)
{
    const auto book = std::dynamic_pointer_cast<const BookItem>(item.get_item());
    return book ? book->book() : nullptr;
}

}
