#pragma once

#include <gtkmm/builder.h>
#include <gtkmm/window.h>

#include <memory>
#include <string>

namespace pagora {

// The widgets of a reader window, made as a layout among the program's resources says. Making them is a good part of
// what a window takes to come up, and can be done ahead of it. Main thread.
class ReaderLayout {
public:
    explicit ReaderLayout(const std::string& name);

    Gtk::Window& window() const { return *_window; }
    template <typename Widget>
    Widget& widget(const char* name) const
    {
        return *_builder->get_widget<Widget>(name);
    }
    const Glib::RefPtr<Gtk::Builder>& builder() const { return _builder; }

private:
    Glib::RefPtr<Gtk::Builder> _builder;
    // Owns the other widgets.
    std::unique_ptr<Gtk::Window> _window;
};

}
