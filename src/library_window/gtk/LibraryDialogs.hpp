#pragma once

#include "library_window/gtk/AlertWindow.hpp"
#include "notebook/gtk/MarksExportWindow.hpp"

#include <giomm/file.h>
#include <gtkmm/aboutdialog.h>
#include <gtkmm/filechoosernative.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The dialogs over the library window. None of them blocks. Main thread only.
class LibraryDialogs {
public:
    using Chosen = std::function<void(std::optional<std::vector<std::string>>)>;

    explicit LibraryDialogs(Gtk::Window& parent)
        : _parent(parent)
    {
    }

    void runAlertPanel(const std::string& title, const std::string& message, const std::string& button);
    // `answered` receives 1000 for the first button or if the alert is closed, and 1001 for the second.
    void runAlert(const std::string& informativeText, const std::string& firstButton, const std::string& secondButton,
        std::function<void(int code)> answered);
    // Shows one panel at a time: if a panel is open, it is brought to the front, and `chosen` receives nothing.
    void runOpenPanel(const std::string& message, bool multiple, Chosen chosen);
    // Does the same for one folder.
    void runFolderPanel(const std::string& message, std::function<void(std::optional<std::string>)> chosen);
    void showAbout();
    // Created at the first call.
    MarksExportWindow& marksExport();
    // The alert that was shown last; null before the first.
    AlertWindow* alert() { return _alert.get(); }

private:
    void show(std::unique_ptr<AlertWindow> alert);
    void showPanel(const std::string& message, Gtk::FileChooser::Action action, bool multiple, Chosen chosen);
    // The program's current folder; null if it does not exist any more.
    static Glib::RefPtr<Gio::File> startFolder();

    Gtk::Window& _parent;
    std::unique_ptr<AlertWindow> _alert;
    std::unique_ptr<AlertWindow> _alertBefore;
    std::unique_ptr<Gtk::AboutDialog> _about;
    std::unique_ptr<MarksExportWindow> _marksExport;
    Glib::RefPtr<Gtk::FileChooserNative> _openPanel;
};

}
