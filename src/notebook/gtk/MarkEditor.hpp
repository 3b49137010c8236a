#pragma once

#include "notebook/MarksWindow.hpp"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>
#include <gtkmm/popover.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/textview.h>
#include <gtkmm/togglebutton.h>

#include <functional>
#include <string>
#include <vector>

namespace pagora {

// The popover of a mark in the colours of the page: colour, note, copy, remove. The note is saved when it closes. Main
// thread only.
class MarkEditor {
public:
    struct Actions {
        std::function<void(std::size_t mark, const std::string& color)> setColor;
        std::function<void(std::size_t mark, const std::string& note)> setNote;
        std::function<void(std::size_t mark)> remove;
    };
    // `page` is the parent widget and must outlive this object.
    MarkEditor(Gtk::Widget& page, Actions actions);
    ~MarkEditor();
    MarkEditor(const MarkEditor&) = delete;
    MarkEditor& operator=(const MarkEditor&) = delete;

    // `place` is in pixels of the parent widget.
    void show(const EditedMark& mark, const Gdk::Rectangle& place);
    Gtk::Popover& popover() { return _popover; }
    Gtk::TextView& note() { return _note; }

private:
    void addColors();
    void takeNote();
    void copy();

    Gtk::Widget& _page;
    Actions _actions;
    EditedMark _mark;
    Gtk::Popover _popover;
    Gtk::Box _box;
    Gtk::Box _colors;
    std::vector<std::pair<std::string, Gtk::ToggleButton*>> _colorButtons;
    Gtk::ScrolledWindow _scroll;
    Gtk::TextView _note;
    Gtk::Box _buttons;
    Gtk::Button _copy;
    Gtk::Button _remove;
    // True while the fields are filled, so that their changes are not sent.
    bool _isFilling = false;
};

// The ribbon of a bookmark and a message line, in an overlay above the page. Main thread only.
class MarkSigns {
public:
    // The overlay must outlive this object.
    MarkSigns(Gtk::Overlay& page, std::function<void()> undo);
    ~MarkSigns();
    MarkSigns(const MarkSigns&) = delete;
    MarkSigns& operator=(const MarkSigns&) = delete;

    void setBookmarked(bool isBookmarked) { _ribbon.set_visible(isBookmarked); }
    // An empty text hides the line.
    void offerUndo(const std::string& text);
    // The notice is hidden after 4 seconds.
    void showNotice(const std::string& text);
    Gtk::Widget& ribbon() { return _ribbon; }
    Gtk::Button& undoButton() { return _undo; }
    std::string line() const { return _bar.get_visible() ? _text.get_text().raw() : std::string(); }

private:
    void tell(const std::string& text, bool isUndone);

    Gtk::Overlay& _page;
    Gtk::Box _ribbon;
    Gtk::Box _bar;
    Gtk::Label _text;
    Gtk::Button _undo;
    sigc::connection _end;
};

}
