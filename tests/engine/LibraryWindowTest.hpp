#pragma once

#include "desktop/gtk/Toplevel.hpp"
#include "library_views/LibraryViews.hpp"
#include "library_window/gtk/LibraryWindowGtk.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/FakeLibraryHub.hpp"

#include <gtkmm/eventcontrollerkey.h>

namespace pagora::test {

// The library window with three books. Records the calls of the hub.
class LibraryWindowGtkTest : public ToolkitTest, public FakeLibraryHub {
protected:
    LibraryWindowGtkTest()
    {
        _views = std::make_unique<LibraryViews>(_window, *this, [this] { return BookArray(_bookList); });
        const auto hear = [this](const char* name) { return [this, name] { _heard.emplace_back(name); }; };
        LibraryWindowActions actions;
        actions.windowShouldClose = [this] {
            _heard.emplace_back("windowShouldClose");
            return false;
        };
        actions.readBook = hear("readBook");
        actions.bookListMode = [this] { _views->bookListMode(); };
        actions.importDialog = hear("importDialog");
        actions.cancelProcess = hear("cancelProcess");
        actions.openSettings = hear("openSettings");
        actions.saveSettings = hear("saveSettings");
        _window.setActions(std::move(actions));
        _views->showFirstView();
        _window.mainWindow().orderFront();
    }
    void sendDoubleClick() override { _heard.emplace_back("sendDoubleClick"); }

    bool isShown(const char* name) { return _window.outlet<Gtk::Widget>(name)->get_visible(); }
    void click(const char* name) { g_signal_emit_by_name(_window.outlet<Gtk::Button>(name)->gobj(), "clicked"); }

    // Returns whether the window's event monitor handles the key.
    bool press(guint key, Gdk::ModifierType state)
    {
        gboolean swallowed = FALSE;
        const auto controllers = _window.window().observe_controllers();
        for (guint i = 0; i < controllers->get_n_items() && !swallowed; ++i) {
            const auto keys = std::dynamic_pointer_cast<Gtk::EventControllerKey>(controllers->get_object(i));
            if (keys && keys->get_propagation_phase() == Gtk::PropagationPhase::CAPTURE)
                g_signal_emit_by_name(keys->gobj(), "key-pressed", key, 0U, static_cast<guint>(state), &swallowed);
        }
        return swallowed;
    }

    GLibRunLoop _runLoop;
    Toplevel _toplevel;
    LibraryWindowGtk _window { _toplevel, _runLoop };
    std::shared_ptr<std::vector<BookInfoPtr>> _bookList = makeBooks(3);
    std::unique_ptr<LibraryViews> _views;
    // The calls of the window and its views.
    std::vector<std::string> _heard;
};

}
