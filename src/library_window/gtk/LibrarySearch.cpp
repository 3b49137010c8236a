#include "library_window/gtk/LibrarySearch.hpp"

#include "base/SearchText.hpp"
#include "base/Translation.hpp"

#include <gtkmm/popover.h>
#include <gtkmm/revealer.h>
#include <gtkmm/root.h>

#include <array>
#include <utility>

namespace pagora {

namespace {

constexpr std::array<std::pair<const char*, BookOrder>, 4> orders { {
    { "as-added", BookOrder::AsAdded },
    { "title", BookOrder::Title },
    { "author", BookOrder::Author },
    { "last-read", BookOrder::LastRead },
} };

template <typename Action>
void perform(const Action& action)
{
    if (action)
        action();
}

// Returns whether the key types a character or starts to. A space selects the focused book instead.
bool isWriting(guint key, Gdk::ModifierType state)
{
    const auto others = Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::ALT_MASK | Gdk::ModifierType::SUPER_MASK
        | Gdk::ModifierType::META_MASK;
    if ((state & others) != Gdk::ModifierType())
        return false;
    const bool isDeadKey = key >= GDK_KEY_dead_grave && key <= GDK_KEY_dead_longsolidusoverlay;
    const auto character = gdk_keyval_to_unicode(key);
    return isDeadKey || key == GDK_KEY_Multi_key || (character > ' ' && g_unichar_isprint(character));
}

std::string countText(std::size_t shown, std::size_t all)
{
    const auto number = static_cast<unsigned long>(all);
    if (shown == all)
        return formatted(plural("%lu book", "%lu books", number), number);
    return formatted(plural("%lu of %lu book", "%lu of %lu books", number), static_cast<unsigned long>(shown), number);
}

}

LibrarySearch::LibrarySearch(const Glib::RefPtr<Gtk::Builder>& layout)
    : _root(*layout->get_widget<Gtk::Widget>("mainWindow"))
    , _bar(*layout->get_widget<Gtk::SearchBar>("searchBar"))
    , _entry(*layout->get_widget<Gtk::Widget>("searchField"))
    , _field(_entry)
    , _count(*layout->get_widget<Gtk::Label>("bookCount"))
    , _button(*layout->get_widget<Gtk::ToggleButton>("searchButton"))
    , _orderButton(*layout->get_widget<Gtk::Widget>("orderButton"))
{
    // This closes the bar and clears the field on Escape.
    gtk_search_bar_connect_entry(_bar.gobj(), GTK_EDITABLE(_entry.gobj()));
    _field.setActions([this] { perform(_doneAction); }, nullptr);
    // An animated bar could not take the keyboard focus at once, and the next keys would go to the books.
    if (auto* const revealer = dynamic_cast<Gtk::Revealer*>(_bar.get_first_child()))
        revealer->set_transition_duration(0);
    addOrders();
    addFieldKeys();
    _connections = {
        // This is called once when a text replaces another, unlike the field's signal.
        _entry.connect_property_changed("text",
            [this] {
                if (auto words = searchWords(_field.stringValue()); words != _words) {
                    _words = std::move(words);
                    perform(_queryAction);
                }
            }),
        _button.signal_toggled().connect([this] {
            if (_button.get_active() != isOpen())
                _button.get_active() ? open() : end();
        }),
        _bar.property_search_mode_enabled().signal_changed().connect([this] { barDidChange(); }),
    };
}

void LibrarySearch::addFieldKeys()
{
    const auto down = Gtk::EventControllerKey::create();
    down->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) {
            if (key != GDK_KEY_Down && key != GDK_KEY_KP_Down)
                return false;
            perform(_doneAction);
            return true;
        },
        false);
    _entry.add_controller(down);
}

void LibrarySearch::barDidChange()
{
    _button.set_active(isOpen());
    if (isOpen())
        perform(_openAction);
    else if (hasKeyboard())
        perform(_closeAction);
}

bool LibrarySearch::hasKeyboard() const
{
    auto* const root = _bar.get_root();
    auto* const focus = root ? root->get_focus() : nullptr;
    return focus && focus->is_ancestor(_bar);
}

LibrarySearch::~LibrarySearch()
{
    for (auto& connection : _connections)
        connection.disconnect();
}

void LibrarySearch::addOrders()
{
    const auto actions = Gio::SimpleActionGroup::create();
    const auto action = actions->add_action_radio_string("order", orders.front().first);
    action->signal_activate().connect([this, action = action.get()](const Glib::VariantBase& parameter) {
        action->change_state_variant(parameter);
        const auto chosen = Glib::VariantBase::cast_dynamic<Glib::Variant<Glib::ustring>>(parameter).get();
        for (const auto& [name, order] : orders) {
            if (chosen == name && std::exchange(_order, order) != order)
                perform(_queryAction);
        }
    });
    _orderButton.insert_action_group("books", actions);
}

BookQuery LibrarySearch::query() const
{
    return { _words, _order, {} };
}

void LibrarySearch::open()
{
    if (!_button.get_sensitive())
        return;
    _bar.set_search_mode(true);
    _entry.grab_focus();
    gtk_editable_select_region(GTK_EDITABLE(_entry.gobj()), 0, -1);
}

void LibrarySearch::end()
{
    _bar.set_search_mode(false);
}

void LibrarySearch::setCount(std::size_t shown, std::size_t all)
{
    const Glib::ustring text = countText(shown, all);
    if (_count.get_text() != text)
        _count.set_text(text);
    _button.set_sensitive(all > 0 || isOpen());
}

Glib::RefPtr<Gtk::EventController> LibrarySearch::keys()
{
    auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this, keys = keys.get()](guint key, guint, Gdk::ModifierType state) { return take(*keys, key, state); },
        false);
    return keys;
}

bool LibrarySearch::take(Gtk::EventControllerKey& keys, guint key, Gdk::ModifierType state)
{
    auto* const root = _root.get_root();
    if (!root || !isWithinLibrary(root->get_focus()))
        return false;
    if (key == GDK_KEY_Escape && isOpen()) {
        end();
        return true;
    }
    if (!isWriting(key, state))
        return false;
    open();
    if (!isOpen())
        return false;
    gtk_editable_set_position(GTK_EDITABLE(_entry.gobj()), -1);
    auto* const text = gtk_editable_get_delegate(GTK_EDITABLE(_entry.gobj()));
    return gtk_event_controller_key_forward(keys.gobj(), GTK_WIDGET(text));
}

// Returns whether the focus is in the library. Menus and other fields keep their keys.
bool LibrarySearch::isWithinLibrary(Gtk::Widget* focus) const
{
    return !focus || (!GTK_IS_EDITABLE(focus->gobj()) && !focus->get_ancestor(GTK_TYPE_POPOVER));
}

}
