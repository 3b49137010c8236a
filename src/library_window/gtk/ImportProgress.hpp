#pragma once

#include "controls/gtk/ButtonControl.hpp"
#include "controls/gtk/LabelField.hpp"
#include "controls/gtk/ProgressControl.hpp"
#include "library_window/gtk/ProgressWindow.hpp"

#include <gtkmm/builder.h>

#include <functional>
#include <memory>
#include <vector>

namespace pagora {

// The controls that show the progress of an import: the strip of the library window, and the progress window. Main
// thread only.
class ImportProgress {
public:
    // `layout` is "LibraryWindow". `stop` is called by the buttons of the strip and of the window, `changed` when one
    // of the controls is shown or hidden, or the window is ordered front or out.
    ImportProgress(
        const Glib::RefPtr<Gtk::Builder>& layout, const std::function<void()>& stop, std::function<void()> changed);
    ~ImportProgress();
    ImportProgress(const ImportProgress&) = delete;
    ImportProgress& operator=(const ImportProgress&) = delete;

    bool isImporting() const { return !progressBar.isHidden() || indicatorWindow.isVisible(); }
    Gtk::Window& window() { return *_window; }

private:
    // A toplevel of a layout belongs to this object, not to the layout.
    std::unique_ptr<Gtk::Window> _window;

public:
    ProgressWindow indicatorWindow;
    LabelField processLabel;
    LabelField procText;
    ProgressControl processIndicator;
    ProgressControl progressBar;
    ButtonControl stopButton;

private:
    std::vector<sigc::connection> _connections;
};

}
