#pragma once

#include "contents/gtk/ActionQueue.hpp"
#include "notebook/MarkActions.hpp"
#include "notebook/gtk/MarksModel.hpp"

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
#include <gtkmm/togglebutton.h>

#include <functional>
#include <string>
#include <vector>

namespace pagora {

// The list of marks with a filter, in the contents pane of a layout, and the switch between contents and marks. Both
// are hidden while search results are shown. Main thread only.
class MarksPaneGtk : public MarksPane {
public:
    // Widgets of the layout: the pane, the widget above the switch, the contents, and the search results. They must
    // outlive this object. A layout without a search has neither the second nor the last.
    struct Parts {
        Gtk::Box& pane;
        Gtk::Widget* above;
        Gtk::Widget& contents;
        Gtk::Widget* results;
    };
    // `actions` must outlive this object, and may change.
    MarksPaneGtk(const Parts& parts, ActionQueue& queue, const MarkActions& actions);
    ~MarksPaneGtk() override;

    void setLines(const ListedMarks& listed) override;
    void setProblem(const std::string& text) override;
    void setShown(bool isShown) override;
    bool isShown() const { return _marksTab.get_active(); }
    void focusList();

    Gtk::ListView& list() { return _list; }
    Gtk::Entry& filter() { return _filter; }
    Gtk::DropDown& kinds() { return _kinds; }
    Gtk::Entry& tag() { return _tag; }
    Gtk::MenuButton& menu() { return _menu; }
    // Returns the dialog that asks for a file while it is shown; otherwise null.
    const Glib::RefPtr<Gtk::FileChooserNative>& chooser() const { return _chooser; }
    const std::vector<MarkLine>& lines() const { return *_model->lines(); }
    const MarksModel& model() const { return *_model; }

private:
    void connectRows();
    void bind(const Glib::RefPtr<Gtk::ListItem>& item);
    bool keyPressed(guint keyval, Gdk::ModifierType state);
    void goTo(guint position);
    void arrange();
    void choose();
    void addMenu();
    void choosePath(Gtk::FileChooser::Action action);
    void chosen(bool isExport, int response);
    template <typename... Arguments, typename... Given>
    void send(std::function<void(Arguments...)> MarkActions::*action, Given... given)
    {
        _queue.post([this, action, given...] {
            if (const auto run = _actions.*action)
                run(given...);
        });
    }

    Parts _parts;
    ActionQueue& _queue;
    const MarkActions& _actions;
    Gtk::Box _switch;
    Gtk::ToggleButton _contentsTab;
    Gtk::ToggleButton _marksTab;
    Gtk::Box _marks;
    Gtk::Box _bar;
    Gtk::Entry _filter;
    Gtk::DropDown _kinds;
    // Shown once a listed mark has tags.
    Gtk::Entry _tag;
    Gtk::MenuButton _menu;
    Glib::RefPtr<Gtk::FileChooserNative> _chooser;
    Gtk::Label _problem;
    Gtk::Label _nothing;
    Gtk::ScrolledWindow _scroll;
    Gtk::ListView _list;
    Glib::RefPtr<MarksModel> _model;
    Glib::RefPtr<Gtk::SingleSelection> _selection;
    std::vector<sigc::connection> _connections;
};

}
