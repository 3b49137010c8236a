#pragma once

#include <gtkmm/builder.h>
#include <gtkmm/overlay.h>

#include <string>

namespace pagora {

// The widgets of a reader window, built from a layout resource. Building them takes a large part of the time to open a
// window, and can be done in advance. Main thread only.
class ReaderLayout {
public:
    explicit ReaderLayout(const std::string& name);

    // The content has no parent until it is in a window.
    Gtk::Overlay& content() const { return *_content; }
    template <typename Widget>
    Widget& widget(const char* name) const
    {
        return *_builder->get_widget<Widget>(name);
    }
    const Glib::RefPtr<Gtk::Builder>& builder() const { return _builder; }

private:
    // Owns the widgets.
    Glib::RefPtr<Gtk::Builder> _builder;
    Gtk::Overlay* _content;
};

}
