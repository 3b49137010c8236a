#pragma once

#include <gtkmm/application.h>
#include <gtkmm/shortcutswindow.h>
#include <gtkmm/window.h>

#include <memory>

namespace pagora {

// The window that lists the program's keys, as the action "app.shortcuts". Main thread.
class ShortcutsHelp {
public:
    // Adds the action and its key to the application, which outlives it.
    explicit ShortcutsHelp(Gtk::Application& application);
    ~ShortcutsHelp();
    ShortcutsHelp(const ShortcutsHelp&) = delete;
    ShortcutsHelp& operator=(const ShortcutsHelp&) = delete;

    // Gives a reader window, which is not the application's own, the key. It shows the keys for reading first.
    void addKeyToReader(Gtk::Window& window);
    // Shows the list, with that section of the layout first, over that window, or by itself without one.
    void showOver(Gtk::Window* parent, const char* section);
    // Null until it is asked for.
    Gtk::Window* window() const { return _window.get(); }

private:
    Gtk::Application& _application;
    std::unique_ptr<Gtk::ShortcutsWindow> _window;
};

}
