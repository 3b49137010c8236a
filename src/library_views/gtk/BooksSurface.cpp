#include "library_views/gtk/BooksSurface.hpp"

#include "desktop/gtk/AccessibleNames.hpp"
#include "library_views/gtk/BookCell.hpp"

#include <gtkmm/bitset.h>

#include <utility>

namespace pagora {

BooksSurface::BooksSurface(ArrayController& books, LibraryFinder& finder)
    : _books(books)
    , _finder(finder)
    , _model(BookModel::create())
    , _selection(Gtk::MultiSelection::create(_model))
{
    _model->setBooks(ShownBooks(books.contentArray()));
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

void BooksSurface::setQuery(std::function<BookQuery()> query)
{
    _query = std::move(query);
    contentDidChange();
}

void BooksSurface::contentDidChange()
{
    find(MoveToSelection::No);
    if (_contentAction)
        _contentAction();
}

void BooksSurface::queryDidChange()
{
    find(MoveToSelection::Yes);
}

void BooksSurface::find(MoveToSelection move)
{
    auto query = _query ? _query() : BookQuery();
    if (query.leavesAllInPlace()) {
        _finder.dropOthers(_books.contentArray());
        show(ShownBooks(_books.contentArray()), move);
        return;
    }
    _finding = _finder.find(
        _books.contentArray(), std::move(query), [this, move](ShownBooks found) { show(std::move(found), move); });
}

void BooksSurface::show(ShownBooks shown, MoveToSelection move)
{
    _finding.reset();
    const auto& selected = _books.selectionIndexes();
    auto stillShown = shown.indexesAt(shown.positionsOf(selected));
    const bool hidesSelected = stillShown.size() != selected.size();
    _isFollowing = true;
    _model->setBooks(std::move(shown));
    if (hidesSelected)
        _books.setSelectionIndexes(std::move(stillShown));
    _isFollowing = false;
    selectionDidChange();
    if (hidesSelected && _handler)
        _handler->userDidSelect();
    if (move == MoveToSelection::Yes)
        moveTo(firstSelected().value_or(0));
    if (std::exchange(_goesToBooks, false))
        goToBooks();
    if (_shownAction)
        _shownAction();
}

void BooksSurface::moveTo(std::size_t position)
{
    if (_items && position < _model->books().size())
        _items->activate_action("list.scroll-to-item", Glib::Variant<guint32>::create(static_cast<guint32>(position)));
}

std::optional<std::size_t> BooksSurface::firstSelected() const
{
    const auto selected = _selection->get_selection();
    return selected->is_empty() ? std::nullopt : std::optional<std::size_t>(selected->get_minimum());
}

void BooksSurface::goToBooks()
{
    // The newest query replaces the pending one.
    _goesToBooks = _finding != nullptr;
    if (_goesToBooks)
        return;
    if (_model->books().size() > 0 && !firstSelected())
        _selection->select_item(0, true);
    focusBooks();
}

void BooksSurface::focusBooks()
{
    const auto position = firstSelected().value_or(0);
    for (auto* item = _items->get_first_child(); item; item = item->get_next_sibling()) {
        if (positionOf(*item) == position && item->grab_focus())
            return;
    }
    makeFirstResponder();
}

bool BooksSurface::showsContent() const
{
    return _model->books().books() == _books.contentArray();
}

void BooksSurface::selectionDidChange()
{
    if (_isFollowing)
        return;
    const auto selected = Gtk::Bitset::create();
    if (showsContent()) {
        for (const auto position : _model->books().positionsOf(_books.selectionIndexes()))
            selected->add(static_cast<guint>(position));
    }
    const auto all = Gtk::Bitset::create();
    all->add_range(0, static_cast<guint>(_model->books().size()));
    _isFollowing = true;
    _selection->set_selection(selected, all);
    _isFollowing = false;
}

void BooksSurface::userDidChangeSelection()
{
    if (!showsContent()) {
        selectionDidChange();
        return;
    }
    std::vector<std::size_t> positions;
    const auto selected = _selection->get_selection();
    positions.reserve(selected->get_size());
    for (const auto position : *selected)
        positions.push_back(position);
    _isFollowing = true;
    _books.setSelectionIndexes(_model->books().indexesAt(positions));
    _isFollowing = false;
    if (_handler)
        _handler->userDidSelect();
}

void BooksSurface::activate(guint position)
{
    if (!_selection->is_selected(position))
        _selection->select_item(position, true);
    if (_handler)
        _handler->mouseDown(2);
}

void BooksSurface::nameItem(Gtk::Widget& cell, const Glib::ustring& name, const BookInfoPtr& book)
{
    auto* const item = cell.get_parent();
    if (!item)
        return;
    setAccessibleName(*item, name);
    // Rows get the name of their book. Cells already have their text.
    if (item->get_css_name() == "cell" && item->get_parent())
        setAccessibleName(*item->get_parent(), spokenBook(*book));
}

Glib::RefPtr<BookItem> BooksSurface::itemOf(const Gtk::ListItem& item)
{
    return std::dynamic_pointer_cast<BookItem>(const_cast<Gtk::ListItem&>(item).get_item());
}

}
