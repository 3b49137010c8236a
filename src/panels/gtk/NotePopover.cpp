#include "panels/gtk/NotePopover.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/DisplayText.hpp"

#include <glibmm/main.h>
#include <gtkmm/eventcontrollermotion.h>

namespace pagora {

namespace {

// In pixels.
constexpr int noteWidth = 340;
constexpr int maxNoteHeight = 260;
// Time for the pointer to move from the reference to the note, in milliseconds.
constexpr unsigned pointerTimeout = 350;

}

NotePopover::NotePopover(Gtk::Widget& page, std::function<void()> goThere)
    : _goThere(std::move(goThere))
    , _box(Gtk::Orientation::VERTICAL, 10)
    , _button(_("Go there"))
{
    _text.set_wrap(true);
    _text.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    _text.set_xalign(0);
    _text.set_selectable(false);
    _text.set_max_width_chars(44);
    _scroll.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    _scroll.set_propagate_natural_height(true);
    _scroll.set_max_content_height(maxNoteHeight);
    _scroll.set_size_request(noteWidth, -1);
    _scroll.set_child(_text);
    _button.set_halign(Gtk::Align::END);
    _button.signal_clicked().connect([this] {
        hide();
        _goThere();
    });
    _box.append(_scroll);
    _box.append(_button);
    _popover.add_css_class("note");
    _popover.set_child(_box);
    _popover.set_position(Gtk::PositionType::TOP);
    _popover.set_parent(page);
    setAccessibleName(_popover, _("Note"));
    const auto pointer = Gtk::EventControllerMotion::create();
    pointer->signal_enter().connect([this](double, double) {
        _pointerIsIn = true;
        _hiding.disconnect();
    });
    pointer->signal_leave().connect([this] {
        _pointerIsIn = false;
        hideSoon();
    });
    _popover.add_controller(pointer);
}

NotePopover::~NotePopover()
{
    _hiding.disconnect();
    _popover.unparent();
}

void NotePopover::show(const std::string& text, const Gdk::Rectangle& place, PointedLink::Input input)
{
    _hiding.disconnect();
    _pointerIsIn = false;
    // A popover that was opened by the pointer must not grab keyboard and pointer.
    const bool isForPointer = input == PointedLink::Input::Pointer;
    _popover.popdown();
    _popover.set_autohide(!isForPointer);
    _text.set_text(displayText(text));
    _popover.set_pointing_to(place);
    _popover.popup();
    if (!isForPointer)
        _button.grab_focus();
}

void NotePopover::pointerLeft()
{
    if (!_popover.get_autohide())
        hideSoon();
}

void NotePopover::hideSoon()
{
    _hiding.disconnect();
    if (_popover.get_autohide())
        return;
    _hiding = Glib::signal_timeout().connect(
        [this] {
            if (!_pointerIsIn)
                hide();
            return false;
        },
        pointerTimeout);
}

}
