#pragma once

#include <gtkmm/widget.h>

namespace pagora {

// The loading indicator over the page. It is shown if loading takes longer than half a second. Main thread only.
class LoadingSign {
public:
    // `sign` is initially hidden. Its layout must outlive this object.
    explicit LoadingSign(Gtk::Widget& sign);
    ~LoadingSign();
    LoadingSign(const LoadingSign&) = delete;
    LoadingSign& operator=(const LoadingSign&) = delete;

    // If loading ends and starts again before the main loop is idle, it is treated as one.
    void setLoading(bool isLoading);

private:
    Gtk::Widget& _sign;
    bool _isLoading = false;
    sigc::connection _showing;
    sigc::connection _hiding;
};

}
