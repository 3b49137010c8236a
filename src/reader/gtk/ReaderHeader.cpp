#include "reader/gtk/ReaderHeader.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/DisplayText.hpp"

#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/window.h>

namespace pagora {

namespace {

// The distance from the top edge, in points, at which the pointer reveals the header bar.
constexpr double touch = 2;

// How far below the header bar the pointer may be before it hides, in points.
constexpr double slack = 12;

}

ReaderHeader::ReaderHeader(const Glib::RefPtr<Gtk::Builder>& layout, Gtk::Widget& content)
    : _content(content)
    , _bar(*layout->get_widget<Gtk::HeaderBar>("headerBar"))
    , _place(*layout->get_widget<Gtk::Box>("headerPlace"))
    , _revealer(*layout->get_widget<Gtk::Revealer>("headerRevealer"))
    , _library(*layout->get_widget<Gtk::Button>("libraryButton"))
    , _contents(*layout->get_widget<Gtk::ToggleButton>("contentsButton"))
    , _back(*layout->get_widget<Gtk::Button>("backButton"))
    , _fullScreen(*layout->get_widget<Gtk::Button>("fullScreenButton"))
    , _book(Gtk::Orientation::VERTICAL)
{
    _book.set_valign(Gtk::Align::CENTER);
    _title.add_css_class("title");
    _author.add_css_class("subtitle");
    for (auto* const label : { &_title, &_author }) {
        label->set_ellipsize(Pango::EllipsizeMode::END);
        label->set_single_line_mode(true);
        _book.append(*label);
    }
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
    if (_book.get_parent())
        gtk_header_bar_set_title_widget(_bar.gobj(), nullptr);
}

void ReaderHeader::setBook(const std::string& title, const std::string& author)
{
    _title.set_text(displayText(title));
    _author.set_text(displayText(author));
    _author.set_visible(!author.empty());
    if (!title.empty())
        _bar.set_title_widget(_book);
}

void ReaderHeader::setWay(bool leadsBack, bool leadsOn)
{
    _back.set_visible(leadsBack || leadsOn);
    _back.set_sensitive(leadsBack);
}

void ReaderHeader::setCalled(bool isCalled)
{
    _isCalled = isCalled;
    if (_isFullScreen)
        _revealer.set_reveal_child(isCalled);
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
    _isCalled = false;
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
    if (!_isFullScreen || _isCalled)
        return;
    if (y <= touch)
        _revealer.set_reveal_child(true);
    else if (y > _bar.get_height() + slack && !hasFocus())
        _revealer.set_reveal_child(false);
}

}
