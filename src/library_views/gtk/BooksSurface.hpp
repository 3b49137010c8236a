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
#include <unordered_map>

namespace pagora {

// The common base of the grid and the list: a model of the books that a query selects from an array controller, and a
// selection that is kept equal to the controller's. Books that are no longer shown are deselected. Main thread only.
class BooksSurface : public LibraryViewSurface, protected ArrayObserver {
public:
    // `finder` must outlive this object.
    BooksSurface(ArrayController& books, LibraryFinder& finder);
    ~BooksSurface() override;

    void setHandler(Handler* handler) override { _handler = handler; }
    void setDropDelegate(DropDelegate* delegate) override { _dropDelegate = delegate; }
    void popUpContextMenu(const BookMenu& menu) override;

    // Returns the widget for the window.
    virtual Gtk::Widget& widget() = 0;
    // Sets the function that returns the query whenever the books are replaced. Without it, all books are shown in
    // their order. The previous books stay visible until the result arrives, but none of them can be selected.
    void setQuery(std::function<BookQuery()> query);
    // Called when the result of the query may have changed.
    void queryDidChange();
    // Focuses the first selected book that is shown. Selects the first book if none is selected.
    void goToBooks();
    // Focuses the first selected book that is shown, without selecting.
    void focusBooks();
    const ShownBooks& shownBooks() const { return _model->books(); }

    // Sets the callback for replaced books.
    void setContentAction(std::function<void()> action) { _contentAction = std::move(action); }
    // Sets the callback for a change of the shown books.
    void setShownAction(std::function<void()> action) { _shownAction = std::move(action); }
    DropDelegate* dropDelegate() const { return _dropDelegate; }
    // Sets the callback for a drag of files that enters or leaves the view.
    void setDragAction(std::function<void(const DropHover&)> action) { _dragAction = std::move(action); }
    const BookArray& content() const { return _books.contentArray(); }
    bool isEmpty() const { return _books.content().empty(); }

    const BookModel& model() const { return *_model; }
    Gtk::MultiSelection& selection() { return *_selection; }
    // Null until a menu is shown.
    BookPopover* contextMenu() { return _contextMenu.get(); }

protected:
    void contentDidChange() override;
    void selectionDidChange() override;

    // Handles clicks and keys on the view, whose items are children of `items`. A click outside them clears the
    // selection.
    void watchInput(Gtk::Widget& view, Gtk::Widget& items);
    // Called before the widgets are destroyed.
    void stopWatching();
    // Called when the user opens the book at this position.
    void activate(guint position);

    Glib::RefPtr<Gtk::MultiSelection> sharedSelection() { return _selection; }

    // Creates cells of the type `Cell`, which has `setBook` and `spokenName`, with `make`. Cells are reused for other
    // books.
    template <typename Cell, typename Make>
    static Glib::RefPtr<Gtk::SignalListItemFactory> makeFactory(Make make)
    {
        auto factory = Gtk::SignalListItemFactory::create();
        // The connection of each bound cell to its book.
        const auto changes = std::make_shared<std::unordered_map<GtkListItem*, sigc::connection>>();
        factory->signal_setup().connect([make](const auto& item) {
            auto* const cell = make();
            item->set_child(*cell);
            rememberItem(*cell, item->gobj());
            // The cell becomes visible again after a book was read, so its progress may have changed.
            cell->signal_map().connect([cell, item = item.get()] {
                if (const auto shown = itemOf(*item)) {
                    cell->showProgress();
                    nameItem(*cell, cell->spokenName(*shown->book()), shown->book());
                }
            });
        });
        factory->signal_teardown().connect([](const auto& item) {
            if (auto* const cell = item->get_child())
                rememberItem(*cell, nullptr);
        });
        factory->signal_bind().connect([changes](const auto& listItem) {
            auto* const cell = dynamic_cast<Cell*>(listItem->get_child());
            const auto item = itemOf(*listItem);
            if (!cell || !item)
                return;
            const auto show = [cell, shown = item.get()] {
                cell->setBook(shown->book());
                nameItem(*cell, cell->spokenName(*shown->book()), shown->book());
            };
            show();
            (*changes)[listItem->gobj()] = item->signal_book_changed().connect(show);
        });
        factory->signal_unbind().connect([changes](const auto& listItem) {
            if (const auto change = changes->extract(listItem->gobj()))
                change.mapped().disconnect();
            if (auto* const cell = dynamic_cast<Cell*>(listItem->get_child()))
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
    // Returns whether the shown books are the controller's current ones.
    bool showsContent() const;
    // Returns the index of the item's book in the controller.
    std::optional<std::size_t> indexOf(Gtk::Widget& item) const;
    static Glib::RefPtr<BookItem> itemOf(const Gtk::ListItem& item);
    // Sets the accessible names of the list's own widgets around the cell.
    static void nameItem(Gtk::Widget& cell, const Glib::ustring& name, const BookInfoPtr& book);
    static void rememberItem(Gtk::Widget& cell, GtkListItem* item);
    void userDidChangeSelection();
    void watchLeftButton(Gtk::Widget& view);
    bool isOverItem(Gtk::Widget& view, const Gdk::Event& event) const;
    void reportClick(bool onItem);
    void watchRightButton(Gtk::Widget& view);
    void watchKeys(Gtk::Widget& view);
    bool activateSelected();
    // Returns the child of `_items` that contains the widget; null for a widget outside the items.
    Gtk::Widget* itemHolding(Gtk::Widget* widget) const;
    static std::optional<std::size_t> positionOf(Gtk::Widget& item);
    // Returns the focused item, or the first selected one. Stores its place in `_menuPlace`.
    std::optional<std::size_t> itemForKeys(Gtk::Widget& view);

    ArrayController& _books;
    LibraryFinder& _finder;
    // Null while no search is pending.
    LibraryFinder::Ticket _finding;
    // True if the result gets the focus when it arrives.
    bool _goesToBooks = false;
    std::function<BookQuery()> _query;
    Handler* _handler = nullptr;
    DropDelegate* _dropDelegate = nullptr;
    std::function<void()> _contentAction;
    std::function<void()> _shownAction;
    std::function<void(const DropHover&)> _dragAction;
    Glib::RefPtr<BookModel> _model;
    Glib::RefPtr<Gtk::MultiSelection> _selection;
    // True while one of the two selections is copied to the other.
    bool _isFollowing = false;
    sigc::connection _selectionChanged;
    sigc::connection _clickReport;
    Gtk::Widget* _items = nullptr;
    // The place of the next menu, in points of `widget()`.
    Gdk::Rectangle _menuPlace;
    std::unique_ptr<BookPopover> _contextMenu;
    std::unique_ptr<FileDropTarget> _dropTarget;
};

}
