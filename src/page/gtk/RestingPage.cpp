#include "page/gtk/RestingPage.hpp"

#include "page/gtk/PageScripts.hpp"

#include <glibmm/main.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>

#include <string>

namespace pagora {

namespace {

// In milliseconds. No pictures are taken of pages that are turned faster than this.
constexpr unsigned pictureDelay = 300;

constexpr std::size_t pixelBytes = 4;

}

RestingPage::RestingPage(WebKitWebView* view, PageFrame& frame)
    : _view(view)
    , _frame(frame)
{
    const auto click = Gtk::GestureClick::create();
    click->set_button(0);
    click->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    click->signal_pressed().connect([this](int, double, double) { personTouches(); });
    frame.add_controller(click);
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [this](guint, guint, Gdk::ModifierType) {
            personTouches();
            return false;
        },
        false);
    frame.add_controller(keys);
}

RestingPage::~RestingPage()
{
    _timer.disconnect();
}

void RestingPage::disturb()
{
    ++_lastRequest;
    _timer.disconnect();
    _isDrawn = false;
    _picture = {};
}

void RestingPage::rest()
{
    disturb();
    const auto request = reportOfDrawing("pagoraReportRest", _lastRequest);
    webkit_web_view_evaluate_javascript(_view, request.c_str(), -1, pageWorld, nullptr, nullptr, nullptr, nullptr);
}

void RestingPage::isDrawn(std::uint64_t request, bool isAsOpened)
{
    if (request != _lastRequest || !isAsOpened)
        return;
    _isDrawn = true;
    _timer = Glib::signal_timeout().connect(
        [this] {
            take();
            return false;
        },
        pictureDelay, Glib::PRIORITY_LOW);
}

// A picture that was taken before remains valid.
void RestingPage::personTouches()
{
    _timer.disconnect();
    _isDrawn = false;
}

void RestingPage::take()
{
    _timer.disconnect();
    if (!_isDrawn || _picture)
        return;
    _picture = _frame.pictureOfPage();
    _scale = _frame.get_scale_factor();
}

std::optional<PagePicture> RestingPage::picture()
{
    take();
    if (!_picture)
        return std::nullopt;
    PagePicture picture { gdk_texture_get_width(_picture.get()), gdk_texture_get_height(_picture.get()), _scale,
        drawingConditions(_view), _frame.paper() ? _frame.paper()->to_string().raw() : "", {} };
    const std::size_t rowBytes = static_cast<std::size_t>(picture.width) * pixelBytes;
    const auto rows = static_cast<std::size_t>(picture.height);
    if (rows * rowBytes > maxPagePixels * pixelBytes)
        return std::nullopt;
    picture.pixels.resize(rows * rowBytes);
    gdk_texture_download(_picture.get(), reinterpret_cast<guchar*>(picture.pixels.data()), rowBytes);
    return picture;
}

std::string drawingConditions(WebKitWebView* view)
{
    std::string conditions = "engine " + std::to_string(webkit_get_major_version()) + '.'
        + std::to_string(webkit_get_minor_version()) + '.' + std::to_string(webkit_get_micro_version()) + ", toolkit "
        + std::to_string(gtk_get_major_version()) + '.' + std::to_string(gtk_get_minor_version()) + '.'
        + std::to_string(gtk_get_micro_version());
    GtkSettings* const settings = gtk_widget_get_settings(GTK_WIDGET(view));
    for (const char* const name : { "gtk-xft-antialias", "gtk-xft-dpi", "gtk-xft-hinting" }) {
        int number = 0;
        g_object_get(settings, name, &number, nullptr);
        conditions += ", " + std::string(name) + ' ' + std::to_string(number);
    }
    for (const char* const name : { "gtk-xft-hintstyle", "gtk-xft-rgba" }) {
        char* text = nullptr;
        g_object_get(settings, name, &text, nullptr);
        conditions += ", " + std::string(name) + ' ' + (text ? text : "");
        g_free(text);
    }
    return conditions;
}

GObjectPtr<GdkTexture> textureOf(const PagePicture& picture)
{
    const std::size_t rowBytes = static_cast<std::size_t>(picture.width) * pixelBytes;
    GBytes* const bytes = g_bytes_new(picture.pixels.data(), picture.pixels.size());
    auto texture = GObjectPtr<GdkTexture>::adopt(
        gdk_memory_texture_new(picture.width, picture.height, GDK_MEMORY_DEFAULT, bytes, rowBytes));
    g_bytes_unref(bytes);
    return texture;
}

}
