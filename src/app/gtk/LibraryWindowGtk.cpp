#include "app/gtk/LibraryWindowGtk.hpp"

#include "library_views/gtk/GridSurface.hpp"
#include "library_views/gtk/ListSurface.hpp"
#include "platform/gtk/AccessibleNames.hpp"
#include "platform/gtk/FocusMark.hpp"
#include "platform/gtk/StyleSheet.hpp"

#include <giomm/simpleactiongroup.h>
#include <gtkmm/box.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutcontroller.h>

#include <string_view>

namespace pagora {

namespace {

Glib::RefPtr<Gtk::Builder> loadLayout()
{
    addStyleSheet("library.css");
    return Gtk::Builder::create_from_resource("/org/pagora/Pagora/ui/LibraryWindow.ui");
}

template <typename Widget>
Widget& find(const Glib::RefPtr<Gtk::Builder>& layout, const char* name)
{
    return *layout->get_widget<Widget>(name);
}

template <typename Window>
std::unique_ptr<Window> takeWindow(const Glib::RefPtr<Gtk::Builder>& layout, const char* name)
{
    return std::unique_ptr<Window>(layout->get_widget<Window>(name));
}

// An action that is not set, or that replaces the actions, is no harm.
template <typename Action>
auto perform(const Action& action)
{
    const auto copy = action;
    using Result = decltype(copy());
    if constexpr (std::is_void_v<Result>) {
        if (copy)
            copy();
    } else {
        return copy ? copy() : Result(true);
    }
}

}

LibraryWindowGtk::LibraryWindowGtk(Glib::RefPtr<Gtk::Application> application)
    : _application(std::move(application))
    , _layout(loadLayout())
    , _windows { takeWindow<Gtk::ApplicationWindow>(_layout, "mainWindow"),
        takeWindow<Gtk::Window>(_layout, "errorWin"), takeWindow<Gtk::Window>(_layout, "indicatorWindow"),
        takeWindow<Gtk::Window>(_layout, "settingsWin") }
    , _mainWindow(*_windows.main)
    , _errorWin(*_windows.error)
    , _indicatorWindow(*_windows.indicator)
    , _settingsWin(*_windows.settings)
    , _errorList(find<Gtk::TextView>(_layout, "errorList"))
    , _processLabel(find<Gtk::Label>(_layout, "processLabel"))
    , _procText(find<Gtk::Label>(_layout, "procText"))
    , _processIndicator(find<Gtk::ProgressBar>(_layout, "processIndicator"))
    , _progressBar(find<Gtk::ProgressBar>(_layout, "progressBar"))
    , _readerButton(find<Gtk::Button>(_layout, "readerButton"))
    , _stopButton(find<Gtk::Button>(_layout, "stopButton"))
    , _bListControl(find<Gtk::Widget>(_layout, "bListControl"))
    , _dragDropMatrix(find<Gtk::Widget>(_layout, "dragDropMatrix"), 1)
    , _toolBarMenu(find<Gtk::Widget>(_layout, "toolBar"))
    , _dialogs(*_windows.main)
{
    if (_application) {
        _windows.main->set_application(_application);
        // A hidden window leaves its application, and with it the program's actions and keys.
        _connections.push_back(
            _windows.main->signal_show().connect([this] { _windows.main->set_application(_application); }));
    }
    addProgramActions();
    wireControls();
    followProgress();
    wireProgressWindow();
    _emptyPageTarget = std::make_unique<FileDropTarget>(
        find<Gtk::Widget>(_layout, "emptyPage"), [this] { return _shown ? _shown->dropDelegate() : nullptr; },
        [this](bool isOver) { showDropTarget(isOver); });
    for (auto* const window : { static_cast<Gtk::Window*>(_windows.main.get()), _windows.error.get(),
             _windows.settings.get(), _windows.indicator.get() }) {
        _monitor.watch(*window);
        keepFocusMarked(*window);
        leaveUnnamed(*window);
        correctAccessibleNames(*window);
        tellOfChanges(*window);
    }
}

LibraryWindowGtk::~LibraryWindowGtk()
{
    _emptyPageTarget = nullptr;
    for (auto& connection : _connections)
        connection.disconnect();
}

void LibraryWindowGtk::addProgramActions()
{
    const std::pair<const char*, std::function<void()>> actions[] = {
        { "import", [this] { perform(_actions.importDialog); } },
        { "settings", [this] { perform(_actions.openSettings); } },
        { "show-folder", [this] { perform(_actions.showLibFolderInFinder); } },
        { "reset", [this] { perform(_actions.resetAppSettings); } },
        { "help", [this] { perform(_actions.openGuide); } },
        { "about", [this] { _dialogs.showAbout(); } },
        { "test", [this] { perform(_actions.testAction); } },
        { "quit", [this] { _windows.main->close(); } },
    };
    const std::pair<const char*, const char*> shortcuts[]
        = { { "<Control>o", "app.import" }, { "<Control>comma", "app.settings" }, { "F1", "app.help" },
              { "<Control><Shift>F12", "app.test" }, { "<Control>q", "app.quit" } };
    const auto group = Gio::SimpleActionGroup::create();
    for (const auto& [name, action] : actions)
        group->add_action(name, action);
    if (_application) {
        for (const auto& [name, action] : actions)
            _application->add_action(group->lookup_action(name));
        for (const auto& [trigger, action] : shortcuts)
            _application->set_accels_for_action(action, { trigger });
        return;
    }
    _windows.main->insert_action_group("app", group);
    const auto keys = Gtk::ShortcutController::create();
    keys->set_scope(Gtk::ShortcutScope::MANAGED);
    for (const auto& [trigger, action] : shortcuts)
        keys->add_shortcut(
            Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string(trigger), Gtk::NamedAction::create(action)));
    _windows.main->add_controller(keys);
}

