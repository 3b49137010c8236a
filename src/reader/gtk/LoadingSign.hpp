#pragma once

#include <gtkmm/widget.h>

namespace pagora {

// The loading indicator over the page; shown if loading takes longer than a moment. Main thread only.
class LoadingSign {
public:
    // `sign` belongs to a layout that outlives this and is hidden at first.
    explicit LoadingSign(Gtk::Widget& sign);
    ~LoadingSign();
    LoadingSign(const LoadingSign&) = delete;
    LoadingSign& operator=(const LoadingSign&) = delete;

    // Loading that ends and starts again before the main loop is idle counts as one.
    void setLoading(bool isLoading);

private:
    Gtk::Widget& _sign;
    bool _isLoading = false;
    sigc::connection _showing;
    sigc::connection _hiding;
};

}
