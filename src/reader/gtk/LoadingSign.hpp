#pragma once

#include <gtkmm/widget.h>

namespace pagora {

// The sign over a page that is on its way: seen once that takes longer than a moment. Main thread.
class LoadingSign {
public:
    // `sign` belongs to a layout that outlives this, and is not seen at first.
    explicit LoadingSign(Gtk::Widget& sign);
    ~LoadingSign();
    LoadingSign(const LoadingSign&) = delete;
    LoadingSign& operator=(const LoadingSign&) = delete;

    // What ends and begins anew in one turn of the main loop has not ended.
    void setLoading(bool isLoading);

private:
    Gtk::Widget& _sign;
    bool _isLoading = false;
    sigc::connection _showing;
    sigc::connection _hiding;
};

}
