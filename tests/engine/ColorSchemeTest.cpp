#include "desktop/gtk/ColorScheme.hpp"

#include "tests/engine/ToolkitTest.hpp"

#include <giomm/dbusconnection.h>
#include <giomm/dbusintrospection.h>
#include <giomm/dbusownname.h>
#include <gtkmm/settings.h>

namespace pagora::test {

namespace {

constexpr const char* busName = "org.pagora.Test.Portal";
constexpr const char* settingsInterface = "org.freedesktop.portal.Settings";
constexpr const char* introspection = R"(<node><interface name="org.freedesktop.portal.Settings">
  <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>)";

// A desktop portal on the session bus with one setting.
class Portal {
public:
    explicit Portal(guint32 scheme)
        : _table(sigc::mem_fun(*this, &Portal::call))
    {
        _connection = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
        const auto description = Gio::DBus::NodeInfo::create_for_xml(introspection);
        _object = _connection->register_object(
            "/org/freedesktop/portal/desktop", description->lookup_interface(settingsInterface), _table);
        _scheme = scheme;
        _name = Gio::DBus::own_name(Gio::DBus::BusType::SESSION, busName, {},
            [this](const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring&) { isThere = true; });
    }
    ~Portal()
    {
        Gio::DBus::unown_name(_name);
        _connection->unregister_object(_object);
    }

    void change(guint32 scheme, const Glib::ustring& group = "org.freedesktop.appearance")
    {
        _connection->emit_signal("/org/freedesktop/portal/desktop", settingsInterface, "SettingChanged", {},
            Glib::VariantContainerBase(
                g_variant_new("(ssv)", group.c_str(), "color-scheme", g_variant_new_uint32(scheme)), true));
    }

    bool isThere = false;
    bool wasAsked = false;

private:
    void call(const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring&, const Glib::ustring&,
        const Glib::ustring&, const Glib::ustring&, const Glib::VariantContainerBase&,
        const Glib::RefPtr<Gio::DBus::MethodInvocation>& invocation)
    {
        wasAsked = true;
        invocation->return_value(Glib::VariantContainerBase(
            g_variant_new("(v)", g_variant_new_variant(g_variant_new_uint32(_scheme))), true));
    }

    Gio::DBus::InterfaceVTable _table;
    Glib::RefPtr<Gio::DBus::Connection> _connection;
    guint _object = 0;
    guint _name = 0;
    guint32 _scheme = 0;
};

class ColorSchemeTest : public ToolkitTest {
protected:
    ~ColorSchemeTest() override { dark() = false; }
    static Glib::PropertyProxy<bool> dark()
    {
        return Gtk::Settings::get_default()->property_gtk_application_prefer_dark_theme();
    }
};

}

TEST_F(ColorSchemeTest, DesktopThatPrefersDarkMakesTheWindowsDark)
{
    Portal portal(1);
    ASSERT_TRUE(waitUntil([&] { return portal.isThere; }));
    ColorScheme scheme(busName);
    EXPECT_TRUE(waitUntil([] { return dark().get_value(); }));
}

TEST_F(ColorSchemeTest, FollowsTheDesktop)
{
    Portal portal(1);
    ASSERT_TRUE(waitUntil([&] { return portal.isThere; }));
    ColorScheme scheme(busName);
    ASSERT_TRUE(waitUntil([] { return dark().get_value(); }));
    portal.change(2);
    EXPECT_TRUE(waitUntil([] { return !dark().get_value(); }));
    portal.change(1);
    EXPECT_TRUE(waitUntil([] { return dark().get_value(); }));
}

TEST_F(ColorSchemeTest, OtherSettingsOfThatNameAreNotIt)
{
    Portal portal(1);
    ASSERT_TRUE(waitUntil([&] { return portal.isThere; }));
    ColorScheme scheme(busName);
    ASSERT_TRUE(waitUntil([] { return dark().get_value(); }));
    int changes = 0;
    auto counting = dark().signal_changed().connect([&] { ++changes; });
    portal.change(2, "org.example.editor");
    portal.change(1);
    portal.change(2);
    ASSERT_TRUE(waitUntil([] { return !dark().get_value(); }));
    counting.disconnect();
    EXPECT_EQ(changes, 1);
}

TEST_F(ColorSchemeTest, WindowsThatAreDarkByTheToolkitsSettingsStayDark)
{
    dark() = true;
    Portal portal(2);
    ASSERT_TRUE(waitUntil([&] { return portal.isThere; }));
    ColorScheme scheme(busName);
    ASSERT_TRUE(waitUntil([&] { return portal.wasAsked; }));
    settle();
    EXPECT_TRUE(dark().get_value());
}

TEST_F(ColorSchemeTest, OneThatIsGoneFollowsNothing)
{
    Portal portal(1);
    ASSERT_TRUE(waitUntil([&] { return portal.isThere; }));
    {
        ColorScheme scheme(busName);
    }
    settle();
    EXPECT_FALSE(dark().get_value());
}

}
