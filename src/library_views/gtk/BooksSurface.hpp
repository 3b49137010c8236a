#pragma once

#include "library_views/LibraryViewSurface.hpp"
#include "library_views/gtk/BookModel.hpp"

#include <gtkmm/listitem.h>
#include <gtkmm/multiselection.h>
#include <gtkmm/signallistitemfactory.h>
#include <gtkmm/widget.h>

#include <functional>

namespace pagora {

// What the grid and the list have in common: a model over an array controller, and a selection that follows the
// controller's and that the controller's follows. Main thread.
class BooksSurface : public LibraryViewSurface, protected ArrayObserver {
public:
    explicit BooksSurface(ArrayController& books);
    ~BooksSurface() override;

    void setHandler(Handler* handler) override { _handler = handler; }

    // What is put into the window.
    virtual Gtk::Widget& widget() = 0;
    // Called after the books were replaced.
    void setContentAction(std::function<void()> action) { _contentAction = std::move(action); }
    bool isEmpty() const { return _books.content().empty(); }

    const BookModel& model() const { return *_model; }
    Gtk::MultiSelection& selection() { return *_selection; }

protected:
    void contentDidChange() override;
    void selectionDidChange() override;

    // Follows clicks on the widget that shows the items. A click beside the items selects none.
    void watchClicks(Gtk::Widget& view);
    // The user asked for the book at this position to be opened.
    void activate(guint position);

    Glib::RefPtr<Gtk::MultiSelection> sharedSelection() { return _selection; }

    // Cells of the type `Cell`, which has `setBook`, made by `make` and used again for one book after another.
    template <typename Cell, typename Make>
    static Glib::RefPtr<Gtk::SignalListItemFactory> makeFactory(Make make)
    {
        auto factory = Gtk::SignalListItemFactory::create();
        factory->signal_setup().connect([make](const auto& item) { item->set_child(*make()); });
        factory->signal_bind().connect([](const auto& item) {
            if (auto* const cell = dynamic_cast<Cell*>(item->get_child()))
                cell->setBook(bookOf(*item));
        });
        factory->signal_unbind().connect([](const auto& item) {
            if (auto* const cell = dynamic_cast<Cell*>(item->get_child()))
                cell->setBook(nullptr);
        });
        return factory;
    }

private:
    static BookInfoPtr bookOf(const Gtk::ListItem& item);
    void userDidChangeSelection();

    ArrayController& _books;
    Handler* _handler = nullptr;
    std::function<void()> _contentAction;
    Glib::RefPtr<BookModel> _model;
    Glib::RefPtr<Gtk::MultiSelection> _selection;
    // While one of the two selections is brought to the state of the other.
    bool _isFollowing = false;
    sigc::connection _selectionChanged;
    sigc::connection _clickReport;
};

}
