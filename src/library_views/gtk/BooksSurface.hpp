#pragma once

#include "library_views/LibraryViewSurface.hpp"
#include "library_views/gtk/BookModel.hpp"
#include "library_views/gtk/BookPopover.hpp"
#include "library_views/gtk/FileDropTarget.hpp"
#include "library_views/gtk/LibraryFinder.hpp"

#include <gtkmm/listitem.h>
#include <gtkmm/multiselection.h>
#include <gtkmm/signallistitemfactory.h>
#include <gtkmm/widget.h>

#include <functional>
#include <memory>
#include <optional>

namespace pagora {

// What the grid and the list have in common: a model of those books of an array controller that are asked for, in the
// order asked for, and a selection that follows the controller's and that the controller's follows. A book that is no
// longer shown is no longer selected. Main thread.
class BooksSurface : public LibraryViewSurface, protected ArrayObserver {
public:
    // The finder outlives it.
    BooksSurface(ArrayController& books, LibraryFinder& finder);
    ~BooksSurface() override;

    void setHandler(Handler* handler) override { _handler = handler; }
    void setDropDelegate(DropDelegate* delegate) override { _dropDelegate = delegate; }
    void popUpContextMenu(const BookMenu& menu) override;

    // What is put into the window.
    virtual Gtk::Widget& widget() = 0;
    // Asked for what to show whenever the books are replaced; without it, all of them are shown in their order. What is
    // found late is shown late: until then the books before stay, and none of them can be selected.
    void setQuery(std::function<BookQuery()> query);
    // The query has another answer.
    void queryDidChange();
    // Gives the first of the selected books that are shown the focus; where none is selected, selects the first book.
    void goToBooks();
    // The same without selecting.
    void focusBooks();
    const ShownBooks& shownBooks() const { return _model->books(); }

    // Called when the books were replaced.
    void setContentAction(std::function<void()> action) { _contentAction = std::move(action); }
    // Called when other books are shown.
    void setShownAction(std::function<void()> action) { _shownAction = std::move(action); }
    DropDelegate* dropDelegate() const { return _dropDelegate; }
    // Called when files come over the view, and when they leave.
    void setDragAction(std::function<void(const DropHover&)> action) { _dragAction = std::move(action); }
    const BookArray& content() const { return _books.contentArray(); }
    bool isEmpty() const { return _books.content().empty(); }

    const BookModel& model() const { return *_model; }
    Gtk::MultiSelection& selection() { return *_selection; }
    // Null as long as no menu was shown.
    BookPopover* contextMenu() { return _contextMenu.get(); }

protected:
    void contentDidChange() override;
    void selectionDidChange() override;

    // Follows clicks and keys on the view, whose items are children of `items`. A click beside them selects none.
    void watchInput(Gtk::Widget& view, Gtk::Widget& items);
    // Before the widgets go.
    void stopWatching();
    // The user asked for the book at this position to be opened.
    void activate(guint position);

    Glib::RefPtr<Gtk::MultiSelection> sharedSelection() { return _selection; }

    // Cells of the type `Cell`, which has `setBook` and `spokenName`, made by `make` and used again for one book after
    // another.
    template <typename Cell, typename Make>
    static Glib::RefPtr<Gtk::SignalListItemFactory> makeFactory(Make make)
    {
        auto factory = Gtk::SignalListItemFactory::create();
        factory->signal_setup().connect([make](const auto& item) {
            auto* const cell = make();
            item->set_child(*cell);
            rememberItem(*cell, item->gobj());
            // The library comes back from a reader: a book may have been read.
            cell->signal_map().connect([cell, item = item.get()] {
                if (const auto book = bookOf(*item)) {
                    cell->showProgress();
                    nameItem(*cell, cell->spokenName(*book), book);
                }
            });
        });
        factory->signal_teardown().connect([](const auto& item) {
            if (auto* const cell = item->get_child())
                rememberItem(*cell, nullptr);
        });
        factory->signal_bind().connect([](const auto& item) {
            if (auto* const cell = dynamic_cast<Cell*>(item->get_child())) {
                const auto book = bookOf(*item);
                cell->setBook(book);
                if (book)
                    nameItem(*cell, cell->spokenName(*book), book);
            }
        });
        factory->signal_unbind().connect([](const auto& item) {
            if (auto* const cell = dynamic_cast<Cell*>(item->get_child()))
                cell->setBook(nullptr);
        });
        return factory;
    }

private:
    enum class MoveToSelection : bool { No, Yes };

    void find(MoveToSelection move);
    void show(ShownBooks shown, MoveToSelection move);
    void moveTo(std::size_t position);
    std::optional<std::size_t> firstSelected() const;
    // The books shown are those of the controller, and not those that it had before.
    bool showsContent() const;
    // Of the item's book in the controller.
    std::optional<std::size_t> indexOf(Gtk::Widget& item) const;
    static BookInfoPtr bookOf(const Gtk::ListItem& item);
    // Tells assistive technology what the list's own widgets around the cell are called.
    static void nameItem(Gtk::Widget& cell, const Glib::ustring& name, const BookInfoPtr& book);
    static void rememberItem(Gtk::Widget& cell, GtkListItem* item);
    void userDidChangeSelection();
    void watchLeftButton(Gtk::Widget& view);
    bool isOverItem(Gtk::Widget& view, const Gdk::Event& event) const;
    void reportClick(bool onItem);
    void watchRightButton(Gtk::Widget& view);
    void watchMenuKeys(Gtk::Widget& view);
    // The child of `_items` that holds the widget; null for a widget outside the items.
    Gtk::Widget* itemHolding(Gtk::Widget* widget) const;
    static std::optional<std::size_t> positionOf(Gtk::Widget& item);
    // The item with the keyboard focus, or the first that is selected; its place goes to `_menuPlace`.
    std::optional<std::size_t> itemForKeys(Gtk::Widget& view);

    ArrayController& _books;
    LibraryFinder& _finder;
    // Null while nothing is looked for.
    LibraryFinder::Ticket _finding;
    // The user asked to go to what is looked for.
    bool _goesToBooks = false;
    std::function<BookQuery()> _query;
    Handler* _handler = nullptr;
    DropDelegate* _dropDelegate = nullptr;
    std::function<void()> _contentAction;
    std::function<void()> _shownAction;
    std::function<void(const DropHover&)> _dragAction;
    Glib::RefPtr<BookModel> _model;
    Glib::RefPtr<Gtk::MultiSelection> _selection;
    // While one of the two selections is brought to the state of the other.
    bool _isFollowing = false;
    sigc::connection _selectionChanged;
    sigc::connection _clickReport;
    Gtk::Widget* _items = nullptr;
    // Where the next menu comes up, in points of `widget()`.
    Gdk::Rectangle _menuPlace;
    std::unique_ptr<BookPopover> _contextMenu;
    std::unique_ptr<FileDropTarget> _dropTarget;
};

}
