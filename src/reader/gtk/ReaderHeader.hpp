#pragma once

#include <gtkmm/box.h>
#include <gtkmm/builder.h>
#include <gtkmm/button.h>
#include <gtkmm/headerbar.h>
#include <gtkmm/label.h>
#include <gtkmm/revealer.h>
#include <gtkmm/togglebutton.h>

#include <functional>

namespace pagora {

// The header bar of a reader window. In full screen it overlays the page and is revealed by the pointer at the top
// edge. Main thread.
class ReaderHeader {
public:
    // `content` is all of the window.
    ReaderHeader(const Glib::RefPtr<Gtk::Builder>& layout, Gtk::Widget& content);
    ~ReaderHeader();
    ReaderHeader(const ReaderHeader&) = delete;
    ReaderHeader& operator=(const ReaderHeader&) = delete;

    void setLibraryAction(const std::function<void()>& action) { connect(_library, action); }
    void setContentsAction(const std::function<void()>& action) { connect(_contents, action); }
    void setFullScreenAction(const std::function<void()>& action) { connect(_fullScreen, action); }

    void setBackAction(const std::function<void()>& action) { connect(_back, action); }
    // The button for the way back is there once there is a way.
    void setWay(bool leadsBack, bool leadsOn);

    // The title and author that the header shows; the author may be missing.
    void setBook(const std::string& title, const std::string& author);
    void setContentsShown(bool shown) { _contents.set_active(shown); }
    bool isContentsShown() const { return _contents.get_active(); }
    void setFullScreen(bool isFullScreen);
    // Keeps it revealed in full screen.
    void setCalled(bool isCalled);
    // Whether it is visible; outside of full screen always.
    bool isRevealed() const { return !_isFullScreen || _revealer.get_reveal_child(); }

private:
    void connect(Gtk::Button& button, const std::function<void()>& action);
    // Points from the content's top edge.
    void pointerIsAt(double y);
    bool hasFocus() const;

    Gtk::Widget& _content;
    Gtk::HeaderBar& _bar;
    Gtk::Box& _place;
    Gtk::Revealer& _revealer;
    Gtk::Button& _library;
    Gtk::ToggleButton& _contents;
    Gtk::Button& _back;
    Gtk::Button& _fullScreen;
    Gtk::Box _book;
    Gtk::Label _title;
    Gtk::Label _author;
    bool _isFullScreen = false;
    bool _isCalled = false;
    Glib::RefPtr<Gtk::EventController> _pointer;
    std::vector<sigc::connection> _connections;
};

}
