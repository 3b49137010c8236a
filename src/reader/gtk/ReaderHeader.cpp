#include "reader/gtk/ReaderHeader.hpp"

#include "platform/Translation.hpp"

#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/window.h>

namespace pagora {

namespace {

// Points from the top edge at which the pointer calls the header bar.
constexpr double touch = 2;

// Points below the header bar that the pointer may stray.
constexpr double slack = 12;

}

ReaderHeader::ReaderHeader(const Glib::RefPtr<Gtk::Builder>& layout, Gtk::Widget& content)
    : _content(content)
    , _bar(*layout->get_widget<Gtk::Widget>("headerBar"))
    , _place(*layout->get_widget<Gtk::Box>("headerPlace"))
    , _revealer(*layout->get_widget<Gtk::Revealer>("headerRevealer"))
    , _library(*layout->get_widget<Gtk::Button>("libraryButton"))
    , _contents(*layout->get_widget<Gtk::ToggleButton>("contentsButton"))
    , _fullScreen(*layout->get_widget<Gtk::Button>("fullScreenButton"))
{
    const auto pointer = Gtk::EventControllerMotion::create();
    pointer->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _connections.push_back(pointer->signal_enter().connect([this](double, double y) { pointerIsAt(y); }));
    _connections.push_back(pointer->signal_motion().connect([this](double, double y) { pointerIsAt(y); }));
    _content.add_controller(pointer);
    _pointer = pointer;
}

ReaderHeader::~ReaderHeader()
{
    for (auto& connection : _connections)
        connection.disconnect();
    _content.remove_controller(_pointer);
}

void ReaderHeader::connect(Gtk::Button& button, const std::function<void()>& action)
{
    _connections.push_back(button.signal_clicked().connect(action));
}

void ReaderHeader::setFullScreen(bool isFullScreen)
{
    if (_isFullScreen == isFullScreen)
        return;
    _isFullScreen = isFullScreen;
    _revealer.set_reveal_child(false);
    if (isFullScreen) {
        _place.remove(_bar);
        _revealer.set_child(_bar);
    } else {
        _revealer.unset_child();
        _place.append(_bar);
    }
    _revealer.set_visible(isFullScreen);
    _fullScreen.set_icon_name(isFullScreen ? "view-restore-symbolic" : "view-fullscreen-symbolic");
    _fullScreen.set_tooltip_text(isFullScreen ? _("Leave full screen (F11)") : _("Full screen (F11)"));
}

bool ReaderHeader::hasFocus() const
{
    const auto* const window = dynamic_cast<const Gtk::Window*>(_content.get_root());
    const auto* const focus = window ? window->get_focus() : nullptr;
    return focus && focus->is_ancestor(_bar);
}

void ReaderHeader::pointerIsAt(double y)
{
    if (!_isFullScreen)
        return;
    if (y <= touch)
        _revealer.set_reveal_child(true);
    else if (y > _bar.get_height() + slack && !hasFocus())
        _revealer.set_reveal_child(false);
}

}
