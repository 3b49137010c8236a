#include "reader/gtk/LoadingSign.hpp"

#include <glibmm/main.h>

#include <utility>

namespace pagora {

namespace {
// The delay before the indicator is shown, in milliseconds.
constexpr unsigned indicatorDelay = 500;
}

LoadingSign::LoadingSign(Gtk::Widget& sign)
    : _sign(sign)
{
}

LoadingSign::~LoadingSign()
{
    _showing.disconnect();
    _hiding.disconnect();
}

void LoadingSign::setLoading(bool isLoading)
{
    if (std::exchange(_isLoading, isLoading) == isLoading)
        return;
    if (!isLoading) {
        _hiding = Glib::signal_idle().connect(
            [this] {
                _showing.disconnect();
                _sign.set_visible(false);
                return false;
            },
            Glib::PRIORITY_DEFAULT);
        return;
    }
    _hiding.disconnect();
    if (_showing.connected() || _sign.get_visible())
        return;
    _showing = Glib::signal_timeout().connect(
        [this] {
            _sign.set_visible(true);
            return false;
        },
        indicatorDelay);
}

}
