#pragma once

#include "running/RunLoop.hpp"
#include "running/Task.hpp"

#include <gtkmm/overlay.h>
#include <gtkmm/picture.h>

#include <functional>
#include <string>

namespace pagora {

// A picture of the book as large as the window, over everything else in it, until a press or a key takes it away. It is
// decoded in a process of its own. Main thread.
class LargePicture {
public:
    // `window` is what the picture covers; it and the run loop outlive this.
    LargePicture(Gtk::Overlay& window, RunLoop& runLoop);
    ~LargePicture();
    LargePicture(const LargePicture&) = delete;
    LargePicture& operator=(const LargePicture&) = delete;

    // Called when the picture has gone.
    void setCloseHandler(std::function<void()> handler) { _onClose = std::move(handler); }
    // Shows the file once it is decoded, instead of one that is still being decoded; calls `orElse` where it does not
    // decode. `name` is for assistive technology.
    void show(const std::string& file, const std::string& name, std::function<void()> orElse);
    bool isShown() const { return _picture.get_visible(); }
    // Takes the picture away, or gives up the one that is being decoded; says whether there was one.
    bool close();

private:
    Task<void> decodeAndShow(std::string file, std::function<void()> orElse);

    Gtk::Overlay& _window;
    RunLoop& _runLoop;
    Gtk::Picture _picture;
    std::function<void()> _onClose;
    bool _isAwaited = false;
    Task<void> _decoding;
};

}
