#include "controls/gtk/PopUpControl.hpp"

#include "controls/gtk/FontLetters.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "desktop/gtk/Tooltip.hpp"

#include <glibmm/main.h>
#include <gtkmm/expression.h>
#include <gtkmm/label.h>
#include <gtkmm/listitem.h>
#include <gtkmm/separator.h>
#include <gtkmm/signallistitemfactory.h>
#include <gtkmm/stack.h>
#include <gtkmm/stringobject.h>

#include <algorithm>
#include <utility>

namespace pagora {

namespace {

constexpr std::size_t maxTitleLength = 200;

// A row shows a title or a separator.
Glib::RefPtr<Gtk::ListItemFactory> makeRows(bool titlesAreFonts)
{
    const auto rows = Gtk::SignalListItemFactory::create();
    rows->signal_setup().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
        auto* const row = Gtk::make_managed<Gtk::Stack>();
        auto* const title = Gtk::make_managed<Gtk::Label>();
        title->set_xalign(0);
        title->set_ellipsize(Pango::EllipsizeMode::END);
        title->set_max_width_chars(28);
        row->set_vhomogeneous(false);
        row->add(*title, "title");
        row->add(*Gtk::make_managed<Gtk::Separator>(), "separator");
        item->set_child(*row);
        showOnHover(*row, [title] { return title->get_text(); });
    });
    rows->signal_bind().connect([titlesAreFonts](const Glib::RefPtr<Gtk::ListItem>& item) {
        const auto string = std::dynamic_pointer_cast<Gtk::StringObject>(item->get_item());
        auto* const row = dynamic_cast<Gtk::Stack*>(item->get_child());
        auto* const title = row ? dynamic_cast<Gtk::Label*>(row->get_child_by_name("title")) : nullptr;
        if (!string || !title)
            return;
        const auto text = string->get_string();
        title->set_text(text);
        if (titlesAreFonts) {
            Pango::AttrList attributes;
            if (hasLatinLetters(text)) {
                auto family = Pango::Attribute::create_attr_family(text);
                attributes.insert(family);
            }
            title->set_attributes(attributes);
        }
        row->set_visible_child(text.empty() ? "separator" : "title");
        item->set_selectable(!text.empty());
        item->set_activatable(!text.empty());
    });
    return rows;
}

GtkWidget* findBelow(GtkWidget* widget, GType type)
{
    if (g_type_is_a(G_OBJECT_TYPE(widget), type))
        return widget;
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
        if (auto* const found = findBelow(child, type))
            return found;
    }
    return nullptr;
}

}

PopUpControl::PopUpControl(Gtk::DropDown& dropDown, TitlesAreFonts titlesAreFonts)
    : WidgetControl(dropDown)
    , _dropDown(dropDown)
    , _items(Gtk::StringList::create({}))
{
    _dropDown.set_model(_items);
    // Newer versions of the toolkit create rows of their own if there is an expression.
    _dropDown.set_expression(Gtk::PropertyExpression<Glib::ustring>::create(Gtk::StringObject::get_type(), "string"));
    _dropDown.set_factory(makeRows(titlesAreFonts == TitlesAreFonts::Yes));
    findByTyping();
    _selectionChanged = _dropDown.property_selected().signal_changed().connect([this] { selectionDidChange(); });
}

PopUpControl::~PopUpControl()
{
    _selectionChanged.disconnect();
    _showing.disconnect();
}

// The list is focused when it opens. Typed text goes to the search field above it, which matches any part of a title;
// Enter selects the first match. GTK's own search matches only the beginning.
void PopUpControl::findByTyping()
{
    auto* const panel = findBelow(GTK_WIDGET(_dropDown.gobj()), GTK_TYPE_POPOVER);
    auto* const list = panel ? findBelow(panel, GTK_TYPE_LIST_VIEW) : nullptr;
    auto* const field = panel ? findBelow(panel, GTK_TYPE_SEARCH_ENTRY) : nullptr;
    if (!list || !field)
        return;
    gtk_search_entry_set_key_capture_widget(GTK_SEARCH_ENTRY(field), panel);
    auto* const shown = gtk_list_view_get_model(GTK_LIST_VIEW(list));
    auto* const filtered
        = GTK_IS_SINGLE_SELECTION(shown) ? gtk_single_selection_get_model(GTK_SINGLE_SELECTION(shown)) : nullptr;
    auto* const filter = GTK_IS_FILTER_LIST_MODEL(filtered)
        ? gtk_filter_list_model_get_filter(GTK_FILTER_LIST_MODEL(filtered))
        : nullptr;
    if (GTK_IS_STRING_FILTER(filter))
        gtk_string_filter_set_match_mode(GTK_STRING_FILTER(filter), GTK_STRING_FILTER_MATCH_MODE_SUBSTRING);
    const auto chooseFirst = +[](GtkSearchEntry* field, GtkWidget* list) {
        if (*gtk_editable_get_text(GTK_EDITABLE(field)))
            g_signal_emit_by_name(list, "activate", 0u);
    };
    g_signal_connect_object(field, "activate", G_CALLBACK(chooseFirst), list, GConnectFlags(0));
}

void PopUpControl::removeAllItems()
{
    _titles.clear();
    _selected = GTK_INVALID_LIST_POSITION;
    showSoon();
}

void PopUpControl::addItem(const std::string& title)
{
    _titles.push_back(title);
    if (_titles.size() == 1)
        _selected = 0;
    showSoon();
}

void PopUpControl::addSeparator()
{
    addItem({});
}

// Deferred, because the widget rebuilds its rows for each change of the list.
void PopUpControl::showSoon()
{
    _isStale = true;
    if (!_showing.connected()) {
        _showing = Glib::signal_idle().connect([this] {
            showItems();
            return false;
        });
    }
}

void PopUpControl::showItems()
{
    _isChanging = true;
    if (std::exchange(_isStale, false)) {
        std::vector<Glib::ustring> texts;
        for (const auto& title : _titles)
            texts.push_back(displayText(title, maxTitleLength));
        _items->splice(0, _items->get_n_items(), texts);
    }
    _dropDown.set_selected(_selected);
    _isChanging = false;
}

void PopUpControl::selectItemWithTitle(const std::string& title)
{
    const auto found = std::find(_titles.begin(), _titles.end(), title);
    if (title.empty() || found == _titles.end())
        return;
    _selected = static_cast<guint>(found - _titles.begin());
    if (!_isStale)
        showItems();
}

std::string PopUpControl::titleOfSelectedItem() const
{
    return _selected < _titles.size() ? _titles[_selected] : std::string();
}

void PopUpControl::selectionDidChange()
{
    const auto selected = _dropDown.get_selected();
    if (_isChanging || _isStale || selected == _selected || selected >= _titles.size())
        return;
    if (_titles[selected].empty()) {
        _isChanging = true;
        _dropDown.set_selected(_selected);
        _isChanging = false;
        return;
    }
    _selected = selected;
    // Copied, because the action may destroy the button.
    if (const auto action = _action)
        action();
}

}
