#pragma once

#include <gtkmm/application.h>
#include <gtkmm/shortcutswindow.h>
#include <gtkmm/window.h>

#include <functional>
#include <memory>

namespace pagora {

// The window that lists the program's keys, as the action "app.shortcuts". Main thread only.
class ShortcutsHelp {
public:
    // Adds the action and its key to the application. The application and `parent` must outlive this object. The list
    // is shown over `parent`, with the reader's keys first if `isReading` returns true.
    ShortcutsHelp(Gtk::Application& application, Gtk::Window& parent, std::function<bool()> isReading);
    ~ShortcutsHelp();
    ShortcutsHelp(const ShortcutsHelp&) = delete;
    ShortcutsHelp& operator=(const ShortcutsHelp&) = delete;

    void show();
    // Null until it was requested.
    Gtk::Window* window() const { return _window.get(); }

private:
    Gtk::Application& _application;
    Gtk::Window& _parent;
    std::function<bool()> _isReading;
    std::unique_ptr<Gtk::ShortcutsWindow> _window;
};

}
