#pragma once

#include "panels/BarPlace.hpp"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/overlay.h>

#include <functional>
#include <vector>

namespace pagora {

// A small bar beside selected text, on the paper of the page, with what can be done with the text. It lies over the
// page and never takes the focus by itself. Main thread.
class SelectionBar {
public:
    // A button of the bar. Its label is what assistive technology tells, unless `name` is set.
    struct Action {
        Glib::ustring title;
        std::function<void()> run;
        // Of the style sheet.
        Glib::ustring cssClass = {};
        Glib::ustring name = {};
    };

    // The actions stand in the bar in their order; a further button is a further action. `place` outlives the bar.
    // `onLeave` is called when the bar had the keyboard and was hidden.
    SelectionBar(
        Gtk::Overlay& place, const Glib::ustring& name, std::vector<Action> actions, std::function<void()> onLeave);
    ~SelectionBar();
    SelectionBar(const SelectionBar&) = delete;
    SelectionBar& operator=(const SelectionBar&) = delete;

    // In pixels of `place`.
    void show(const PlacedText& text);
    // Gives the keyboard to the first button.
    void focus();
    void hide();
    bool isShown() const { return _bar.get_visible(); }
    bool hasFocus() const;
    Gtk::Box& widget() { return _bar; }

private:
    Gtk::Overlay& _place;
    std::vector<Action> _actions;
    std::function<void()> _onLeave;
    Gtk::Box& _bar;
};

}