void LibraryWindowGtk::wireControls()
{
    _readerButton.setAction([this] { perform(_actions.readBook); });
    _stopButton.setAction([this] { perform(_actions.cancelProcess); });
    _bListControl.setAction([this] { perform(_actions.bookListMode); });
    _connections = {
        find<Gtk::Button>(_layout, "saveButton").signal_clicked().connect([this] { perform(_actions.saveSettings); }),
        _windows.main->signal_close_request().connect([this] { return !perform(_actions.windowShouldClose); }, false),
    };
}

void LibraryWindowGtk::followProgress()
{
    auto& strip = find<Gtk::Revealer>(_layout, "progressStrip");
    const auto followed = [this, &strip] {
        strip.set_reveal_child(!_progressBar.isHidden() || !_procText.isHidden() || !_stopButton.isHidden());
        updateEmptyPage();
    };
    const std::initializer_list<Gtk::Widget*> watched
        = { &_progressBar.widget(), &_procText.widget(), &_stopButton.widget(), _windows.indicator.get() };
    for (auto* const widget : watched)
        _connections.push_back(widget->property_visible().signal_changed().connect(followed));
}

// It goes when the import has ended, and no sooner.
void LibraryWindowGtk::wireProgressWindow()
{
    _connections.push_back(_windows.indicator->signal_close_request().connect([] { return true; }, false));
    _connections.push_back(find<Gtk::Button>(_layout, "indicatorStopButton").signal_clicked().connect([this] {
        perform(_actions.cancelProcess);
    }));
}

bool LibraryWindowGtk::isImporting() const
{
    return !_progressBar.isHidden() || _indicatorWindow.isVisible();
}

void LibraryWindowGtk::updateEmptyPage()
{
    find<Gtk::Widget>(_layout, "emptyPage").set_visible(_shown && _shown->isEmpty() && !isImporting());
}

std::unique_ptr<LibraryViewSurface> LibraryWindowGtk::loadView(const char* layout, ArrayController& books)
{
    std::unique_ptr<BooksSurface> view;
    if (std::string_view(layout) == "TableView")
        view = std::make_unique<ListSurface>(books, _coverLoader);
    else
        view = std::make_unique<GridSurface>(books, _coverLoader);
    view->setContentAction([this, made = view.get()] {
        if (made == _shown)
            updateEmptyPage();
    });
    view->setDragAction([this](bool isOver) { showDropTarget(isOver); });
    return view;
}

void LibraryWindowGtk::showDropTarget(bool isOver)
{
    find<Gtk::Revealer>(_layout, "dropTarget").set_reveal_child(isOver);
}

bool LibraryWindowGtk::isActive() const
{
    return _mainWindow.isKeyWindow() || _errorWin.isKeyWindow() || _indicatorWindow.isKeyWindow()
        || _settingsWin.isKeyWindow();
}

void LibraryWindowGtk::setContentView(LibraryViewSurface& view)
{
    _shown = dynamic_cast<BooksSurface*>(&view);
    if (_shown)
        find<Gtk::Box>(_layout, "contentView").append(_shown->widget());
}

void LibraryWindowGtk::removeContentView(LibraryViewSurface& view)
{
    auto* const surface = dynamic_cast<BooksSurface*>(&view);
    if (!surface || surface != _shown)
        return;
    find<Gtk::Box>(_layout, "contentView").remove(surface->widget());
    _shown = nullptr;
}

void LibraryWindowGtk::terminate()
{
    if (_application)
        _application->quit();
}

void LibraryWindowGtk::runAlert(const std::string& informativeText, const std::string& firstButton,
    const std::string& secondButton, std::function<void(int code)> answered)
{
    _dialogs.runAlert(informativeText, firstButton, secondButton, std::move(answered));
}

void LibraryWindowGtk::runAlertPanel(const std::string& title, const std::string& message, const std::string& button)
{
    _dialogs.runAlertPanel(title, message, button);
}

void LibraryWindowGtk::runOpenPanel(const std::string& message, bool multiple, LibraryDialogs::Chosen chosen)
{
    _dialogs.runOpenPanel(message, multiple, std::move(chosen));
}

}
