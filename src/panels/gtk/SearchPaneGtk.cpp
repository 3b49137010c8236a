#include "panels/gtk/SearchPaneGtk.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "panels/gtk/SearchFieldControl.hpp"
#include "panels/gtk/SearchResultRow.hpp"

#include <glibmm/main.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/signallistitemfactory.h>

#include <algorithm>

namespace pagora {

namespace {
constexpr std::size_t maxLabelLength = 400;
// A list creates the widgets of its first 200 or so rows at once, even if they are not visible. Therefore these rows
// are added in parts, and keys are handled in between.
constexpr std::size_t rowsWithWidgets = 240;
constexpr std::size_t rowsAtOnce = 30;
}

SearchPaneGtk::SearchPaneGtk(const Parts& parts, ActionQueue& queue)
    : _parts(parts)
    , _queue(queue)
    , _model(Gtk::StringList::create({}))
    , _selection(Gtk::SingleSelection::create(_model))
{
    _selection->set_autoselect(false);
    _selection->set_can_unselect(true);
    _selection->set_selected(GTK_INVALID_LIST_POSITION);
    connectRows();
    _parts.list.set_model(_selection);
}

SearchPaneGtk::~SearchPaneGtk()
{
    _rest.disconnect();
    for (auto& connection : _connections)
        connection.disconnect();
    _parts.list.set_model({});
    _parts.list.set_factory({});
}

void SearchPaneGtk::connectRows()
{
    const auto factory = Gtk::SignalListItemFactory::create();
    _connections.push_back(factory->signal_setup().connect([this](const Glib::RefPtr<Gtk::ListItem>& item) {
        auto* const row = Gtk::make_managed<SearchResultRow>();
        item->set_child(*row);
        // Claimed, so that a click leaves the keyboard focus where it is.
        const auto click = Gtk::GestureClick::create();
        click->set_button(GDK_BUTTON_PRIMARY);
        click->signal_pressed().connect(
            [gesture = click.get()](int, double, double) { gesture->set_state(Gtk::EventSequenceState::CLAIMED); });
        click->signal_released().connect(
            [this, item = item.get()](int, double, double) { choose(item->get_position()); });
        row->add_controller(click);
    }));
    _connections.push_back(factory->signal_bind().connect(sigc::mem_fun(*this, &SearchPaneGtk::bind)));
    _parts.list.set_factory(factory);
    _connections.push_back(_parts.list.signal_activate().connect([this](guint position) { choose(position); }));
}

void SearchPaneGtk::bind(const Glib::RefPtr<Gtk::ListItem>& item)
{
    auto* const row = dynamic_cast<SearchResultRow*>(item->get_child());
    const auto position = item->get_position();
    if (!row || position >= _lines.size())
        return;
    const auto& line = _lines[position];
    item->set_selectable(line.result.has_value());
    item->set_activatable(line.result.has_value());
    if (line.result)
        row->showResult(_results[*line.result]);
    else
        row->showChapter(line.chapter);
    // Assistive technology gets the name from the list item around the row.
    const auto label = displayText(line.result ? spokenResult(_results[*line.result]) : line.chapter, maxLabelLength);
    gtk_accessible_update_property(
        GTK_ACCESSIBLE(row->get_parent()->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, label.c_str(), -1);
}

void SearchPaneGtk::choose(guint position)
{
    if (position >= _lines.size() || !_lines[position].result)
        return;
    _queue.post([this, index = *_lines[position].result] {
        if (_chosen && index < _results.size())
            _chosen(index);
    });
}

void SearchPaneGtk::setResultsShown(bool isShown)
{
    _parts.results.set_visible(isShown);
    _parts.contents.set_visible(!isShown);
}

void SearchPaneGtk::removeAllResults()
{
    _rest.disconnect();
    _model->splice(0, _model->get_n_items(), {});
    _lines.clear();
    _results.clear();
    _rowOfResult.clear();
}

void SearchPaneGtk::addChapter(const std::string& name)
{
    _lines.push_back({ std::nullopt, name });
}

void SearchPaneGtk::addResults(const std::vector<FoundText>& results)
{
    for (const auto& found : results) {
        _rowOfResult.push_back(static_cast<guint>(_lines.size()));
        _lines.push_back({ _results.size(), {} });
        _results.push_back(found);
    }
    if (_model->get_n_items() == 0)
        addRows(rowsAtOnce);
    if (_model->get_n_items() < _lines.size() && !_rest.connected())
        _rest = Glib::signal_idle().connect([this] {
            addRows(_model->get_n_items() < rowsWithWidgets ? rowsAtOnce : _lines.size());
            return _model->get_n_items() < _lines.size();
        });
}

void SearchPaneGtk::addRows(std::size_t count)
{
    const auto first = _model->get_n_items();
    // The list shows `_lines`; the strings of the model are empty.
    _model->splice(first, 0, std::vector<Glib::ustring>(std::min<std::size_t>(count, _lines.size() - first)));
}

void SearchPaneGtk::setCount(std::size_t count, bool isOver)
{
    std::string text;
    if (count == 0)
        text = isOver ? _("No matches") : _("Searching…");
    else if (count > maxFoundTexts)
        text = formatted(_("%zu matches, the first %zu are listed"), count, maxFoundTexts);
    else
        text = formatted(plural("%zu match", "%zu matches", count), count);
    _parts.count.set_text(text);
    _parts.count.set_tooltip_text(count > maxFoundTexts ? text : std::string());
}

void SearchPaneGtk::selectResult(std::optional<std::size_t> index)
{
    if (!index || *index >= _rowOfResult.size())
        return _selection->set_selected(GTK_INVALID_LIST_POSITION);
    const auto row = _rowOfResult[*index];
    if (row >= _model->get_n_items())
        addRows(_lines.size());
    _selection->set_selected(row);
    _parts.list.activate_action("list.scroll-to-item", Glib::Variant<guint32>::create(row));
}

void SearchPaneGtk::emptyField()
{
    _parts.field.setStringValue("");
}

void SearchPaneGtk::focusResults()
{
    if (_results.empty())
        return;
    if (_selection->get_selected() == GTK_INVALID_LIST_POSITION)
        _selection->set_selected(_rowOfResult.front());
    _parts.list.grab_focus();
}

}
