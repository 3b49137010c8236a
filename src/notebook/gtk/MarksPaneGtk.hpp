#pragma once

#include "contents/gtk/ActionQueue.hpp"
#include "notebook/MarksPane.hpp"

#include <gtkmm/box.h>
#include <gtkmm/dropdown.h>
#include <gtkmm/entry.h>
#include <gtkmm/filechoosernative.h>
#include <gtkmm/label.h>
#include <gtkmm/listitem.h>
#include <gtkmm/listview.h>
#include <gtkmm/menubutton.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/singleselection.h>
#include <gtkmm/stringlist.h>
#include <gtkmm/togglebutton.h>

#include <functional>
#include <string>
#include <vector>

namespace pagora {

// The list of marks with a filter, in the contents pane of a layout, and the switch between contents and marks. Both
// are hidden while search results are shown. Main thread.
class MarksPaneGtk : public MarksPane {
public:
    // Widgets of the layout: the pane, the widget above the switch, the contents, and the search results. They outlive
    // it.
    struct Parts {
        Gtk::Box& pane;
        Gtk::Widget& above;
        Gtk::Widget& contents;
        Gtk::Widget& results;
    };
    // Marks are named by their numbers.
    struct Actions {
        std::function<void(std::size_t mark)> goTo;
        std::function<void(std::size_t mark)> edit;
        std::function<void(std::size_t mark)> remove;
        // The marks that match the filter, to a file whose extension selects the format, or to the clipboard.
        std::function<void(const std::string& path, const std::vector<std::size_t>& marks)> exportTo;
        std::function<void(const std::vector<std::size_t>& marks)> copy;
        std::function<void(const std::string& path)> importFrom;
    };
    MarksPaneGtk(const Parts& parts, ActionQueue& queue, Actions actions);
    ~MarksPaneGtk() override;

    void setLines(std::vector<MarkLine> lines) override;
    void setProblem(const std::string& text) override;
    void setShown(bool isShown) override;
    bool isShown() const { return _marksTab.get_active(); }
    void focusList();

    Gtk::ListView& list() { return _list; }
    Gtk::Entry& filter() { return _filter; }
    Gtk::DropDown& kinds() { return _kinds; }
    // The rows that match the filter.
    const std::vector<MarkLine>& lines() const { return _lines; }

private:
    void connectRows();
    void bind(const Glib::RefPtr<Gtk::ListItem>& item);
    bool keyPressed(guint keyval, Gdk::ModifierType state);
    void choose(guint position);
    void arrange();
    void refill();
    void addMenu();
    void choosePath(Gtk::FileChooser::Action action);
    // The numbers of the marks that match the filter.
    std::vector<std::size_t> numbers() const;

    Parts _parts;
    ActionQueue& _queue;
    Actions _actions;
    Gtk::Box _switch;
    Gtk::ToggleButton _contentsTab;
    Gtk::ToggleButton _marksTab;
    Gtk::Box _marks;
    Gtk::Box _bar;
    Gtk::Entry _filter;
    Gtk::DropDown _kinds;
    Gtk::MenuButton _menu;
    Glib::RefPtr<Gtk::FileChooserNative> _chooser;
    Gtk::Label _problem;
    Gtk::Label _nothing;
    Gtk::ScrolledWindow _scroll;
    Gtk::ListView _list;
    std::vector<MarkLine> _all;
    std::vector<MarkLine> _lines;
    Glib::RefPtr<Gtk::StringList> _model;
    Glib::RefPtr<Gtk::SingleSelection> _selection;
    std::vector<sigc::connection> _connections;
};

}
