#pragma once

#include "notebook/MarksExportPanel.hpp"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/dropdown.h>
#include <gtkmm/entry.h>
#include <gtkmm/filechoosernative.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/progressbar.h>
#include <gtkmm/window.h>

namespace pagora {

// The window in which the user selects marks of the library for an export. Main thread only.
class MarksExportWindow : public MarksExportPanel {
public:
    // The window is modal for `parent`, which must outlive it.
    explicit MarksExportWindow(Gtk::Window& parent);

    void open(std::function<void(const MarksExportRequest&)> start, std::function<void()> cancel) override;
    void setProgress(std::size_t done, std::size_t count) override;
    void setOutcome(const std::string& line) override;

    Gtk::Window& window() { return _window; }
    Gtk::DropDown& formats() { return _formats; }
    Gtk::DropDown& kinds() { return _kinds; }
    Gtk::DropDown& colors() { return _colors; }
    Gtk::Entry& tag() { return _tag; }
    Gtk::Button& cancelButton() { return _cancelButton; }
    Gtk::Button& folderButton() { return _folderButton; }
    Gtk::Label& line() { return _line; }
    // Starts the export to the chosen folder.
    void exportInto(const std::string& folder);

private:
    void addField(const char* title, Gtk::Widget& field);
    void chooseFolder();
    void leave();
    void setRunning(bool isRunning);

    Gtk::Window& _parent;
    std::function<void(const MarksExportRequest&)> _start;
    std::function<void()> _cancel;
    bool _isRunning = false;
    int _fields = 0;
    Gtk::Window _window;
    Gtk::Box _box;
    Gtk::Grid _grid;
    Gtk::DropDown _formats;
    Gtk::DropDown _kinds;
    Gtk::DropDown _colors;
    Gtk::Entry _tag;
    Gtk::ProgressBar _progress;
    Gtk::Label _line;
    Gtk::Box _buttons;
    Gtk::Button _cancelButton;
    Gtk::Button _folderButton;
    Glib::RefPtr<Gtk::FileChooserNative> _chooser;
};

}
