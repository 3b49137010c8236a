#pragma once

#include "page/WebView.hpp"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/popover.h>
#include <gtkmm/scrolledwindow.h>

#include <functional>
#include <string>

namespace pagora {

// Shows a note beside its reference, in the colours of the page. A note that was opened by the pointer closes when the
// pointer has left both. Main thread only.
class NotePopover {
public:
    // `page` is the parent widget and must outlive this object.
    NotePopover(Gtk::Widget& page, std::function<void()> goThere);
    ~NotePopover();
    NotePopover(const NotePopover&) = delete;
    NotePopover& operator=(const NotePopover&) = delete;

    // `place` is in pixels of the page's widget.
    void show(const std::string& text, const Gdk::Rectangle& place, PointedLink::Input input);
    // Called when the pointer has left the reference.
    void pointerLeft();
    void hide() { _popover.popdown(); }
    Gtk::Popover& popover() { return _popover; }

private:
    void hideSoon();

    std::function<void()> _goThere;
    Gtk::Popover _popover;
    Gtk::Box _box;
    Gtk::ScrolledWindow _scroll;
    Gtk::Label _text;
    Gtk::Button _button;
    bool _pointerIsIn = false;
    sigc::connection _hiding;
};

}
