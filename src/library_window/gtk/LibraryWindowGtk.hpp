#pragma once

#include "controls/gtk/ButtonControl.hpp"
#include "controls/gtk/LabelField.hpp"
#include "controls/gtk/SegmentedSwitch.hpp"
#include "covers/gtk/CoverLoader.hpp"
#include "desktop/gtk/DesktopWindow.hpp"
#include "desktop/gtk/SharedWindow.hpp"
#include "library_views/gtk/BooksSurface.hpp"
#include "library_views/gtk/LibraryFinder.hpp"
#include "library_window/LibraryWindow.hpp"
#include "library_window/gtk/ImportProgress.hpp"
#include "library_window/gtk/LibraryDialogs.hpp"
#include "library_window/gtk/LibraryOverlay.hpp"
#include "library_window/gtk/LibrarySearch.hpp"
#include "library_window/gtk/ToolBarMenu.hpp"
#include "library_window/gtk/WindowEventMonitor.hpp"

#include <giomm/simpleactiongroup.h>
#include <gtkmm/application.h>
#include <gtkmm/builder.h>

namespace pagora {

// The layout "LibraryWindow": the library, which shares the toplevel, and the small windows over it. The library views
// must be destroyed first. Main thread only.
class LibraryWindowGtk : public LibraryWindow {
public:
    // The toplevel and the run loop must outlive this object. Without an application, as in tests, the toplevel holds
    // the program's actions itself.
    LibraryWindowGtk(Toplevel& toplevel, RunLoop& runLoop, Glib::RefPtr<Gtk::Application> application = {});
    ~LibraryWindowGtk() override;

    std::unique_ptr<LibraryViewSurface> loadView(const char* layout, ArrayController& books) override;
    void setContentView(LibraryViewSurface& view) override;
    void removeContentView(LibraryViewSurface& view) override;
    Button& readerButton() override { return _readerButton; }
    SegmentedControl& bListControl() override { return _bListControl; }

    void setActions(LibraryWindowActions actions) override { _actions = std::move(actions); }
    Window& mainWindow() override { return _mainWindow; }
    Window& errorWin() override { return _errorWin; }
    TextField& errorList() override { return _errorList; }
    Window& indicatorWindow() override { return _progress.indicatorWindow; }
    TextField& processLabel() override { return _progress.processLabel; }
    ProgressIndicator& processIndicator() override { return _progress.processIndicator; }
    ProgressIndicator& progressBar() override { return _progress.progressBar; }
    TextField& procText() override { return _progress.procText; }
    Button& stopButton() override { return _progress.stopButton; }
    Window& settingsWin() override { return _settingsWin; }
    SegmentedControl& dragDropMatrix() override { return _dragDropMatrix; }
    Menu* toolBarMenu() override { return &_toolBarMenu; }

    void endSearch() override { _search.end(); }
    bool isActive() const override;
    void activateIgnoringOtherApps() override { _mainWindow.makeKeyAndOrderFront(); }
    void terminate() override;
    void runAlertPanel(const std::string& title, const std::string& message, const std::string& button) override;
    void runAlert(const std::string& informativeText, const std::string& firstButton, const std::string& secondButton,
        std::function<void(int code)> answered) override;
    void runOpenPanel(const std::string& message, bool multiple, LibraryDialogs::Chosen chosen) override;
    void runFolderPanel(const std::string& message, std::function<void(std::optional<std::string>)> chosen) override;
    MarksExportPanel& marksExportPanel() override { return _dialogs.marksExport(); }
    void setEventMonitor(WindowEventMonitor::Monitor monitor) override { _monitor.setMonitor(std::move(monitor)); }

    LibraryDialogs& dialogs() { return _dialogs; }
    // Returns the toplevel's window.
    Gtk::Window& window() { return _mainWindow.window(); }
    // Returns the widget with the outlet's name in the layout; null if there is none.
    template <typename Widget>
    Widget* outlet(const char* name)
    {
        return _layout->get_widget<Widget>(name);
    }

private:
    // The toplevels of the layout, which belong to this object and not to the layout.
    struct Windows {
        std::unique_ptr<Gtk::Window> error;
        std::unique_ptr<Gtk::Window> settings;
    };

    void addProgramActions();
    void addProgramKeys();
    void enableProgramActions();
    void wireControls();
    void wireSearch();
    BookQuery query() const;
    // Called when other books are shown, or when the import has started or ended.
    void booksDidChange();
    void windowStateDidChange();
    void updateContinueButton();

    Glib::RefPtr<Gtk::Application> _application;
    Glib::RefPtr<Gio::SimpleActionGroup> _programActions;
    LibraryWindowActions _actions;
    WindowEventMonitor _monitor;
    CoverLoader _coverLoader;
    LibraryFinder _finder;
    Glib::RefPtr<Gtk::Builder> _layout;
    Windows _windows;
    SharedWindow _mainWindow;
    DesktopWindow _errorWin;
    DesktopWindow _settingsWin;
    LabelField _errorList;
    ButtonControl _readerButton;
    ButtonControl _continueButton;
    SegmentedSwitch _bListControl;
    SegmentedSwitch _dragDropMatrix;
    ToolBarMenu _toolBarMenu;
    LibrarySearch _search;
    LibraryOverlay _overlay;
    ImportProgress _progress;
    LibraryDialogs _dialogs;
    // The title of the book that the continue button opens.
    Glib::ustring _bookToContinue;
    // The view that is in the window; null for none.
    BooksSurface* _shown = nullptr;
    std::vector<sigc::connection> _connections;
};

}
