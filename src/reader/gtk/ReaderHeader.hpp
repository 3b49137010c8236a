#pragma once

#include "reader/gtk/EdgeBar.hpp"

#include <gtkmm/box.h>
#include <gtkmm/builder.h>
#include <gtkmm/button.h>
#include <gtkmm/headerbar.h>
#include <gtkmm/label.h>
#include <gtkmm/togglebutton.h>

#include <functional>
#include <string>
#include <vector>

namespace pagora {

// The header bar of a reader window. In full screen it overlays the page. Main thread only.
class ReaderHeader {
public:
    explicit ReaderHeader(const Glib::RefPtr<Gtk::Builder>& layout);
    ~ReaderHeader();
    ReaderHeader(const ReaderHeader&) = delete;
    ReaderHeader& operator=(const ReaderHeader&) = delete;

    void setLibraryAction(const std::function<void()>& action) { connect(_library, action); }
    void setContentsAction(const std::function<void()>& action) { connect(_contents, action); }
    void setFullScreenAction(const std::function<void()>& action) { connect(_fullScreen, action); }

    void setBackAction(const std::function<void()>& action) { connect(_back, action); }
    // Shows the button for going back after the first jump.
    void setHistory(bool canGoBack, bool canGoForward);

    // Sets the title and author that the header shows; the author may be empty.
    void setBook(const std::string& title, const std::string& author);
    void setContentsShown(bool shown) { _contents.set_active(shown); }
    bool isContentsShown() const { return _contents.get_active(); }
    void setFullScreen(bool isFullScreen);
    // Keeps the header revealed in full screen.
    void setCalled(bool isCalled) { _edge.setCalled(isCalled); }
    // Returns whether the header is visible. Always true outside full screen.
    bool isRevealed() const { return _edge.isRevealed(); }

private:
    void connect(Gtk::Button& button, const std::function<void()>& action);

    Gtk::HeaderBar& _bar;
    EdgeBar _edge;
    Gtk::Button& _library;
    Gtk::ToggleButton& _contents;
    Gtk::Button& _back;
    Gtk::Button& _fullScreen;
    Gtk::Box _book;
    Gtk::Label _title;
    Gtk::Label _author;
    std::vector<sigc::connection> _connections;
};

}
