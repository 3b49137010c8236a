#include "notebook/gtk/MarksPaneGtk.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "notebook/gtk/MarkRow.hpp"

#include <giomm/menu.h>
#include <giomm/simpleactiongroup.h>
#include <gtkmm/dialog.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/signallistitemfactory.h>
#include <gtkmm/stringlist.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <iterator>
#include <optional>

namespace pagora {

namespace {

constexpr std::size_t maxLabelLength = 400;

// The choices of the filter: all marks, a kind, or a colour.
struct Choice {
    const char* title;
    std::optional<MarkLine::Kind> kind;
    const char* color;
};
constexpr Choice choices[] = {
    { N_("All marks"), {}, "" },
    { N_("Bookmarks"), MarkLine::Kind::Bookmark, "" },
    { N_("Highlights"), MarkLine::Kind::Highlight, "" },
    { N_("Notes"), MarkLine::Kind::Note, "" },
    { N_("Yellow"), {}, "yellow" },
    { N_("Orange"), {}, "orange" },
    { N_("Pink"), {}, "pink" },
    { N_("Purple"), {}, "purple" },
    { N_("Blue"), {}, "blue" },
    { N_("Green"), {}, "green" },
};

Glib::RefPtr<Gtk::StringList> choiceTitles()
{
    auto titles = Gtk::StringList::create({});
    for (const auto& choice : choices)
        titles->append(_(choice.title));
    return titles;
}

}

MarksPaneGtk::MarksPaneGtk(const Parts& parts, ActionQueue& queue, const MarkActions& actions)
    : _parts(parts)
    , _queue(queue)
    , _actions(actions)
    , _contentsTab(_("Contents"))
    , _marksTab(_("Marks"))
    , _marks(Gtk::Orientation::VERTICAL)
    , _nothing(_("No marks"))
    , _model(MarksModel::create())
    , _selection(Gtk::SingleSelection::create(_model))
{
    _switch.add_css_class("pane-switch");
    _switch.set_homogeneous(true);
    for (auto* const tab : { &_contentsTab, &_marksTab }) {
        tab->set_focus_on_click(false);
        _switch.append(*tab);
    }
    _marksTab.set_group(_contentsTab);
    _contentsTab.set_active(true);
    _marksTab.set_tooltip_text(_("Bookmarks, highlights and notes (Ctrl+L)"));
    _filter.set_placeholder_text(_("Filter"));
    setAccessibleName(_filter, _("Filter the marks"));
    _filter.set_hexpand(true);
    _filter.set_width_chars(1);
    _kinds.set_model(choiceTitles());
    _kinds.set_tooltip_text(_("Kind or colour"));
    setAccessibleName(_kinds, _("Kind or colour"));
    _tag.set_placeholder_text(_("All tags"));
    _tag.set_tooltip_text(_("Tag"));
    setAccessibleName(_tag, _("Tag"));
    _tag.set_visible(false);
    addMenu();
    _bar.add_css_class("marks-bar");
    for (Gtk::Widget* const part : std::initializer_list<Gtk::Widget*> { &_filter, &_kinds, &_menu })
        _bar.append(*part);
    _problem.add_css_class("marks-problem");
    _nothing.add_css_class("marks-problem");
    for (auto* const label : { &_problem, &_nothing }) {
        label->set_wrap(true);
        label->set_xalign(0);
    }
    _problem.set_visible(false);
    _selection->set_autoselect(false);
    _selection->set_can_unselect(true);
    setAccessibleName(_list, _("Marks"));
    connectRows();
    _list.set_model(_selection);
    _scroll.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    _scroll.set_vexpand(true);
    _scroll.set_child(_list);
    _marks.add_css_class("marks");
    for (Gtk::Widget* const part : std::initializer_list<Gtk::Widget*> { &_bar, &_tag, &_problem, &_nothing, &_scroll })
        _marks.append(*part);
    if (_parts.above)
        _parts.pane.insert_child_after(_switch, *_parts.above);
    else
        _parts.pane.prepend(_switch);
    _parts.pane.append(_marks);
    const auto arranges = [this] { arrange(); };
    _connections.push_back(_marksTab.signal_toggled().connect(arranges));
    if (_parts.results)
        _connections.push_back(_parts.results->property_visible().signal_changed().connect(arranges));
    _connections.push_back(_parts.contents.property_visible().signal_changed().connect(arranges));
    _connections.push_back(_filter.signal_changed().connect([this] { choose(); }));
    _connections.push_back(_tag.signal_changed().connect([this] { choose(); }));
    _connections.push_back(_kinds.property_selected().signal_changed().connect([this] { choose(); }));
    arrange();
}

MarksPaneGtk::~MarksPaneGtk()
{
    for (auto& connection : _connections)
        connection.disconnect();
    _list.set_model({});
    _list.set_factory({});
    _parts.pane.remove(_marks);
    _parts.pane.remove(_switch);
}

void MarksPaneGtk::addMenu()
{
    const auto group = Gio::SimpleActionGroup::create();
    group->add_action("copy", [this] { send(&MarkActions::copy); });
    group->add_action("export", [this] { choosePath(Gtk::FileChooser::Action::SAVE); });
    group->add_action("import", [this] { choosePath(Gtk::FileChooser::Action::OPEN); });
    const auto menu = Gio::Menu::create();
    menu->append(_("Copy the Listed Marks"), "marks.copy");
    menu->append(_("Export the Listed Marks…"), "marks.export");
    menu->append(_("Import Marks…"), "marks.import");
    _marks.insert_action_group("marks", group);
    _menu.set_menu_model(menu);
    _menu.set_icon_name("view-more-symbolic");
    _menu.set_tooltip_text(_("Export and import"));
    setAccessibleName(_menu, _("Export and import"));
}

void MarksPaneGtk::choosePath(Gtk::FileChooser::Action action)
{
    auto* const window = dynamic_cast<Gtk::Window*>(_marks.get_root());
    if (!window)
        return;
    const bool isExport = action == Gtk::FileChooser::Action::SAVE;
    _chooser = Gtk::FileChooserNative::create(
        isExport ? _("Export marks") : _("Import marks"), *window, action, isExport ? _("Export") : _("Import"));
    _chooser->set_modal(true);
    if (isExport)
        _chooser->set_current_name(_("Marks") + std::string(".md"));
    for (const auto& [title, pattern] : { std::pair(_("Markdown (.md)"), "*.md"),
             std::pair(_("Web page (.html)"), "*.html"), std::pair(_("Marks (.annotation)"), "*.annotation") }) {
        if (!isExport && std::string_view(pattern) != "*.annotation")
            continue;
        const auto filter = Gtk::FileFilter::create();
        filter->set_name(title);
        filter->add_pattern(pattern);
        _chooser->add_filter(filter);
    }
    _chooser->signal_response().connect([this, isExport](int response) { chosen(isExport, response); });
    _chooser->show();
}

void MarksPaneGtk::chosen(bool isExport, int response)
{
    const auto file = response == Gtk::ResponseType::ACCEPT ? _chooser->get_file() : nullptr;
    const std::string path = file ? file->get_path() : std::string();
    // Deferred, because the chooser must not be destroyed in its own signal.
    _queue.post([this] { _chooser.reset(); });
    if (!path.empty())
        send(isExport ? &MarkActions::exportTo : &MarkActions::importFrom, path);
}

// Shows the list, the contents, or neither of them while search results are shown.
void MarksPaneGtk::arrange()
{
    const bool isSearch = _parts.results && _parts.results->get_visible();
    _switch.set_visible(!isSearch);
    _marks.set_visible(!isSearch && _marksTab.get_active());
    if (!isSearch)
        _parts.contents.set_visible(!_marksTab.get_active());
}

void MarksPaneGtk::connectRows()
{
    const auto factory = Gtk::SignalListItemFactory::create();
    _connections.push_back(factory->signal_setup().connect([this](const Glib::RefPtr<Gtk::ListItem>& item) {
        auto* const row = Gtk::make_managed<MarkRow>();
        item->set_child(*row);
        const auto click = Gtk::GestureClick::create();
        click->set_button(GDK_BUTTON_PRIMARY);
        click->signal_released().connect(
            [this, item = item.get()](int, double, double) { goTo(item->get_position()); });
        row->add_controller(click);
    }));
    _connections.push_back(factory->signal_bind().connect(sigc::mem_fun(*this, &MarksPaneGtk::bind)));
    _list.set_factory(factory);
    _connections.push_back(_list.signal_activate().connect([this](guint position) { goTo(position); }));
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _connections.push_back(keys->signal_key_pressed().connect(
        [this](guint keyval, guint, Gdk::ModifierType state) { return keyPressed(keyval, state); }, false));
    _list.add_controller(keys);
}

bool MarksPaneGtk::keyPressed(guint keyval, Gdk::ModifierType state)
{
    const bool isShifted = (state & Gdk::ModifierType::SHIFT_MASK) == Gdk::ModifierType::SHIFT_MASK;
    const bool edits = keyval == GDK_KEY_F2 || keyval == GDK_KEY_Menu || (keyval == GDK_KEY_F10 && isShifted);
    const bool removes = keyval == GDK_KEY_Delete || keyval == GDK_KEY_KP_Delete;
    const auto position = _selection->get_selected();
    // The list itself has the focus until a row gets it.
    if (keyval == GDK_KEY_Return || keyval == GDK_KEY_KP_Enter) {
        goTo(position);
        return true;
    }
    if ((!edits && !removes) || position >= lines().size() || !lines()[position].isMine)
        return false;
    send(edits ? &MarkActions::edit : &MarkActions::remove, lines()[position].number);
    return true;
}

void MarksPaneGtk::goTo(guint position)
{
    if (position >= lines().size() || lines()[position].kind == MarkLine::Kind::Heading)
        return;
    _selection->set_selected(position);
    send(&MarkActions::goTo, lines()[position].number);
}

void MarksPaneGtk::bind(const Glib::RefPtr<Gtk::ListItem>& item)
{
    auto* const row = dynamic_cast<MarkRow*>(item->get_child());
    const auto position = item->get_position();
    if (!row || position >= lines().size())
        return;
    const auto& line = lines()[position];
    const bool isMark = line.kind != MarkLine::Kind::Heading;
    item->set_selectable(isMark);
    item->set_activatable(isMark);
    row->show(line);
    // Assistive technology gets the name from the list item around the row.
    const auto label = displayText(spokenMark(line), maxLabelLength);
    gtk_accessible_update_property(
        GTK_ACCESSIBLE(row->get_parent()->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, label.c_str(), -1);
}

void MarksPaneGtk::choose()
{
    const auto& choice = choices[std::min<std::size_t>(_kinds.get_selected(), std::size(choices) - 1)];
    send(&MarkActions::choose, MarksChoice { _filter.get_text(), choice.kind, choice.color, _tag.get_text() });
}

// If the list has the focus, the row at the previous position gets it.
void MarksPaneGtk::setLines(const ListedMarks& listed)
{
    const auto* const root = _list.get_root();
    const auto* const focus = root ? root->get_focus() : nullptr;
    const bool hadFocus = focus && (focus == &_list || focus->is_ancestor(_list));
    const auto selected = _selection->get_selected();
    _model->setLines(listed);
    _nothing.set_visible(lines().empty());
    if (std::any_of(lines().begin(), lines().end(), [](const MarkLine& line) { return !line.tags.empty(); }))
        _tag.set_visible(true);
    if (!hadFocus || lines().empty())
        return;
    _selection->set_selected(std::min<guint>(selected, static_cast<guint>(lines().size()) - 1));
    _list.grab_focus();
}

void MarksPaneGtk::setProblem(const std::string& text)
{
    _problem.set_text(displayText(text));
    _problem.set_visible(!text.empty());
}

void MarksPaneGtk::setShown(bool isShown)
{
    (isShown ? _marksTab : _contentsTab).set_active(true);
}

void MarksPaneGtk::focusList()
{
    if (lines().empty()) {
        _filter.grab_focus();
        return;
    }
    if (_selection->get_selected() >= lines().size())
        _selection->set_selected(1);
    // A list that has not been laid out yet cannot take the focus.
    _list.add_tick_callback([this](const Glib::RefPtr<Gdk::FrameClock>&) {
        if (_list.get_mapped() && _list.get_height() == 0)
            return true;
        _list.grab_focus();
        return false;
    });
}

}
