#include "panels/gtk/LargePicture.hpp"

#include "desktop/gtk/AccessibleNames.hpp"
#include "files/Files.hpp"
#include "pictures/Image.hpp"
#include "pictures/PictureProcess.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gdk/gdk.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace pagora {

namespace {

// Maximum side in pixels: that of a large screen.
constexpr double maxSide = 4096;

// Fills transparent parts with white, so that dark drawings are visible on every theme.
Image onWhite(const Image& image)
{
    constexpr guint32 white = 0xFFFFFFFF;
    GdkPixbuf* const pixels = image.pixbuf();
    if (!gdk_pixbuf_get_has_alpha(pixels))
        return image;
    GdkPixbuf* const opaque = gdk_pixbuf_composite_color_simple(
        pixels, gdk_pixbuf_get_width(pixels), gdk_pixbuf_get_height(pixels), GDK_INTERP_NEAREST, 255, 1, white, white);
    return opaque ? Image(std::shared_ptr<GdkPixbuf>(opaque, g_object_unref), image.size()) : image;
}

// Decodes a file at no more than the size of a screen, which saves memory. Blocks.
std::optional<Image> decodedFile(const std::string& file, Size enough)
{
    const auto bytes = readFile(file);
    const auto decoded = bytes ? decodePictureInHelper(*bytes, enough) : std::nullopt;
    if (!decoded)
        return std::nullopt;
    std::optional<Image> image(Image(decoded->pixbuf, decoded->size));
    if (std::max(decoded->size.width, decoded->size.height) > maxSide)
        image = image->imageByScalingProportionallyToSize({ maxSide, maxSide });
    return image ? std::optional(onWhite(*image)) : std::nullopt;
}

}

LargePicture::LargePicture(Gtk::Overlay& window, RunLoop& runLoop)
    : _window(window)
    , _runLoop(runLoop)
{
    _picture.add_css_class("large-picture");
    _picture.set_can_shrink(true);
    _picture.set_keep_aspect_ratio(true);
    _picture.set_focusable(true);
    _picture.set_visible(false);
    const auto press = Gtk::GestureClick::create();
    press->signal_released().connect([this](int, double, double) { close(); });
    _picture.add_controller(press);
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect([this](guint, guint, Gdk::ModifierType) { return close(); }, false);
    _picture.add_controller(keys);
    _window.add_overlay(_picture);
}

LargePicture::~LargePicture()
{
    _picture.set_paintable({});
    _window.remove_overlay(_picture);
}

void LargePicture::show(const std::string& file, const std::string& name, std::function<void()> orElse)
{
    _isAwaited = true;
    setAccessibleName(_picture, name);
    _decoding = decodeAndShow(file, std::move(orElse));
}

Task<void> LargePicture::decodeAndShow(std::string file, std::function<void()> orElse)
{
    const double pixels = _window.get_scale_factor();
    const Size enough { _window.get_width() * pixels, _window.get_height() * pixels };
    const auto decoded = std::make_shared<std::optional<Image>>();
    auto work = _runLoop.performInBackground([decoded, file, enough] { *decoded = decodedFile(file, enough); });
    co_await work;
    if (!std::exchange(_isAwaited, false))
        co_return;
    if (!*decoded) {
        orElse();
        co_return;
    }
    _picture.set_paintable(Glib::wrap(gdk_texture_new_for_pixbuf((*decoded)->pixbuf())));
    _picture.set_visible(true);
    _picture.grab_focus();
}

bool LargePicture::close()
{
    const bool wasAwaited = std::exchange(_isAwaited, false);
    if (!isShown())
        return wasAwaited;
    _picture.set_visible(false);
    _picture.set_paintable({});
    if (_onClose)
        _onClose();
    return true;
}

}
