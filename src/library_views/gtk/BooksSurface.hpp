#pragma once

#include "library_views/LibraryViewSurface.hpp"
#include "library_views/gtk/BookModel.hpp"
#include "library_views/gtk/BookPopover.hpp"
#include "library_views/gtk/FileDropTarget.hpp"

#include <gtkmm/listitem.h>
#include <gtkmm/multiselection.h>
#include <gtkmm/signallistitemfactory.h>
#include <gtkmm/widget.h>

#include <functional>
#include <memory>
#include <optional>

namespace pagora {

// What the grid and the list have in common: a model over an array controller, and a selection that follows the
// controller's and that the controller's follows. Main thread.
class BooksSurface : public LibraryViewSurface, protected ArrayObserver {
public:
    explicit BooksSurface(ArrayController& books);
    ~BooksSurface() override;

    void setHandler(Handler* handler) override { _handler = handler; }
    void setDropDelegate(DropDelegate* delegate) override { _dropDelegate = delegate; }
    void popUpContextMenu(const BookMenu& menu) override;

    // What is put into the window.
    virtual Gtk::Widget& widget() = 0;
    // Called after the books were replaced.
    void setContentAction(std::function<void()> action) { _contentAction = std::move(action); }
    DropDelegate* dropDelegate() const { return _dropDelegate; }
    // Called when files that would be taken come over the view, and when they leave.
    void setDragAction(std::function<void(bool isOver)> action) { _dragAction = std::move(action); }
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
        });
        factory->signal_teardown().connect([](const auto& item) {
            if (auto* const cell = item->get_child())
                rememberItem(*cell, nullptr);
        });
        factory->signal_bind().connect([](const auto& item) {
            if (auto* const cell = dynamic_cast<Cell*>(item->get_child())) {
                cell->setBook(bookOf(*item));
                nameItem(*cell, cell->spokenName(), bookOf(*item));
            }
        });
        factory->signal_unbind().connect([](const auto& item) {
            if (auto* const cell = dynamic_cast<Cell*>(item->get_child()))
                cell->setBook(nullptr);
        });
        return factory;
    }

private:
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
    Handler* _handler = nullptr;
    DropDelegate* _dropDelegate = nullptr;
    std::function<void()> _contentAction;
    std::function<void(bool)> _dragAction;
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
