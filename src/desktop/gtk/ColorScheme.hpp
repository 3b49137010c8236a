#pragma once

#include <giomm/cancellable.h>
#include <giomm/dbusproxy.h>

#include <string>

namespace pagora {

// Follows the desktop's preference for dark windows. Reads it from the desktop portal asynchronously; without a portal,
// GTK's own settings apply. Main thread, with a display.
class ColorScheme {
public:
    explicit ColorScheme(const std::string& portal = "org.freedesktop.portal.Desktop");
    ~ColorScheme();
    ColorScheme(const ColorScheme&) = delete;
    ColorScheme& operator=(const ColorScheme&) = delete;

private:
    void connected(const Glib::RefPtr<Gio::AsyncResult>& result);
    void answered(const Glib::RefPtr<Gio::AsyncResult>& result);
    void changed(const Glib::ustring& signal, const Glib::VariantContainerBase& parameters);
    void follow(Glib::VariantBase scheme);

    const bool _darkByItself;
    Glib::RefPtr<Gio::Cancellable> _gone;
    Glib::RefPtr<Gio::DBus::Proxy> _proxy;
    sigc::connection _changes;
};

}
