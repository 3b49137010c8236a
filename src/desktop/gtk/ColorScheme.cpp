#include "desktop/gtk/ColorScheme.hpp"

#include <gtkmm/settings.h>

namespace pagora {

namespace {

constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.Settings";
constexpr const char* group = "org.freedesktop.appearance";
constexpr const char* key = "color-scheme";
constexpr guint32 preferDark = 1;

bool isDark()
{
    return Gtk::Settings::get_default()->property_gtk_application_prefer_dark_theme();
}

}

ColorScheme::ColorScheme(const std::string& portal)
    : _darkByItself(isDark())
    , _gone(Gio::Cancellable::create())
{
    Gio::DBus::Proxy::create_for_bus(
        Gio::DBus::BusType::SESSION, portal, path, interface,
        [this, gone = _gone](Glib::RefPtr<Gio::AsyncResult>& result) {
            if (!gone->is_cancelled())
                connected(result);
        },
        _gone);
}

ColorScheme::~ColorScheme()
{
    _changes.disconnect();
    _gone->cancel();
}

void ColorScheme::connected(const Glib::RefPtr<Gio::AsyncResult>& result)
{
    try {
        _proxy = Gio::DBus::Proxy::create_for_bus_finish(result);
    } catch (const Glib::Error&) {
        return;
    }
    _changes = _proxy->signal_signal().connect(
        [this](const Glib::ustring&, const Glib::ustring& signal, const Glib::VariantContainerBase& parameters) {
            changed(signal, parameters);
        });
    _proxy->call(
        "Read",
        [this, gone = _gone](Glib::RefPtr<Gio::AsyncResult>& answer) {
            if (!gone->is_cancelled())
                answered(answer);
        },
        _gone, Glib::Variant<std::tuple<Glib::ustring, Glib::ustring>>::create({ group, key }));
}

void ColorScheme::answered(const Glib::RefPtr<Gio::AsyncResult>& result)
{
    try {
        const auto answer = _proxy->call_finish(result);
        if (answer.get_n_children() == 1) {
            Glib::VariantBase scheme;
            answer.get_child(scheme);
            follow(scheme);
        }
    } catch (const Glib::Error&) {
        // The desktop does not have this setting.
    }
}

void ColorScheme::changed(const Glib::ustring& signal, const Glib::VariantContainerBase& parameters)
{
    if (signal != "SettingChanged" || !parameters.is_of_type(Glib::VariantType("(ssv)")))
        return;
    Glib::Variant<Glib::ustring> changedGroup;
    Glib::Variant<Glib::ustring> changedKey;
    Glib::VariantBase value;
    parameters.get_child(changedGroup, 0);
    parameters.get_child(changedKey, 1);
    parameters.get_child(value, 2);
    if (changedGroup.get() == group && changedKey.get() == key)
        follow(value);
}

// The value may be wrapped in several variants.
void ColorScheme::follow(Glib::VariantBase scheme)
{
    GVariant* value = g_variant_ref(scheme.gobj());
    while (g_variant_is_of_type(value, G_VARIANT_TYPE_VARIANT)) {
        GVariant* const inner = g_variant_get_variant(value);
        g_variant_unref(value);
        value = inner;
    }
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) {
        const bool dark = _darkByItself || g_variant_get_uint32(value) == preferDark;
        if (dark != isDark())
            Gtk::Settings::get_default()->property_gtk_application_prefer_dark_theme() = dark;
    }
    g_variant_unref(value);
}

}
