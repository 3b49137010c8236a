#pragma once

#include "panels/BarPlace.hpp"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/overlay.h>

#include <functional>
#include <vector>

namespace pagora {

// A small bar beside selected text, in the page's colours, with actions for the text. It lies over the page and never
// takes the focus by itself. Main thread only.
class SelectionBar {
public:
    // A button of the bar. Its accessible name is the label unless `name` is set.
    struct Action {
        Glib::ustring title;
        std::function<void()> run;
        // CSS class of the button.
        Glib::ustring cssClass = {};
        Glib::ustring name = {};
    };

    // `actions` are the buttons in their order. `place` must outlive the bar. `onLeave` is called if the bar had the
    // keyboard focus when it was hidden.
    SelectionBar(
        Gtk::Overlay& place, const Glib::ustring& name, std::vector<Action> actions, std::function<void()> onLeave);
    ~SelectionBar();
    SelectionBar(const SelectionBar&) = delete;
    SelectionBar& operator=(const SelectionBar&) = delete;

    // Shows the bar beside the text, which is in pixels of `place`.
    void show(const PlacedText& text);
    // Moves the keyboard focus to the first button.
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
