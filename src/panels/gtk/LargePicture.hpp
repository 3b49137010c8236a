#pragma once

#include "running/RunLoop.hpp"
#include "running/Task.hpp"

#include <gtkmm/overlay.h>
#include <gtkmm/picture.h>

#include <functional>
#include <string>

namespace pagora {

// Shows a picture of the book in the size of the window, over everything else, until a press or a key closes it. The
// picture is decoded in a separate process. Main thread only.
class LargePicture {
public:
    // `window` is the overlay that the picture covers. It and the run loop must outlive this object.
    LargePicture(Gtk::Overlay& window, RunLoop& runLoop);
    ~LargePicture();
    LargePicture(const LargePicture&) = delete;
    LargePicture& operator=(const LargePicture&) = delete;

    // Sets the callback for a closed picture.
    void setCloseHandler(std::function<void()> handler) { _onClose = std::move(handler); }
    // Decodes and shows the file; replaces a file that is still being decoded. Calls `orElse` if the file cannot be
    // decoded. `name` is for assistive technology.
    void show(const std::string& file, const std::string& name, std::function<void()> orElse);
    bool isShown() const { return _picture.get_visible(); }
    // Closes the picture, or cancels decoding. Returns whether there was anything to close or cancel.
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
